// picture_sheet: sets pictures side by side, row after row, all reduced to the same width.
//   morvalis_sheet OUT COLUMNS WIDTH PICTURE...

#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

constexpr int kGap = 8;  // pixels between pictures
constexpr int kJpegQuality = 90;

}  // namespace

int main(int count, char** arguments) {
  const int columns = count > 2 ? QByteArray(arguments[2]).toInt() : 0;
  const int width = count > 3 ? QByteArray(arguments[3]).toInt() : 0;
  if (count < 5 || columns < 1 || width < 1) {
    std::fprintf(stderr, "usage: morvalis_sheet OUT COLUMNS WIDTH PICTURE...\n");
    return 2;
  }

  std::vector<QImage> pictures;
  int height = 0;
  for (int i = 4; i < count; i++) {
    const QImage picture(QString::fromLocal8Bit(arguments[i]));
    if (picture.isNull()) {
      std::fprintf(stderr, "morvalis_sheet: cannot read %s\n", arguments[i]);
      return 1;
    }
    pictures.push_back(picture.convertToFormat(QImage::Format_RGBA8888)
                           .scaledToWidth(width, Qt::SmoothTransformation));
    height = std::max(height, pictures.back().height());
  }

  const int pictureCount = static_cast<int>(pictures.size());
  const int rows = (pictureCount + columns - 1) / columns;
  QImage sheet(columns * (width + kGap) - kGap, rows * (height + kGap) - kGap,
               QImage::Format_RGB888);
  sheet.fill(Qt::white);
  QPainter painter(&sheet);
  for (int i = 0; i < pictureCount; i++) {
    const QImage& picture = pictures[static_cast<size_t>(i)];
    painter.drawImage(i % columns * (width + kGap),
                      i / columns * (height + kGap) + (height - picture.height()) / 2, picture);
  }
  painter.end();
  if (!sheet.save(QString::fromLocal8Bit(arguments[1]), nullptr, kJpegQuality)) {
    std::fprintf(stderr, "morvalis_sheet: cannot write %s\n", arguments[1]);
    return 1;
  }
  return 0;
}
