// What the program answers to odd files, odd settings, and a system that gives it little.

#include <unistd.h>

#include <QDir>
#include <QtEndian>

#include "tests/command_line/program_run.h"

class Answers : public ProgramTest {
 protected:
  // "$0" is the program; `part` of what it says, with its exit code behind it.
  void expectSays(const QString& script, const QString& part) const {
    const RunResult result = runShell(script + "; echo \"code $?\" >&2");
    EXPECT_TRUE(result.errors.contains(part)) << script.toStdString() << "\n"
                                              << part.toStdString() << "\n"
                                              << result.errors.toStdString();
  }
};

TEST_F(Answers, OfFilesAndStreams) {
  save(colorPicture(), "in.png");
  save(colorPicture(), "in.jpg");
  const QString apply = "\"$0\" apply in.png --quiet -o out.png ";
  const QString said = "morvalis: ";
  for (const QString option : {"--preset", "--mask", "--set", "--seed", "--environment"}) {
    expectSays(apply + option + " \"\"", option + " has been given an empty value\ncode 2");
    expectSays(apply + option + "=", "\ncode 2");
  }
  expectSays("\"$0\" settings x", "too many (see `morvalis settings --help`)\ncode 2");
  expectSays("\"$0\" preset list x", "code 2");
  expectSays(apply + ">&-", "code 0");
  expectSays("exec 2>&1; " + apply + ">&- 2>&-; test -s out.png || exit; exec 2>&1", "");
  EXPECT_FALSE(QImage(path("out.png")).isNull());
  expectSays(
      "cp in.png $'n\\xff.png'; \"$0\" apply $'n\\xff.png' --quiet -o $'o\\xfe.png'; "
      "test -s $'o\\xfe.png'",
      "code 0");
  expectSays("\"$0\" apply $'a\\e[1m\\xc2\\x9b\\xff\\xc3\\xbc.png' -o out.png",
             QString::fromUtf8("a\\x1b[1m\\xc2\\x9b\\xff\u00fc.png: there is no such file\n"));
  expectSays("\"$0\" apply - -o out.png < /dev/zero", "is a device, not a picture\ncode 1");
  expectSays("truncate -s 5G large.png; \"$0\" apply large.png -o out.png",
             "large.png: is larger than 4 GB\ncode 1");
  expectSays("\"$0\" apply - -o out.png < large.png", "standard input: is larger than 4 GB");
}

TEST_F(Answers, OfASystemThatGivesLittle) {
  save(colorPicture(), "in.png");
  save(colorPicture(), "b.jpg");
  expectSays("trap '' CHLD; \"$0\" apply in.png b.jpg --quiet -o '{name}-o.png'", "code 0");
  // The address sanitizer itself wants all the room there is.
  if (runShell("ulimit -v 500000; \"$0\" --version").exitCode == 0) {
    expectSays("ulimit -v 40000; \"$0\" apply in.png --quiet -o out.png", "code 0");
    expectSays("ulimit -v 60000; \"$0\" apply b.jpg --quiet -o out.png",
               "morvalis: there is not enough memory");
    save(colorPicture().scaled(4000, 4000), "large.bmp");
    expectSays("ulimit -v 60000; \"$0\" apply large.bmp --quiet -o out.png",
               "not enough memory\ncode 1");
  }
  // No further process or thread; the limit does not hold for the superuser.
  const QString nobody =
      "chmod 777 . && setpriv --reuid=65534 --clear-groups bash -c '"
      "ulimit -u 1; exec \"$0\" apply ";
  if (geteuid() != 0 || runShell(nobody + "in.png --quiet -o c.png' \"$0\"").exitCode != 0) {
    GTEST_SKIP() << "limits on processes were not tried: they need the superuser, and a build "
                    "that others can read";
  }
  for (const QString run : {"b.jpg -o c.png", "in.png -o c.webp", "in.png -o c.tif"}) {
    expectSays(nobody + run + "' \"$0\"", "Resource temporarily unavailable\ncode 1");
  }
  expectSays(nobody + "in.png b.jpg -o {name}-o.png' \"$0\"",
             "no further process can be started\ncode 1");
}

