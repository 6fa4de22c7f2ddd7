// Files of several pictures: animations, pages of documents.

#include <QBuffer>
#include <QDataStream>
#include <QImageReader>

#include "tests/command_line/program_run.h"

constexpr int kWidth = 24;
constexpr int kHeight = 18;
constexpr int kFrames = 3;

static QByteArray little(int number, int bytes) {
  QByteArray text;
  for (int i = 0; i < bytes; ++i) text += static_cast<char>(number >> (8 * i));
  return text;
}

static QByteArray greys(int frame) {
  QByteArray samples;
  for (int i = 0; i < kWidth * kHeight; ++i) samples += static_cast<char>((i * (frame + 1)) % 128);
  return samples;
}

// Frames of 128 greys, each standing for its own time and shown 4 times. The codes stay at eight
// bits, since they begin anew before the ninth is needed.
static QByteArray animatedGif(const QList<int>& hundredths) {
  QByteArray file = "GIF89a" + little(kWidth, 2) + little(kHeight, 2) + QByteArray("\xF6\0\0", 3);
  for (int i = 0; i < 128; ++i) file += QByteArray(3, static_cast<char>(2 * i));
  file += QByteArray("\x21\xFF\x0BNETSCAPE2.0\x03\x01\x03\0\0", 19);
  for (int frame = 0; frame < hundredths.size(); ++frame) {
    file += QByteArray("\x21\xF9\x04\x04", 4) + little(hundredths[frame], 2) + QByteArray(2, '\0');
    file += ',' + QByteArray(4, '\0') + little(kWidth, 2) + little(kHeight, 2) + QByteArray(1, 0);
    QByteArray codes;
    for (const char grey : greys(frame)) {
      if (codes.size() % 127 == 0) codes += '\x80';
      codes += grey;
    }
    codes += '\x81';
    file += '\x07';
    for (qsizetype i = 0; i < codes.size(); i += 255) {
      const QByteArray part = codes.mid(i, 255);
      file += static_cast<char>(part.size()) + part;
    }
    file += '\0';
  }
  return file + ';';
}

// Grey pages of 16 bits.
static QByteArray pagedTiff(const QList<int>& heights) {
  QByteArray file("II*\0", 4);
  file += little(8, 4);
  for (int page = 0; page < heights.size(); ++page) {
    const int samples = kWidth * heights[page] * 2;
    const int start = static_cast<int>(file.size());
    const bool last = page + 1 == heights.size();
    constexpr int kEntries = 9;
    const int directoryBytes = 2 + kEntries * 12 + 4;
    const int rows[kEntries][3] = {
        {256, 4, kWidth}, {257, 4, heights[page]},          {258, 3, 16}, {259, 3, 1},
        {262, 3, 1},      {273, 4, start + directoryBytes}, {277, 3, 1},  {278, 4, heights[page]},
        {279, 4, samples}};
    file += little(kEntries, 2);
    for (const auto& row : rows) {
      file += little(row[0], 2) + little(row[1], 2) + little(1, 4) + little(row[2], 4);
    }
    file += little(last ? 0 : start + directoryBytes + samples, 4);
    for (int i = 0; i < samples / 2; ++i) file += little((i * 77 * (page + 1)) & 0xFFFF, 2);
  }
  return file;
}

struct Shown {
  QList<QImage> pictures;
  QList<int> milliseconds;
  int loops;
};

class SeveralPictures : public ProgramTest {
 protected:
  Shown shown(const QString& name) const {
    QImageReader reader(path(name));
    Shown result = {{}, {}, reader.loopCount()};
    for (int i = 0; i < reader.imageCount(); ++i) {
      if (reader.format() == "tiff") reader.jumpToImage(i);
      result.pictures += reader.read().convertToFormat(QImage::Format_RGB888);
      result.milliseconds += reader.nextImageDelay();
    }
    return result;
  }

  void saveMask() const {
    QImage mask(kWidth, kHeight, QImage::Format_Grayscale8);
    mask.fill(0);
    for (int y = 4; y < 14; ++y) {
      for (int x = 5; x < 19; ++x) mask.setPixel(x, y, qRgb(255, 255, 255));
    }
    save(mask, "mask.png");
  }
};

static int largestDifference(const QImage& a, const QImage& b) {
  int most = 0;
  for (int y = 0; y < a.height(); ++y) {
    for (int x = 0; x < a.width() * 3; ++x) {
      most = std::max(most, std::abs(a.constScanLine(y)[x] - b.constScanLine(y)[x]));
    }
  }
  return most;
}

