// Settings files: what is saved is what the module saves, opens with its pictures wherever it goes,
// and says what is wrong with it.

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <cstring>

#include "persistence/settings_codec.h"
#include "settings/setting_ranges.h"
#include "settings/settings_defaults.h"
#include "tests/command_line/program_run.h"

static QByteArray encoded(const EffectSettings& settings) {
  uint8_t bytes[kLongestEncodedSettings];
  const size_t count = encodeSettings(&settings, bytes);
  return QByteArray(reinterpret_cast<const char*>(bytes), static_cast<qsizetype>(count));
}

static QByteArray numbers(const std::vector<int32_t>& items) {
  QByteArray bytes;
  for (const int32_t item : items) {
    for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(item >> shift);
  }
  return bytes;
}

class Presets : public ProgramTest {
 protected:
  Presets() {
    save(colorPicture(), "in.png");
    QImage stripes(32, 32, QImage::Format_RGB888);
    for (int i = 0; i < 32 * 32; ++i) {
      stripes.setPixel(i % 32, i / 32, i % 8 < 4 ? qRgb(255, 128, 0) : qRgb(0, 0, 60));
    }
    save(stripes, "stripes.bmp");
  }

  void savePreset(const QString& name, const QStringList& more) const {
    const RunResult result = run(QStringList{"preset", "save", name} + more);
    ASSERT_EQ(result.exitCode, 0) << result.errors.toStdString();
    EXPECT_EQ(result.output, "");
    // Pictures that stand elsewhere are all that there may be to tell.
    EXPECT_EQ(result.errors.count("\n"), result.errors.count("q9q: will not find its "))
        << name.toStdString();
  }

  QJsonObject shown(const QString& name) const {
    const RunResult result = run({"preset", "show", name, "--json"});
    EXPECT_EQ(result.exitCode, 0) << result.errors.toStdString();
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(result.output.toUtf8(), &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError) << result.output.toStdString();
    return document.object();
  }

  void expectFails(const QStringList& arguments, int exitCode, const QString& part) const {
    const RunResult result = run(arguments);
    const std::string errors =
        arguments.join(" ").toStdString() + "\n" + result.errors.toStdString();
    EXPECT_EQ(result.exitCode, exitCode) << errors;
    EXPECT_EQ(result.errors.count('\n'), 1) << errors;
    EXPECT_TRUE(result.errors.contains(part)) << part.toStdString() << "\n" << errors;
    EXPECT_FALSE(files().contains("out.png"));
  }
};

TEST_F(Presets, HoldWhatTheModuleWouldWrite) {
  EffectSettings settings;
  fillDefaultSettings(&settings);
  savePreset("plain.q9q", {});
  EXPECT_EQ(read("plain.q9q"), encoded(settings));

  QStringList assignments;
  QJsonObject expected;
  for (int32_t i = 0; i < kSettingRangeCount; ++i) {
    const SettingRange& row = kSettingRanges[i];
    auto* field = reinterpret_cast<char*>(&settings) + row.offset;
    QString value;
    if (row.form == SettingForm::direction) {
      *reinterpret_cast<Direction*>(field) = {-0.5F, 0.25F, 1};
      value = "-0.5,0.25,1";
      expected[row.name] = QJsonArray{-0.5, 0.25, 1};
    } else if (row.form == SettingForm::color) {
      *reinterpret_cast<Color16*>(field) = {65535, 7, 300};
      value = "65535,7,300";
      expected[row.name] = QJsonArray{65535, 7, 300};
    } else {
      const int32_t number = row.offset == offsetof(EffectSettings, textureChoice)  ? 2
                             : static_cast<int32_t>(row.defaults[0]) == row.maximum ? row.minimum
                                                                                    : row.maximum;
      std::memcpy(field, &number, sizeof(number));
      value = QString::number(number);
      expected[row.name] = number;
    }
    assignments += {"--set", QString("%1=%2").arg(row.name, value)};
  }
  savePreset("full.q9q", assignments);
  EXPECT_EQ(read("full.q9q"), encoded(settings));
  const QJsonObject read = shown("full.q9q");
  for (const QString& name : expected.keys()) {
    EXPECT_EQ(read[name], expected[name]) << name.toStdString();
  }
  EXPECT_EQ(read["formatVersion"], 31);
  EXPECT_EQ(read["proceduralTexture"], (QJsonArray{1, 5, 1}));
  EXPECT_EQ(read["textureWidth"], 256);
  EXPECT_EQ(read["textureName"], "");
  EXPECT_TRUE(read["constantOne"].isDouble());

  const QString table = run({"preset", "show", "full.q9q"}).output;
  for (const char* part : {"groove", "leather", "caustic", "-0.5,0.25,1", "65535,7,300"}) {
    EXPECT_TRUE(table.contains(part)) << part;
  }
  // Directions are kept in cut-off hundredths, and shown without the noise of their binary form.
  savePreset("odd.q9q", {"--preset", "full.q9q", "--set", "light1Dir=0.1,-0.42,0.7"});
  EXPECT_EQ(shown("odd.q9q")["light1Dir"], (QJsonArray{0.1, -0.41, 0.69}));
}

