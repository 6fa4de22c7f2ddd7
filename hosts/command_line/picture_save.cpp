#include "hosts/command_line/picture_save.h"

#include <QBuffer>
#include <QImageReader>
#include <QImageWriter>
#include <algorithm>

#include "hosts/command_line/command_failure.h"
#include "hosts/command_line/file_access.h"
#include "hosts/command_line/name_matching.h"
#include "hosts/command_line/png_chunks.h"
#include "hosts/command_line/quiet_errors.h"

constexpr int kJpegQuality = 95;
constexpr int kLossless = 100;
constexpr int kPacked = 1;

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

// In small letters, without the dot; of a name of any length.
static std::string extensionOf(const std::string& file) {
  const std::string name = file.substr(file.rfind('/') + 1);
  const size_t dot = name.rfind('.');
  return dot == std::string::npos ? "" : foldedName(name.substr(dot + 1));
}

const PictureFormat* findPictureFormat(const std::string& file) {
  if (file == kStandardStream) return &kFormats[0];
  const std::string extension = extensionOf(file);
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

const PictureFormat& pictureFormatOf(const std::string& file) {
  const PictureFormat* format = findPictureFormat(file);
  if (format == nullptr) {
    const std::string extension = extensionOf(file);
    const bool known =
        QImageReader::supportedImageFormats().contains(QByteArray::fromStdString(extension));
    failOnUsage(file +
                (known ? ": ." + extension + " files cannot be written"
                       : std::string(": cannot tell the format by the extension")) +
                "; there are " + writableExtensions());
  }
  return *format;
}

static bool lacksAlpha(const PictureFormat& format, const Picture& picture) {
  return !format.holdsAlpha && std::any_of(picture.alpha.begin(), picture.alpha.end(),
                                           [](uint8_t alpha) { return alpha != 255; });
}

static bool lacksColors(const PictureFormat& format, const Picture& picture) {
  return !format.holdsColors && picture.colors.planes > 1;
}

bool formatHolds(const PictureFormat& format, const Picture& picture) {
  return !lacksAlpha(format, picture) && !lacksColors(format, picture);
}

void checkFormatHolds(const PictureFormat& format, const Picture& picture,
                      const std::string& file) {
  if (lacksAlpha(format, picture)) {
    failOnFile(file, "the picture has transparency, which this format cannot hold; use .png");
  }
  if (lacksColors(format, picture)) {
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
  attachMetadata(picture.metadata, std::string(format.library) == "jpeg", &image);
  QByteArray contents;
  QBuffer buffer(&contents);
  buffer.open(QIODevice::WriteOnly);
  QImageWriter writer(&buffer, format.library);
  writer.setQuality(format.quality);
  if (std::string(format.library) == "tiff") writer.setCompression(kPacked);
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
