// Text, colours and embedded pictures of the Qt back end.

#include <gtest/gtest.h>

#include <QApplication>
#include <QColorDialog>
#include <QDir>
#include <QImage>
#include <QImageReader>
#include <QTimer>
#include <QWidget>
#include <algorithm>
#include <numeric>
#include <vector>

#include "platform/choosers.h"
#include "platform/dialog_text.h"
#include "platform/resource_access.h"
#include "platform/resource_table.h"
#include "platform/window.h"

static std::vector<uint8_t> coverageOf(const char* text) {
  std::vector<uint8_t> coverage(static_cast<size_t>(textWidth(text, 100)) * kTextLineHeight + 1,
                                99);
  drawTextCoverage(text, 100, coverage.data());
  EXPECT_EQ(coverage.back(), 99) << "writes no further than its picture";
  coverage.pop_back();
  return coverage;
}

TEST(QtText, CoversWhatItMeasures) {
  EXPECT_EQ(textWidth("", 100), 0);
  EXPECT_GT(textWidth("WW", 100), textWidth("W", 100));
  EXPECT_GT(textWidth("W", 100), textWidth("i", 100));
  const char* text = "Reflection gy|";
  const std::vector<uint8_t> coverage = coverageOf(text);
  const auto width = static_cast<size_t>(textWidth(text, 100));
  EXPECT_GE(*std::max_element(coverage.begin(), coverage.end()), 250);
  const auto rowIsEmpty = [&](size_t row) {
    return std::accumulate(coverage.begin() + row * width, coverage.begin() + (row + 1) * width,
                           0) == 0;
  };
  EXPECT_TRUE(rowIsEmpty(0)) << "letters are lower than the line";
  bool reachesRight = false;
  for (size_t y = 0; y < kTextLineHeight; ++y) {
    for (size_t x = width - 4; x < width; ++x) reachesRight |= coverage[y * width + x] != 0;
  }
  EXPECT_TRUE(reachesRight) << "the last letter is all there";
  bool grey = false;
  for (const uint8_t share : coverageOf("oOSs")) grey |= share != 0 && share != 255;
  EXPECT_TRUE(grey) << "soft edges";
}

static void answerColour(const std::function<void(QColorDialog*)>& answer,
                         const std::function<void()>& ask) {
  QTimer timer;
  bool answered = false;
  QObject::connect(&timer, &QTimer::timeout, [&] {
    auto* dialog = qobject_cast<QColorDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr || answered) return;
    answered = true;
    answer(dialog);
  });
  timer.start(5);
  ask();
  EXPECT_TRUE(answered);
}

TEST(QtChoosers, ColourChosenAndCancelled) {
  uint8_t color[3] = {10, 20, 30};
  uint8_t custom[kCustomColors][3] = {};
  custom[15][1] = 200;
  answerColour(
      [](QColorDialog* dialog) {
        EXPECT_EQ(dialog->currentColor(), QColor(10, 20, 30));
        EXPECT_EQ(QColorDialog::customColor(15), QColor(0, 200, 0));
        dialog->setCurrentColor(QColor(1, 2, 3));
        QColorDialog::setCustomColor(0, QColor(9, 9, 9));
        dialog->reject();
      },
      [&] { EXPECT_FALSE(choosePlatformColor(color, custom)); });
  EXPECT_EQ(color[0], 10);
  EXPECT_EQ(custom[0][0], 0);
  answerColour(
      [](QColorDialog* dialog) {
        EXPECT_EQ(QColorDialog::customColor(0), QColor(0, 0, 0));
        dialog->setCurrentColor(QColor(1, 2, 3));
        QColorDialog::setCustomColor(4, QColor(7, 8, 9));
        static_cast<QDialog*>(dialog)->accept();
      },
      [&] { EXPECT_TRUE(choosePlatformColor(color, custom)); });
  EXPECT_EQ(color[0], 1);
  EXPECT_EQ(color[2], 3);
  EXPECT_EQ(custom[4][1], 8);
  EXPECT_EQ(custom[15][1], 200);
}

TEST(QtScreen, MenusFitTheScreen) {
  EXPECT_GT(screenHeight(), 100);
  const MenuLook look = menuLook();
  EXPECT_GT(look.checkMarkWidth, 0);
  EXPECT_NE(std::vector<uint8_t>(look.highlight, look.highlight + 3),
            std::vector<uint8_t>(look.highlightText, look.highlightText + 3));
}

// --- Embedded pictures ----------------------------------------------------------------------

// Read by another decoder than the build's.
static int compareFolder(const char* folder, const char* pattern, int firstNumber) {
  const QDir files(QFileInfo(__FILE__).absolutePath() + "/../../resources/" + folder);
  const QStringList names = files.entryList({pattern});
  for (const QString& name : names) {
    // An icon file holds several sizes; the embedded one is 32 x 32 where there is one.
    QImageReader reader(files.filePath(name));
    QImage file = reader.read();
    for (int i = 1; file.width() != 32 && i < reader.imageCount(); ++i) {
      if (reader.jumpToImage(i)) file = reader.read();
    }
    const int id = firstNumber + name.section('-', 0, 0).section('.', 0, 0).toInt();
    ResourcePicture picture = {};
    EXPECT_TRUE(findResourcePicture(id, &picture)) << name.toStdString();
    if (picture.rgb == nullptr || file.size() != QSize(picture.width, picture.height)) {
      ADD_FAILURE() << name.toStdString() << " is " << file.width() << " x " << file.height();
      continue;
    }
    int wrong = 0;
    for (int i = 0; i < picture.width * picture.height; ++i) {
      const QRgb pixel = file.pixel(i % picture.width, i / picture.width);
      const bool covered = picture.coverage == nullptr || picture.coverage[i] != 0;
      const uint8_t* rgb = picture.rgb + 3 * i;
      const bool same = rgb[0] == qRed(pixel) && rgb[1] == qGreen(pixel) && rgb[2] == qBlue(pixel);
      // Where a pixel is half there, the other decoder rounds its colour.
      wrong += covered != (qAlpha(pixel) >= 128) || (qAlpha(pixel) == 255 && !same) ? 1 : 0;
    }
    EXPECT_EQ(wrong, 0) << name.toStdString();
  }
  return static_cast<int>(names.size());
}

TEST(EmbeddedResources, AreTheFiles) {
  const int files =
      compareFolder("bitmaps", "*.bmp", 0) + compareFolder("icons", "*.ico", kIconNumbers);
  EXPECT_GT(files, 70);
  EXPECT_EQ(static_cast<size_t>(files), embeddedPictures().size());
}
