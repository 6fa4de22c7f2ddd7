#include "hosts/command_line/picture_save.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImageWriter>
#include <algorithm>

#include "hosts/command_line/command_failure.h"
#include "hosts/command_line/file_access.h"
#include "hosts/command_line/png_chunks.h"
#include "hosts/command_line/quiet_errors.h"

constexpr int kJpegQuality = 95;
constexpr int kLossless = 100;

constexpr PictureFormat kFormats[] = {
    {"png", "png", -1, true, true},
    {"jpg", "jpeg", kJpegQuality, false, true},
    {"jpeg", "jpeg", kJpegQuality, false, true},
    {"tif", "tiff", -1, true, true},
    {"tiff", "tiff", -1, true, true},
    {"webp", "webp", kLossless, true, true},
    {"bmp", "bmp", -1, false, true},
    {"ppm", "ppm", -1, false, true},
    {"pgm", "pgm", -1, false, false},
};

const PictureFormat* findPictureFormat(const std::string& file) {
  if (file == kStandardStream) return &kFormats[0];
  const QFileInfo info(QFile::decodeName(file.c_str()));
  const std::string extension = info.suffix().toLower().toStdString();
  for (const PictureFormat& format : kFormats) {
    if (extension == format.extension) return &format;
  }
  return nullptr;
}

std::string writableExtensions() {
  std::string text;
  for (const PictureFormat& format : kFormats) {
    text += (text.empty() ? "." : ", .") + std::string(format.extension);
  }
  return text;
}

void checkFormatHolds(const PictureFormat& format, const Picture& picture,
                      const std::string& file) {
  const bool transparent = std::any_of(picture.alpha.begin(), picture.alpha.end(),
                                       [](uint8_t alpha) { return alpha != 255; });
  if (transparent && !format.holdsAlpha) {
    failOnFile(file, "the picture has transparency, which this format cannot hold; use .png");
  }
  if (picture.colors.planes > 1 && !format.holdsColors) {
    failOnFile(file, "the picture has colours, which this format cannot hold; use .ppm or .png");
  }
}

QImage imageOf(const Picture& picture, bool withAlpha) {
  const HostPicture& colors = picture.colors;
  const bool grey = colors.planes == 1;
  QImage image(colors.width, colors.height,
               withAlpha ? QImage::Format_RGBA8888
               : grey    ? QImage::Format_Grayscale8
                         : QImage::Format_RGB888);
  if (image.isNull()) throw std::bad_alloc();
  const uint8_t* sample = colors.samples.data();
  const uint8_t* alpha = picture.alpha.data();
  for (int32_t y = 0; y < colors.height; ++y) {
    uint8_t* to = image.scanLine(y);
    for (int32_t x = 0; x < colors.width; ++x, sample += colors.planes) {
      *to++ = sample[0];
      if (withAlpha || !grey) {
        *to++ = sample[grey ? 0 : 1];
        *to++ = sample[grey ? 0 : 2];
      }
      if (withAlpha) *to++ = *alpha++;
    }
  }
  return image;
}

static QByteArray encode(const Picture& picture, const PictureFormat& format,
                         const std::string& file) {
  const bool grey = picture.colors.planes == 1;
  const bool hasAlpha = !picture.alpha.empty() && format.holdsAlpha;
  const bool greyAlphaPng = grey && hasAlpha && std::string(format.library) == "png";
  QImage image = imageOf(picture, hasAlpha && !greyAlphaPng);
  attachMetadata(picture.metadata, &image);
  QByteArray contents;
  QBuffer buffer(&contents);
  buffer.open(QIODevice::WriteOnly);
  QImageWriter writer(&buffer, format.library);
  writer.setQuality(format.quality);
  const QuietErrors quiet;
  if (!writer.write(image)) {
    failOnFile(file, "cannot be written: " + writer.errorString().toStdString());
  }
  buffer.close();
  if (greyAlphaPng) {
    contents = pngWithGreyAndAlpha(contents, picture.colors.samples, picture.alpha);
  }
  return withMetadata(contents, picture.metadata, grey);
}

void savePicture(const Picture& picture, const PictureFormat& format, const std::string& file) {
  writeWholeFile(file, encode(picture, format, file));
}
