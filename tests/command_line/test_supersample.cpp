// Rendering larger than the picture.

#include "tests/command_line/program_run.h"

constexpr int kTimes = 4;

class Supersample : public ProgramTest {
 protected:
  // A slope, of which the picture's own size would show steps.
  Supersample() {
    save(colorPicture(), "in.png");
    save(colorPicture().scaled(24 * kTimes, 18 * kTimes), "large.png");
    QImage mask(24 * kTimes, 18 * kTimes, QImage::Format_Grayscale8);
    mask.fill(0);
    for (int y = 8; y < 64; ++y) {
      for (int x = 10 + y / 3; x < 50 + y / 3; ++x) mask.setPixel(x, y, qRgb(255, 255, 255));
    }
    save(mask, "mask.png");
    save(mask.scaled(24, 18), "small.png");
  }
};

// The sum over all small pixels of a large one.
static int sumAt(const QImage& large, int x, int y, int plane) {
  int sum = 0;
  for (int i = 0; i < kTimes * kTimes; ++i) {
    const QRgb pixel = large.pixel(x * kTimes + i % kTimes, y * kTimes + i / kTimes);
    sum += plane == 0 ? qRed(pixel) : plane == 1 ? qGreen(pixel) : qBlue(pixel);
  }
  return sum;
}

TEST_F(Supersample, IsTheMeanOfALargeRender) {
  const QStringList look = {"--mask", "mask.png", "--set", "textureChoice=none", "--set"};
  const QImage large = apply("large.png", "out.png", look + QStringList{"radius=20"});
  const QImage result =
      apply("in.png", "out.png", look + QStringList{"radius=5", "--supersample", "4"});
  const QImage source(path("in.png"));
  ASSERT_EQ(result.size(), source.size());
  int changed = 0;
  for (int i = 0; i < 24 * 18; ++i) {
    const int x = i % 24;
    const int y = i / 24;
    const QRgb pixel = result.pixel(x, y);
    const int samples[3] = {qRed(pixel), qGreen(pixel), qBlue(pixel)};
    for (int plane = 0; plane < 3; ++plane) {
      const int mean = (sumAt(large, x, y, plane) + kTimes * kTimes / 2) / (kTimes * kTimes);
      ASSERT_EQ(samples[plane], mean) << x << "," << y;
    }
    if (pixel != source.pixel(x, y)) ++changed;
  }
  EXPECT_GT(changed, 100);
  EXPECT_LT(changed, 24 * 18 - 100);

  // In 16 bits what is not selected keeps the last of them.
  QImage deep = colorPicture().convertToFormat(QImage::Format_RGBX64);
  for (int i = 0; i < 24 * 18; ++i) {
    deep.setPixelColor(i % 24, i / 24, QColor::fromRgba64(1000 + i, 40000 + i, 65535 - i));
  }
  save(deep, "deep.png");
  const QImage kept = apply("deep.png", "kept.png", {"--mask", "mask.png", "--supersample", "4"});
  EXPECT_EQ(kept.pixelColor(0, 0).rgba64(), deep.pixelColor(0, 0).rgba64());
  EXPECT_EQ(kept.pixelColor(23, 17).rgba64(), deep.pixelColor(23, 17).rgba64());
  EXPECT_NE(kept.pixelColor(10, 8).rgba64(), deep.pixelColor(10, 8).rgba64());
}

TEST_F(Supersample, NeedsAMaskDrawnForIt) {
  struct Refused {
    QStringList options;
    int exitCode;
    const char* part;
  };
  const Refused kTable[] = {
      {{"--mask", "small.png"}, 1, "small.png: is 24 x 18 pixels; for --supersample 4"},
      {{"--mask", "small.png", "--mask-fit"}, 2, "without --mask-fit"},
      {{"--mask", "none"}, 2, "add --mask FILE"},
      {{}, 2, "add --mask FILE"},
      {{"--mask", "mask.png", "--set", "radius=38"}, 2, "a radius of 37 at most; this one is 38"},
  };
  for (const Refused& row : kTable) {
    const RunResult result =
        run(QStringList{"apply", "in.png", "-o", "out.png", "--supersample", "4"} + row.options);
    EXPECT_EQ(result.exitCode, row.exitCode) << row.part;
    EXPECT_TRUE(result.errors.contains(row.part)) << result.errors.toStdString();
  }
  EXPECT_EQ(run({"apply", "in.png", "-o", "out.png", "--supersample", "3"}).exitCode, 2);
}
