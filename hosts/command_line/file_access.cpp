#include "hosts/command_line/file_access.h"

#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTemporaryFile>
#include <cstdio>

#include "hosts/command_line/command_failure.h"
#include "hosts/command_line/interrupt.h"

static QByteArray readAll(const std::string& file, QFile* source) {
  const QByteArray contents = source->readAll();
  if (source->error() != QFileDevice::NoError) {
    failOnFile(file, "cannot be read: " + source->errorString().toStdString());
  }
  if (contents.isEmpty()) failOnFile(file, "is empty");
  return contents;
}

static QByteArray readStandardInput() {
  static QByteArray kept;
  if (!kept.isEmpty()) return kept;
  QFile source;
  if (!source.open(stdin, QIODevice::ReadOnly)) failOnFile(kStandardStream, "cannot be read");
  kept = readAll(kStandardStream, &source);
  return kept;
}

QByteArray readWholeFile(const std::string& file, const std::string& kind) {
  if (file == kStandardStream) return readStandardInput();
  const QString path = QFile::decodeName(file.c_str());
  const QFileInfo info(path);
  if (!info.exists()) failOnFile(file, "there is no such file");
  if (info.isDir()) failOnFile(file, "is a folder, not " + kind);
  QFile source(path);
  if (!source.open(QIODevice::ReadOnly)) {
    failOnFile(file, "cannot be read: " + source.errorString().toStdString());
  }
  return readAll(file, &source);
}

// Rights alone do not tell (read-only disks, quotas), so a file is made and removed again.
void checkWritable(const std::string& file) {
  if (file == kStandardStream) {
    if (isatty(STDOUT_FILENO) == 1) {
      failOnUsage("-o -: standard output is a terminal; send it into a file or a program");
    }
    return;
  }
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

void writeWholeFile(const std::string& file, const QByteArray& contents) {
  if (file == kStandardStream) return writeToStandardOutput(contents);
  QSaveFile target(QFile::decodeName(file.c_str()));
  const bool opened = target.open(QIODevice::WriteOnly);
  const bool written = opened && target.write(contents) == contents.size() && target.flush();
  if (interrupted()) target.cancelWriting();
  stopIfInterrupted();
  if (!written || !target.commit()) {
    failOnFile(file, "cannot be written: " + target.errorString().toStdString());
  }
}
