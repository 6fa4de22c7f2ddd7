#include "hosts/picture_files/picture_load.h"

#include <unistd.h>

#include "hosts/picture_files/exif_block.h"
#include "hosts/picture_files/formats_library.h"
#include "hosts/png_files/png_read.h"
#include "hosts/process/command_failure.h"
#include "hosts/process/file_access.h"
#include "hosts/process/file_names.h"
#include "hosts/process/interrupt.h"
#include "hosts/process/libraries/library_guard.h"
#include "hosts/small_formats/small_formats.h"

// The decoded picture, its upright copy, the planes, and the module's own buffers.
constexpr int64_t kWorkingBytesPerPixel = 16;

std::string refuseSides(int64_t width, int64_t height) {
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

static std::string read(const std::string& file, const FileBytes& contents, int32_t number,
                        Picture* picture) {
  if (isPngFile(contents)) {
    PngHeader header;
    if (!readPngHeader(contents, &header)) return kCutOff;
    const std::string reason = refuseSides(header.width, header.height);
    if (!reason.empty()) return reason;
    readPngMetadata(contents, &picture->metadata);
    if (isPlainPng(header) && exifOrientation(picture->metadata.exif) == 1) {
      return readPngPixels(contents, header, interrupted, picture) ? "" : kCutOff;
    }
  }
  const SmallFormat* small = findSmallFormat(contents, extensionOf(file));
  if (small != nullptr) return small->read(contents, refuseSides, picture);
  const FormatsLibrary& library = formatsLibrary();
  const LibraryGuard guard;
  return library.load(contents, number, refuseSides, interrupted, picture);
}

int32_t parseFrame(const std::string& text) {
  constexpr int kMostFrames = 1000000;
  return text.empty() ? 0 : wholeNumberOf("--frame", text, 1, kMostFrames);
}

void standNotesUpright(Picture* picture) {
  PictureMetadata& metadata = picture->metadata;
  metadata.exif = uprightExif(metadata.exif, picture->sidesSwapped);
  metadata.xmp = uprightXmp(metadata.xmp);
}

Picture decodePicture(const FileBytes& contents, const std::string& file, int32_t number) {
  Picture picture;
  const std::string reason = read(file, contents, number, &picture);
  stopIfInterrupted();
  if (!reason.empty()) failOnFile(file, reason);
  if (number > picture.pictureCount) {
    failOnFile(file, "has no picture " + std::to_string(number) + ", but " +
                         std::to_string(picture.pictureCount));
  }
  standNotesUpright(&picture);
  return picture;
}

Picture loadPicture(const std::string& file, int32_t number) {
  return decodePicture(readWholeFile(file, "a picture"), file, number);
}
