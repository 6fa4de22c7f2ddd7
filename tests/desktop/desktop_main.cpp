// Runs the tests of the Qt back end without touching the user's own files; without a screen, but
// for those that a test starts on a screen of its own.

#include <gtest/gtest.h>

#include <QApplication>
#include <QFile>
#include <QSettings>
#include <QStyleHints>
#include <QTemporaryDir>

// Large enough for the dialog at every scale, whatever QT_SCALE_FACTOR makes of it.
static void describeScreen(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly)) return;
  file.write(
      "{\"screens\": [{\"name\": \"tests\", \"x\": 0, \"y\": 0, \"width\": 3200, "
      "\"height\": 2400, \"logicalDpi\": 96, \"logicalBaseDpi\": 96, \"dpr\": 1}]}");
}

int main(int argc, char** argv) {
  const bool realScreen = qEnvironmentVariableIsSet("MORVALIS_REAL_SCREEN");
  const QTemporaryDir home;
  describeScreen(home.path() + "/screen");
  qputenv("QT_QPA_PLATFORM",
          realScreen ? "xcb" : ("offscreen:configfile=" + home.path() + "/screen").toUtf8());
  qputenv("HOME", home.path().toUtf8());
  qputenv("XDG_STATE_HOME", (home.path() + "/state").toUtf8());
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, home.path() + "/config");
  const QApplication application(argc, argv);
  // Tests click faster than people, and mean single clicks.
  if (realScreen) QGuiApplication::styleHints()->setMouseDoubleClickInterval(1);
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
