#include "platform/bitmap_decoder.h"

#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QImageReader>
#include <cstdlib>

#include "platform/bitmap_file_check.h"

static bool sideFits(int side) {
  return side >= 1 && side <= kLargestBitmapSide;
}

// The library's own limit on a picture's memory is below the largest picture allowed here. It holds
// for the whole process, so it is put back.
static QImage readBitmap(QByteArray* file) {
  QBuffer buffer(file);
  buffer.open(QIODevice::ReadOnly);
  QImageReader reader(&buffer, "bmp");
  reader.setAutoDetectImageFormat(false);
  const QSize size = reader.size();
  if (!sideFits(size.width()) || !sideFits(size.height())) return QImage();

  const int limit = QImageReader::allocationLimit();
  QImageReader::setAllocationLimit(0);
  QImage image = reader.read();
  QImageReader::setAllocationLimit(limit);
  return image.convertToFormat(QImage::Format_ARGB32);
}

static bool copyPixels(const QImage& image, DecodedBitmap* bitmap) {
  const size_t pixels = static_cast<size_t>(image.width()) * static_cast<size_t>(image.height());
  uint8_t* rgb = static_cast<uint8_t*>(std::malloc(pixels * 3));
  if (rgb == nullptr) return false;
  uint8_t* to = rgb;
  for (int y = 0; y < image.height(); ++y) {
    const QRgb* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    for (int x = 0; x < image.width(); ++x) {
      *to++ = static_cast<uint8_t>(qRed(row[x]));
      *to++ = static_cast<uint8_t>(qGreen(row[x]));
      *to++ = static_cast<uint8_t>(qBlue(row[x]));
    }
  }
  *bitmap = {image.width(), image.height(), rgb};
  return true;
}

bool decodeBitmapFile(const char* path, DecodedBitmap* bitmap) {
  try {
    if (!bitmapFileIsSound(path)) return false;
    QFile source(QFile::decodeName(path));
    if (!source.open(QIODevice::ReadOnly)) return false;
    QByteArray file = source.readAll();
    const QImage image = readBitmap(&file);
    return !image.isNull() && copyPixels(image, bitmap);
  } catch (...) {
    return false;  // out of memory
  }
}
