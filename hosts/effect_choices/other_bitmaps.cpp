#include "hosts/effect_choices/other_bitmaps.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "hosts/effect_choices/picture_lookup.h"
#include "hosts/effect_choices/preset_file.h"
#include "hosts/picture_files/picture_load.h"
#include "hosts/picture_files/picture_save.h"
#include "hosts/process/command_failure.h"
#include "hosts/process/file_access.h"
#include "hosts/process/file_names.h"
#include "hosts/process/name_matching.h"
#include "platform/unix/program_session.h"
#include "platform/user_files.h"
#include "settings/effect_settings.h"

static bool fits(const Picture& picture) {
  return picture.colors.width <= kLargestBitmapSide && picture.colors.height <= kLargestBitmapSide;
}

static bool decodePictureFile(const char* path, DecodedBitmap* bitmap) {
  try {
    if (!isOrdinaryFile(path)) return false;  // a pipe might keep the dialog waiting
    const Picture picture = loadPicture(path);
    const HostPicture& colors = picture.colors;
    const size_t planes = static_cast<size_t>(colors.planes);
    const size_t pixels = colors.samples.size() / planes;
    auto* rgb = fits(picture) ? static_cast<uint8_t*>(std::malloc(pixels * 3)) : nullptr;
    if (rgb == nullptr) return false;
    for (size_t i = 0; i < pixels * 3; ++i) {
      rgb[i] = colors.samples[i / 3 * planes + (planes == 1 ? 0 : i % 3)];
    }
    *bitmap = {colors.width, colors.height, rgb};
    return true;
  } catch (...) {
    return false;
  }
}

void allowOtherPictures() {
  static const std::string patterns = readablePatterns();
  decodeMorePictures(decodePictureFile, patterns.c_str());
}

bool isWindowsBitmap(const std::string& file) {
  return beginsWith(readFileStart(file, "a picture", 2), "BM");
}

[[noreturn]] static void failOnSides(const std::string& file, const std::string& what) {
  failOnFile(file, what + " a side of more than " + std::to_string(kLargestBitmapSide) + " pixels");
}

void checkPictureForModule(const std::string& file) {
  if (!isWindowsBitmap(file)) {
    if (!fits(loadPicture(file))) failOnSides(file, "has");
    return;
  }
  DecodedBitmap bitmap;
  if (!decodeBitmapFile(file.c_str(), &bitmap)) {
    failOnSides(file, "is a damaged Windows bitmap, or has");
  }
  std::free(bitmap.rgb);
}

// A name without folder that leads back to itself through the preset's character set.
static bool canBeNamed(const std::string& name) {
  char stored[kPathBytes];
  windowsNameFromPath(name.c_str(), stored, kPathBytes);
  return foldedName(name).ends_with(".bmp") && nameInUtf8(stored) == name;
}

// The bytes of a Windows bitmap file with the picture.
static FileBytes bitmapOf(const std::string& picture, bool isBitmap) {
  if (isBitmap) return readWholeFile(picture, "a picture");
  const TemporaryFolder folder;
  const std::string draft = pathOf(folder) + "/picture.bmp";
  savePicture(loadPicture(picture), pictureFormatOf(draft), {}, draft);
  return readWholeFile(draft, "a picture");
}

std::string placeBesidePreset(const std::string& picture, const std::string& preset) {
  const bool bitmap = isWindowsBitmap(picture);
  const std::string ending = bitmap && extensionOf(picture) == "bmp" ? "" : ".bmp";
  const std::string name = lastName(picture) + ending;
  const std::string folder = usualPictureFolder(preset);
  const std::string place = folder + "/" + name;
  if (!canBeNamed(name)) {
    failOnFile(picture,
               "a settings file cannot name this picture; its name has to consist of "
               "Western European letters");
  }
  if (placeOf(place) == placeOf(picture)) return place;
  if (mkdir(folder.c_str(), 0777) != 0 && errno != EEXIST) {
    failOnFile(folder, std::string("cannot be made: ") + std::strerror(errno));
  }
  const std::string there = findPictureByName(folder, name.c_str());
  const FileBytes contents = bitmapOf(picture, bitmap);
  if (there.empty()) {
    writeWholeFile(place, contents);
    return place;
  }
  if (readWholeFile(there, "a picture") != contents) {
    failOnFile(there, "is another picture; give " + picture + " another name");
  }
  return there;
}