TEST_F(Presets, GiveThePictureThatTheirOptionsGive) {
  const QStringList look = {
      "--set",         "reflection=80", "--set",     "light1Dir=0.5,0.25,0.75",
      "--environment", "stripes.bmp",   "--texture", "stripes.bmp"};
  const QImage direct = apply("in.png", "direct.png", look);
  savePreset("look.q9q", look);
  const QStringList preset = {"--preset", "look.q9q"};
  const QStringList here = {"--pictures", "."};
  EXPECT_EQ(apply("in.png", "preset.png", preset + here), direct);

  const QStringList round = {"--set", "radius=4", "--set", "textureChoice=none"};
  savePreset("copy.q9q", preset + round);
  const QImage changed = apply("in.png", "changed.png", preset + here + round);
  EXPECT_NE(changed, direct);
  EXPECT_EQ(apply("in.png", "copy.png", QStringList{"--preset", "copy.q9q"} + here), changed);
  // The texture's picture is not needed then, and pictures of one's own need no folder.
  save(colorPicture().scaled(20, 20), "own.bmp");
  const QImage own =
      apply("in.png", "own.png", preset + round + QStringList{"--environment", "own.bmp"});
  EXPECT_NE(own, changed);
  expectFails({"apply", "in.png", "-o", "out.png", "--pictures", "."}, 2, "--preset");
}

TEST_F(Presets, OpenWithTheirPicturesElsewhere) {
  const QString written = QString::fromUtf8("Gold Raum \u00e4.bmp");
  const QString small = QString::fromUtf8("gold raum \u00e4.bmp");
  const QString usual = "environments and textures";
  QDir root(path(""));
  root.mkpath("set/" + usual + "/deep");
  QFile::rename(path("stripes.bmp"), path(written));
  const QImage direct =
      apply("in.png", "direct.png", {"--set", "reflection=80", "--environment", written});
  savePreset("set/a.q9q", {"--set", "reflection=80", "--environment", written});
  EXPECT_TRUE(read("set/a.q9q").contains("Gold Raum \xE4.bmp"));
  EXPECT_EQ(shown("set/a.q9q")["environmentName"], written);

  const QStringList preset = {"--preset", "set/a.q9q"};
  expectFails(QStringList{"apply", "in.png", "-o", "out.png"} + preset, 1,
              "names the environment picture \"" + written + "\", which is not in \"" +
                  path("set/" + usual));
  const QString beside = path("set/" + usual + "/" + written);
  QFile::rename(path(written), beside);
  EXPECT_EQ(apply("in.png", "beside.png", preset), direct);
  EXPECT_EQ(apply("in.png", "told.png", preset + QStringList{"--pictures", "set/" + usual}),
            direct);
  // The folder above counts, however deep the preset lies in it.
  QFile::copy(path("set/a.q9q"), path("set/" + usual + "/deep/b.q9q"));
  EXPECT_EQ(apply("in.png", "deep.png", {"--preset", "set/" + usual + "/deep/b.q9q"}), direct);

  // Other capitals will do, but the name in small letters comes first. What differs beyond ASCII
  // does not count.
  QFile::rename(beside, path("set/" + usual + "/") + QString::fromUtf8("GOLD raum \u00c4.BMP"));
  expectFails(QStringList{"apply", "in.png", "-o", "out.png"} + preset, 1, "is not in");
  save(colorPicture().scaled(20, 20), "set/" + usual + "/" + small);
  const QImage exact = apply("in.png", "exact.png", preset);
  EXPECT_NE(exact, direct);
  save(greyPicture().scaled(20, 20), "set/" + usual + "/" + written);
  EXPECT_EQ(apply("in.png", "again.png", preset), exact);

  // What mirrors nothing needs no environment, unless an option asks for one.
  const QStringList dull = preset + QStringList{"--pictures", "set", "--set", "reflection=0"};
  EXPECT_EQ(apply("in.png", "dull.png", dull), apply("in.png", "default.png"));
  expectFails(QStringList{"apply", "in.png", "-o", "out.png", "--environment", "none.bmp"} + dull,
              1, "none.bmp: there is no such file");
  EXPECT_EQ(run(QStringList{"apply", "in.png", "-o", "x.png", "--quiet", "--set", "reflection=1"} +
                preset + QStringList{"--pictures", "set"})
                .exitCode,
            1);

  // A name that would not be found again is not saved.
  for (const char* name : {"\u0416.bmp", "picture.dib", "none"}) {
    save(colorPicture(), "x.bmp");
    QFile::remove(path(QString::fromUtf8(name)));
    QFile::rename(path("x.bmp"), path(QString::fromUtf8(name)));
    expectFails({"preset", "save", "no.q9q", "--texture", QString::fromUtf8(name)}, 1,
                "cannot name");
  }
  EXPECT_FALSE(files().contains("no.q9q"));
}

