#include "hosts/picture_files/picture_load.h"

#include <unistd.h>

#include "hosts/picture_files/exif_block.h"
#include "hosts/picture_files/formats_library.h"
#include "hosts/picture_files/png_read.h"
#include "hosts/process/command_failure.h"
#include "hosts/process/file_access.h"
#include "hosts/process/file_names.h"
#include "hosts/process/interrupt.h"
#include "hosts/process/work_progress.h"
#include "hosts/small_formats/small_formats.h"

// The decoded picture, its upright copy, the planes, and the module's own buffers.
constexpr int64_t kWorkingBytesPerPixel = 16;

static std::string refuseSides(int64_t width, int64_t height) {
  const std::string sides = std::to_string(width) + " x " + std::to_string(height);
  if (width > kLargestPictureSide || height > kLargestPictureSide) {
    return "is " + sides + " pixels; a side may have " + std::to_string(kLargestPictureSide) +
           " at most";
  }
  const int64_t memory = int64_t{sysconf(_SC_PHYS_PAGES)} * sysconf(_SC_PAGESIZE);
  if (memory > 0 && width * height * kWorkingBytesPerPixel > memory) {
    return "is " + sides + " pixels, too large for this machine's memory";
  }
  return "";
}

static std::string read(const std::string& file, const FileBytes& contents, Picture* picture) {
  if (isPngFile(contents)) {
    PngHeader header;
    if (!readPngHeader(contents, &header)) return kCutOff;
    const std::string reason = refuseSides(header.width, header.height);
    if (!reason.empty()) return reason;
    readPngMetadata(contents, &picture->metadata);
    if (isPlainPng(header) && exifOrientation(picture->metadata.exif) == 1) {
      return readPngPixels(contents, header, watchWork, picture) ? "" : kCutOff;
    }
  }
  const SmallFormat* small = findSmallFormat(contents, extensionOf(file));
  if (small != nullptr) return small->read(contents, refuseSides, picture);
  return formatsLibrary().load(contents, refuseSides, watchWork, picture);
}

Picture loadPicture(const std::string& file) {
  const FileBytes contents = readWholeFile(file, "a picture");
  Picture picture;
  const std::string reason = read(file, contents, &picture);
  stopIfInterrupted();
  if (!reason.empty()) failOnFile(file, reason);
  PictureMetadata& metadata = picture.metadata;
  metadata.exif = uprightExif(metadata.exif);
  return picture;
}
