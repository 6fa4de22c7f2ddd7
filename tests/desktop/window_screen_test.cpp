// Scripts of the dialog in a real window: an X server without a screen to look at, a real pointer
// and keyboard, and the pixels that stand in the server's memory.

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QProcess>
#include <QStandardPaths>

// Of every way to use the dialog one.
constexpr char kScripts[] =
    "Qt/QtDialogScripts.*/LightPads:*/Toggles:*/PictureMenus:*/Cancelling:*/Confirming:"
    "*/SlidersByKey:*/MenusByKey:*/MenusThatStay:*/EnterAndEscape:*/TextureSample:*/Environment:*/"
    "ZoomAndPan:*/WheelAndArrows:"
    "*/TypedNumbers:*/DoubleClicks:*/UntouchedPicture:*/CopiedCommand:*/AboutBox";

TEST(RealWindow, ScriptsWithARealPointer) {
  for (const char* program : {"Xvfb", "xdotool"}) {
    if (QStandardPaths::findExecutable(program).isEmpty()) {
      GTEST_SKIP() << program << " is missing, so there is no real window to try";
    }
  }
  QProcess server;
  server.start("Xvfb", {"-displayfd", "1", "-screen", "0", "1280x900x24", "-nolisten", "tcp"});
  ASSERT_TRUE(server.waitForReadyRead(30000)) << server.readAllStandardError().toStdString();
  const QString display = ":" + QString::fromLatin1(server.readLine().trimmed());

  QProcess tests;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert("DISPLAY", display);
  environment.insert("MORVALIS_REAL_SCREEN", "1");
  // Nothing of the user's desktop takes part.
  environment.insert("DBUS_SESSION_BUS_ADDRESS", "disabled:");
  environment.remove("WAYLAND_DISPLAY");
  environment.remove("XAUTHORITY");
  tests.setProcessEnvironment(environment);
  tests.setProcessChannelMode(QProcess::MergedChannels);
  tests.start(QCoreApplication::applicationFilePath(), {QString("--gtest_filter=") + kScripts});
  EXPECT_TRUE(tests.waitForFinished(400000));
  const QString output = QString::fromUtf8(tests.readAllStandardOutput());
  EXPECT_EQ(tests.exitCode(), 0) << output.toStdString();
  EXPECT_TRUE(output.contains("[  PASSED  ] 18 tests")) << output.toStdString();
  server.terminate();
  EXPECT_TRUE(server.waitForFinished(10000));
}
