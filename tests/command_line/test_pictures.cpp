// What happens to pixels, and to all that a file says besides them.

#include <QColorSpace>
#include <QDir>
#include <QImageReader>

#include "hosts/substitute_host/substitute_host.h"
#include "platform/unix/program_session.h"
#include "tests/command_line/program_run.h"

static std::vector<uint8_t> bytesOf(const QImage& image, int bytesPerPixel) {
  std::vector<uint8_t> bytes;
  for (int y = 0; y < image.height(); ++y) {
    const uchar* row = image.constScanLine(y);
    bytes.insert(bytes.end(), row, row + image.width() * bytesPerPixel);
  }
  return bytes;
}

static std::vector<uint8_t> pixelsOf(QImage image) {
  image.setColorSpace(QColorSpace());
  return bytesOf(image.convertToFormat(QImage::Format_RGBA8888), 4);
}

// The effect as the module leaves it, before the selection limits it.
static std::vector<uint8_t> renderHere(const QImage& image, int planes, const HostMask& mask) {
  keepRememberedValuesInMemory();
  fixClock(7);
  openHost({}, {image.width(), image.height(), planes, bytesOf(image, planes)}, mask);
  EXPECT_EQ(repeatFilter(), kNoError);
  const std::vector<uint8_t> effect = filteredPicture().samples;
  forgetModule();
  closeHost();
  return effect;
}

class Pictures : public ProgramTest {};

TEST_F(Pictures, AreMixedByTheSelectionExactly) {
  const QImage source = colorPicture();
  QImage mask(source.size(), QImage::Format_Grayscale8);
  mask.fill(0);
  for (int y = 3; y < 15; ++y) {
    for (int x = 4; x < 20; ++x) mask.setPixel(x, y, qRgb(x * 16 - 60, x * 16 - 60, x * 16 - 60));
  }
  for (int x = 10; x < 16; ++x) mask.setPixel(x, 8, qRgb(255, 255, 255));
  const HostMask weights = bytesOf(mask, 1);
  save(source, "in.png");
  save(mask, "mask.png");
  save(mask.convertToFormat(QImage::Format_RGB888), "mask.bmp");

  const std::vector<uint8_t> effect = renderHere(source, 3, weights);
  const std::vector<uint8_t> before = bytesOf(source, 3);
  std::vector<uint8_t> expected;
  for (size_t i = 0; i < before.size(); ++i) {
    const int weight = weights[i / 3];
    const double mixed = (before[i] * (255 - weight) + effect[i] * weight) / 255.0;
    expected.push_back(static_cast<uint8_t>(mixed + 0.5));
  }
  ASSERT_NE(expected, before);
  for (const char* name : {"mask.png", "mask.bmp"}) {
    const QImage result = apply("in.png", "out.png", {"--mask", name});
    EXPECT_EQ(bytesOf(result.convertToFormat(QImage::Format_RGB888), 3), expected) << name;
  }
  const QImage everything = apply("in.png", "out.png", {"--mask", "none"});
  EXPECT_EQ(bytesOf(everything.convertToFormat(QImage::Format_RGB888), 3),
            renderHere(source, 3, {}));
}

TEST_F(Pictures, AreSelectedAsTheMaskOptionsSay) {
  save(colorPicture(), "in.png");
  QImage mask(24, 18, QImage::Format_RGB888);
  mask.fill(Qt::black);
  for (int y = 0; y < 18; ++y) {
    for (int x = 0; x < 12; ++x) mask.setPixel(x, y, qRgb(255, 0, 0));
  }
  QDir(path("")).mkdir("masks");
  save(mask, "masks/in.png");
  save(mask.scaled(12, 9), "small.png");
  const QImage source(path("in.png"));
  // Whether the pixels of a column have changed.
  const auto changed = [&](const QStringList& options, int x) {
    const QImage result = apply("in.png", "out.png", options);
    for (int y = 0; y < 18; ++y) {
      if (result.pixel(x, y) != source.pixel(x, y)) return true;
    }
    return false;
  };
  const QStringList red = {"--mask", "masks/{name}.png", "--mask-channel", "1"};
  EXPECT_TRUE(changed(red, 3));
  EXPECT_FALSE(changed(red, 14));
  EXPECT_FALSE(changed(red + QStringList{"--mask-invert"}, 3));
  EXPECT_TRUE(changed(red + QStringList{"--mask-invert"}, 20));
  EXPECT_TRUE(changed(red + QStringList{"--mask-feather", "6"}, 14));
  EXPECT_FALSE(changed(red + QStringList{"--mask-feather", "6"}, 20));
  EXPECT_TRUE(changed({"--mask", "small.png", "--mask-fit"}, 3));
  EXPECT_FALSE(changed({"--mask", "small.png", "--mask-fit"}, 20));
}

