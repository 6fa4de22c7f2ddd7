// The scripts of the dialog on Qt: the same settings and, texts apart, the same pixels as without a
// screen.

#include <gtest/gtest.h>

#include <QApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <cmath>
#include <utility>

#include "tests/support/dialog/dialog_recording.h"
#include "tests/support/dialog/dialog_scripts.h"

class QtDialogScripts : public ::testing::TestWithParam<DialogScript> {};

static std::vector<std::string> recordedWithoutScreen(const std::string& script,
                                                      int32_t scale = 100) {
  const QTemporaryDir folder;
  const QString path = folder.filePath("recording");
  QProcess tests;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert("MORVALIS_RECORDING", path);
  environment.insert("MORVALIS_SCALE", QString::number(scale));
  tests.setProcessEnvironment(environment);
  tests.start(MORVALIS_CORE_TESTS,
              {QString::fromStdString("--gtest_filter=None/DialogScripts.Plays/" + script)});
  EXPECT_TRUE(tests.waitForFinished(300000));
  EXPECT_EQ(tests.exitCode(), 0) << tests.readAllStandardOutput().toStdString();
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly));
  std::vector<std::string> lines;
  while (!file.atEnd()) lines.push_back(file.readLine().chopped(1).toStdString());
  return lines;
}

static void expectSame(const std::vector<std::string>& lines,
                       const std::vector<std::string>& wanted) {
  ASSERT_EQ(lines.size(), wanted.size());
  int32_t differences = 0;
  for (size_t i = 0; i < lines.size() && differences < 20; ++i) {
    EXPECT_EQ(lines[i], wanted[i]);
    differences += lines[i] == wanted[i] ? 0 : 1;
  }
}

// Of the screen that the test below asks for.
static int32_t screenScale() {
  return static_cast<int32_t>(std::lround(100 * qApp->devicePixelRatio()));
}

TEST_P(QtDialogScripts, SameAsWithoutScreen) {
  runScript(GetParam(), screenScale());
  const std::vector<std::string> lines = recordedLines();
  expectSame(lines, recordedWithoutScreen(GetParam().name, screenScale()));
}

INSTANTIATE_TEST_SUITE_P(Qt, QtDialogScripts, ::testing::ValuesIn(dialogScripts()),
                         [](const auto& instance) { return std::string(instance.param.name); });

class QtScaledScripts : public ::testing::TestWithParam<ScaledScript> {};

TEST_P(QtScaledScripts, SameAsWithoutScreen) {
  runScript(GetParam());
  const std::vector<std::string> lines = recordedLines();
  expectSame(lines, recordedWithoutScreen(GetParam().script.name, GetParam().scale));
}

INSTANTIATE_TEST_SUITE_P(Qt, QtScaledScripts, ::testing::ValuesIn(scaledScripts()),
                         [](const auto& instance) { return nameOf(instance.param); });

// On a fine screen the dialog is as large as on a plain one and shows every pixel of its own, and
// the pointer goes by these, as far as Qt tells: it rounds to units of the screen.
TEST(QtFineScreen, ShowsEveryPixel) {
  const std::pair<const char*, const char*> screens[] = {
      {"2", "*/PictureMenus:*/AboutBox:*/LightPads:*/Readings:*/ToolTips"},
      {"1.5", "*/PictureMenus:*/KeyboardAlone"}};
  for (const auto& [ratio, scripts] : screens) {
    QProcess tests;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_SCALE_FACTOR", ratio);
    tests.setProcessEnvironment(environment);
    tests.setProcessChannelMode(QProcess::MergedChannels);
    tests.start(QCoreApplication::applicationFilePath(),
                {QString("--gtest_filter=Qt/QtDialogScripts.") + scripts});
    EXPECT_TRUE(tests.waitForFinished(200000));
    const QString output = QString::fromUtf8(tests.readAllStandardOutput());
    EXPECT_EQ(tests.exitCode(), 0) << output.toStdString();
    EXPECT_TRUE(output.contains("[  PASSED  ]")) << output.toStdString();
  }
}
