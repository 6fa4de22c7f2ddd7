#include "hosts/effect_choices/bitmap_path.h"

#include <unistd.h>

#include <cstdlib>

#include "hosts/process/command_failure.h"
#include "hosts/process/file_access.h"
#include "platform/bitmap_decoder.h"
#include "settings/effect_settings.h"

static void checkBitmap(const std::string& file) {
  const FileBytes start = readFileStart(file, "a picture", 2);
  if (!beginsWith(start, "BM")) failOnFile(file, "is not a Windows bitmap (.bmp)");
  DecodedBitmap bitmap;
  if (!decodeBitmapFile(file.c_str(), &bitmap)) {
    failOnFile(file, "is a damaged Windows bitmap, or has a side of more than " +
                         std::to_string(kLargestBitmapSide) + " pixels");
  }
  std::free(bitmap.rgb);
}

BitmapPath findBitmap(const std::string& file) {
  checkBitmap(file);
  BitmapPath found;
  found.path = wholePath(file);
  if (found.path.size() < kPathBytes) return found;

  found.shortWay = std::make_unique<TemporaryFolder>();
  const std::string link = found.shortWay->path + "/picture.bmp";
  if (found.shortWay->path.empty() || symlink(found.path.c_str(), link.c_str()) != 0) {
    failOnFile(
        file, "has a path that is too long (" + std::to_string(kPathBytes - 1) + " bytes at most)");
  }
  found.path = link;
  return found;
}
