// What files say besides their pixels, by the judgement of a reader that is none of the program's
// libraries.

#include <QColorSpace>
#include <QDir>
#include <QFile>
#include <QImageReader>
#include <QProcess>
#include <QStandardPaths>

#include "tests/command_line/program_run.h"

class Metadata : public ProgramTest {
 protected:
  void SetUp() override {
    if (QStandardPaths::findExecutable("exiftool").isEmpty()) {
      GTEST_SKIP() << "exiftool is not installed";
    }
  }

  QString tool(const QStringList& arguments) const {
    QProcess process;
    process.setWorkingDirectory(path(""));
    process.start("exiftool", arguments);
    process.waitForFinished();
    return process.readAllStandardOutput().trimmed();
  }

  // The values of tags, one behind the other; "-" where one is missing.
  QStringList tagsOf(const QString& file, const QStringList& tags) const {
    QStringList arguments = {"-s3", "-f", "-n"};
    for (const QString& tag : tags) arguments += "-" + tag;
    return tool(arguments + QStringList{file}).split('\n');
  }
};

struct Kept {
  const char* from;
  const char* to;
  bool exif;
  bool iptc;
  bool resolution;
};

TEST_F(Metadata, GoesIntoEveryFormatThatHoldsIt) {
  QImage picture = colorPicture();
  picture.setColorSpace(QColorSpace::AdobeRgb);
  for (const QString format : {"png", "jpg", "tif", "webp"}) {
    const QString name = "in." + format;
    save(picture, name);
    tool({"-q", "-overwrite_original", "-EXIF:Artist=Zo", "-EXIF:LensModel=Fifty",
          "-XMP:Title=Bevel", "-IPTC:Keywords=gold", "-XResolution=150", "-YResolution=75", name});
  }
  constexpr Kept kTable[] = {
      {"png", "png", true, true, false},   {"png", "jpg", true, true, false},
      {"png", "webp", true, false, false}, {"jpg", "jpg", true, true, true},
      {"jpg", "png", true, true, true},    {"jpg", "tif", false, true, true},
      {"jpg", "webp", true, false, false}, {"tif", "tif", false, true, true},
      {"tif", "png", false, true, true},   {"webp", "jpg", true, false, false},
  };
  for (const Kept& row : kTable) {
    SCOPED_TRACE(std::string(row.from) + " to " + row.to);
    const QString output = QString("out.") + row.to;
    ASSERT_EQ(run({"apply", QString("in.") + row.from, "-o", output, "--quiet"}).exitCode, 0);
    const QStringList tags = tagsOf(output, {"EXIF:Artist", "EXIF:LensModel", "XMP:Title",
                                             "IPTC:Keywords", "ICC_Profile:ProfileDescription"});
    ASSERT_EQ(tags.size(), 5);
    EXPECT_EQ(tags[0], row.exif ? "Zo" : "-");
    EXPECT_EQ(tags[1], row.exif ? "Fifty" : "-");
    EXPECT_EQ(tags[2], "Bevel");
    EXPECT_EQ(tags[3], row.iptc ? "gold" : "-");
    EXPECT_NE(tags[4], "-");
    if (row.resolution) {
      const QImage result = QImageReader(path(output)).read();
      EXPECT_NEAR(result.dotsPerMeterX(), 5906, 2);
      EXPECT_NEAR(result.dotsPerMeterY(), 2953, 2);
    }
    ASSERT_EQ(run({"apply", QString("in.") + row.from, "-o", output, "--strip"}).exitCode, 0);
    EXPECT_EQ(tagsOf(output, {"EXIF:Artist", "XMP:Title", "IPTC:Keywords"}).join(""), "---");
  }
  // Numbers without a unit stay such, and are none of a format that has no EXIF.
  save(picture, "ratio.jpg");
  tool({"-q", "-overwrite_original", "-n", "-JFIF:all=", "-EXIF:XResolution=144",
        "-EXIF:YResolution=72", "-EXIF:ResolutionUnit=1", "ratio.jpg"});
  for (const QString output : {"out.webp", "out.avif"}) {
    apply("ratio.jpg", output, {"--mask", "none"});
    EXPECT_EQ(tagsOf(output, {"XResolution", "YResolution", "ResolutionUnit"}),
              (QStringList{"144", "72", "1"}));
  }
  apply("ratio.jpg", "out.tif", {"--mask", "none"});
  EXPECT_EQ(QImageReader(path("out.tif")).read().dotsPerMeterX(), 2835);
  // What is lost is told.
  const RunResult told = run({"apply", "in.jpg", "-o", "out.bmp"});
  EXPECT_TRUE(told.errors.contains("cannot hold its colour profile, EXIF, XMP, IPTC"))
      << told.errors.toStdString();
}

