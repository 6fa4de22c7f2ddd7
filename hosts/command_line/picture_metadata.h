// picture_metadata: what a picture file says besides its pixels: colour profile, resolution, text.

#pragma once

#include <QByteArray>
#include <QColorSpace>
#include <QImage>
#include <QMap>
#include <QString>
#include <vector>

struct PictureMetadata {
  QByteArray profile;      // as it stands in the file; empty when there is none
  QColorSpace colorSpace;  // what the picture library made of it, or of other statements
  int dotsPerMeterX = 0;
  int dotsPerMeterY = 0;
  QMap<QString, QString> texts;
  std::vector<QByteArray> comments;  // of a JPEG file; the texts are made from them
};

PictureMetadata readMetadata(const QByteArray& file, const QImage& image);

// Puts into the image what the picture library writes by itself. A file that holds comments gets
// those instead of the texts.
void attachMetadata(const PictureMetadata& metadata, bool holdsComments, QImage* image);

// An encoded file with comments and profile in it byte for byte, where that is possible and the
// profile is one for pictures of its kind. The library drops profiles that it cannot make out.
QByteArray withMetadata(const QByteArray& file, const PictureMetadata& metadata, bool grey);
