#include "hosts/command_line/picture_metadata.h"

#include "hosts/command_line/jpeg_segments.h"
#include "hosts/command_line/png_chunks.h"

// The kind of pictures that a profile is for stands in its header.
static bool profileFits(const QByteArray& profile, bool grey) {
  constexpr qsizetype kKindOffset = 16;
  return profile.mid(kKindOffset, 4) == (grey ? "GRAY" : "RGB ");
}

PictureMetadata readMetadata(const QByteArray& file, const QImage& image) {
  PictureMetadata metadata;
  if (isPngFile(file)) metadata.profile = pngProfile(file);
  if (isJpegFile(file)) {
    metadata.profile = jpegProfile(file);
    metadata.comments = jpegComments(file);
  }
  metadata.colorSpace = image.colorSpace();
  metadata.dotsPerMeterX = image.dotsPerMeterX();
  metadata.dotsPerMeterY = image.dotsPerMeterY();
  for (const QString& key : image.textKeys()) metadata.texts[key] = image.text(key);
  return metadata;
}

// A profile for colours on a grey picture, or the other way round, would make readers refuse it.
void attachMetadata(const PictureMetadata& metadata, bool holdsComments, QImage* image) {
  const bool grey = image->format() == QImage::Format_Grayscale8;
  const QByteArray parsed = metadata.colorSpace.iccProfile();
  if (metadata.colorSpace.isValid() && (parsed.isEmpty() || profileFits(parsed, grey))) {
    image->setColorSpace(metadata.colorSpace);
  }
  image->setDotsPerMeterX(metadata.dotsPerMeterX);
  image->setDotsPerMeterY(metadata.dotsPerMeterY);
  if (holdsComments && !metadata.comments.empty()) return;
  for (auto text = metadata.texts.begin(); text != metadata.texts.end(); ++text) {
    image->setText(text.key(), text.value());
  }
}

static QByteArray withProfile(const QByteArray& file, const PictureMetadata& metadata, bool grey) {
  if (metadata.profile.isEmpty() || !profileFits(metadata.profile, grey)) return file;
  if (isPngFile(file)) return pngWithProfile(file, metadata.profile);
  if (isJpegFile(file) && jpegProfile(file).isEmpty()) {
    return jpegWithProfile(file, metadata.profile);
  }
  return file;
}

QByteArray withMetadata(const QByteArray& file, const PictureMetadata& metadata, bool grey) {
  const QByteArray profiled = withProfile(file, metadata, grey);
  return isJpegFile(file) ? jpegWithComments(profiled, metadata.comments) : profiled;
}
