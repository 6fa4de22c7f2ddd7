// file_access: whole files in, whole files out. Every failure ends the command, naming the file and
// the reason; an interruption ends every wait.

#pragma once

#include <string>

#include "hosts/process/file_bytes.h"

constexpr char kStandardStream[] = "-";  // as a file's name: standard input or output

// `kind` says what the file should have been: "a picture". Standard input is read once and kept for
// whoever asks for it again.
FileBytes readWholeFile(const std::string& file, const std::string& kind);

// The same for no more than the first `bytes`, whatever the size of the file.
FileBytes readFileStart(const std::string& file, const std::string& kind, size_t bytes);

// Descriptors 0 to 2 that the program has been started without, so that no file takes their place.
void fillStandardStreams();

// Whether a file can be made or replaced there.
void checkWritable(const std::string& file);

// A file that is written beside its place and takes it only when it is whole and the run has not
// been interrupted; gone without a trace otherwise. Standard output is written as it comes.
struct OutputFile {
  OutputFile() = default;
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  std::string name;  // as it was given
  std::string place;
  std::string draft;  // beside the place; empty: there is none
  int descriptor = -1;
};

// From now on a file whose place is taken when it is finished becomes `wanted` with a number, in
// the same folder, and a warning tells it.
void replaceNothing(const std::string& wanted);

void openOutput(const std::string& file, OutputFile* output);
void appendOutput(BytesView bytes, OutputFile* output);
void finishOutput(OutputFile* output);

void writeWholeFile(const std::string& file, BytesView contents);