// The alpha that is kept covers once more what it selects: the effect itself is whole there.
TEST_F(Pictures, HaveNoFringeWhereTheirAlphaSelects) {
  const QImage source = colorPicture(true);
  save(source, "in.png");
  HostMask weights;
  for (int i = 0; i < 24 * 18; ++i) weights.push_back(source.constScanLine(i / 24)[i % 24 * 4 + 3]);
  const std::vector<uint8_t> effect =
      renderHere(source.convertToFormat(QImage::Format_RGB888), 3, weights);
  const std::vector<uint8_t> result = pixelsOf(apply("in.png", "out.png"));
  const std::vector<uint8_t> before = pixelsOf(source);
  for (size_t i = 0; i < weights.size(); ++i) {
    for (size_t plane = 0; plane < 3; ++plane) {
      const uint8_t expected = weights[i] != 0 ? effect[3 * i + plane] : before[4 * i + plane];
      ASSERT_EQ(result[4 * i + plane], expected) << i;
    }
  }
}

TEST_F(Pictures, StayAsTheyAreUnderAnEmptySelectionWhichIsTold) {
  save(colorPicture(), "in.png");
  QImage black(24, 18, QImage::Format_RGBA8888);
  black.fill(Qt::black);
  save(black.convertToFormat(QImage::Format_RGB888), "black.png");
  for (int i = 0; i < 9; ++i) black.setPixel(i, i, qRgba(0, 0, 0, 0));
  save(black, "shape.png");  // as an editor exports a black shape
  black.fill(Qt::transparent);
  save(black, "clear.png");
  const auto told = [this](const QString& image, const QStringList& more) {
    const RunResult result = run(QStringList{"apply", image, "-o", "out.png", "--quiet"} + more);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(QImage(path("out.png")), QImage(path(image)));
    EXPECT_LE(result.errors.count('\n'), 1);
    return result.errors;
  };
  EXPECT_TRUE(told("in.png", {"--mask", "black.png"}).contains("black.png: selects nothing"));
  EXPECT_TRUE(told("in.png", {"--mask", "shape.png"}).contains("paint the shape white"));
  EXPECT_TRUE(told("in.png", {"--mask", "clear.png"}).contains("transparent everywhere"));
  EXPECT_TRUE(told("shape.png", {"--mask", "./shape.png"}).contains("--mask alpha"));
  EXPECT_TRUE(told("clear.png", {}).contains("--mask none"));
}

