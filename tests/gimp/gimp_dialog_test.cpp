// The dialog, opened from GIMP with its windows, by keys that a user presses.

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QStandardPaths>
#include <QThread>

#include "tests/gimp/gimp_scripts.h"
#include "tests/gimp/gimp_session.h"

constexpr int kPatience = 60000;  // milliseconds
constexpr int kPause = 100;

// Saves the layer as N.png when there is a file "ask-N", until there is one called "ask-end".
constexpr char kServe[] =
    R"((let* ((image (opened "photo.png"))
       (display (gimp-display-new image)))
  (let loop ((n 1))
    (if (not (file-exists? "ask-end"))
      (let ((name (number->string n)))
        (if (file-exists? (string-append "ask-" name))
          (let ((file (string-append name ".png")))
            (save-whole-png image file)
            (close-output-port (open-output-file (string-append "saved-" name)))
            (loop (+ n 1)))
          (begin (usleep 50000) (loop n)))))))
)";

class GimpDialog : public testing::Test {
 protected:
  void SetUp() override {
    for (const char* program : {"Xvfb", "xdotool", "xprop", "gimp"}) {
      if (QStandardPaths::findExecutable(program).isEmpty())
        GTEST_SKIP() << program << " is missing";
    }
    static int count = 1;
    static char name[] = "tests";
    static char* arguments[] = {name, nullptr};
    static QCoreApplication application(count, arguments);
    server.start("Xvfb", {"-displayfd", "1", "-screen", "0", "1280x900x24", "-nolisten", "tcp"});
    ASSERT_TRUE(server.waitForReadyRead(kPatience));
    session.environment.insert("DISPLAY", ":" + QString::fromLatin1(server.readLine().trimmed()));
    session.environment.remove("XAUTHORITY");
    ASSERT_TRUE(noise(QImage::Format_RGBA64, 5).save(session.path("photo.png")));
    session.write(QString("gimp/") + kKeysFile, kKeys);
    session.write("serve.scm", QByteArray(kVersionProcedures) + kServe);
    session.start(&gimp, "gimp",
                  {"-n", "-s", "-d", "-f", "--batch-interpreter=plug-in-script-fu-eval", "-b",
                   "(load \"serve.scm\")"});
  }

  void TearDown() override {
    if (gimp.state() != QProcess::NotRunning) {
      session.write("ask-end", "");
      gimp.terminate();
      if (!gimp.waitForFinished(10000)) gimp.kill();
      gimp.waitForFinished(10000);
    }
    if (server.state() == QProcess::NotRunning) return;
    server.terminate();
    server.waitForFinished(10000);
  }

  QString xdotool(const QStringList& arguments) const {
    QProcess process;
    session.start(&process, "xdotool", arguments);
    process.waitForFinished(kPatience);
    return QString::fromLatin1(process.readAllStandardOutput()).trimmed();
  }

  // The number of the window of this name, once there is one.
  QString windowNamed(const QString& pattern) {
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < kPatience) {
      const QString found = xdotool({"search", "--onlyvisible", "--name", pattern});
      if (!found.isEmpty() && !found.contains(' ')) return found.split('\n').first();
      QThread::msleep(kPause);
    }
    ADD_FAILURE() << "no window " << pattern.toStdString() << gimp.readAll().toStdString();
    return "";
  }

  void press(const QString& window, const QString& key) {
    const QString number = windowNamed(window);
    xdotool({"windowfocus", number});
    QThread::msleep(kPause);
    xdotool({"key", key});
  }

  // The layer as it is in GIMP now.
  QImage layer() {
    const QString number = QString::number(++asked);
    session.write("ask-" + number, "");
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < kPatience && !QFile::exists(session.path("saved-" + number))) {
      QThread::msleep(kPause);
    }
    return session.picture(number + ".png");
  }

  QImage layerUntil(const std::function<bool(const QImage&)>& accepts) {
    QElapsedTimer timer;
    timer.start();
    QImage image = layer();
    while (!accepts(image) && timer.elapsed() < kPatience) image = layer();
    return image;
  }

  GimpSession session;
  QProcess server;
  QProcess gimp;
  int asked = 0;
};

constexpr char kImageWindow[] = "1 layer.*GIMP$";
constexpr char kDialogWindow[] = "^Morvalis$";

TEST_F(GimpDialog, IsConfirmedUndoneRepeatedAndCancelled) {
  const QImage before = layer();
  ASSERT_EQ(before, session.picture("photo.png"));
  const auto isBefore = [&](const QImage& image) { return image == before; };

  press(kImageWindow, "F9");
  const QString properties =
      session.runProgram("xprop", {"-id", windowNamed(kDialogWindow), "WM_TRANSIENT_FOR"});
  EXPECT_TRUE(properties.contains(QString::number(windowNamed(kImageWindow).toULongLong(), 16)))
      << properties.toStdString();
  press(kDialogWindow, "Return");
  const QImage done = layerUntil([&](const QImage& image) { return !isBefore(image); });
  ASSERT_FALSE(isBefore(done)) << gimp.readAll().toStdString();

  press(kImageWindow, "ctrl+z");
  EXPECT_TRUE(isBefore(layerUntil(isBefore))) << "one step takes all of it back";

  press(kImageWindow, "ctrl+f");
  EXPECT_EQ(layerUntil([&](const QImage& image) { return !isBefore(image); }), done);
  session.runProgram(MORVALIS_PROGRAM, {"apply", "photo.png", "--last", "-o", "wanted.png"});
  EXPECT_EQ(done, session.picture("wanted.png"));

  press(kImageWindow, "ctrl+shift+f");
  press(kDialogWindow, "Escape");
  QElapsedTimer timer;
  timer.start();
  while (!xdotool({"search", "--onlyvisible", "--name", kDialogWindow}).isEmpty() &&
         timer.elapsed() < kPatience) {
    QThread::msleep(kPause);
  }
  EXPECT_EQ(layer(), done);
}
