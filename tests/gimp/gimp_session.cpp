#include "tests/gimp/gimp_session.h"

#include <gtest/gtest.h>

#include <QColorSpace>
#include <QDir>
#include <QFile>
#include <algorithm>

#include "tests/gimp/gimp_scripts.h"

// Scripts, and the formats that the tests need: with all that GIMP has, a start takes four times as
// long.
constexpr const char* kPlugIns[] = {"script-fu", "file-png", "file-tiff"};

GimpSession::GimpSession() : environment(QProcessEnvironment::systemEnvironment()) {
  const QString plugIns = path("plug-ins");
  QDir(folder.path()).mkpath("plug-ins/morvalis");
  QDir(folder.path()).mkpath("gimp/gradients");
  QDir(folder.path()).mkpath("state");
  for (const char* name : kPlugIns) {
    QFile::link(QString(MORVALIS_GIMP_PLUG_INS "/") + name, plugIns + "/" + name);
  }
  QFile::link(MORVALIS_GIMP, plugIns + "/morvalis/morvalis");
  write("gimp/gimprc", "(plug-in-path \"" + plugIns.toUtf8() + "\")\n");
  environment.insert(kGimpFolder, path("gimp"));
  environment.insert("HOME", folder.path());
  environment.insert("XDG_STATE_HOME", path("state"));
  environment.insert("XDG_CONFIG_HOME", path("config"));
  environment.insert("DBUS_SESSION_BUS_ADDRESS", "disabled:");
  environment.remove("DISPLAY");
  environment.remove("WAYLAND_DISPLAY");
}

QImage GimpSession::picture(const QString& name) const {
  QImage image = QImage(path(name)).convertToFormat(QImage::Format_RGBA64);
  image.setColorSpace({});  // GIMP says more about it
  EXPECT_FALSE(image.isNull()) << name.toStdString();
  return image;
}

void GimpSession::start(QProcess* process, const QString& program,
                        const QStringList& arguments) const {
  process->setWorkingDirectory(folder.path());
  process->setProcessEnvironment(environment);
  process->setProcessChannelMode(QProcess::MergedChannels);
  process->start(program, arguments);
}

QString GimpSession::runScript(const QByteArray& script) const {
  write("script.scm", script);
  QProcess gimp;
  start(&gimp, kGimpConsole,
        {"-d", "-f", "-i", "--batch-interpreter=plug-in-script-fu-eval", "-b",
         "(load \"script.scm\")", "-b", "(gimp-quit 1)"});
  if (!gimp.waitForFinished(300000)) gimp.kill();
  return QString::fromUtf8(gimp.readAll());
}

QString GimpSession::runProgram(const QString& program, const QStringList& arguments) const {
  QProcess process;
  start(&process, program, arguments);
  EXPECT_TRUE(process.waitForFinished(60000));
  const QString said = QString::fromUtf8(process.readAll());
  EXPECT_EQ(process.exitCode(), 0) << arguments.join(' ').toStdString() << said.toStdString();
  return said;
}

// --- Pictures -------------------------------------------------------------------------------

QImage noise(QImage::Format format, quint32 seed) {
  QImage image(kWidth, kHeight, QImage::Format_RGBA64);
  quint32 state = seed;
  const auto next = [&state] {
    state = state * 1664525U + 1013904223U;
    return static_cast<quint16>(state >> 16);
  };
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      const int alpha = std::clamp((x - 8) * 65535 / 40, 0, 65535);
      reinterpret_cast<QRgba64*>(image.scanLine(y))[x] =
          qRgba64(next(), next(), next(), static_cast<quint16>(alpha));
    }
  }
  const bool opaque = !image.convertToFormat(format).hasAlphaChannel();
  if (opaque) image = image.convertToFormat(QImage::Format_RGBX64);
  return image.convertToFormat(format);
}

QImage maskPicture(const QRect& selected, int feather) {
  QImage image(kWidth, kHeight, QImage::Format_RGBA8888);
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      const int across = std::max(selected.left() - x, x - selected.right());
      const int down = std::max(selected.top() - y, y - selected.bottom());
      const int outside = std::max({across, down, 0});
      const int weight = std::clamp(255 - outside * 255 / (feather + 1), 0, 255);
      image.setPixel(x, y, qRgba(255, 255, 255, weight));
    }
  }
  return image;
}
