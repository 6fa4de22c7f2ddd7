// Every call of the system that writes, and requests for memory, fail once in every command that
// makes files: the old file stays or the whole new one is there, a line says why, nothing else is
// left. MORVALIS_LONG=1 refuses every single request for memory instead of some.

#include <QDir>
#include <QRegularExpression>
#include <cstdlib>

#include "tests/command_line/program_run.h"

#ifdef MORVALIS_FAILING_CALLS

struct FaultyCommand {
  const char* arguments;
  const char* result;  // file that it makes
  const char* before;  // makes the file that is there before; null: none is
};

constexpr FaultyCommand kCommands[] = {
    {"apply in.png -o out.png --seed 7 --quiet", "out.png", nullptr},
    {"apply in.png -o out.png --seed 7 --quiet", "out.png",
     "apply in.png -o out.png --seed 7 --quiet --set radius=3"},
    {"apply in.png -o out.tiff --seed 7 --quiet --mask in.png", "out.tiff", nullptr},
    {"preset save mine.q9q --set radius=20", "mine.q9q", nullptr},
    {"preset save mine.q9q --set radius=20", "mine.q9q", "preset save mine.q9q --set gloss=7"},
    {"gallery in.png -o sheet.png --presets shelf --seed 7 --quiet", "sheet.png", nullptr}};

constexpr const char* kWritingCalls[] = {"write", "mkostemp", "mkstemp", "fsync",
                                         "close", "fchmod",   "rename",  "unlink"};
constexpr int kMemoryFaults = 40;  // of each command

class Faults : public ProgramTest {
 protected:
  Faults() {
    save(colorPicture(), "in.png");
    QDir(path("")).mkdir("shelf");
    EXPECT_EQ(run({"preset", "save", "shelf/one.q9q", "--set", "radius=9"}).exitCode, 0);
  }

  RunResult runFailing(const char* arguments, const char* call, int at) const {
    return runShell(QString("export FAILING_CALL=%1 FAILING_AT=%2 FAILING_COUNT=count HOME=$PWD\n"
                            "LD_PRELOAD='%3' exec \"$0\" %4")
                        .arg(call)
                        .arg(at)
                        .arg(MORVALIS_FAILING_CALLS, arguments));
  }

  void startOver(const FaultyCommand& command) const {
    QFile::remove(path(command.result));
    if (command.before == nullptr) return;
    EXPECT_EQ(run(QString(command.before).split(' ')).exitCode, 0);
  }

  // How often the command calls it.
  int count(const FaultyCommand& command, const char* call) const {
    const RunResult result = runFailing(command.arguments, call, 0);
    EXPECT_EQ(result.exitCode, 0) << result.errors.toStdString();
    return read("count").toInt();
  }

  void expectOldOrNew(const FaultyCommand& command, const char* call, int at,
                      const QByteArray& wholeNew) const {
    SCOPED_TRACE(std::string(command.arguments) + ": " + call + " " + std::to_string(at));
    startOver(command);
    const QByteArray old = read(command.result);
    const QStringList filesBefore = files();
    const RunResult result = runFailing(command.arguments, call, at);
    const std::string errors = result.errors.toStdString();
    QFile::remove(path("count"));
    if (result.exitCode == 0) {
      EXPECT_EQ(read(command.result), wholeNew);
      QFile::remove(path(command.result));
    } else {
      EXPECT_EQ(result.exitCode, 1) << errors;
      // The program's own line, or the filter's; libraries may have complained before.
      EXPECT_TRUE(result.errors.contains("morvalis: ") ||
                  result.errors.startsWith("Not Enough Memory: "))
          << errors;
      EXPECT_EQ(read(command.result), old) << errors;
    }
    QStringList filesAfter = files();
    // Nobody else could remove it either.
    if (QString(call) == "unlink") filesAfter = filesAfter.filter(QRegularExpression("^[^.]"));
    for (const QString& file : filesAfter) {
      EXPECT_TRUE(filesBefore.contains(file)) << file.toStdString() << " is left";
    }
  }

  QByteArray wholeResult(const FaultyCommand& command) const {
    startOver(command);
    EXPECT_EQ(run(QString(command.arguments).split(' ')).exitCode, 0);
    const QByteArray whole = read(command.result);
    EXPECT_FALSE(whole.isEmpty());
    return whole;
  }
};

TEST_F(Faults, OfCallsThatWrite) {
  int faults = 0;
  for (const FaultyCommand& command : kCommands) {
    const QByteArray wholeNew = wholeResult(command);
    for (const char* call : kWritingCalls) {
      startOver(command);
      const int calls = count(command, call);
      for (int at = 1; at <= calls && !HasFailure(); ++at, ++faults) {
        expectOldOrNew(command, call, at, wholeNew);
      }
    }
  }
  // A file that standard output is sent into is told of, too.
  const RunResult sent = runFailing("apply in.png -o - --quiet > sent.png", "fsync", 1);
  EXPECT_EQ(sent.exitCode, 1);
  EXPECT_EQ(sent.errors, "morvalis: standard output: cannot be written\n");
  std::printf("%d faults\n", faults);
  EXPECT_GT(faults, 60);
}

TEST_F(Faults, OfMemory) {
  int faults = 0;
  for (const FaultyCommand& command : kCommands) {
    const QByteArray wholeNew = wholeResult(command);
    startOver(command);
    const int calls = count(command, "malloc");
    const int step = std::getenv("MORVALIS_LONG") != nullptr ? 1 : calls / kMemoryFaults + 1;
    for (int at = 1; at <= calls && !HasFailure(); at += step, ++faults) {
      expectOldOrNew(command, "malloc", at, wholeNew);
    }
  }
  std::printf("%d faults\n", faults);
}

#endif
