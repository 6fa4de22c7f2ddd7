// file_access: whole files in, whole files out. Every failure ends the command, naming the file and
// the reason.

#pragma once

#include <QByteArray>
#include <string>

constexpr char kStandardStream[] = "-";  // as a file's name: standard input or output

// `kind` says what the file should have been: "a picture". Standard input is read once and kept for
// whoever asks for it again.
QByteArray readWholeFile(const std::string& file, const std::string& kind);

// The same for no more than the first `bytes`, whatever the size of the file.
QByteArray readFileStart(const std::string& file, const std::string& kind, qsizetype bytes);

// Whether a file can be made or replaced there.
void checkWritable(const std::string& file);

// The file is written beside its place and takes it only when it is whole and the run has not been
// interrupted. Standard output is written as it comes.
void writeWholeFile(const std::string& file, const QByteArray& contents);