TEST_F(Pictures, TellWhatTheirResultsLose) {
  const auto told = [this](const QString& image, const QString& output) {
    const RunResult result = run({"apply", image, "-o", output, "--mask", "none", "--seed", "7"});
    EXPECT_EQ(result.exitCode, 0);
    return result.errors;
  };
  save(colorPicture().convertToFormat(QImage::Format_RGBX64), "deep.png");
  EXPECT_EQ(told("deep.png", "out.png"), "");
  EXPECT_EQ(told("deep.png", "out.jpg"),
            "morvalis: warning: deep.png: its samples of 16 bits become 8\n");
  save(greyPicture(), "grey.png");
  EXPECT_EQ(told("grey.png", "out.png"), "");
  // Colours that are none of sRGB, unless a profile or the usual gamma says all the same.
  const QByteArray linear = pngChunk("gAMA", QByteArray::fromHex("000186a0"));
  const QByteArray wide = pngChunk("cICP", QByteArray::fromHex("09100001"));
  const auto withColors = [&](const QByteArray& chunks) {
    write("said.png", pngFile(24, 18, 2, QByteArray(24 * 18 * 3, '\x60'), chunks));
    EXPECT_EQ(told("said.png", "out.png"), "");
    return told("said.png", "out.webp");
  };
  EXPECT_TRUE(withColors(linear + wide).contains("cannot hold its colour space (gAMA, cICP)\n"));
  EXPECT_EQ(findPngChunk(read("out.png"), "cICP"), QByteArray::fromHex("09100001"));
  EXPECT_EQ(withColors(pngChunk("sRGB", QByteArray(1, '\0')) + linear), "");
  EXPECT_EQ(withColors(pngChunk("gAMA", QByteArray::fromHex("0000b18f"))), "");
}

TEST_F(Pictures, KeepTheirAlphaAndTheColoursUnderIt) {
  const QImage source = colorPicture(true);
  for (const QString format : {"png", "tiff"}) {
    save(source, "in." + format);
    const QImage byAlpha = apply("in." + format, "out.png");
    EXPECT_EQ(byAlpha, apply("in." + format, "again.png", {"--mask", "alpha"}));
    const std::vector<uint8_t> before = pixelsOf(source);
    const std::vector<uint8_t> after = pixelsOf(byAlpha);
    bool changed = false;
    for (size_t i = 0; i < before.size(); i += 4) {
      ASSERT_EQ(after[i + 3], before[i + 3]) << i;
      const bool same = std::equal(&after[i], &after[i + 3], &before[i]);
      ASSERT_TRUE(same || before[i + 3] != 0) << i;
      if (!same) changed = true;
    }
    EXPECT_TRUE(changed) << format.toStdString();
    EXPECT_EQ(pixelsOf(byAlpha), pixelsOf(apply("in.png", "from_png.png")));
  }
  // A channel that hides nothing stays a channel, and fits into a file without one.
  QImage opaque = source;
  for (int y = 0; y < opaque.height(); ++y) {
    for (int x = 0; x < opaque.width(); ++x) opaque.scanLine(y)[x * 4 + 3] = 255;
  }
  save(opaque, "opaque.png");
  EXPECT_TRUE(apply("opaque.png", "out.png").hasAlphaChannel());
  EXPECT_FALSE(apply("opaque.png", "out.bmp").isNull());
}

// Outside the selection to the last bit, and mixed in 16 bits where it is partial.
TEST_F(Pictures, KeepSixteenBits) {
  QImage deep(24, 18, QImage::Format_RGBA64);
  for (int i = 0; i < 24 * 18; ++i) {
    deep.setPixelColor(i % 24, i / 24,
                       QColor(QRgba64::fromRgba64(quint16(i * 151), quint16(i * 77 + 3),
                                                  quint16(65535 - i * 13), quint16(i * 31 + 9))));
  }
  QImage mask = greyPicture();
  for (int y = 0; y < 18; ++y) {
    for (int x = 0; x < 24; ++x) mask.scanLine(y)[x] = x < 8 ? 0 : x < 16 ? 100 : 255;
  }
  save(mask, "mask.png");
  for (const QImage::Format format : {QImage::Format_RGBA64, QImage::Format_RGBX64}) {
    save(deep.convertToFormat(format), "in.png");
    const QImage effect = apply("in.png", "effect.png", {"--mask", "mask.png", "--depth", "8"});
    EXPECT_LE(effect.depth(), 32);
    for (const QString output : {"out.png", "out.tif"}) {
      const QImage before = QImage(path("in.png")).convertToFormat(QImage::Format_RGBA64);
      QImage after = apply("in.png", output, {"--mask", "mask.png"});
      ASSERT_GE(after.depth(), 48) << output.toStdString();
      after = after.convertToFormat(QImage::Format_RGBA64);
      bool between = false;
      for (int i = 0; i < 24 * 18; ++i) {
        const QRgba64 a = before.pixelColor(i % 24, i / 24).rgba64();
        const QRgba64 b = after.pixelColor(i % 24, i / 24).rgba64();
        ASSERT_EQ(a.alpha(), b.alpha());
        ASSERT_TRUE(i % 24 >= 8 || a == b) << i;
        if (i % 24 >= 8 && i % 24 < 16 && b.red() % 257 != 0) between = true;
      }
      EXPECT_TRUE(between) << output.toStdString();
    }
  }
  save(colorPicture(), "in.png");
  EXPECT_GE(apply("in.png", "out.png", {"--depth", "16"}).depth(), 48);
}