TEST_F(Presets, ThatComeWithTheProgramAreKnownByName) {
  // The program of this build lies elsewhere than an installed one.
  const QDir own(MORVALIS_TEST_DATA "/../../presets");
  QDir(path("")).mkpath("root/bin");
  QDir(path("")).mkpath("root/share/morvalis");
  ASSERT_TRUE(QFile::copy(MORVALIS_PROGRAM, path("root/bin/morvalis")));
  ASSERT_TRUE(QFile::link(own.absolutePath(), path("root/share/morvalis/presets")));
  const QString installed = "root/bin/morvalis ";
  const QByteArray direct = run({"preset", "show", own.filePath("old copper.q9q")}).output.toUtf8();
  for (const QString name : {"old-copper", "Old_Copper", "'old copper'", "old-copper.q9q"}) {
    EXPECT_EQ(runShell(installed + "preset show " + name).output.toUtf8(), direct)
        << name.toStdString();
  }
  const RunResult applied = runShell(installed +
                                     "apply in.png -o named.png --seed 7 --quiet "
                                     "--preset old-copper");
  EXPECT_EQ(applied.exitCode, 0) << applied.errors.toStdString();
  EXPECT_EQ(QImage(path("named.png")),
            apply("in.png", "direct.png", {"--preset", own.filePath("old copper.q9q")}));
  // A file of one's own comes first, and a slip is told.
  const RunResult saved = run({"preset", "save", "old-copper", "--set", "radius=3"});
  EXPECT_EQ(saved.exitCode, 0);
  EXPECT_TRUE(saved.errors.contains("warning: old-copper: does not end in .q9q"));
  EXPECT_NE(runShell(installed + "preset show old-copper").output.toUtf8(), direct);
  const RunResult slip = runShell(installed + "preset show chrom");
  EXPECT_EQ(slip.exitCode, 1);
  EXPECT_TRUE(slip.errors.contains("did you mean chrome?")) << slip.errors.toStdString();
}

TEST_F(Presets, OfOldVersionsShowWhatReadingThemGives) {
  const std::vector<int32_t> first = {2, 3, 4, -20, 7, 5, 6, 1, 8, 9, 3, 12, 0, 10, -20, 30};
  std::vector<int32_t> items = {15};
  items.insert(items.end(), first.begin(), first.end());
  write("old.q9q", numbers(items));
  const QJsonObject old = shown("old.q9q");
  EXPECT_EQ(old["formatVersion"], 15);
  EXPECT_EQ(old["proceduralTexture"], (QJsonArray{2, 4, 3}));
  EXPECT_EQ(old["shape"], 7);
  EXPECT_EQ(old["light1Dir"], (QJsonArray{0.1, -0.2, 0.3}));
  EXPECT_EQ(old["iridescence"], 0);  // what files of before it meant
  EXPECT_EQ(old["glassiness"], 0);   // the default
  EXPECT_EQ(old["light1Color"], (QJsonArray{65535, 65535, 65535}));
  EXPECT_EQ(old["environmentName"], "");
  // Values that no option would take are shown, and rendered as they are.
  items[5] = 99;
  write("odd.q9q", numbers(items));
  EXPECT_EQ(shown("odd.q9q")["shape"], 99);
  EXPECT_TRUE(run({"preset", "show", "odd.q9q"}).output.contains("99"));
  EXPECT_GE(run({"apply", "in.png", "-o", "odd.png", "--preset", "odd.q9q"}).exitCode, 0);
}

