// Settings as text: what is listed is taken, and what is wrong is told with what would be right.

#include <QRegularExpression>

#include "settings/setting_ranges.h"
#include "tests/command_line/program_run.h"

class Settings : public ProgramTest {
 protected:
  Settings() {
    save(colorPicture(), "in.png");
  }

  void expectRefused(const QString& assignment, const QString& part) const {
    const RunResult result = run({"apply", "in.png", "-o", "out.png", "--set", assignment});
    const std::string errors = assignment.toStdString() + "\n" + result.errors.toStdString();
    EXPECT_EQ(result.exitCode, 2) << errors;
    EXPECT_TRUE(result.errors.contains(part)) << part.toStdString() << "\n" << errors;
    EXPECT_EQ(result.errors.count('\n'), 1) << errors;
    EXPECT_FALSE(files().contains("out.png")) << errors;
  }
};

TEST_F(Settings, AreListedWithDefaultsThatAreTaken) {
  const RunResult listed = run({"settings"});
  ASSERT_EQ(listed.exitCode, 0);
  const QImage plain = apply("in.png", "plain.png");
  QStringList everyDefault;
  for (int32_t i = 0; i < kSettingRangeCount; ++i) {
    const SettingRange& row = kSettingRanges[i];
    const QRegularExpression line(QString("^%1  +%2 to %3  +(.*?)  +%4")
                                      .arg(row.name)
                                      .arg(row.minimum)
                                      .arg(row.maximum)
                                      .arg(QRegularExpression::escape(row.meaning)),
                                  QRegularExpression::MultilineOption);
    const QRegularExpressionMatch match = line.match(listed.output);
    ASSERT_TRUE(match.hasMatch()) << row.name;
    everyDefault += {"--set", QString(row.name) + "=" + match.captured(1)};
    for (int32_t value = row.minimum; row.choices != nullptr && value <= row.maximum; ++value) {
      EXPECT_TRUE(
          listed.output.contains(QString::number(value) + " " + row.choices[value - row.minimum]));
    }
  }
  EXPECT_EQ(apply("in.png", "defaults.png", everyDefault), plain);
}

TEST_F(Settings, TakeNamesAndNumbers) {
  for (int32_t i = 0; i < kSettingRangeCount; ++i) {
    const SettingRange& row = kSettingRanges[i];
    if (row.choices == nullptr) continue;
    for (int32_t value = row.minimum; value <= row.maximum; ++value) {
      if (row.offset == offsetof(EffectSettings, textureChoice) && value == kTextureChoiceFile) {
        continue;  // needs a picture
      }
      const QString name = row.choices[value - row.minimum];
      const QImage byNumber =
          apply("in.png", "number.png", {"--set", QString("%1=%2").arg(row.name).arg(value)});
      for (const QString& written : {name, name.toUpper(), QString(name).replace(' ', '-'),
                                     QString(name).replace(' ', '_')}) {
        ASSERT_EQ(byNumber,
                  apply("in.png", "name.png", {"--set", QString(row.name) + "=" + written}))
            << row.name << " " << written.toStdString();
      }
    }
  }
}

TEST_F(Settings, ReachTheRenderAndTheLastOneCounts) {
  const QImage plain = apply("in.png", "plain.png");
  const QImage lit = apply("in.png", "lit.png", {"--set", "light1Color=65535,0,0"});
  EXPECT_NE(lit, plain);
  EXPECT_EQ(lit, apply("in.png", "again.png",
                       {"--set", "light1Color=0,9,0", "--set", "light1Color=65535,0,0"}));
  EXPECT_NE(plain, apply("in.png", "dir.png", {"--set", "light1Dir=0.6,1e-3,.8"}));
  for (const char* red : {"#ff0000", "#F00"}) {
    EXPECT_EQ(lit, apply("in.png", "hex.png", {"--set", QString("light1Color=") + red})) << red;
  }
  EXPECT_EQ(apply("in.png", "grey.png", {"--set", "light1Color=#18a0ff"}),
            apply("in.png", "grey16.png", {"--set", "light1Color=6168,41120,65535"}));
}

TEST_F(Settings, AreRefusedOutsideTheirRange) {
  for (int32_t i = 0; i < kSettingRangeCount; ++i) {
    const SettingRange& row = kSettingRanges[i];
    const bool threefold = row.form == SettingForm::direction || row.form == SettingForm::color;
    const QString range = QString("%1 to %2").arg(row.minimum).arg(row.maximum);
    for (const int64_t value : {int64_t{row.minimum} - 1, int64_t{row.maximum} + 1}) {
      const QString before = QString(row.name) + (threefold ? "=0,0," : "=");
      expectRefused(before + QString::number(value), range);
    }
  }
  for (const char* value : {"", "x", "nan", "inf", "-inf", "1e1", "5.0", " 5", "5 ", "+5", "0x5",
                            "5,5", "99999999999999999999999", "1e999"}) {
    expectRefused(QString("radius=") + value, "2 to 100");
  }
  for (const char* value :
       {"", "1", "0,0", "0,0,0,0", "0,,0", "nan,0,0", "0,0,inf", "0,0,1.0001"}) {
    expectRefused(QString("light2Dir=") + value, "-1 to 1");
  }
  expectRefused("light1Color=0,0,0.5", "0 to 65535");
  for (const char* color : {"#", "#ff", "#ff00", "#ff000", "#ff00000", "#gg0000", "#-1-1-1"}) {
    expectRefused(QString("light1Color=") + color, "#RRGGBB");
  }
  expectRefused("radius=#fff", "2 to 100");
}

TEST_F(Settings, AreSuggestedByNearestName) {
  expectRefused("radus=5", "did you mean radius?");
  expectRefused("Shape=5", "did you mean shape?");
  expectRefused("radius", "NAME=VALUE");
  expectRefused("=5", "NAME=VALUE");
  expectRefused("shape=chizel", "did you mean chisel?");
  expectRefused("blendMode=scren", "did you mean screen?");
  expectRefused("seed=4", "but an option --seed");
  expectRefused("quux=4", "there is no setting \"quux\"\n");
}