TEST_F(Pictures, PassThroughEveryFormat) {
  save(colorPicture(), "in.png");
  const std::vector<uint8_t> expected = pixelsOf(apply("in.png", "out.png"));
  for (const QString format : {"tif", "tiff", "webp", "bmp", "ppm"}) {
    EXPECT_EQ(pixelsOf(apply("in.png", "out." + format)), expected) << format.toStdString();
    save(colorPicture(), "in." + format);
    EXPECT_EQ(pixelsOf(apply("in." + format, "out.png")), expected) << format.toStdString();
  }
  QImage even(200, 200, QImage::Format_RGB888);
  even.fill(Qt::gray);
  save(even, "even.png");
  apply("even.png", "even.tif", {"--set", "textureChoice=none"});
  EXPECT_LT(read("even.tif").size(), 200 * 200);  // packed
  for (const QString format : {"jpg", "JPEG"}) {
    const std::vector<uint8_t> close = pixelsOf(apply("in.png", "out." + format));
    double difference = 0;
    for (size_t i = 0; i < close.size(); ++i) difference += std::abs(close[i] - expected[i]);
    EXPECT_LT(difference / static_cast<double>(close.size()), 12) << format.toStdString();
    EXPECT_TRUE(read("out." + format).startsWith("\xFF\xD8"));
  }
  // Deeper and indexed samples come down to 8 bits of grey or RGB.
  save(colorPicture().convertToFormat(QImage::Format_RGBX64), "deep.png");
  EXPECT_EQ(pixelsOf(apply("deep.png", "out.png")), expected);
  QImage indexed = greyPicture().convertToFormat(QImage::Format_Indexed8);
  indexed.setColor(0, qRgb(255, 0, 0));
  save(indexed, "indexed.png");
  EXPECT_FALSE(apply("indexed.png", "out.png").isGrayscale());
}

TEST_F(Pictures, StayGrey) {
  const QImage grey = greyPicture();
  const std::vector<uint8_t> expected = renderHere(grey, 1, {});
  for (const QString format : {"png", "tiff", "bmp", "pgm"}) {
    save(grey, "in." + format);
    const QImage result = apply("in." + format, "out." + format);
    EXPECT_TRUE(result.depth() == 8 && result.isGrayscale()) << format.toStdString();
    EXPECT_EQ(bytesOf(result.convertToFormat(QImage::Format_Grayscale8), 1), expected)
        << format.toStdString();
  }
  save(grey.convertToFormat(QImage::Format_Grayscale16), "deep.png");
  const QImage deep = apply("deep.png", "out.png");
  EXPECT_EQ(deep.format(), QImage::Format_Grayscale16);
  EXPECT_EQ(bytesOf(deep.convertToFormat(QImage::Format_Grayscale8), 1), expected);
  save(grey, "in.jpg");
  EXPECT_EQ(apply("in.jpg", "out.jpg").format(), QImage::Format_Grayscale8);

  // Grey and alpha in, grey and alpha out.
  QByteArray samples;
  for (int i = 0; i < 24 * 18; ++i) {
    samples += static_cast<char>(i * 5);
    samples += static_cast<char>(i % 24 < 8 ? 0 : i % 24 < 12 ? 77 : 255);
  }
  write("alpha.png", pngFile(24, 18, 4, samples, pngChunk("tEXt", QByteArray("Title\0A", 7))));
  const QImage result = apply("alpha.png", "out.png");
  EXPECT_EQ(findPngChunk(read("out.png"), "IHDR")[9], 4);
  EXPECT_EQ(result.text("Title"), "A");
  int changed = 0;
  for (int i = 0; i < 24 * 18; ++i) {
    const QRgb pixel = result.pixel(i % 24, i / 24);
    ASSERT_TRUE(qIsGray(pixel) && qAlpha(pixel) == static_cast<uchar>(samples[2 * i + 1])) << i;
    const bool same = qRed(pixel) == static_cast<uchar>(samples[2 * i]);
    ASSERT_TRUE(same || qAlpha(pixel) != 0) << i;
    if (!same) ++changed;
  }
  EXPECT_GT(changed, 0);
}