TEST_F(Presets, ThatAreDamagedAreRefused) {
  savePreset("whole.q9q", {"--environment", "stripes.bmp"});
  const QByteArray whole = read("whole.q9q");
  QDir(path("")).mkdir("cut");
  for (qsizetype i = 0; i < whole.size(); ++i) {
    write(QString("cut/%1.q9q").arg(i), whole.left(i));
  }
  const RunResult cuts = runShell(
      "for f in cut/*.q9q; do \"$0\" preset show $f 2>&1 >/dev/null; test $? = 1 || echo BAD $f; "
      "done | grep -cE ': is (damaged or cut off|empty)$'");
  EXPECT_EQ(cuts.output.trimmed().toLongLong(), whole.size());

  const qsizetype named = whole.indexOf("stripes.bmp");
  for (const char* length : {"7fffffff", "ffffffff", "80000000", "0000ffff", "7ffffffe"}) {
    for (const qsizetype place : {named - 4, whole.size() - 5, qsizetype{4} * 38}) {
      QByteArray damaged = whole;
      damaged.replace(place, 4, QByteArray::fromHex(length));
      write("length.q9q", damaged);
      expectFails({"apply", "in.png", "-o", "out.png", "--preset", "length.q9q"}, 1, "damaged");
    }
  }
  for (const QString name : {"in.png", "stripes.bmp"}) {
    expectFails({"preset", "show", name}, 1, name + ": is not a settings file");
  }
  expectFails({"preset", "show", "missing.q9q"}, 1, "there is no such file");
  expectFails({"preset", "show", "cut"}, 1, "is a folder");
  expectFails({"preset", "save", "new.q9q", "--preset", "in.png"}, 1, "is not a settings file");
  // A relief from a picture that the file cannot name.
  write("old.q9q", numbers({15, 2, 3, 4, 20, 7, 5, 6, 1, 8, 9, 13, 12, 0, 10, -20, 30}));
  expectFails({"apply", "in.png", "-o", "out.png", "--preset", "old.q9q"}, 1, "--texture");
}

TEST_F(Presets, ReplaceAFileWholeOrNotAtAll) {
  savePreset("new.q9q", {"--set", "radius=7"});
  const QByteArray bytes = read("new.q9q");
  const QByteArray tail = QByteArray(1000, 'x') + "tail";
  write("long.q9q", bytes + tail);
  savePreset("long.q9q", {"--preset", "long.q9q", "--set", "radius=9"});
  EXPECT_EQ(read("long.q9q").size(), bytes.size() + tail.size());
  EXPECT_TRUE(read("long.q9q").endsWith(tail));
  EXPECT_EQ(shown("long.q9q")["radius"], 9);

  const QByteArray before = bytes + QByteArray(5000, 'y');
  write("kept.q9q", before);
  const QStringList list = files();
  EXPECT_EQ(runShell("ulimit -f 2; \"$0\" preset save kept.q9q").exitCode, 1);
  EXPECT_EQ(read("kept.q9q"), before);
  expectFails({"preset", "save", "none/new.q9q"}, 1, "its folder does not exist");
  expectFails({"preset", "save", "/proc/new.q9q"}, 1, "cannot be written");
  EXPECT_EQ(files(), list);
}

