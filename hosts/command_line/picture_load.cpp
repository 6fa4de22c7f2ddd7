#include "hosts/command_line/picture_load.h"

#include <unistd.h>

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <algorithm>
#include <cstdlib>

#include "hosts/command_line/command_failure.h"
#include "hosts/command_line/file_access.h"
#include "hosts/command_line/jpeg_segments.h"
#include "hosts/command_line/png_chunks.h"
#include "hosts/command_line/quiet_errors.h"
#include "hosts/command_line/tiff_directory.h"

// The decoded image, its upright copy, the planes, and the module's own buffers.
constexpr int64_t kWorkingBytesPerPixel = 16;

static void checkSize(const std::string& file, const QSize& size) {
  const std::string sides = std::to_string(size.width()) + " x " + std::to_string(size.height());
  if (size.width() > kLargestPictureSide || size.height() > kLargestPictureSide) {
    failOnFile(file, "is " + sides + " pixels; a side may have " +
                         std::to_string(kLargestPictureSide) + " at most");
  }
  const int64_t memory = int64_t{sysconf(_SC_PHYS_PAGES)} * sysconf(_SC_PAGESIZE);
  const int64_t pixels = int64_t{size.width()} * size.height();
  if (memory > 0 && pixels * kWorkingBytesPerPixel > memory) {
    failOnFile(file, "is " + sides + " pixels, too large for this machine's memory");
  }
}

static int64_t littleEndianAt(const QByteArray& file, qsizetype offset, qsizetype bytes) {
  int64_t number = 0;
  int shift = 0;
  for (const char byte : file.mid(offset, bytes)) {
    number |= int64_t{static_cast<uint8_t>(byte)} << shift;
    shift += 8;
  }
  return number;
}

// Of a cut-off Windows bitmap the library delivers what it has. Packed rows are not counted.
static bool bitmapIsWhole(const QByteArray& file, const QSize& size) {
  constexpr qsizetype kHeaders = 54;
  constexpr int64_t kShortInfo = 12;
  if (file.size() < kHeaders) return true;  // tiny, or refused by the library
  if (littleEndianAt(file, 14, 4) == kShortInfo) return true;
  const int64_t packing = littleEndianAt(file, 30, 4);
  if (packing != 0 && packing != 3) return true;  // 3: plain rows with colour masks
  const int64_t rows = littleEndianAt(file, 10, 4);
  const int64_t rowBytes = (size.width() * littleEndianAt(file, 28, 2) + 31) / 32 * 4;
  return rows + rowBytes * size.height() <= file.size();
}

static bool fileIsWhole(const QByteArray& file, const QSize& size) {
  if (isJpegFile(file)) return jpegIsWhole(file);
  if (isTiffFile(file)) return tiffIsWhole(file);
  if (file.startsWith("BM")) return bitmapIsWhole(file, size);
  return true;  // of the others the library notices it
}

[[noreturn]] static void failOnDecoding(const std::string& file, const QByteArray& contents,
                                        const std::string& reason) {
  if (isTiffFile(contents) && tiffIsWhole(contents)) {
    const TiffSamples samples = tiffSamples(contents);
    if (samples.cmyk && samples.bits > 8) {
      failOnFile(file, "holds CMYK colours of " + std::to_string(samples.bits) +
                           " bits, which cannot be read here");
    }
    failOnFile(file, "is damaged, or of a kind that cannot be read here");
  }
  failOnFile(file, "is damaged or cut off: " + reason);
}

static void noteSource(const QImage& image, const QImageReader& reader, int count,
                       Picture* picture) {
  const QPixelFormat format = image.pixelFormat();
  picture->sampleBits = std::max<int32_t>(8, format.redSize());  // grey counts as red
  picture->pictureCount = std::max(1, count);
  picture->sidesSwapped = (reader.transformation() & QImageIOHandler::TransformationRotate90) != 0;
}

// Targa files have no mark, and some of them look like icons.
static bool isTargaFile(const std::string& file, const QByteArray& contents) {
  return contents.startsWith('\0') &&
         QFileInfo(QFile::decodeName(file.c_str())).suffix().toLower() == "tga";
}

