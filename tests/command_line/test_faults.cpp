// Every call of the system that writes, and requests for memory, fail once in every command that
// makes files: the old file stays or the whole new one is there, a line says why, nothing else is
// left. MORVALIS_LONG=1 refuses every single request for memory instead of some.

#include <QDir>
#include <QDirIterator>
#include <QImage>
#include <cstdlib>
#include <map>
#include <set>

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
    {"gallery in.png -o sheet.png --presets shelf --seed 7 --quiet", "sheet.png", nullptr},
    {"edit in.png -o out.png --seed 7 --set radius=20", "out.png",
     "edit in.png -o out.png --seed 7 --set radius=3"}};

constexpr const char* kWritingCalls[] = {"write", "mkostemp", "mkstemp", "fsync",
                                         "close", "fchmod",   "rename",  "unlink"};
constexpr int kMemoryFaults = 40;  // of each command
// What a dialog's OK leaves for the next one; the paths beside it are Qt's to write, one by one.
constexpr char kKept[] = ".local/state/morvalis/Morvalis cached settings";
constexpr char kPaths[] = ".config/Quorrelin/Morvalis.conf";

static bool opensWindow(const FaultyCommand& command) {
  return QString(command.arguments).startsWith("edit");
}

// Where the library of fonts has no memory it goes on with what it has.
static bool mayTakeAnotherFont(const FaultyCommand& command, const QString& call) {
  return QString(command.arguments).startsWith("gallery") && call == "malloc";
}

// The calls that are to fail. With a window the first two and the last are the settings' and the
// picture's own, between them Qt writes the paths, one by one; before it Qt closes many files, and
// it waits half a minute for a lock that it could not remove.
static std::set<int> placesOf(const FaultyCommand& command, const QString& call, int calls) {
  constexpr int kClosesFromSettingsOn = 12;
  if (!opensWindow(command)) {
    std::set<int> all;
    for (int at = 1; at <= calls; ++at) all.insert(at);
    return all;
  }
  if (call == "close") return {calls - kClosesFromSettingsOn, calls};
  if (call == "unlink" || calls == 1) return {1};
  return calls == 0 ? std::set<int>() : std::set<int>{1, 2, calls};
}

class Faults : public ProgramTest {
 protected:
  using Files = std::map<QString, QByteArray>;

  Faults() {
    save(colorPicture(), "in.png");
    QDir(path("")).mkdir("shelf");
    EXPECT_EQ(run({"preset", "save", "shelf/one.q9q", "--set", "radius=9"}).exitCode, 0);
  }

  RunResult runFailing(const char* arguments, const char* call, int at) const {
    const bool window = QString(arguments).startsWith("edit");
    return runShell(
        QString("export FAILING_CALL=%1 FAILING_AT=%2 FAILING_COUNT=count HOME=$PWD\n"
                "export QT_QPA_PLATFORM=offscreen; unset XDG_STATE_HOME XDG_CONFIG_HOME\n"
                "LD_PRELOAD='%3 %5' exec \"$0\" %4")
            .arg(call)
            .arg(at)
            .arg(MORVALIS_FAILING_CALLS, arguments, window ? MORVALIS_PRESSING_USER : ""));
  }

  // The result of a command and what it keeps, where those are there already; the same of a command
  // that is null.
  Files filesAfter(const char* arguments, const char* result, const Files& old) const {
    putBack(result, old);
    Files all;
    if (arguments != nullptr) {
      const RunResult made = runFailing(arguments, "none", 0);
      EXPECT_EQ(made.exitCode, 0) << made.errors.toStdString();
    }
    for (const char* name : {result, kKept, kPaths}) {
      if (QFile::exists(path(name))) all[name] = read(name);
    }
    return all;
  }

  void clear(const char* result) const {
    QFile::remove(path(result));
    QFile::remove(path("count"));
    for (const char* kept : {".local", ".config"}) QDir(path(kept)).removeRecursively();
  }

  void putBack(const char* result, const Files& old) const {
    clear(result);
    for (const auto& [name, bytes] : old) {
      QDir().mkpath(QFileInfo(path(name)).path());
      QFile file(path(name));
      EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }
  }

