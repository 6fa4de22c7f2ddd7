#include "hosts/command_line/file_access.h"

#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTemporaryFile>
#include <algorithm>
#include <climits>
#include <cstdio>
#include <sstream>

#include "hosts/command_line/command_failure.h"
#include "hosts/command_line/interrupt.h"

static void checkContents(const std::string& file, const QFile& source,
                          const QByteArray& contents) {
  if (source.error() != QFileDevice::NoError) {
    failOnFile(file, "cannot be read: " + source.errorString().toStdString());
  }
  if (contents.isEmpty()) failOnFile(file, "is empty");
}

static QByteArray readStandardInput() {
  static QByteArray kept;
  if (!kept.isEmpty()) return kept;
  QFile source;
  if (!source.open(stdin, QIODevice::ReadOnly)) failOnFile(kStandardStream, "cannot be read");
  kept = source.readAll();
  checkContents(kStandardStream, source, kept);
  return kept;
}

static void openForReading(const std::string& file, const std::string& kind, QFile* source) {
  const QString path = QFile::decodeName(file.c_str());
  const QFileInfo info(path);
  if (!info.exists()) failOnFile(file, "there is no such file");
  if (info.isDir()) failOnFile(file, "is a folder, not " + kind);
  source->setFileName(path);
  if (!source->open(QIODevice::ReadOnly)) {
    failOnFile(file, "cannot be read: " + source->errorString().toStdString());
  }
}

QByteArray readWholeFile(const std::string& file, const std::string& kind) {
  if (file == kStandardStream) return readStandardInput();
  QFile source;
  openForReading(file, kind, &source);
  const QByteArray contents = source.readAll();
  checkContents(file, source, contents);
  return contents;
}

// A pipe gives what it has so far, so that one reading need not do.
QByteArray readFileStart(const std::string& file, const std::string& kind, qsizetype bytes) {
  if (file == kStandardStream) return readStandardInput().left(bytes);
  QFile source;
  openForReading(file, kind, &source);
  QByteArray contents;
  while (contents.size() < bytes) {
    const QByteArray more = source.read(bytes - contents.size());
    if (more.isEmpty()) break;
    contents += more;
  }
  checkContents(file, source, contents);
  return contents;
}

static void checkNameLength(const std::string& file) {
  size_t longest = 0;
  std::istringstream parts(file);
  for (std::string part; std::getline(parts, part, '/');) longest = std::max(longest, part.size());
  if (longest > NAME_MAX || file.size() >= PATH_MAX) failOnFile(file, "its name is too long");
}

// Rights alone do not tell (read-only disks, quotas), so a file is made and removed again.
void checkWritable(const std::string& file) {
  if (file == kStandardStream) {
    if (isatty(STDOUT_FILENO) == 1) {
      failOnUsage("-o -: standard output is a terminal; send it into a file or a program");
    }
    return;
  }
  checkNameLength(file);
  const QFileInfo info(QFile::decodeName(file.c_str()));
  if (info.isDir()) failOnFile(file, "is a folder");
  if (info.exists() && !info.isFile()) failOnFile(file, "is not an ordinary file");
  if (info.exists() && !info.isWritable()) failOnFile(file, "is write-protected");
  const QFileInfo folder(info.absolutePath());
  if (!folder.exists()) failOnFile(file, "its folder does not exist");
  if (!folder.isDir()) failOnFile(file, "its folder is not a folder");
  QTemporaryFile trial(folder.filePath() + "/.morvalis-XXXXXX");
  if (!trial.open()) {
    failOnFile(file, "its folder cannot be written to: " + trial.errorString().toStdString());
  }
}

static void writeToStandardOutput(const QByteArray& contents) {
  stopIfInterrupted();
  const auto bytes = static_cast<size_t>(contents.size());
  if (std::fwrite(contents.constData(), 1, bytes, stdout) != bytes || std::fflush(stdout) != 0) {
    throw CommandFailure{kExitFailed, "standard output: cannot be written"};
  }
}

// Of what does not fit the first writing takes a part, and only the next tells why.
static bool writeAll(QSaveFile* target, const QByteArray& contents) {
  qsizetype done = 0;
  while (done < contents.size()) {
    const qsizetype bytes = target->write(contents.constData() + done, contents.size() - done);
    if (bytes <= 0) return false;
    done += bytes;
  }
  return target->flush();
}

void writeWholeFile(const std::string& file, const QByteArray& contents) {
  if (file == kStandardStream) return writeToStandardOutput(contents);
  QSaveFile target(QFile::decodeName(file.c_str()));
  const bool opened = target.open(QIODevice::WriteOnly);
  const bool written = opened && writeAll(&target, contents);
  if (interrupted()) target.cancelWriting();
  stopIfInterrupted();
  if (!written || !target.commit()) {
    failOnFile(file, "cannot be written: " + target.errorString().toStdString());
  }
}