static QImage decode(const std::string& file, QByteArray* contents, Picture* picture) {
  QBuffer buffer(contents);
  buffer.open(QIODevice::ReadOnly);
  const QuietErrors quiet;
  QImageReader::setAllocationLimit(0);  // checkSize judges instead
  QImageReader reader(&buffer);
  const bool targa = isTargaFile(file, *contents);
  if (targa) {
    reader.setFormat("tga");
    reader.setAutoDetectImageFormat(false);
  } else {
    reader.setDecideFormatFromContent(true);
  }
  reader.setAutoTransform(true);
  if (!reader.canRead()) {
    failOnFile(file, std::string("is not a picture that can be read here") +
                         (targa ? "; of TGA files those of version 2 without packing can" : ""));
  }
  const QSize size = reader.size();
  if (size.isValid()) checkSize(file, size);
  // Before decoding, since the library may take long over what it then half delivers.
  if (size.isValid() && !fileIsWhole(*contents, size)) failOnFile(file, "is damaged or cut off");
  const int count = reader.imageCount();
  const QImage image = reader.read();
  if (image.isNull()) failOnDecoding(file, *contents, reader.errorString().toStdString());
  checkSize(file, image.size());
  noteSource(image, reader, count, picture);
  return image;
}

// The image's samples taken as colours that are not multiplied by alpha.
static void takeColorsAsPlain(QImage* image) {
  if (image->format() == QImage::Format_ARGB32_Premultiplied) {
    image->reinterpretAsFormat(QImage::Format_ARGB32);
  } else if (image->format() == QImage::Format_RGBA8888_Premultiplied) {
    image->reinterpretAsFormat(QImage::Format_RGBA8888);
  } else if (image->format() == QImage::Format_RGBA64_Premultiplied) {
    image->reinterpretAsFormat(QImage::Format_RGBA64);
  }
}

static bool isGrey(const QByteArray& file, const QImage& image) {
  if (isPngFile(file)) return pngIsGrey(file);
  if (image.format() == QImage::Format_Grayscale8 || image.format() == QImage::Format_Grayscale16) {
    return true;
  }
  return image.depth() <= 8 && image.allGray();
}

Picture loadPicture(const std::string& file) {
  QByteArray contents = readWholeFile(file, "a picture");
  const bool plainTiff = isTiffFile(contents) && keepTiffColorsPlain(&contents);
  Picture picture;
  QImage image = decode(file, &contents, &picture);
  if (plainTiff) takeColorsAsPlain(&image);
  picture.metadata = readMetadata(contents, image);
  const bool grey = isGrey(contents, image);
  const bool hasAlpha = image.hasAlphaChannel();
  image.setColorSpace(QColorSpace());  // nothing below is to convert between colour spaces
  image.convertTo(QImage::Format_RGBA8888);
  if (image.isNull()) failOnFile(file, "is too large for this machine's memory");

  HostPicture& colors = picture.colors;
  colors.width = image.width();
  colors.height = image.height();
  colors.planes = grey ? 1 : 3;
  const size_t pixels = static_cast<size_t>(colors.width) * static_cast<size_t>(colors.height);
  colors.samples.reserve(pixels * static_cast<size_t>(colors.planes));
  if (hasAlpha) picture.alpha.reserve(pixels);
  for (int32_t y = 0; y < colors.height; ++y) {
    const uint8_t* pixel = image.constScanLine(y);
    for (int32_t x = 0; x < colors.width; ++x, pixel += 4) {
      colors.samples.insert(colors.samples.end(), pixel, pixel + colors.planes);
      if (hasAlpha) picture.alpha.push_back(pixel[3]);
    }
  }
  return picture;
}

void warnOfLoss(const Picture& picture, const std::string& file) {
  std::string lost;
  if (picture.sampleBits > 8) {
    lost = "its samples of " + std::to_string(picture.sampleBits) + " bits become 8";
  }
  if (picture.pictureCount > 1) {
    lost += (lost.empty() ? "" : ", and ") + std::string("only the first of its ") +
            std::to_string(picture.pictureCount) + " pictures is taken";
  }
  if (!lost.empty()) reportWarning(file + ": " + lost);
}