  // How often the command calls it.
  int count(const FaultyCommand& command, const char* call) const {
    const RunResult result = runFailing(command.arguments, call, 0);
    EXPECT_EQ(result.exitCode, 0) << result.errors.toStdString();
    return read("count").toInt();
  }

  QStringList allFiles() const {
    QStringList all;
    QDirIterator each(path(""), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (each.hasNext()) all << each.next();
    return all;
  }

  void expectOldOrNew(const FaultyCommand& command, const char* call, int at, const Files& old,
                      const Files& wholeNew) const {
    SCOPED_TRACE(std::string(command.arguments) + ": " + call + " " + std::to_string(at));
    putBack(command.result, old);
    QStringList expected = allFiles();
    const RunResult result = runFailing(command.arguments, call, at);
    const std::string errors = result.errors.toStdString();
    const int reached = read("count").toInt();
    QFile::remove(path("count"));
    const auto before = old.find(command.result);
    if (result.exitCode == 0) {
      EXPECT_TRUE(!opensWindow(command) || (at >= 1 && reached >= at)) << "nothing has failed";
      if (mayTakeAnotherFont(command, call)) {
        EXPECT_FALSE(QImage(path(command.result)).isNull());
      } else {
        EXPECT_EQ(read(command.result), wholeNew.at(command.result));
      }
    } else {
      EXPECT_EQ(result.exitCode, 1) << errors;
      // The program's own line, or the filter's; libraries may have complained before.
      EXPECT_TRUE(result.errors.contains("morvalis: ") ||
                  result.errors.startsWith("Not Enough Memory: "))
          << errors;
      EXPECT_EQ(read(command.result), before == old.end() ? QByteArray() : before->second)
          << errors;
    }
    const auto was = old.find(kKept);
    const auto whole = wholeNew.find(kKept);
    const bool isOld = read(kKept) == (was == old.end() ? QByteArray() : was->second);
    EXPECT_TRUE(isOld || (whole != wholeNew.end() && read(kKept) == whole->second)) << errors;
    for (const auto& [name, bytes] : wholeNew) expected << path(name);
    for (const QString& file : allFiles()) {
      // Nobody else could remove a draft, or a lock, either.
      const QString last = QFileInfo(file).fileName();
      if (QString(call) == "unlink" && (last.startsWith('.') || last.endsWith(".lock"))) continue;
      EXPECT_TRUE(expected.contains(file)) << file.toStdString() << " is left";
    }
  }
};

TEST_F(Faults, OfCallsThatWrite) {
  int faults = 0;
  for (const FaultyCommand& command : kCommands) {
    const Files old = filesAfter(command.before, command.result, {});
    const Files wholeNew = filesAfter(command.arguments, command.result, old);
    for (const char* call : kWritingCalls) {
      putBack(command.result, old);
      const int calls = count(command, call);
      for (const int at : placesOf(command, call, calls)) {
        if (!HasFailure()) expectOldOrNew(command, call, at, old, wholeNew);
        ++faults;
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
    if (opensWindow(command)) continue;  // Qt ends a program that has no memory
    const Files old = filesAfter(command.before, command.result, {});
    const Files wholeNew = filesAfter(command.arguments, command.result, old);
    putBack(command.result, old);
    const int calls = count(command, "malloc");
    const int step = std::getenv("MORVALIS_LONG") != nullptr ? 1 : calls / kMemoryFaults + 1;
    for (int at = 1; at <= calls && !HasFailure(); at += step, ++faults) {
      expectOldOrNew(command, "malloc", at, old, wholeNew);
    }
  }
  std::printf("%d faults\n", faults);
}

TEST_F(Faults, OfALibraryThatNeverComesBack) {
  const QStringList before = files();
  const RunResult result = runShell("export LD_PRELOAD='" MORVALIS_STANDING_STILL
                                    "'\nexec \"$0\" apply in.png -o out.webp --quiet");
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.errors,
            "morvalis: a library for picture files has come to a standstill; "
            "memory or threads may be short\n");
  EXPECT_EQ(files(), before);
}

#endif