TEST_F(Pictures, KeepResolutionTextAndProfiles) {
  QImage image = colorPicture();
  image.setDotsPerMeterX(5906);
  image.setDotsPerMeterY(5906);
  image.setText("Title", "Bevel");
  image.setText("Author", QString::fromUtf8("Zo\u00eb"));
  image.setColorSpace(QColorSpace::AdobeRgb);
  for (const QString format : {"png", "jpg"}) {
    save(image, "in." + format);
    const QImage result = apply("in." + format, "out." + format);
    EXPECT_NEAR(result.dotsPerMeterX(), 5906, 1) << format.toStdString();
    EXPECT_EQ(result.text("Title"), "Bevel") << format.toStdString();
    EXPECT_EQ(result.text("Author"), QString::fromUtf8("Zo\u00eb")) << format.toStdString();
    EXPECT_EQ(result.colorSpace(), QColorSpace(QColorSpace::AdobeRgb)) << format.toStdString();
  }
  for (const QString format : {"tiff", "webp"}) {
    EXPECT_EQ(apply("in.png", "out." + format).colorSpace(), QColorSpace(QColorSpace::AdobeRgb));
  }
  // Comments that are no pairs of key and value stay what they are, and as many.
  const QByteArray comments =
      QByteArray::fromHex("fffe0004") + "hi" + QByteArray::fromHex("fffe0006") + "a: b";
  save(greyPicture(), "said.jpg");
  write("said.jpg", read("said.jpg").insert(2, comments));
  apply("said.jpg", "out.jpg");
  EXPECT_TRUE(read("out.jpg").contains(comments));
  EXPECT_EQ(read("out.jpg").count("\xFF\xFE"), 2);
  EXPECT_EQ(apply("said.jpg", "out.png").text("a"), "b");
  // Byte for byte, also one that the picture library drops.
  const auto profileIn = [this](const QString& name) {
    const QByteArray chunk = findPngChunk(read(name), "iCCP");
    const QByteArray guess("\0\0\x10\0", 4);
    return chunk.isEmpty() ? chunk : qUncompress(guess + chunk.mid(chunk.indexOf('\0') + 2));
  };
  const auto withProfile = [](const QByteArray& profile) {
    return pngChunk("iCCP", QByteArray("odd\0\0", 5) + qCompress(profile).mid(4));
  };
  const QByteArray grey = profileFor("GRAY");
  const QByteArray color = profileFor("RGB ");
  write("grey.png", pngFile(24, 18, 0, QByteArray(24 * 18, '\x60'), withProfile(grey)));
  write("color.png", pngFile(24, 18, 2, QByteArray(24 * 18 * 3, '\x60'), withProfile(color)));
  write("alpha.png", pngFile(24, 18, 4, QByteArray(24 * 18 * 2, '\x60'), withProfile(grey)));
  for (const QString name : {"grey.png", "color.png", "alpha.png"}) {
    apply(name, "out.png");
    EXPECT_EQ(profileIn("out.png"), name == "color.png" ? color : grey) << name.toStdString();
  }
  apply("color.png", "out.jpg");
  EXPECT_TRUE(read("out.jpg").contains(QByteArray("ICC_PROFILE\0\1\1", 14) + color));
  apply("out.jpg", "back.png");
  EXPECT_EQ(profileIn("back.png"), color);
}

