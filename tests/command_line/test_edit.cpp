// The commands that open windows, from outside; tests/desktop/edit_test.cpp plays their user.

#include <QFile>
#include <QImageReader>
#include <QProcess>
#include <QStandardPaths>
#include <csignal>

#include "tests/command_line/program_run.h"

class EditProgram : public ProgramTest {
 protected:
  EditProgram() {
    save(colorPicture(), "in.png");
  }

  void expectFailure(const RunResult& result, int exitCode, const QString& part) const {
    EXPECT_EQ(result.exitCode, exitCode) << result.errors.toStdString();
    EXPECT_EQ(result.output, "");
    EXPECT_TRUE(result.errors.startsWith("morvalis: ")) << result.errors.toStdString();
    EXPECT_TRUE(result.errors.contains(part)) << result.errors.toStdString();
    EXPECT_EQ(result.errors.count('\n'), 1) << result.errors.toStdString();
    EXPECT_EQ(files(), QStringList("in.png"));
  }
};

TEST_F(EditProgram, SaysWhyItOpensNoWindow) {
  const QString noScreen = "unset DISPLAY WAYLAND_DISPLAY QT_QPA_PLATFORM; ";
  for (const QString command : {"edit in.png", "edit", "about"}) {
    SCOPED_TRACE(command.toStdString());
    const QString run = "\"$0\" " + command;
    expectFailure(runShell(noScreen + run), 1, "neither DISPLAY nor WAYLAND_DISPLAY is set");
    expectFailure(runShell(noScreen + "DISPLAY=:9876 " + run), 1, "\":9876\" cannot be reached");
    expectFailure(runShell(noScreen + "QT_QPA_PLATFORM=paper " + run), 1, "\"paper\"");
  }
}

TEST_F(EditProgram, KeepsFilesOnly) {
  expectFailure(runShell("QT_QPA_PLATFORM=offscreen \"$0\" edit in.png --keep -o -"), 2,
                "--keep is about files");
}

TEST_F(EditProgram, EndsByInterruption) {
  for (const int signal : {SIGINT, SIGTERM}) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const RunResult result = runUntilSignal({"edit", "in.png"}, signal, 1500);
    // The window that tells of a failure; standard error has been told before.
    const RunResult failed = runUntilSignal({"edit", "missing.png"}, signal, 1500);
    qunsetenv("QT_QPA_PLATFORM");
    expectFailure(result, 128 + signal, "interrupted");
    expectFailure(failed, 128 + signal, "missing.png: there is no such file");
  }
}

// Value of a key in the desktop file; the keys differ in more than their ends.
static QString valueOf(const QString& file, const QString& key) {
  const qsizetype start = file.indexOf("\n" + key + "=");
  EXPECT_GE(start, 0) << key.toStdString();
  const qsizetype value = start + key.size() + 2;
  return file.mid(value, file.indexOf('\n', value) - value);
}

TEST_F(EditProgram, IsDescribedForTheDesktop) {
  QFile source(MORVALIS_DESKTOP_FILE);
  ASSERT_TRUE(source.open(QIODevice::ReadOnly));
  const QString file = source.readAll();
  EXPECT_EQ(valueOf(file, "Exec"), "morvalis edit --keep %f");
  const QList<QByteArray> readable = QImageReader::supportedMimeTypes();
  for (const QString& type : valueOf(file, "MimeType").split(';', Qt::SkipEmptyParts)) {
    EXPECT_TRUE(readable.contains(type.toLatin1())) << type.toStdString();
  }
  for (const int side : {16, 32, 48, 128, 256}) {
    const QString icon =
        QString("%1/%2x%2/apps/%3.png").arg(MORVALIS_ICONS).arg(side).arg(valueOf(file, "Icon"));
    EXPECT_EQ(QImage(icon).size(), QSize(side, side)) << icon.toStdString();
  }
  if (QStandardPaths::findExecutable("desktop-file-validate").isEmpty()) {
    GTEST_SKIP() << "desktop-file-validate is not installed";
  }
  QProcess validator;
  validator.start("desktop-file-validate", {MORVALIS_DESKTOP_FILE});
  validator.waitForFinished();
  EXPECT_EQ(validator.exitCode(), 0) << validator.readAllStandardOutput().toStdString();
}
