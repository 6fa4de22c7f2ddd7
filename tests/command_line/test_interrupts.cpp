// Ctrl-C and its relatives end a run soon wherever it is, with nothing left behind.

#include <sys/stat.h>

#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <csignal>

#include "tests/command_line/program_run.h"

constexpr int kSoon = 1000;  // milliseconds; half of it on a machine that does nothing else

class Interrupts : public ProgramTest {
 protected:
  // In a shell that leaves its process to the program, "$0" being the program; sent to it alone.
  void expectEnds(const QString& script, int signal, int milliseconds) const {
    SCOPED_TRACE(script.toStdString());
    const QStringList before = files();
    QProcess process;
    process.setWorkingDirectory(path(""));
    process.setProcessEnvironment([this] {
      QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
      environment.insert("TMPDIR", path(""));
      return environment;
    }());
    process.start("bash", {"-c", script, MORVALIS_PROGRAM});
    ASSERT_FALSE(process.waitForFinished(milliseconds)) << "too short to be interrupted";
    QElapsedTimer timer;
    timer.start();
    kill(static_cast<pid_t>(process.processId()), signal);
    EXPECT_TRUE(process.waitForFinished(20000));
    EXPECT_LT(timer.elapsed(), kSoon);
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 128 + signal);
    EXPECT_EQ(process.readAllStandardError(), "morvalis: interrupted\n");
    EXPECT_EQ(files(), before);
    EXPECT_TRUE(QDir(path("")).entryList({"morvalis-*"}, QDir::Dirs).isEmpty());
  }

  // Grey in seven passes, which readers take as a whole.
  void writeInterlaced(int side) const {
    constexpr int kPasses[7][4] = {{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4},
                                   {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}};
    QByteArray rows;
    for (const auto& pass : kPasses) {
      const int width = (side - pass[0] + pass[2] - 1) / pass[2];
      const int height = (side - pass[1] + pass[3] - 1) / pass[3];
      rows += QByteArray(qsizetype{height} * (width + 1), '\0');
    }
    const QByteArray header = pngNumber(side) + pngNumber(side) + QByteArray("\x08\0\0\0\1", 5);
    write("slow.png", "\x89PNG\r\n\x1a\n" + pngChunk("IHDR", header) +
                          pngChunk("IDAT", qCompress(rows, 1).mid(4)) + pngChunk("IEND", {}));
  }

  // What coders work longest at.
  static QImage noise(int side) {
    QImage noise(side, side, QImage::Format_RGB888);
    quint32 state = 1;
    for (int y = 0; y < side; ++y) {
      uchar* row = noise.scanLine(y);
      for (int i = 0; i < 3 * side; ++i) {
        state = state * 1664525U + 1013904223U;
        row[i] = static_cast<uchar>(state >> 24);
      }
    }
    return noise;
  }

  static QByteArray pngNumber(int number) {
    return {QByteArray(1, char(number >> 24)) + char(number >> 16) + char(number >> 8) +
            char(number)};
  }
};

TEST_F(Interrupts, WhileNothingComes) {
  save(colorPicture(), "in.png");
  ASSERT_EQ(mkfifo(path("fifo").toUtf8(), 0600), 0);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    expectEnds("exec \"$0\" apply fifo -o out.png", signal, 400);
    expectEnds("exec \"$0\" apply - -o out.png < <(sleep 5)", signal, 400);
  }
  for (const char* option : {"--mask", "--preset", "--environment"}) {
    expectEnds(
        "exec \"$0\" apply in.png -o out.png --set reflection=9 " + QString(option) + " fifo",
        SIGTERM, 400);
  }
}

TEST_F(Interrupts, InsideOfLibraries) {
  save(noise(3000), "noise.bmp");
  save(noise(3000), "b.bmp");
  writeInterlaced(12000);
  expectEnds("exec \"$0\" apply slow.png -o out.png", SIGTERM, 400);
  for (const char* ending : {"webp", "avif", "jxl"}) {
    const QString apply = "exec \"$0\" apply noise.bmp --set textureChoice=none -o out.";
    expectEnds(apply + ending, SIGINT, 800);
  }
  // Children, and the pictures of a sheet.
  expectEnds("exec \"$0\" apply noise.bmp b.bmp -j 2 -o '{name}-o.webp'", SIGHUP, 1000);
  expectEnds("exec \"$0\" gallery noise.bmp -j 2 -o sheet.png", SIGTERM, 600);
}

// Whoever kills the parent is rid of its children, too.
TEST_F(Interrupts, EndChildrenOfAKilledParent) {
  save(noise(3000), "a.bmp");
  save(noise(3000), "b.bmp");
  const QStringList before = files();
  // Coding this as AVIF takes half a minute, so that no machine is through before the end comes.
  const RunResult result = runShell(
      "\"$0\" apply a.bmp b.bmp -j 2 --set textureChoice=none -o '{name}-o.avif' & parent=$!; "
      "for i in {1..100}; do sleep 0.05; children=$(pgrep -P $parent); "
      "[ $(wc -w <<< $children) = 2 ] && break; done; sleep 0.6; kill -KILL $parent; "
      "sleep 1; for child in $children; do test -e /proc/$child/exe && echo $child lives; done");
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(files(), before);
}
