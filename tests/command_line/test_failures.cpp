// Every way to fail has its exit code and one line that says what and why, and leaves no file.

#include <unistd.h>

#include <csignal>

#include <QDir>
#include <QRegularExpression>
#include <QtEndian>

#include "tests/command_line/program_run.h"

class Failures : public ProgramTest {
 protected:
  Failures() {
    save(colorPicture(), "in.png");
  }

  void expectFailure(const RunResult& result, int exitCode, const QString& part) const {
    const std::string errors = result.errors.toStdString();
    EXPECT_EQ(result.exitCode, exitCode) << errors;
    EXPECT_TRUE(result.errors.startsWith("morvalis: ")) << errors;
    EXPECT_EQ(result.errors.count('\n'), 1) << errors;
    EXPECT_TRUE(result.errors.contains(part)) << part.toStdString() << "\n" << errors;
    EXPECT_EQ(result.output, "");
    EXPECT_FALSE(files().contains("out.png"));
    EXPECT_EQ(files().filter(QRegularExpression("morvalis|out\\.")).join(" "), "");
  }

  void expectApplyFails(const QStringList& arguments, int exitCode, const QString& part) const {
    SCOPED_TRACE(arguments.join(" ").toStdString());
    expectFailure(run(QStringList{"apply"} + arguments), exitCode, part);
  }
};

TEST_F(Failures, OfThePicture) {
  const auto expectUnreadable = [this](const QString& name, const QString& part) {
    expectApplyFails({name, "-o", "out.png"}, 1, name + ": " + part);
  };
  expectUnreadable("missing.png", "there is no such file");
  QDir(path("")).mkdir("folder");
  expectUnreadable("folder", "is a folder");
  write("empty.png", {});
  expectUnreadable("empty.png", "is empty");
  write("text.png", "no picture at all\n");
  expectUnreadable("text.png", "is not a picture");
  write("odd\nname.png", {});
  expectApplyFails({"odd\nname.png", "-o", "out.png"}, 1, "odd\\x0aname.png: is empty");

  for (const QString format : {"png", "jpg", "tiff", "webp", "bmp", "ppm"}) {
    save(colorPicture().scaled(200, 150), "whole." + format);
    const QByteArray file = read("whole." + format);
    for (const int tenths : {5, 9}) {
      write("cut." + format, file.left(file.size() * tenths / 10));
      expectUnreadable("cut." + format, "is damaged or cut off");
    }
  }
  write("short.tiff", QByteArray::fromHex("49492a000800"));
  expectUnreadable("short.tiff", "is ");
  write("packed.tga", QByteArray::fromHex("00000a000000000000000000040002001800830a141e830a14"));
  expectUnreadable("packed.tga", "is damaged or cut off");
  write("runs.bmp",
        QByteArray::fromHex("424d00000000000000003a00000028000000040000000100000001000800"
                            "010000000000000000000000000000000100000000000000"
                            "ff800000"
                            "0300"));
  expectUnreadable("runs.bmp", "is damaged or cut off");
  // Whole, but for what nobody would leave out of so many rows.
  write("claims.bmp",
        QByteArray::fromHex("424d00000000000000003a00000028000000803e0000803e000001000800"
                            "010000000000000000000000000000000100000000000000"
                            "ff800000"
                            "0001"));
  expectUnreadable("claims.bmp", "is damaged or cut off");
  for (const char* device : {"/dev/zero", "/dev/null"}) expectUnreadable(device, "is a device");

  // Refused by what the header says; the samples are not there.
  QByteArray wide = pngFile(1, 1, 0, "a");
  QByteArray header = findPngChunk(wide, "IHDR");
  qToBigEndian<quint32>(32001, header.data());
  wide.replace(8, 25, pngChunk("IHDR", header));
  write("wide.png", wide);
  expectUnreadable("wide.png", "is 32001 x 1 pixels; a side may have 32000 at most");

  if (geteuid() == 0) return;  // to whom nothing is unreadable
  QFile::setPermissions(path("in.png"), {});
  expectUnreadable("in.png", "cannot be read");
}

TEST_F(Failures, OfTheSelection) {
  save(colorPicture().scaled(10, 9), "small.png");
  expectApplyFails({"in.png", "-o", "out.png", "--mask", "small.png"}, 1,
                   "small.png: is 10 x 9 pixels, but in.png is 24 x 18");
  // A camera's note that the picture has to be turned a quarter to the right.
  save(colorPicture(), "turned.jpg");
  write("turned.jpg", read("turned.jpg")
                          .insert(2, QByteArray::fromHex("ffe1002245786966000049492a0008000000"
                                                         "010012010300010000000600000000000000")));
  expectApplyFails({"turned.jpg", "-o", "out.png", "--mask", "in.png"}, 1,
                   "turned.jpg is 18 x 24 (turned as its orientation says)");
  expectApplyFails({"in.png", "-o", "out.png", "--mask", "missing.png"}, 1,
                   "missing.png: there is");
  expectApplyFails({"in.png", "-o", "out.png", "--mask", "alpha"}, 1, "in.png: has no alpha");
}