TEST_F(SeveralPictures, AreRenderedAllAlikeWithTheirTimes) {
  write("in.gif", animatedGif({20, 7, 50}));
  saveMask();
  const QStringList options = {"--mask", "mask.png", "--set", "radius=4"};
  const Shown source = shown("in.gif");
  ASSERT_EQ(source.pictures.size(), kFrames);
  QList<QImage> alone;
  for (int i = 1; i <= kFrames; ++i) {
    const QImage frame =
        apply("in.gif", "frame.png", options + QStringList{"--frame", QString::number(i)});
    alone += frame.convertToFormat(QImage::Format_RGB888);
    EXPECT_NE(alone.back(), source.pictures[i - 1]);
  }
  // A GIF file has 256 colours for a picture.
  for (const auto& [name, tolerance] : {std::pair("out.webp", 0), std::pair("out.gif", 24)}) {
    SCOPED_TRACE(name);
    apply("in.gif", name, options);
    const Shown result = shown(name);
    ASSERT_EQ(result.pictures.size(), kFrames);
    for (int i = 0; i < kFrames; ++i) {
      EXPECT_LE(largestDifference(result.pictures[i], alone[i]), tolerance) << i;
    }
    if (tolerance == 0) continue;
    EXPECT_EQ(result.milliseconds, source.milliseconds);
    EXPECT_EQ(result.loops, source.loops);
  }
  // And back again: what WebP keeps of the times is what GIF had.
  apply("out.webp", "again.gif", {"--mask", "mask.png"});
  EXPECT_EQ(shown("again.gif").milliseconds, source.milliseconds);
  EXPECT_EQ(shown("again.gif").loops, source.loops);

  const RunResult one = run({"apply", "in.gif", "-o", "one.png", "--seed", "7"});
  EXPECT_EQ(one.errors.count("only the first of its 3 pictures"), 1) << one.errors.toStdString();
  EXPECT_EQ(run({"apply", "in.gif", "-o", "one.png", "--seed", "7", "--frame", "2"}).errors, "");
  const RunResult none = run({"apply", "in.gif", "-o", "none.png", "--frame", "4"});
  EXPECT_EQ(none.exitCode, 1);
  EXPECT_TRUE(none.errors.contains("has no picture 4, but 3")) << none.errors.toStdString();
  EXPECT_EQ(run({"apply", "in.gif", "-o", "none.png", "--frame", "0"}).exitCode, 2);
}

TEST_F(SeveralPictures, OfADocumentKeepEveryBitOutsideTheSelection) {
  write("in.tif", pagedTiff({kHeight, kHeight}));
  saveMask();
  apply("in.tif", "out.tif", {"--mask", "mask.png"});
  for (int page = 0; page < 2; ++page) {
    QImageReader before(path("in.tif"));
    QImageReader after(path("out.tif"));
    ASSERT_TRUE(before.jumpToImage(page) && after.jumpToImage(page));
    const QImage source = before.read();
    const QImage result = after.read();
    ASSERT_EQ(result.format(), QImage::Format_Grayscale16);
    int changed = 0;
    for (int y = 0; y < kHeight; ++y) {
      for (int x = 0; x < kWidth; ++x) {
        const int place = 2 * x;
        const bool same =
            std::equal(source.constScanLine(y) + place, source.constScanLine(y) + place + 2,
                       result.constScanLine(y) + place);
        const bool selected = y >= 4 && y < 14 && x >= 5 && x < 19;
        if (!same) ++changed;
        EXPECT_TRUE(same || selected) << page << ": " << x << "," << y;
      }
    }
    EXPECT_GT(changed, 50);
  }
  write("unlike.tif", pagedTiff({kHeight, kHeight - 5}));
  const RunResult result = run({"apply", "unlike.tif", "-o", "first.tif"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_TRUE(result.errors.contains("since they are not alike")) << result.errors.toStdString();
  EXPECT_EQ(apply("unlike.tif", "second.tif", {"--frame", "2"}).height(), kHeight - 5);
}

TEST_F(SeveralPictures, AreNotHalfWrittenWhenTheFileIsCutOff) {
  const QByteArray whole = animatedGif({5, 5, 5});
  for (const int part : {90, 60, 30}) {
    write("cut.gif", whole.left(whole.size() * part / 100));
    const RunResult result = run({"apply", "cut.gif", "-o", "out.webp"});
    EXPECT_EQ(result.exitCode, 1) << part;
    EXPECT_TRUE(result.errors.startsWith("morvalis: cut.gif: ")) << result.errors.toStdString();
    EXPECT_EQ(files(), QStringList{"cut.gif"}) << part;
  }
}