TEST_F(Answers, OfOptionsThatChangeNothing) {
  save(colorPicture(), "in.png");
  expectSays("\"$0\" apply in.png --seed 1 -o out.jpg --lossless",
             "morvalis: warning: --lossless changes nothing in .jpg files\ncode 0");
  expectSays("\"$0\" apply in.png --seed 1 -o out.png --quality 80",
             "morvalis: warning: --quality changes nothing in .png files\ncode 0");
  expectSays("\"$0\" apply in.png -o out.png --mask none --mask-invert", "need a selection");
  // The word behind is not the value.
  expectSays("\"$0\" apply in.png -o out.png --preset= gold", "been given an empty value");
  expectSays("\"$0\" apply in.png --preset gold -o out.png | true; echo ${PIPESTATUS[0]}", "0\n");
}

TEST_F(Answers, OfColoursOnGrey) {
  save(greyPicture(), "grey.png");
  save(colorPicture(), "color.png");
  const struct {
    QString options;
    QString names;  // of what brings colours; empty: nothing
  } cases[] = {
      {"", ""},
      {"--set light1Color=#ff8000", "light1Color"},
      {"--set light1Color=#808080 --set light2Color=#0000ff", "light2Color"},
      {"--set light1Color=#ff8000 --set blendMode=tarnish", ""},
      {"--set reflection=50", "reflection"},
      {"--set reflection=50 --environment grey.bmp", ""},
      {"--set reflection=50 --environment color.bmp", "reflection"},
      {"--set tarnish=50 --set iriColors=20", "tarnishColor, iriColors"},
      {"--set tarnish=50 --set tarnishColor=#777777", ""},
      {"--set glassiness=50", "caustic"},
      {"--set glassiness=50 --set iriTableChoice=1", ""},
  };
  save(greyPicture().convertToFormat(QImage::Format_RGB888), "grey.bmp");
  save(colorPicture(), "color.bmp");
  for (const auto& one : cases) {
    SCOPED_TRACE(one.options.toStdString());
    const QString run = "\"$0\" apply %1 --seed 7 -o out.png " + one.options;
    const QString warning =
        "morvalis: warning: grey.png: is grey, and so is the result; --color "
        "lets it take the colours of ";
    const QString expected = one.names.isEmpty() ? "" : warning + one.names + "\n";
    EXPECT_EQ(runShell(run.arg("grey.png")).errors, expected);
    EXPECT_EQ(runShell(run.arg("color.png")).errors, "");
    // The warning is true: there are colours to be had, or there are none.
    EXPECT_EQ(runShell(run.arg("grey.png --color")).errors, "");
    const QImage result(path("out.png"));
    EXPECT_GE(result.depth(), 24);
    EXPECT_EQ(result.allGray(), one.names.isEmpty());
  }
  const QImage deep = greyPicture().convertToFormat(QImage::Format_Grayscale16);
  save(deep, "deep.png");
  const QImage result = apply("deep.png", "out.png", {"--color", "--set", "reflection=90"});
  EXPECT_TRUE(result.depth() >= 48 && !result.allGray());
}

TEST_F(Answers, OfDarkLights) {
  save(colorPicture(), "in.png");
  const QString apply = "\"$0\" apply in.png --seed 7 -o out.png --set ";
  expectSays(apply + "light1Color=255,128,0", "; light1Color=#ff8000 is this colour");
  expectSays("\"$0\" preset save dark.q9q --set light2Color=1,1,1", "light2Color=#010101 is");
  for (const char* light : {"light1Color=256,0,0", "light1Color=0,0,0", "light2Color=#010101"}) {
    EXPECT_EQ(runShell(apply + light).errors, "") << light;
  }
}