// Names that this system cannot spell, and more bytes than memory holds, are no reason to change or
// refuse a file.
TEST_F(Presets, KeepWhatTheyCannotUse) {
  EffectSettings settings;
  fillDefaultSettings(&settings);
  settings.light1Dir = settings.light2Dir = {0.5F, -0.25F, 1};  // whole hundredths
  const std::string longest(kPathBytes - 1, '\xE4');
  const char* const names[kPictureNames] = {"sky/sea\\\x81.bmp", longest.c_str()};
  uint8_t bytes[kLongestEncodedSettings];
  const size_t count = encodeNamedSettings(&settings, names, bytes);
  write("from.q9q", QByteArray(reinterpret_cast<char*>(bytes), static_cast<qsizetype>(count)));
  savePreset("copy.q9q", {"--preset", "from.q9q"});
  EXPECT_EQ(read("copy.q9q"), read("from.q9q"));

  ASSERT_TRUE(QFile::resize(path("from.q9q"), qint64{1} << 40));
  EXPECT_EQ(shown("from.q9q")["gloss"], 50);
}

TEST_F(Presets, ThatComeWithTheProgramAreAtHand) {
  const RunResult listed = run({"preset", "list"});
  EXPECT_EQ(listed.exitCode, 0);
  EXPECT_TRUE(listed.output.contains("gold\n"));
  EXPECT_TRUE(run({"preset", "list", "--json"}).output.startsWith("[\""));
  EXPECT_TRUE(
      run({"apply", "in.png", "-o", "x.png", "--preset", "gld"}).errors.contains("; there are "));
  QDir(path("")).mkdir("gold");  // a folder of the name is in nobody's way
  savePreset("mine.q9q", {"--preset", "gold", "--set", "radius=5"});
  EXPECT_EQ(apply("in.png", "mine.png", {"--preset", "mine.q9q"}),
            apply("in.png", "gold.png", {"--preset", "gold", "--set", "radius=5"}));
  for (const char* name : {"mine", "./mine"}) {
    EXPECT_TRUE(run({"preset", "show", name}).errors.contains("; did you mean mine.q9q?")) << name;
  }
  const QByteArray before = read("in.png");
  const RunResult slip = run({"preset", "save", "in.png"});
  EXPECT_EQ(slip.exitCode, 1);
  EXPECT_TRUE(slip.errors.contains("is no settings file"));
  EXPECT_EQ(read("in.png"), before);
  for (const QStringList& empty : {QStringList{"--preset", ""}, QStringList{"--mask", ""}}) {
    EXPECT_EQ(run(QStringList{"apply", "in.png", "-o", "x.png"} + empty).exitCode, 2);
  }
}

TEST_F(Presets, OfTheLastDialogAreTakenUp) {
  const QString start = "export XDG_STATE_HOME=$PWD/state XDG_CONFIG_HOME=$PWD/config; ";
  const QString last = start + "\"$0\" apply in.png -o last.png --seed 7 --quiet --last ";
  const RunResult none = runShell(last);
  EXPECT_EQ(none.exitCode, 1);
  EXPECT_TRUE(none.errors.contains("no dialog has been confirmed yet; `morvalis edit`"))
      << none.errors.toStdString();

  const QStringList look = {"--set", "reflection=80", "--set", "radius=6"};
  savePreset("look.q9q", look + QStringList{"--environment", "stripes.bmp"});
  QDir(path("")).mkpath("state/morvalis");
  QDir(path("")).mkpath("config/Quorrelin");
  QFile::rename(path("look.q9q"), path("state/morvalis/Morvalis cached settings"));
  write("config/Quorrelin/Morvalis.conf", "[General]\nChromeFile=" + path("stripes.bmp").toUtf8());
  EXPECT_EQ(runShell(last).exitCode, 0);
  const QImage expected =
      apply("in.png", "expected.png", look + QStringList{"--environment", "stripes.bmp"});
  EXPECT_EQ(QImage(path("last.png")), expected);
  EXPECT_EQ(runShell(last + "--set radius=20").exitCode, 0);
  EXPECT_NE(QImage(path("last.png")), expected);

  QFile::rename(path("stripes.bmp"), path("gone.bmp"));
  const RunResult gone = runShell(last);
  EXPECT_EQ(gone.exitCode, 1);
  EXPECT_TRUE(gone.errors.contains("stripes.bmp: there is no such file"));
  EXPECT_EQ(runShell(last + "--environment gone.bmp").exitCode, 0);
  const RunResult pipe =
      runShell("cd state/morvalis; rm M*; mkfifo 'Morvalis cached settings'; cd ../..; " + last);
  EXPECT_TRUE(pipe.errors.contains("is not an ordinary file")) << pipe.errors.toStdString();
}