TEST_F(Pictures, AreTurnedUprightFirst) {
  QImage wide = greyPicture();
  save(wide, "plain.jpg");
  // A camera's note that the picture has to be turned a quarter to the right.
  const QByteArray note = QByteArray::fromHex(
      "ffe10022457869660000"
      "4d4d002a00000008"
      "0001"
      "011200030000000100060000"
      "00000000");
  write("turned.jpg", read("plain.jpg").insert(2, note));
  const QImage upright =
      QImageReader(path("plain.jpg")).read().transformed(QTransform().rotate(90));
  save(upright, "upright.png");
  const QImage result = apply("turned.jpg", "out.png");
  EXPECT_EQ(result.size(), QSize(18, 24));
  EXPECT_EQ(pixelsOf(result), pixelsOf(apply("upright.png", "expected.png")));
  EXPECT_FALSE(apply("turned.jpg", "out.jpg").isNull());
  // The note is kept, but for what would have it turned once more.
  EXPECT_TRUE(read("out.jpg").contains("Exif"));
  EXPECT_EQ(QImageReader(path("out.jpg")).transformation(), QImageIOHandler::TransformationNone);
}

TEST_F(Pictures, AreTheSameFromTheSameSeed) {
  save(colorPicture(), "in.png");
  const RunResult told = run({"apply", "in.png", "-o", "out.png", "--mask", "none"});
  ASSERT_EQ(told.exitCode, 0);
  ASSERT_TRUE(told.output.startsWith("seed ")) << told.output.toStdString();
  const QString seed = told.output.mid(5).trimmed();
  ASSERT_EQ(run({"apply", "in.png", "-o", "again.png", "--seed", seed}).exitCode, 0);
  EXPECT_EQ(read("out.png"), read("again.png"));
  ASSERT_EQ(run({"apply", "in.png", "-o", "other.png", "--seed", "4294967295"}).exitCode, 0);
  EXPECT_NE(read("out.png"), read("other.png"));
  // Nothing to tell where nothing is drawn by chance.
  const QStringList plain = {"apply", "in.png",        "--set", "textureChoice=none",
                             "--set", "glassiness=50", "--set", "iriColors=50",
                             "-o"};
  ASSERT_EQ(run(plain + QStringList{"out.png", "--seed", "1"}).exitCode, 0);
  const RunResult silent = run(plain + QStringList{"again.png"});
  EXPECT_EQ(silent.output + silent.errors, "");
  EXPECT_EQ(read("out.png"), read("again.png"));
}

TEST_F(Pictures, TakeAnEnvironmentAndATextureFromAnyPath) {
  save(colorPicture(), "in.png");
  QImage stripes(32, 32, QImage::Format_RGB888);
  for (int i = 0; i < 32 * 32; ++i) {
    stripes.setPixel(i % 32, i / 32, i % 8 < 4 ? qRgb(255, 128, 0) : qRgb(0, 0, 60));
  }
  save(stripes, "stripes.bmp");
  const QImage plain = apply("in.png", "plain.png", {"--set", "textureChoice=none"});
  const QStringList mirrored = {"--set", "textureChoice=none", "--set", "reflection=100",
                                "--environment"};
  const QImage chrome = apply("in.png", "chrome.png", mirrored + QStringList{"stripes.bmp"});
  const QImage pressed = apply("in.png", "pressed.png", {"--texture", "stripes.bmp"});
  EXPECT_NE(chrome, plain);
  EXPECT_NE(chrome, apply("in.png", "dull.png", mirrored.mid(0, 4)));
  EXPECT_NE(pressed, plain);

  const QString deep = QString(140, 'd') + "/" + QString(140, 'e');
  ASSERT_EQ(runShell("mkdir -p " + deep + " && cp stripes.bmp " + deep).exitCode, 0);
  EXPECT_EQ(pressed, apply("in.png", "deep.png", {"--texture", deep + "/stripes.bmp"}));
}
