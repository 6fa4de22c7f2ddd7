#include "tests/command_line/program_run.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QImageReader>
#include <QProcess>
#include <QtEndian>
#include <csignal>

// Some picture formats are plug-ins, which need an application to be found.
static void needApplication() {
  static int count = 1;
  static char name[] = "tests";
  static char* arguments[] = {name, nullptr};
  static QCoreApplication application(count, arguments);
}

ProgramTest::ProgramTest() {
  needApplication();
}

static RunResult runProcess(const QString& folder, const QString& program,
                            const QStringList& arguments, int signal = 0, int milliseconds = 0) {
  QProcess process;
  process.setWorkingDirectory(folder);
  process.start(program, arguments);
  if (signal != 0 && !process.waitForFinished(milliseconds)) {
    kill(static_cast<pid_t>(process.processId()), signal);
  }
  if (!process.waitForFinished(120000)) process.kill();
  process.waitForFinished(1000);
  const bool ended = process.exitStatus() == QProcess::NormalExit;
  return {ended ? process.exitCode() : -1, process.readAllStandardOutput(),
          process.readAllStandardError()};
}

RunResult ProgramTest::run(const QStringList& arguments) const {
  return runProcess(folder.path(), MORVALIS_PROGRAM, arguments);
}

RunResult ProgramTest::runUntilSignal(const QStringList& arguments, int signal,
                                      int milliseconds) const {
  return runProcess(folder.path(), MORVALIS_PROGRAM, arguments, signal, milliseconds);
}

RunResult ProgramTest::runShell(const QString& script) const {
  return runProcess(folder.path(), "bash", {"-c", script, MORVALIS_PROGRAM});
}

QImage ProgramTest::apply(const QString& image, const QString& output,
                          const QStringList& more) const {
  const RunResult result =
      run(QStringList{"apply", image, "-o", output, "--quiet", "--seed", "7"} + more);
  EXPECT_EQ(result.exitCode, 0) << result.errors.toStdString();
  EXPECT_EQ(result.output + result.errors, "");
  return QImageReader(path(output)).read();
}

void ProgramTest::save(const QImage& image, const QString& name) const {
  ASSERT_TRUE(image.save(path(name), nullptr, 100)) << name.toStdString();
}

QStringList ProgramTest::files() const {
  return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

QImage colorPicture(bool alpha) {
  QImage image(24, 18, alpha ? QImage::Format_RGBA8888 : QImage::Format_RGB888);
  const int bytes = alpha ? 4 : 3;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      uchar* pixel = image.scanLine(y) + x * bytes;
      pixel[0] = static_cast<uchar>(x * 10 + 5);
      pixel[1] = static_cast<uchar>(y * 14);
      pixel[2] = static_cast<uchar>(x * 7 ^ y * 9);
      if (alpha) pixel[3] = x < 6 ? 0 : x < 12 ? 128 : 255;
    }
  }
  return image;
}

QImage greyPicture() {
  QImage image(24, 18, QImage::Format_Grayscale8);
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      image.scanLine(y)[x] = static_cast<uchar>(x * 9 + y * 2);
    }
  }
  return image;
}

static QByteArray bigEndian(quint32 number) {
  QByteArray bytes(4, '\0');
  qToBigEndian(number, bytes.data());
  return bytes;
}

QByteArray pngChunk(const char* name, const QByteArray& data) {
  const QByteArray checked = name + data;
  quint32 sum = 0xFFFFFFFFU;
  for (const char byte : checked) {
    sum ^= static_cast<uchar>(byte);
    for (int bit = 0; bit < 8; ++bit) sum = (sum & 1) != 0 ? sum >> 1 ^ 0xEDB88320U : sum >> 1;
  }
  return bigEndian(static_cast<quint32>(data.size())) + checked + bigEndian(~sum);
}

QByteArray pngFile(int width, int height, int colourType, const QByteArray& samples,
                   const QByteArray& moreChunks) {
  QByteArray rows;
  const qsizetype rowBytes = samples.size() / height;
  for (int y = 0; y < height; ++y) rows += '\0' + samples.mid(y * rowBytes, rowBytes);
  const QByteArray header = bigEndian(static_cast<quint32>(width)) +
                            bigEndian(static_cast<quint32>(height)) + '\x08' +
                            static_cast<char>(colourType) + QByteArray(3, '\0');
  return "\x89PNG\r\n\x1a\n" + pngChunk("IHDR", header) + moreChunks +
         pngChunk("IDAT", qCompress(rows).mid(4)) + pngChunk("IEND", {});
}

QByteArray findPngChunk(const QByteArray& file, const char* name) {
  for (qsizetype at = 8; at + 12 <= file.size();) {
    const qsizetype bytes = qFromBigEndian<quint32>(file.cbegin() + at);
    if (file.mid(at + 4, 4) == name) return file.mid(at + 8, bytes);
    at += 12 + bytes;
  }
  return QByteArray();
}

QByteArray profileFor(const char* kind) {
  QByteArray profile(132, '\0');
  profile.replace(0, 4, bigEndian(132));
  profile.replace(8, 4, bigEndian(0x02400000));  // version
  profile.replace(12, 4, "mntr");
  profile.replace(16, 4, kind);
  profile.replace(20, 4, "XYZ ");
  profile.replace(36, 4, "acsp");
  profile.replace(68, 12, QByteArray::fromHex("0000f6d6000100000000d32d"));  // white point
  return profile;
}
