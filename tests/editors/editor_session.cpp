#include "tests/editors/editor_session.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QThread>
#include <algorithm>
#include <cmath>

constexpr int kPatience = 90000;  // milliseconds; the first start of an editor fills its databases
constexpr int kPause = 200;

EditorTest::EditorTest() : environment(QProcessEnvironment::systemEnvironment()) {
  static int count = 1;
  static char name[] = "tests";
  static char* arguments[] = {name, nullptr};
  static QCoreApplication application(count, arguments);
  for (const char* each : {"run", "data", "config", "state"}) {
    QDir(folder.path()).mkpath(each);
    QFile(path(each)).setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  }
  environment.insert("HOME", folder.path());
  environment.insert("XDG_RUNTIME_DIR", path("run"));
  environment.insert("XDG_DATA_HOME", path("data"));
  environment.insert("XDG_CONFIG_HOME", path("config"));
  environment.insert("XDG_STATE_HOME", path("state"));
  // The program as a user would find it, and the system's Python.
  environment.insert("PATH",
                     QFileInfo(MORVALIS_PROGRAM).path() + ":/usr/bin:" + environment.value("PATH"));
  for (const char* each : {"DISPLAY", "WAYLAND_DISPLAY", "XAUTHORITY", "PYTHONPATH"}) {
    environment.remove(each);
  }
  environment.insert("LC_ALL", "C.UTF-8");
  environment.insert("PYTHONDONTWRITEBYTECODE", "1");
}

EditorTest::~EditorTest() {
  if (screen_.state() == QProcess::NotRunning) return;
  screen_.terminate();
  screen_.waitForFinished(10000);
}

QString EditorTest::missing(const QStringList& programs) {
  for (const QString& program : programs) {
    if (QStandardPaths::findExecutable(program).isEmpty()) return program;
  }
  return "";
}

bool EditorTest::hasModule(const QString& module) const {
  int exitCode = 0;
  run("/usr/bin/python3", {"-c", "import " + module}, &exitCode);
  return exitCode == 0;
}

QImage EditorTest::picture(const QString& name) const {
  QImage image = QImage(path(name)).convertToFormat(QImage::Format_RGBA64);
  EXPECT_FALSE(image.isNull()) << name.toStdString();
  return image;
}

void EditorTest::start(QProcess* process, const QString& program,
                       const QStringList& arguments) const {
  process->setWorkingDirectory(folder.path());
  process->setProcessEnvironment(environment);
  process->setProcessChannelMode(QProcess::MergedChannels);
  process->start(program, arguments);
}

QString EditorTest::run(const QString& program, const QStringList& arguments, int* exitCode) const {
  QProcess process;
  start(&process, program, arguments);
  if (!process.waitForFinished(2 * kPatience)) process.kill();
  const QString said = QString::fromUtf8(process.readAll());
  const bool ended = process.exitStatus() == QProcess::NormalExit;
  if (exitCode != nullptr) {
    *exitCode = ended ? process.exitCode() : -1;
  } else {
    EXPECT_TRUE(ended && process.exitCode() == 0)
        << program.toStdString() << arguments.join(' ').toStdString() << said.toStdString();
  }
  return said;
}

// --- The screen ------------------------------------------------------------------------------

void EditorTest::openScreen() {
  screen_.start("Xvfb", {"-displayfd", "1", "-screen", "0", "1280x1000x24", "-nolisten", "tcp"});
  ASSERT_TRUE(screen_.waitForReadyRead(kPatience));
  environment.insert("DISPLAY", ":" + QString::fromLatin1(screen_.readLine().trimmed()));
}

bool EditorTest::waitUntil(const std::function<bool()>& happened) const {
  QElapsedTimer timer;
  timer.start();
  while (!happened()) {
    if (timer.elapsed() > kPatience) return false;
    QThread::msleep(kPause);
  }
  return true;
}

QString EditorTest::windowNamed(const QString& pattern) const {
  QString found;
  waitUntil([&] {
    int exitCode = 0;
    found = run("xdotool", {"search", "--onlyvisible", "--name", pattern}, &exitCode).trimmed();
    found = found.split('\n').first();
    return exitCode == 0 && !found.isEmpty();
  });
  EXPECT_FALSE(found.isEmpty()) << "no window " << pattern.toStdString();
  return found;
}

void EditorTest::press(const QString& window, const QStringList& keys) const {
  int exitCode = 0;
  if (!window.isEmpty()) run("xdotool", {"windowfocus", window}, &exitCode);
  for (const QString& key : keys) {
    QThread::msleep(2 * kPause);
    run("xdotool", {"key", key}, &exitCode);
  }
}

// --- Pictures --------------------------------------------------------------------------------

QImage disc(QImage::Format format, int side) {
  QImage image(side, side, QImage::Format_RGBA64);
  for (int y = 0; y < side; ++y) {
    for (int x = 0; x < side; ++x) {
      const double away = std::hypot(x - side / 2.0, y - side / 2.0);
      const double cover = std::clamp((side * 0.42 - away) / 3, 0.0, 1.0);
      reinterpret_cast<QRgba64*>(image.scanLine(y))[x] =
          qRgba64(static_cast<quint16>(x * 65535 / side), static_cast<quint16>(y * 65535 / side),
                  static_cast<quint16>((x ^ y) * 301), static_cast<quint16>(cover * 65535));
    }
  }
  return image.convertToFormat(format);
}
