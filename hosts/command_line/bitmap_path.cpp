#include "hosts/command_line/bitmap_path.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cstdlib>

#include "hosts/command_line/command_failure.h"
#include "platform/bitmap_decoder.h"
#include "settings/effect_settings.h"

static void checkBitmap(const std::string& file) {
  const QFileInfo info(QFile::decodeName(file.c_str()));
  if (!info.exists()) failOnFile(file, "there is no such file");
  if (info.isDir()) failOnFile(file, "is a folder, not a picture");
  QFile source(info.filePath());
  if (!source.open(QIODevice::ReadOnly)) {
    failOnFile(file, "cannot be read: " + source.errorString().toStdString());
  }
  const QByteArray start = source.read(2);
  if (start.isEmpty()) failOnFile(file, "is empty");
  if (start != "BM") failOnFile(file, "is not a Windows bitmap (.bmp)");
  DecodedBitmap bitmap;
  if (!decodeBitmapFile(file.c_str(), &bitmap)) {
    failOnFile(file, "is a damaged Windows bitmap, or has a side of more than " +
                         std::to_string(kLargestBitmapSide) + " pixels");
  }
  std::free(bitmap.rgb);
}

BitmapPath findBitmap(const std::string& file) {
  checkBitmap(file);
  const QString absolute = QFileInfo(QFile::decodeName(file.c_str())).absoluteFilePath();
  BitmapPath found;
  found.path = absolute.toStdString();
  if (found.path.size() < kPathBytes) return found;

  found.shortWay = std::make_unique<QTemporaryDir>("/tmp/morvalis-XXXXXX");
  const QString link = found.shortWay->filePath("picture.bmp");
  if (!found.shortWay->isValid() || !QFile::link(absolute, link)) {
    failOnFile(
        file, "has a path that is too long (" + std::to_string(kPathBytes - 1) + " bytes at most)");
  }
  found.path = link.toStdString();
  return found;
}
