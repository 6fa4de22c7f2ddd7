#include "hosts/substitute_host/display_pixels.h"

#include <cstddef>
#include <cstdint>

#include "hosts/substitute_host/host_log.h"
#include "hosts/substitute_host/host_state.h"

static bool isShowable(const PSPixelMap& map, const HostRectangle32& source) {
  if (map.imageMode != kImageModeGrey && map.imageMode != kImageModeRgb) return false;
  if (map.baseAddr == nullptr || map.rowBytes == 0) return false;
  return map.bounds.top <= source.top && source.top <= source.bottom &&
         source.bottom <= map.bounds.bottom && map.bounds.left <= source.left &&
         source.left <= source.right && source.right <= map.bounds.right;
}

static HostPicture copyOf(const PSPixelMap& map, const HostRectangle32& source) {
  HostPicture picture;
  picture.width = source.right - source.left;
  picture.height = source.bottom - source.top;
  picture.planes = map.imageMode == kImageModeGrey ? 1 : 3;
  const uint8_t* base = static_cast<const uint8_t*>(map.baseAddr);
  for (int32_t y = source.top; y < source.bottom; ++y) {
    for (int32_t x = source.left; x < source.right; ++x) {
      const ptrdiff_t pixel = ptrdiff_t{y - map.bounds.top} * map.rowBytes +
                              ptrdiff_t{x - map.bounds.left} * map.colBytes;
      for (int32_t plane = 0; plane < picture.planes; ++plane) {
        picture.samples.push_back(base[pixel + ptrdiff_t{plane} * map.planeBytes]);
      }
    }
  }
  return picture;
}

static int16_t MORVALIS_CALL displayPixels(const PSPixelMap* map, const HostRectangle32* source,
                                           int32_t /*row*/, int32_t /*column*/, void* context) {
  logCall("displayPixels");
  if (map == nullptr || source == nullptr || context == nullptr) return kFilterBadParameters;
  if (!isShowable(*map, *source)) return kFilterBadParameters;
  if (host().switches.displaysTarget) host().displayed = copyOf(*map, *source);
  return kNoError;
}

DisplayPixelsProc offerDisplayPixels() {
  return host().switches.displayPixels ? displayPixels : nullptr;
}

const HostPicture& displayedPicture() {
  return host().displayed;
}