TEST_F(Failures, OfTheResult) {
  save(colorPicture(true), "clear.png");
  for (const QString name : {"out.jpg", "out.bmp", "out.ppm"}) {
    expectApplyFails({"clear.png", "-o", name}, 1, name + ": the picture has transparency");
  }
  expectApplyFails({"in.png", "-o", "out.pgm"}, 1, "out.pgm: the picture has colours");
  // Judged before anything is read.
  expectApplyFails({"missing.png", "-o", "out.xyz"}, 2, ".png, .jpg");
  expectApplyFails({"missing.png", "-o", "out"}, 2, ".tiff, .webp");
  expectApplyFails({"missing.png", "-o", "out.ICO"}, 2, ".ico files cannot be written; there are");
  const QString longName(100000, 'x');
  expectApplyFails({"missing.png", "-o", longName + ".png"}, 1, "its name is too long");
  expectApplyFails({"missing.png", "-o", longName + "/out.png"}, 1, "its name is too long");
  expectApplyFails({"", "-o", "out.png"}, 1, "\"\": there is no such file");
  // What is wrong is told, and not buried in the name.
  const RunResult buried = run({"apply", QString::fromUtf8("\u00fc") + longName, "-o", "out.png"});
  EXPECT_TRUE(buried.errors.endsWith("x: there is no such file\n"));
  EXPECT_LT(buried.errors.size(), 1000);
  expectApplyFails({"missing.png", "-o", "none/out.png"}, 1, "its folder does not exist");
  expectApplyFails({"missing.png", "-o", "/proc/out.png"}, 1, "its folder cannot be written to");
  expectApplyFails({"missing.png", "-o", "in.png/out.png"}, 1, "its folder");
  QDir(path("")).mkdir("folder.png");
  expectApplyFails({"missing.png", "-o", "folder.png"}, 1, "folder.png: is a folder");

  // No room: a limit on file sizes stands for a full disk. The old file stays.
  save(colorPicture().scaled(300, 300), "large.png");
  save(colorPicture(), "kept.bmp");
  const QByteArray kept = read("kept.bmp");
  expectFailure(runShell("ulimit -f 2; \"$0\" apply large.png -o kept.bmp --quiet"), 1,
                "kept.bmp: cannot be written: File too large");
  EXPECT_EQ(read("kept.bmp"), kept);
  EXPECT_EQ(files(), QStringList({"clear.png", "in.png", "kept.bmp", "large.png"}));

  // Their coders would make files that nobody can read.
  save(colorPicture().scaled(16385, 3), "long.bmp");
  expectApplyFails({"long.bmp", "-o", "out.avif"}, 1, "a side is longer than 16384 pixels");
  save(colorPicture().scaled(6000, 20), "thin.bmp");
  expectApplyFails({"thin.bmp", "-o", "out.heic"}, 1, "cannot make a picture of these sides");
}

TEST_F(Failures, OfEnvironmentAndTexture) {
  save(colorPicture(), "good.bmp");
  write("cut.bmp", read("good.bmp").chopped(100));
  write("text.png", "no picture at all\n");
  for (const QString option : {"--environment", "--texture"}) {
    const QStringList start = {"in.png", "-o", "out.png", option};
    expectApplyFails(start + QStringList{"missing.bmp"}, 1, "missing.bmp: there is no such file");
    expectApplyFails(start + QStringList{"text.png"}, 1, "text.png: is not a picture");
    expectApplyFails(start + QStringList{"cut.bmp"}, 1, "cut.bmp: is a damaged Windows bitmap");
  }
  expectApplyFails({"in.png", "-o", "out.png", "--set", "textureChoice=file"}, 2, "--texture");
  expectApplyFails({"in.png", "-o", "out.png", "--texture", "good.bmp", "--set", "textureChoice=2"},
                   2, "leave one of them out");
}

TEST_F(Failures, ByInterruption) {
  save(colorPicture().scaled(5000, 5000), "large.bmp");
  save(colorPicture(), "kept.bmp");
  const QStringList before = files();
  const QByteArray kept = read("kept.bmp");
  for (const int signal : {SIGINT, SIGTERM}) {
    expectFailure(runUntilSignal({"apply", "large.bmp", "-o", "kept.bmp"}, signal, 300),
                  128 + signal, "interrupted");
    EXPECT_EQ(read("kept.bmp"), kept);
    EXPECT_EQ(files(), before);
  }
}

TEST_F(Failures, OfUsage) {
  const RunResult bare = run({});
  EXPECT_EQ(bare.exitCode, 2);
  EXPECT_EQ(bare.output, "");
  EXPECT_TRUE(bare.errors.contains("Usage: morvalis") && bare.errors.contains("  gallery "));
  expectFailure(run({"frobnicate"}), 2, "there is no command frobnicate (see `morvalis --help`)");
  expectFailure(run({"preset"}), 2, "a command is missing: list, show or save");
  expectFailure(run({"preset", "show", "in.png", "b"}), 2, "\"b\" is one argument too many");
  expectFailure(run({"completion"}), 2, "SHELL is missing");
  expectApplyFails({"in.png"}, 2, "--output OUT is missing (see `morvalis apply --help`)");
  expectApplyFails({"-o", "out.png"}, 2, "IMAGE is missing");
  expectApplyFails({"in.png", "-o", "out.png", "-o", "b.png"}, 2,
                   "--output is given more than once");
  expectApplyFails({"in.png", "-o"}, 2, "--output needs a value: OUT");
  expectApplyFails({"in.png", "-o", "out.png", "--quiet=x"}, 2, "--quiet takes no value");
  expectApplyFails({"in.png", "-o", "out.png", "--last", "--preset", "gold"}, 2,
                   "--preset and --last exclude each other");
  expectApplyFails({"--", "in.png", "-o", "out.png"}, 2, "put -o before it");
  expectApplyFails({"in.png", "-o", "out.png", "--set", "radius=5", "height=20"}, 2,
                   "height=20: put --set before it");
  expectFailure(run({"preset", "save", "out.q9q", "--set", "radius=5", "height=20"}), 2,
                "height=20: put --set before it");
  for (const char* seed : {"-1", "4294967296", "x", "1.5"}) {
    expectApplyFails({"in.png", "-o", "out.png", "--seed", seed}, 2, "0 to 4294967295");
  }
}
