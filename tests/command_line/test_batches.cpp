// Several pictures, pipes and sheets, and the help that the program gives about itself.

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <csignal>

#include "settings/setting_ranges.h"
#include "tests/command_line/program_run.h"

class Batches : public ProgramTest {
 protected:
  Batches() {
    save(colorPicture(), "a.png");
    save(greyPicture(), "b.png");
    save(colorPicture().mirrored(), "c.d.png");
    write("bad.png", "no picture\n");
    QDir(path("")).mkdir("out");
  }

  void expectUsage(const QStringList& arguments, const QString& part) const {
    const RunResult result = run(arguments);
    const std::string errors =
        arguments.join(" ").toStdString() + "\n" + result.errors.toStdString();
    EXPECT_EQ(result.exitCode, 2) << errors;
    EXPECT_EQ(result.errors.count('\n'), 1) << errors;
    EXPECT_TRUE(result.errors.contains(part)) << part.toStdString() << "\n" << errors;
  }
};

TEST_F(Batches, RenderEveryPictureAsIfItWereAlone) {
  for (const char* jobs : {"1", "3"}) {
    const RunResult result = run({"apply", "a.png", "bad.png", "b.png", "c.d.png", "-j", jobs,
                                  "--seed", "7", "-o", "out/{name}-{name}.png"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors,
              "morvalis: bad.png: is not a picture that can be read here\n"
              "morvalis: 1 of 4 pictures failed\n");
    EXPECT_EQ(QDir(path("out")).entryList(QDir::Files | QDir::Hidden),
              QStringList({"a-a.png", "b-b.png", "c.d-c.d.png"}));
    for (const QString name : {"a", "b", "c.d"}) {
      EXPECT_EQ(QImage(path("out/" + name + "-" + name + ".png")),
                apply(name + ".png", "alone.png"));
      QFile::remove(path("out/" + name + "-" + name + ".png"));
    }
  }
  // One seed for all, told once.
  const RunResult told = run({"apply", "a.png", "b.png", "-o", "out/{name}.png"});
  EXPECT_EQ(told.exitCode, 0);
  EXPECT_TRUE(told.output.startsWith("seed ") && told.output.count('\n') == 1);
  // What fails for all fails once.
  const RunResult common =
      run({"apply", "a.png", "b.png", "-o", "out/{name}.png", "--environment", "bad.png"});
  EXPECT_EQ(common.exitCode, 1);
  EXPECT_EQ(common.errors.count('\n'), 1) << common.errors.toStdString();
}

TEST_F(Batches, NeverWriteOneResultOverAnother) {
  expectUsage({"apply", "a.png", "b.png", "-o", "out/x.png"}, "{name}");
  expectUsage({"apply", "a.png", "./a.png", "-o", "out/{name}.png"}, "would both be written");
  expectUsage({"apply", "a.png", "-", "-", "-o", "out/{name}.png"}, "would both be written");
  QFile::copy(path("a.png"), path("out/b.png"));
  expectUsage({"apply", "b.png", "out/b.png", "-o", "out/../{name}.png"}, "both");
  expectUsage({"apply", "b.png", "a.png", "out/b.png", "-o", "out/{name}.png"}, "both");
  QFile::link("../a.png", path("out/a.png"));
  expectUsage({"apply", "out/a.png", "b.png", "-o", "out/../out/a.png"}, "{name}");
  save(colorPicture(), "b-lit.png");
  expectUsage({"apply", "b.png", "b-lit.png", "-o", "{name}-lit.png"}, "would replace b-lit.png");
  expectUsage({"apply", "b.png", "--mask", "{name}-lit.png", "-o", "{name}-lit.png"},
              "would replace b-lit.png");
  expectUsage({"gallery", "b.png", "--mask", "b-lit.png", "-o", "./b-lit.png"},
              "would replace b-lit.png");
  expectUsage({"apply", "a.png", "b.png", "-o", "{name}.xyz"}, ".png, .jpg");
  for (const char* jobs : {"0", "-1", "x", "257", "1.5"}) {
    expectUsage({"apply", "a.png", "-o", "x.png", "--jobs", jobs}, "1 to 256");
  }
  // {name} never stands for the picture itself; a single one may be replaced by its full name.
  const QByteArray before = read("a.png");
  expectUsage({"apply", "a.png", "b.png", "-o", "{name}.png"}, "a.png would replace it");
  expectUsage({"apply", "a.png", "-o", "out/../{name}.png"}, "a.png would replace it");
  EXPECT_EQ(read("a.png"), before);
  EXPECT_EQ(run({"apply", "a.png", "-o", "a.png", "--quiet"}).exitCode, 0);
  EXPECT_NE(read("a.png"), before);
}

TEST_F(Batches, StandBesideTheirPictures) {
  for (const char* place : {"some where", "{name}", "out/deep"}) QDir(path("")).mkpath(place);
  save(colorPicture(), "some where/my a.png");
  save(greyPicture(), "{name}/b {folder}.png");
  save(colorPicture().mirrored(), "out/deep/a.png");
  const QImage expected = apply("a.png", "expected.png");
  QFile::remove(path("expected.png"));
  const QString away = "cd out; \"$0\" apply --quiet --seed 7 ";
  const RunResult result =
      runShell(away +
               "'../some where/my a.png' \"$PWD/../{name}/b {folder}.png\" deep/a.png "
               "../a.png -j 2 -o '{folder}/{name}-lit.png'");
  EXPECT_EQ(result.exitCode, 0) << result.errors.toStdString();
  EXPECT_EQ(QImage(path("some where/my a-lit.png")), expected);
  EXPECT_EQ(QImage(path("a-lit.png")), expected);
  EXPECT_EQ(QImage(path("out/deep/a-lit.png")), apply("out/deep/a.png", "expected.png"));
  EXPECT_EQ(QImage(path("{name}/b {folder}-lit.png")), apply("b.png", "expected.png"));

  // A name alone and standard input are in the folder where the program runs.
  EXPECT_EQ(runShell(away + "- -o '{folder}/of-{name}.png' < ../a.png; cd ..; "
                            "\"$0\" apply a.png --seed 7 --quiet -o '{folder}/out/{name}.png'; "
                            "cmp out/of-stdin.png a-lit.png && cmp out/a.png a-lit.png")
                .exitCode,
            0);
  // The folder alone tells them apart, until it does not; a mask beside each.
  expectUsage({"apply", "a.png", "./b.png", "-o", "{folder}/x.png"}, "would both be written");
  expectUsage({"apply", "a.png", path("a.png"), "-o", "{folder}/{name}.x.png"}, "both be written");
  expectUsage({"apply", "out/deep/a.png", "-o", "{folder}/{name}.png"}, "would replace it");
  save(greyPicture(), "a-mask.png");
  save(greyPicture().mirrored(), "out/deep/a-mask.png");
  EXPECT_EQ(run({"apply", "a.png", "out/deep/a.png", "--mask", "{folder}/{name}-mask.png", "-o",
                 "{folder}/lit.png", "--quiet", "--seed", "7"})
                .exitCode,
            0);
  EXPECT_EQ(QImage(path("out/deep/lit.png")),
            apply("out/deep/a.png", "expected.png", {"--mask", "out/deep/a-mask.png"}));
}

TEST_F(Batches, KeepWhatIsThere) {
  const QStringList twice = {"apply",  "a.png",   "out/../a.png", "-o", "{folder}/a.png", "-j", "2",
                             "--keep", "--quiet", "--seed",       "7"};
  const QByteArray before = read("a.png");
  ASSERT_EQ(run(twice).exitCode, 0);
  EXPECT_EQ(run({"apply", "a.png", "-o", "a.png", "--keep", "--quiet", "--seed", "7"}).exitCode, 0);
  EXPECT_EQ(read("a.png"), before);
  apply("a.png", "expected.png");
  for (const char* name : {"a-2.png", "a-3.png", "a-4.png"}) {
    EXPECT_EQ(read(name), read("expected.png")) << name;
  }
  expectUsage({"apply", "a.png", "-o", "-", "--keep"}, "--keep is about files");
  // Nor what comes there while it runs: each finds a name of its own.
  const RunResult together = runShell(
      "for i in 1 2 3 4; do \"$0\" apply a.png -o out/a.png --keep --quiet & done; wait; "
      "ls out/*.png");
  EXPECT_EQ(together.output, "out/a-2.png\nout/a-3.png\nout/a-4.png\nout/a.png\n");
  // Nor links that lead nowhere.
  const RunResult linked = runShell(
      "ln -s nowhere l.png; ln -s nowhere l-2.png; \"$0\" apply a.png -o l.png --keep --quiet; "
      "readlink l.png l-2.png; ls l-3.png");
  EXPECT_EQ(linked.output, "nowhere\nnowhere\nl-3.png\n");
}

TEST_F(Batches, ChildThatIsKilledHasFailed) {
  const RunResult result = runShell(
      "mkfifo slow.png; \"$0\" apply slow.png a.png -j 2 --quiet -o '{name}-o.png' & parent=$!; "
      "until [ -e a-o.png ]; do sleep 0.1; done; "
      "kill -KILL $(cat /proc/$parent/task/$parent/children); wait $parent; echo code $?");
  EXPECT_EQ(result.output, "code 1\n");
  EXPECT_TRUE(result.errors.contains("slow.png: its process was ended by signal 9"));
  EXPECT_TRUE(result.errors.contains("1 of 2 pictures failed"));
}

// Standard error is told as without; the window stands until it is closed, or a signal comes.
TEST_F(Batches, ShowTheirFailuresInAWindow) {
  const QString start = "export QT_QPA_PLATFORM=offscreen; timeout -s KILL 3 \"$0\" apply ";
  const RunResult failed =
      runShell(start + "a.png bad.png -o 'out/{name}.png' --window --quiet; echo $?");
  EXPECT_EQ(failed.output, "137\n") << "a window is open";
  EXPECT_EQ(failed.errors.section('\n', 0, 1),
            "morvalis: bad.png: is not a picture that can be read here\n"
            "morvalis: 1 of 2 pictures failed");
  EXPECT_TRUE(QFile::exists(path("out/a.png")));
  const RunResult done = runShell(start + "a.png -o b.png --window --set light1Color=1,1,1");
  EXPECT_EQ(done.exitCode, 0) << done.errors.toStdString();
  EXPECT_TRUE(done.errors.contains("light")) << "warnings alone open none";
}

TEST_F(Batches, StopAtAnInterruptionAndLeaveNothingHalf) {
  for (const char* name : {"1.bmp", "2.bmp", "3.bmp"}) {
    save(colorPicture().scaled(4000, 4000), name);
  }
  // Which take seconds to code.
  const QStringList arguments = {"apply", "1.bmp", "2.bmp",           "3.bmp",  "-j",
                                 "2",     "-o",    "out/{name}.avif", "--quiet"};
  for (const int signal : {SIGTERM, SIGINT}) {
    const RunResult result = runUntilSignal(arguments, signal, 400);
    EXPECT_EQ(result.exitCode, 128 + signal);
    EXPECT_EQ(result.errors, "morvalis: interrupted\n");
    EXPECT_TRUE(QDir(path("out")).isEmpty(QDir::Files | QDir::Hidden));
  }
}

TEST_F(Batches, RunInPipes) {
  const QImage expected = apply("a.png", "expected.png");
  const RunResult piped = runShell("cat a.png | \"$0\" apply - -o - --seed 7 > piped.png");
  EXPECT_EQ(piped.exitCode, 0);
  EXPECT_EQ(read("piped.png"), read("expected.png"));
  // The seed is told, but not into the picture.
  const RunResult told = runShell("\"$0\" apply a.png -o - > told.png");
  EXPECT_TRUE(told.errors.startsWith("seed "));
  EXPECT_EQ(QImage(path("told.png")).size(), expected.size());
  EXPECT_EQ(runShell("\"$0\" apply - -o '{name}.png' --quiet < a.png; ls stdin.png").exitCode, 0);

  const RunResult empty = runShell("\"$0\" apply - -o x.png < /dev/null");
  EXPECT_EQ(empty.exitCode, 1);
  EXPECT_EQ(empty.errors, "morvalis: standard input: is empty\n");
  const RunResult full = runShell("\"$0\" apply a.png -o - --quiet > /dev/full");
  EXPECT_EQ(full.exitCode, 1);
  EXPECT_EQ(full.errors, "morvalis: standard output: cannot be written\n");
}

TEST_F(Batches, MakeASheetOfAFolderOfPresets) {
  QDir(path("")).mkdir("presets");
  for (const QString name : {"b round", "A chisel", "c step"}) {
    const QString shape = "shape=" + name.mid(2);
    ASSERT_EQ(run({"preset", "save", "presets/" + name + ".q9q", "--set", shape}).exitCode, 0);
  }
  // Large enough for the picture library to work in threads.
  save(colorPicture(true).scaled(900, 600), "large.png");
  const QStringList gallery = {"gallery", "large.png", "--presets", "presets", "-j",
                               "2",       "--seed",    "7",         "-o",      "sheet.png"};
  const RunResult whole = run(gallery);
  ASSERT_EQ(whole.exitCode, 0) << whole.errors.toStdString();
  const QImage sheet(path("sheet.png"));
  EXPECT_GT(sheet.width(), 2 * 400);
  const RunResult piped =
      runShell("\"$0\" " + gallery.mid(0, 8).join(" ").replace("large.png", "-") +
               " -o - < large.png > piped.png");
  EXPECT_EQ(piped.exitCode, 0) << piped.errors.toStdString();
  EXPECT_EQ(QImage(path("piped.png")), sheet);

  // One that fails is told, the others keep their places.
  write("presets/d cut.q9q", read("presets/c step.q9q").left(50));
  const RunResult part = run(gallery);
  EXPECT_EQ(part.exitCode, 1);
  EXPECT_EQ(part.errors,
            "morvalis: presets/d cut.q9q: is damaged or cut off\n"
            "morvalis: 1 of 4 presets are missing from the sheet\n");
  EXPECT_EQ(QImage(path("sheet.png")), sheet);
  QFile::remove(path("sheet.png"));

  const RunResult bad = run({"gallery", "bad.png", "--presets", "presets", "-o", "sheet.png"});
  EXPECT_EQ(bad.exitCode, 1);
  EXPECT_EQ(bad.errors, "morvalis: bad.png: is not a picture that can be read here\n");
  const RunResult none = run({"gallery", "a.png", "--presets", "out", "-o", "sheet.png"});
  EXPECT_EQ(none.errors, "morvalis: out: holds no settings files (.q9q)\n");
  write("fonts.conf", "<?xml version=\"1.0\"?><fontconfig></fontconfig>");
  const RunResult fonts = runShell("FONTCONFIG_FILE=$PWD/fonts.conf \"$0\" " + gallery.join(" "));
  EXPECT_EQ(fonts.exitCode, 1);
  EXPECT_TRUE(fonts.errors.contains("there is no font")) << fonts.errors.toStdString();
  EXPECT_FALSE(files().contains("sheet.png"));
}

TEST_F(Batches, ShowEveryPresetThatComesWithTheProgram) {
  const QString presets = QDir(MORVALIS_TEST_DATA "/../../presets").absolutePath();
  ASSERT_GE(QDir(presets).entryList({"*.q9q"}).size(), 12);
  const RunResult shown =
      run({"gallery", "a.png", "--presets", presets, "-o", "all.png", "--quiet"});
  EXPECT_EQ(shown.exitCode, 0) << shown.errors.toStdString();
}

TEST_F(Batches, SuggestTheNearestCommandAndOption) {
  expectUsage({"aply", "a.png"}, "no command aply; did you mean apply?");
  expectUsage({"preset", "sow", "x"}, "no command sow; did you mean show?");
  expectUsage({"apply", "a.png", "--ouput", "x.png"}, "no option --ouput; did you mean --output?");
  expectUsage({"apply", "a.png", "-o", "x.png", "--quite"}, "did you mean --quiet?");
  expectUsage({"apply", "a.png", "-o", "x.png", "--enviroment=x"}, "did you mean --environment?");
  expectUsage({"gallery", "a.png", "-o", "x.png", "--preset", "p"}, "did you mean --presets?");
  expectUsage({"completion", "bsh"}, "did you mean bash?");
  expectUsage({"apply", "a.png", "-o", "x.png", "--env", "x"}, "did you mean --environment?");
  expectUsage({"-V"}, "did you mean --version?");
  expectUsage({"help", "aply"}, "did you mean apply?");
  // Nothing is better than something far off.
  for (const QStringList& far : {QStringList{"frobnicate"}, QStringList{"completion", "tcsh"},
                                 QStringList{"apply", "a.png", "-o", "x.png", "-x"}}) {
    EXPECT_FALSE(run(far).errors.contains("did you mean")) << far.join(" ").toStdString();
  }
}

TEST_F(Batches, HelpInTwoWays) {
  EXPECT_EQ(run({"help"}).output, run({"--help"}).output);
  EXPECT_EQ(run({"help", "preset", "save"}).output, run({"preset", "save", "--help"}).output);
  EXPECT_TRUE(run({"help", "apply"}).output.contains("Usage: morvalis apply "));
}

TEST_F(Batches, ListSettingsForPrograms) {
  const RunResult listed = run({"settings", "--json"});
  const QJsonArray rows = QJsonDocument::fromJson(listed.output.toUtf8()).array();
  ASSERT_EQ(rows.size(), kSettingRangeCount);
  for (int32_t i = 0; i < kSettingRangeCount; ++i) {
    const SettingRange& row = kSettingRanges[i];
    const QJsonObject object = rows[i].toObject();
    EXPECT_EQ(object["name"], row.name);
    EXPECT_EQ(object["minimum"], row.minimum);
    EXPECT_EQ(object["maximum"], row.maximum);
    EXPECT_EQ(object["meaning"], row.meaning);
    const bool threefold = row.form == SettingForm::direction || row.form == SettingForm::color;
    EXPECT_EQ(object["default"].toArray().size(), threefold ? 3 : 0) << row.name;
    EXPECT_EQ(object["choices"].toArray().size(),
              row.choices == nullptr ? 0 : row.maximum - row.minimum + 1);
  }
}

TEST_F(Batches, DescribeThemselvesInFull) {
  const QString manual = run({"manual"}).output;
  QStringList parts = {"\\-\\-preset", "\\-\\-jobs", "morvalis preset save", "morvalis gallery"};
  for (int32_t i = 0; i < kSettingRangeCount; ++i) parts += kSettingRanges[i].name;
  for (const QString& part : parts) EXPECT_TRUE(manual.contains(part)) << part.toStdString();
  for (const QString& line : manual.split('\n')) {
    EXPECT_FALSE(line.startsWith('\'')) << line.toStdString();
  }

  EXPECT_FALSE(manual.contains("\n.br\n.SH"));
}
