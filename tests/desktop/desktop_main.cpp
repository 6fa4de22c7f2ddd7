// Runs the tests of the Qt back end without a screen and without touching the user's own files.

#include <gtest/gtest.h>

#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QTemporaryDir home;
  qputenv("HOME", home.path().toUtf8());
  qputenv("XDG_STATE_HOME", (home.path() + "/state").toUtf8());
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, home.path() + "/config");
  const QApplication application(argc, argv);
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
