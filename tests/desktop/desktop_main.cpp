// Runs the tests of the Qt back end without touching the user's own files; without a screen, but
// for those that a test starts on a screen of its own.

#include <gtest/gtest.h>

#include <QApplication>
#include <QSettings>
#include <QStyleHints>
#include <QTemporaryDir>

int main(int argc, char** argv) {
  const bool realScreen = qEnvironmentVariableIsSet("MORVALIS_REAL_SCREEN");
  qputenv("QT_QPA_PLATFORM", realScreen ? "xcb" : "offscreen");
  const QTemporaryDir home;
  qputenv("HOME", home.path().toUtf8());
  qputenv("XDG_STATE_HOME", (home.path() + "/state").toUtf8());
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, home.path() + "/config");
  const QApplication application(argc, argv);
  // Tests click faster than people, and mean single clicks.
  if (realScreen) QGuiApplication::styleHints()->setMouseDoubleClickInterval(1);
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