TEST_F(Answers, OfSettingsThatNobodyCouldSet) {
  save(colorPicture(), "in.png");
  ASSERT_EQ(run({"preset", "save", "good.q9q", "--set", "height=77"}).exitCode, 0);
  const QByteArray good = read("good.q9q");
  QByteArray wide = good;
  QByteArray number(4, '\0');
  qToBigEndian(77, number.data());
  const qsizetype at = good.indexOf(number);
  ASSERT_GE(at, 0);
  qToBigEndian(500, wide.data() + at);
  write("wide.q9q", wide);
  write("zero.q9q", QByteArray(200, '\0'));
  const struct {
    QString file;
    QString reason;
  } cases[] = {
      {"wide.q9q", "holds what is out of range: height=500 (-100 to 100)"},
      {"zero.q9q", "is of version 0, which nothing writes and holds what is out of range: shape=0"},
  };
  for (const auto& one : cases) {
    const QString with = " --preset " + one.file;
    expectSays("\"$0\" apply in.png -o out.png" + with, one.file + ": " + one.reason);
    expectSays("\"$0\" apply in.png -o out.png" + with, "code 1");
    expectSays("\"$0\" preset save new.q9q" + with, "code 1");
    expectSays("\"$0\" preset show " + one.file, "warning: " + one.file + ": " + one.reason);
    expectSays("\"$0\" preset show " + one.file, "code 0");
    expectSays("\"$0\" preset save --limit new.q9q" + with, "code 0");
    expectSays("\"$0\" apply in.png -o out.png --seed 7 --limit" + with, "code 0");
  }
  EXPECT_EQ(runShell("\"$0\" preset save --limit new.q9q --preset wide.q9q; "
                     "\"$0\" preset show new.q9q | grep ^height")
                .output.simplified()
                .left(10),
            "height 100");
}

// A message of a child takes the bar's place, which is drawn again, as wide as the terminal.
TEST_F(Answers, OnATerminal) {
  if (runShell("command -v script").exitCode != 0) GTEST_SKIP() << "there is no script(1)";
  save(colorPicture().scaled(2500, 2500), "a.bmp");
  write("bad.png", "no picture");
  const QString onTerminal = "script -qec \"stty cols %1; '$0' %2\" /dev/null < /dev/null";
  const QString batch =
      runShell(onTerminal.arg("60").arg("apply a.bmp bad.png -j 2 -o '{name}-o.bmp'")).output;
  EXPECT_TRUE(batch.contains("\r\x1b[Kmorvalis: bad.png: is not a picture")) << batch.toStdString();
  EXPECT_FALSE(batch.contains("%morvalis"));
  for (const int columns : {40, 100}) {
    const QString single =
        runShell(onTerminal.arg(columns).arg("apply a.bmp --compression 9 -o out.png")).output;
    const QStringList lines = single.split('\r').filter("%  writing");
    ASSERT_FALSE(lines.isEmpty()) << single.toStdString();
    EXPECT_EQ(QString(lines[0]).remove("\x1b[K").size(), columns - 1) << lines[0].toStdString();
  }
}

TEST_F(Answers, VerboselyOfEveryPart) {
  QImage image = greyPicture();
  image.setText("Title", "A");
  save(image, "in.png");
  const RunResult result = run({"apply", "in.png", "-o", "out.webp", "--verbose", "--seed", "7",
                                "--mask", "in.png", "--preset", "chrome"});
  const QString errors = result.errors;
  for (const char* part : {"in.png: read, ", " 24 x 18 pixels, grey, 8 bits", "1 text",
                           "selection by in.png: ", " of 432 pixels (0.",
                           "effect: rendered by preset chrome, environment /",
                           "out.webp: written, ", "; kept pixels alone; dropped texts (0."}) {
    EXPECT_TRUE(errors.contains(part)) << part << "\n" << errors.toStdString();
  }
  expectSays("\"$0\" apply in.png -o out.png --quiet --verbose", "exclude each other");
  // Of several pictures every line says which.
  save(image, "b.png");
  const RunResult several = run(
      {"apply", "in.png", "b.png", "-o", "o-{name}.png", "-j", "2", "--verbose", "--mask", "none"});
  EXPECT_EQ(several.errors.count("in.png: "), 4) << several.errors.toStdString();
  EXPECT_EQ(several.errors.count("b.png: "), 4) << several.errors.toStdString();
}
