#include "hosts/effect_choices/bitmap_path.h"

#include <unistd.h>

#include "hosts/effect_choices/other_bitmaps.h"
#include "hosts/process/command_failure.h"
#include "settings/effect_settings.h"

BitmapPath findBitmap(const std::string& file) {
  allowOtherPictures();
  checkPictureForModule(file);
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
