// Colours of other kinds than 8-bit RGB and grey, and the formats of phones.

#include "tests/command_line/program_run.h"

static QByteArray little(uint32_t number, int bytes) {
  QByteArray text;
  for (int i = 0; i < bytes; ++i) text += static_cast<char>(number >> (8 * i));
  return text;
}

struct ColourKind {
  const char* name;
  int photometric;
  int bits;
  int sampleFormat;  // 1 whole numbers, 2 with a sign, 3 floating
  QList<uint32_t> samples;
  int red;  // in 16 bits
  int green;
  int blue;
  int tolerance;
  const char* told;
};

// 24 x 18 pixels of one colour.
static QByteArray tiffOf(const ColourKind& kind) {
  const auto planes = static_cast<uint32_t>(kind.samples.size());
  QByteArray pixels;
  for (int i = 0; i < 24 * 18; ++i) {
    for (const uint32_t sample : kind.samples) pixels += little(sample, kind.bits / 8);
  }
  constexpr uint32_t kDirectory = 8 + 8 + 8;
  constexpr uint32_t kEntries = 10;
  constexpr uint32_t kPixels = kDirectory + 2 + kEntries * 12 + 4;
  QByteArray file("II*\0", 4);
  file += little(kDirectory, 4);
  for (const int value : {kind.bits, kind.sampleFormat}) {
    for (int i = 0; i < 4; ++i) file += little(static_cast<uint32_t>(value), 2);
  }
  const uint32_t rows[kEntries][4] = {{256, 4, 1, 24},
                                      {257, 4, 1, 18},
                                      {258, 3, planes, 8},
                                      {259, 3, 1, 1},
                                      {262, 3, 1, static_cast<uint32_t>(kind.photometric)},
                                      {273, 4, 1, kPixels},
                                      {277, 3, 1, planes},
                                      {278, 4, 1, 18},
                                      {279, 4, 1, static_cast<uint32_t>(pixels.size())},
                                      {339, 3, planes, 16}};
  file += little(kEntries, 2);
  for (const auto& row : rows) {
    file += little(row[0], 2) + little(row[1], 2) + little(row[2], 4) + little(row[3], 4);
  }
  return file + little(0, 4) + pixels;
}

class Colours : public ProgramTest {
 protected:
  Colours() {
    QImage nothing(24, 18, QImage::Format_Grayscale8);
    nothing.fill(0);
    save(nothing, "nothing.png");
  }
};

TEST_F(Colours, OfOtherKindsBecomeRgbAndThatIsTold) {
  constexpr uint32_t kFifth = 0x3E4CCCCD;  // 0.2 in single precision: light, not a share of 65535
  const ColourKind kTable[] = {
      {"no ink", 5, 8, 1, {0, 0, 0, 0}, 65535, 65535, 65535, 700, "its CMYK colours become RGB"},
      {"yellow", 5, 16, 1, {0, 0, 65535, 0}, 65535, 62000, 0, 3000, "its CMYK colours become RGB"},
      {"Lab 8", 8, 8, 1, {136, 0, 0}, 32639, 32639, 32639, 300, "its Lab colours become RGB"},
      {"Lab 16", 8, 16, 2, {34900, 0, 0}, 32639, 32639, 32639, 400, "its Lab colours become RGB"},
      {"float", 2, 32, 3, {kFifth, 0, kFifth}, 31720, 0, 31720, 60, "samples of 32 bits become 16"},
      {"32", 2, 32, 1, {0x80000000, 0, 0x40000000}, 32768, 0, 16384, 1, "32 bits become 16"},
  };
  for (const ColourKind& kind : kTable) {
    SCOPED_TRACE(kind.name);
    write("in.tif", tiffOf(kind));
    const RunResult result =
        run({"apply", "in.tif", "-o", "out.png", "--mask", "nothing.png", "--seed", "7"});
    ASSERT_EQ(result.exitCode, 0) << result.errors.toStdString();
    EXPECT_TRUE(result.errors.contains(kind.told)) << result.errors.toStdString();
    const QImage image(path("out.png"));
    EXPECT_EQ(image.depth(), kind.bits == 8 ? 32 : 64);
    const QRgba64 pixel = image.pixelColor(5, 5).rgba64();
    EXPECT_NEAR(pixel.red(), kind.red, kind.tolerance);
    EXPECT_NEAR(pixel.green(), kind.green, kind.tolerance);
    EXPECT_NEAR(pixel.blue(), kind.blue, kind.tolerance);
  }
  const QImage indexed = colorPicture().convertToFormat(QImage::Format_Indexed8);
  save(indexed, "indexed.png");
  const QImage result = QImage(path("indexed.png"));
  ASSERT_EQ(result.format(), QImage::Format_Indexed8);
  const QImage rgb = apply("indexed.png", "out.png", {"--set", "radius=4"});
  EXPECT_GT(rgb.depth(), 8);
}

TEST_F(Colours, GoThroughTheFormatsOfPhones) {
  save(colorPicture(), "in.png");
  const QString unchanged = " --mask nothing.png --quiet --seed 7";
  for (const QString format : {"avif", "heic", "jxl"}) {
    SCOPED_TRACE(format.toStdString());
    const RunResult written = runShell("\"$0\" apply in.png -o out." + format + unchanged);
    if (written.errors.contains("installed without")) continue;
    ASSERT_EQ(written.exitCode, 0) << written.errors.toStdString();
    const QString back = "\"$0\" apply out." + format + " -o back.png" + unchanged;
    if (format == "jxl") {
      const RunResult refused = runShell(back);
      EXPECT_EQ(refused.exitCode, 1);
      EXPECT_TRUE(refused.errors.contains("MORVALIS_MORE_FORMATS=1 lets it be used"));
    }
    const RunResult read = runShell("MORVALIS_MORE_FORMATS=1 " + back);
    ASSERT_EQ(read.exitCode, 0) << read.errors.toStdString();
    const QImage result(path("back.png"));
    const QImage source = colorPicture();
    const int tolerance = format == "jxl" ? 0 : 60;
    for (int i = 0; i < 24 * 18; ++i) {
      const QRgb a = result.pixel(i % 24, i / 24);
      const QRgb b = source.pixel(i % 24, i / 24);
      ASSERT_LE(std::abs(qRed(a) - qRed(b)), tolerance) << i;
      ASSERT_LE(std::abs(qGreen(a) - qGreen(b)), tolerance) << i;
    }
  }
}