TEST_F(Metadata, StandsUprightWithoutASmallPicture) {
  save(greyPicture(), "in.jpg");
  save(greyPicture().scaled(8, 6), "small.jpg");
  tool({"-q", "-overwrite_original", "-n", "-EXIF:Orientation=6", "-EXIF:Artist=Zo",
        "-ThumbnailImage<=small.jpg", "-XResolution=150", "-YResolution=75", "in.jpg"});
  for (const QString output : {"out.jpg", "out.png", "out.webp"}) {
    const QImage result = apply("in.jpg", output);
    EXPECT_EQ(result.size(), QSize(18, 24)) << output.toStdString();
    EXPECT_EQ(tagsOf(output, {"EXIF:Orientation", "EXIF:Artist", "ThumbnailImage"}),
              QStringList({"1", "Zo", "-"}))
        << output.toStdString();
  }
}

// Width and height change places in all that is said, and nothing asks for another turn.
TEST_F(Metadata, OfTurnedPicturesFitsThem) {
  save(colorPicture(), "in.jpg");
  tool({"-q", "-overwrite_original", "-n", "-EXIF:Orientation=6", "-XMP-tiff:Orientation=6",
        "-XResolution=300", "-YResolution=150", "-ExifImageWidth=24", "-ExifImageHeight=18",
        "in.jpg"});
  for (const QString out : {"out.jpg", "out.png", "out.webp"}) {
    SCOPED_TRACE(out.toStdString());
    EXPECT_EQ(apply("in.jpg", out).size(), QSize(18, 24));
    EXPECT_EQ(tagsOf(out, {"EXIF:Orientation", "XMP:Orientation", "EXIF:XResolution",
                           "EXIF:YResolution", "ExifIFD:ExifImageWidth"}),
              (QStringList{"1", "1", "150", "300", "18"}));
  }
  // A format without a place for the resolution still says it in EXIF.
  apply("out.webp", "again.png");
  EXPECT_EQ(tagsOf("again.png", {"PNG:PixelsPerUnitX", "PNG:PixelsPerUnitY"}),
            (QStringList{"5906", "11811"}));
  // What the container has turned is not turned again by EXIF.
  QFile::copy(MORVALIS_TEST_DATA "/turned-by-container.avif", path("turned.avif"));
  EXPECT_EQ(apply("turned.avif", "upright.png", {"--mask", "none"}).size(), QSize(300, 400));

  apply("in.jpg", "bare.webp", {"--strip"});
  EXPECT_EQ(tagsOf("bare.webp", {"EXIF:all"}), QStringList{""});
}

TEST_F(Metadata, KeepsTheLanguageOfTexts) {
  const QByteArray text = QByteArray(
      "Title\0\0\0de\0Titel\0Fl\xC3\xA4"
      "che \xE2\x82\xAC",
      27);
  write("in.png", pngFile(24, 18, 2, QByteArray(24 * 18 * 3, '\x60'), pngChunk("iTXt", text)));
  apply("in.png", "out.png");
  EXPECT_EQ(findPngChunk(read("out.png"), "iTXt"), text);
}
