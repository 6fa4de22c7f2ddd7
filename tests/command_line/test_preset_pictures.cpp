// Environment and texture pictures that are no bitmaps, and presets that carry their pictures.

#include <QDir>

#include "tests/command_line/program_run.h"

class PresetPictures : public ProgramTest {
 protected:
  PresetPictures() {
    save(colorPicture(), "in.png");
    QImage sky(32, 32, QImage::Format_RGB888);
    for (int i = 0; i < 32 * 32; ++i) {
      sky.setPixel(i % 32, i / 32, i % 8 < 4 ? qRgb(255, i / 4, 0) : qRgb(0, 0, 60));
    }
    for (const char* name : {"sky.bmp", "sky.png", "sky.tif", "sky.webp"}) save(sky, name);
    save(sky.convertToFormat(QImage::Format_RGBA64), "deep.png");
  }

  RunResult savePreset(const QStringList& arguments) const {
    const RunResult result = run(QStringList{"preset", "save"} + arguments);
    EXPECT_EQ(result.exitCode, 0) << result.errors.toStdString();
    return result;
  }
};

static QStringList lookWith(const QString& picture) {
  return {"--set",         "radius=4", "--set",     "reflection=80",
          "--environment", picture,    "--texture", picture};
}

TEST_F(PresetPictures, OfAnyFormatGiveTheSameRender) {
  const QImage expected = apply("in.png", "expected.png", lookWith("sky.bmp"));
  EXPECT_NE(apply("in.png", "out.png", {"--set", "radius=4"}), expected);
  for (const char* name : {"sky.png", "sky.tif", "sky.webp", "deep.png"}) {
    EXPECT_EQ(apply("in.png", "out.png", lookWith(name)), expected) << name;
  }
}

TEST_F(PresetPictures, ThatAreNoBitmapsStandAsBitmapsBesideIt) {
  const QImage expected = apply("in.png", "expected.png", lookWith("sky.bmp"));
  QDir(path("")).mkdir("set");
  const RunResult saved = savePreset(QStringList{"set/look.q9q"} + lookWith("sky.png"));
  EXPECT_EQ(saved.errors.count("environments and textures/sky.png.bmp"), 2);
  // Nothing of the first place is needed any more.
  QFile::remove(path("sky.png"));
  ASSERT_TRUE(QDir(path("")).rename("set", "elsewhere"));
  EXPECT_EQ(apply("in.png", "out.png", {"--preset", "elsewhere/look.q9q"}), expected);

  // What lies there under the name stays, and is enough where it is the same.
  savePreset(QStringList{"elsewhere/look.q9q", "--texture", "sky.tif"});
  savePreset(QStringList{"elsewhere/look.q9q", "--texture", "sky.tif"});
  save(colorPicture(), "sky.tif");
  save(greyPicture(), "elsewhere/environments and textures/sky.tif.bmp.new.bmp");
  const RunResult refused = run({"preset", "save", "elsewhere/look.q9q", "--texture", "sky.tif"});
  EXPECT_EQ(refused.exitCode, 1);
  EXPECT_TRUE(refused.errors.contains("sky.tif.bmp: is another picture"));
  EXPECT_EQ(QDir(path("elsewhere/environments and textures")).entryList(QDir::Files),
            QStringList({"sky.png.bmp", "sky.tif.bmp", "sky.tif.bmp.new.bmp"}));
}

TEST_F(PresetPictures, GoAlongWhereThatIsWanted) {
  const QImage expected = apply("in.png", "expected.png", lookWith("sky.bmp"));
  const RunResult alone = savePreset(QStringList{"first.q9q"} + lookWith("sky.bmp"));
  EXPECT_TRUE(
      alone.errors.contains("will not find its environment picture \"sky.bmp\" and texture "
                            "picture \"sky.bmp\"; --with-pictures"))
      << alone.errors.toStdString();
  EXPECT_EQ(savePreset({"third.q9q", "--preset", "chrome"}).errors, "");
  for (const char* name : {"environments and textures", "copy", "other"})
    QDir(path("")).mkdir(name);
  const QStringList told = {"--preset", "first.q9q", "--pictures", ".", "--with-pictures"};
  EXPECT_EQ(savePreset(QStringList{"other/look.q9q"} + told).errors, "");
  EXPECT_EQ(apply("in.png", "out.png", {"--preset", "other/look.q9q"}), expected);
  QFile::rename(path("sky.bmp"), path("environments and textures/sky.bmp"));
  const RunResult saved =
      savePreset({"copy/second.q9q", "--preset", "first.q9q", "--with-pictures"});
  EXPECT_EQ(saved.errors, "");
  QDir(path("environments and textures")).removeRecursively();
  EXPECT_EQ(apply("in.png", "out.png", {"--preset", "copy/second.q9q"}), expected);
  // Those that come with the program too.
  savePreset({"copy/chrome.q9q", "--preset", "chrome", "--with-pictures"});
  EXPECT_EQ(QDir(path("copy/environments and textures")).entryList(QDir::Files).size(), 2);
  // Which are found from any folder that is told.
  EXPECT_EQ(
      run({"apply", "in.png", "--preset", "chrome", "--pictures", ".", "--quiet", "-o", "out.png"})
          .exitCode,
      0);
  EXPECT_EQ(run({"preset", "save", "-", "--with-pictures"}).exitCode, 2);
}
