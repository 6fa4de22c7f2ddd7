#include "platform/resource_access.h"

#include <cstdlib>

#include "platform/windows/pixel_rows.h"

// The pictures that have been asked for, unpacked; given back when the module is unloaded.
struct UnpackedPicture {
  int32_t id;
  ResourcePicture picture;
};

constexpr int32_t kUnpackedPictures = 128;  // more than the module carries

struct UnpackedPictures {
  UnpackedPicture rows[kUnpackedPictures];
  int32_t count;

  ~UnpackedPictures() {
    for (int32_t i = 0; i < count; ++i) {
      std::free(const_cast<uint8_t*>(rows[i].picture.rgb));
      std::free(const_cast<uint8_t*>(rows[i].picture.coverage));
    }
  }
};

static UnpackedPictures unpacked;

static bool unpackBitmap(HBITMAP bitmap, ResourcePicture* picture) {
  if (!bitmapSize(bitmap, &picture->width, &picture->height)) return false;
  picture->rgb = copyBitmapPixels(bitmap, picture->width, picture->height);
  return picture->rgb != nullptr;
}

static bool loadBitmap(int32_t id, ResourcePicture* picture) {
  auto bitmap = static_cast<HBITMAP>(
      LoadImageA(moduleInstance(), MAKEINTRESOURCEA(id), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION));
  if (bitmap == nullptr) return false;
  const bool read = unpackBitmap(bitmap, picture);
  DeleteObject(bitmap);
  return read;
}

// Black in an icon's mask is where it covers.
static uint8_t* coverageOf(HBITMAP mask, int32_t width, int32_t height) {
  uint8_t* rgb = copyBitmapPixels(mask, width, height);
  if (rgb == nullptr) return nullptr;
  const size_t pixels = static_cast<size_t>(width) * static_cast<size_t>(height);
  for (size_t i = 0; i < pixels; ++i) rgb[i] = rgb[3 * i] == 0 ? 255 : 0;
  return rgb;
}

static bool loadIcon(int32_t id, ResourcePicture* picture) {
  auto icon =
      static_cast<HICON>(LoadImageA(moduleInstance(), MAKEINTRESOURCEA(id), IMAGE_ICON, 32, 32, 0));
  if (icon == nullptr) return false;
  ICONINFO parts = {};
  GetIconInfo(icon, &parts);
  if (unpackBitmap(parts.hbmColor, picture)) {
    picture->coverage = coverageOf(parts.hbmMask, picture->width, picture->height);
  }
  DeleteObject(parts.hbmColor);
  DeleteObject(parts.hbmMask);
  DestroyIcon(icon);
  if (picture->coverage != nullptr) return true;
  std::free(const_cast<uint8_t*>(picture->rgb));
  return false;
}

bool findPicturePack(int32_t scale, const uint8_t** pack, int32_t* length) {
  HRSRC found = FindResourceA(moduleInstance(), MAKEINTRESOURCEA(scale), MAKEINTRESOURCEA(10));
  HGLOBAL loaded = found != nullptr ? LoadResource(moduleInstance(), found) : nullptr;
  if (loaded == nullptr) return false;
  *pack = static_cast<const uint8_t*>(LockResource(loaded));
  *length = static_cast<int32_t>(SizeofResource(moduleInstance(), found));
  return *pack != nullptr;
}

bool findResourcePicture(int32_t id, ResourcePicture* picture) {
  for (int32_t i = 0; i < unpacked.count; ++i) {
    if (unpacked.rows[i].id != id) continue;
    *picture = unpacked.rows[i].picture;
    return true;
  }
  if (unpacked.count == kUnpackedPictures) return false;
  ResourcePicture loaded = {};
  const bool found =
      id >= kIconNumbers ? loadIcon(id - kIconNumbers, &loaded) : loadBitmap(id, &loaded);
  if (!found) return false;
  unpacked.rows[unpacked.count++] = {id, loaded};
  *picture = loaded;
  return true;
}
