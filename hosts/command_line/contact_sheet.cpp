#include "hosts/command_line/contact_sheet.h"

#include <QFontMetrics>
#include <QPainter>
#include <QRawFont>
#include <algorithm>
#include <cmath>

#include "hosts/command_line/command_failure.h"

// All in pixels.
constexpr int kLargestPicture = 400;
constexpr int kSmallestCell = 160;
constexpr int kMargin = 32;
constexpr int kGap = 24;
constexpr int kNameRoom = 40;
constexpr int kLetterSize = 21;

constexpr double kWantedShape = 1.5;   // of the sheet, width to height
constexpr double kHolePenalty = 0.12;  // of an empty cell, against a shape off by as much

const QColor kGround(46, 46, 46);
const QColor kLetters(224, 224, 224);

static QFont nameFont() {
  QFont font;
  font.setFamilies({"Liberation Sans", "Noto Sans", "DejaVu Sans", "sans-serif"});
  font.setPixelSize(kLetterSize);
  return font;
}

// Without fonts the library draws boxes, from no font's tables.
void checkFont() {
  if (!QRawFont::fromFont(nameFont()).fontTable("cmap").isEmpty()) return;
  throw CommandFailure{kExitFailed,
                       "there is no font to write the names with; install one, on Debian "
                       "fonts-liberation"};
}

QImage cellPicture(const QImage& picture) {
  if (picture.width() <= kLargestPicture && picture.height() <= kLargestPicture) return picture;
  return picture.scaled(kLargestPicture, kLargestPicture, Qt::KeepAspectRatio,
                        Qt::SmoothTransformation);
}

static int rowCount(int cells, int columns) {
  return (cells + columns - 1) / columns;
}

static int bestColumnCount(int cells, QSize cell) {
  int best = 1;
  double least = HUGE_VAL;
  for (int columns = 1; columns <= cells; ++columns) {
    const int rows = rowCount(cells, columns);
    const double shape = static_cast<double>(columns * cell.width()) / (rows * cell.height());
    const double penalty =
        std::abs(std::log(shape / kWantedShape)) + kHolePenalty * (rows * columns - cells);
    if (penalty >= least) continue;
    least = penalty;
    best = columns;
  }
  return best;
}

static Picture pictureOf(const QImage& sheet) {
  Picture picture;
  picture.colors.width = sheet.width();
  picture.colors.height = sheet.height();
  picture.colors.planes = 3;
  for (int y = 0; y < sheet.height(); ++y) {
    const uint8_t* row = sheet.constScanLine(y);
    picture.colors.samples.insert(picture.colors.samples.end(), row, row + sheet.width() * 3);
  }
  return picture;
}

Picture drawSheet(const std::vector<SheetCell>& cells) {
  const QSize picture = cells[0].picture.size();
  const QSize cell(std::max(picture.width(), kSmallestCell), picture.height() + kNameRoom);
  const int count = static_cast<int>(cells.size());
  const int columns = bestColumnCount(count, cell);
  const int rows = rowCount(count, columns);
  QImage sheet(2 * kMargin + columns * (cell.width() + kGap) - kGap,
               2 * kMargin + rows * (cell.height() + kGap) - kGap - kNameRoom / 4,
               QImage::Format_RGB888);
  if (sheet.isNull()) throw std::bad_alloc();
  sheet.fill(kGround);
  QPainter painter(&sheet);
  painter.setRenderHint(QPainter::TextAntialiasing);
  painter.setFont(nameFont());
  painter.setPen(kLetters);
  const QFontMetrics metrics(nameFont());
  for (int i = 0; i < count; ++i) {
    const QPoint corner(kMargin + i % columns * (cell.width() + kGap),
                        kMargin + i / columns * (cell.height() + kGap));
    const SheetCell& shown = cells[static_cast<size_t>(i)];
    painter.drawImage(corner + QPoint((cell.width() - picture.width()) / 2, 0), shown.picture);
    const QRect nameRoom(corner + QPoint(0, picture.height()), QSize(cell.width(), kNameRoom));
    painter.drawText(nameRoom, Qt::AlignCenter,
                     metrics.elidedText(shown.name, Qt::ElideRight, cell.width()));
  }
  painter.end();
  return pictureOf(sheet);
}
