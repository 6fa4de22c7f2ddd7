#include "pictures/sources/scaled_pictures.h"

#include <iterator>

#include "pictures/area_resampling.h"
#include "pictures/picture_surface.h"
#include "pictures/sources/packed_pictures.h"
#include "platform/bitmap_decoder.h"
#include "services/memory_blocks.h"
#include "services/scaling.h"

struct UnpackedPicture {
  int32_t id;
  ResourcePicture picture;
};

constexpr int32_t kMostUnpacked = 128;  // more than the dialogs have

static UnpackedPicture unpacked[kMostUnpacked];
static int32_t unpackedCount = 0;
static int32_t unpackedScale = kPlainScale;

static void freePicture(const ResourcePicture& picture) {
  freeModuleBlock(const_cast<uint8_t*>(picture.rgb));
  freeModuleBlock(const_cast<uint8_t*>(picture.coverage));
}

void forgetScaledPictures() {
  for (int32_t i = 0; i < unpackedCount; ++i) freePicture(unpacked[i].picture);
  unpackedCount = 0;
}

static bool unpackFrom(int32_t scale, int32_t id, ResourcePicture* picture) {
  const uint8_t* pack = nullptr;
  int32_t length = 0;
  PackRow row = {};
  if (!findPicturePack(scale, &pack, &length) || !findPackRow(pack, length, id, &row)) return false;
  const uint64_t pixels = static_cast<uint64_t>(row.width) * static_cast<uint32_t>(row.height);
  auto* rgb = static_cast<uint8_t*>(newModuleBlock(3 * pixels));
  auto* coverage = row.hasCoverage != 0 ? static_cast<uint8_t*>(newModuleBlock(pixels)) : nullptr;
  const ResourcePicture unpackedPicture = {row.width, row.height, rgb, coverage};
  const bool whole = rgb != nullptr && (row.hasCoverage == 0 || coverage != nullptr) &&
                     unpackPicture(pack, row, rgb, coverage);
  if (whole) {
    *picture = unpackedPicture;
  } else {
    freePicture(unpackedPicture);
  }
  return whole;
}

// Only opaque pictures are left out of a pack.
static bool reduceFrom(int32_t largerScale, int32_t id, int32_t scale, ResourcePicture* picture) {
  ResourcePicture larger = {};
  ResourcePicture plain = {};
  if (!findResourcePicture(id, &plain) || !unpackFrom(largerScale, id, &larger)) return false;
  PictureSurface surface = {scaledLength(plain.width, scale), scaledLength(plain.height, scale),
                            nullptr};
  surface.rgb = static_cast<uint8_t*>(newModuleBlock(
      uint64_t{3} * static_cast<uint32_t>(surface.width) * static_cast<uint32_t>(surface.height)));
  if (surface.rgb != nullptr) {
    const DecodedBitmap source = {larger.width, larger.height, const_cast<uint8_t*>(larger.rgb)};
    resampleByArea(source, &surface, surface.width, surface.height);
  }
  freePicture(larger);
  if (surface.rgb == nullptr) return false;
  *picture = {surface.width, surface.height, surface.rgb, nullptr};
  return true;
}

bool findScaledPicture(int32_t id, int32_t scale, ResourcePicture* picture) {
  if (scale == kPlainScale) return findResourcePicture(id, picture);
  if (scale != unpackedScale) forgetScaledPictures();
  unpackedScale = scale;
  for (int32_t i = 0; i < unpackedCount; ++i) {
    if (unpacked[i].id != id) continue;
    *picture = unpacked[i].picture;
    return true;
  }
  if (unpackedCount == kMostUnpacked) return false;
  const bool found = unpackFrom(scale, id, picture) || reduceFrom(2 * scale, id, scale, picture) ||
                     reduceFrom(*std::rbegin(kScales), id, scale, picture);
  if (found) unpacked[unpackedCount++] = {id, *picture};
  return found;
}
