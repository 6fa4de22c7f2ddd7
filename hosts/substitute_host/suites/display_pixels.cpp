#include "hosts/substitute_host/suites/display_pixels.h"

#include <cstddef>
#include <cstdint>

#include "hosts/substitute_host/host_log.h"
#include "hosts/substitute_host/host_state.h"
#include "platform/window.h"

static int32_t planesOf(const PSPixelMap& map) {
  return map.imageMode == kImageModeGrey ? 1 : 3;
}

static bool isShowable(const PSPixelMap& map, const HostRectangle32& source) {
  if (map.imageMode != kImageModeGrey && map.imageMode != kImageModeRgb) return false;
  if (map.baseAddr == nullptr || map.rowBytes == 0) return false;
  // The record's mode and planes may say different things; no more is read than a pixel has.
  if (map.colBytes < planesOf(map)) return false;
  return map.bounds.top <= source.top && source.top <= source.bottom &&
         source.bottom <= map.bounds.bottom && map.bounds.left <= source.left &&
         source.left <= source.right && source.right <= map.bounds.right;
}

static HostPicture copyOf(const PSPixelMap& map, const HostRectangle32& source) {
  HostPicture picture;
  picture.width = source.right - source.left;
  picture.height = source.bottom - source.top;
  picture.planes = planesOf(map);
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
                                           int32_t row, int32_t column, void* context) {
  if (callFails("displayPixels")) return kFilterBadParameters;
  if (map == nullptr || source == nullptr || context == nullptr) return kFilterBadParameters;
  if (!isShowable(*map, *source)) return kFilterBadParameters;
  const HostSwitches& switches = host().switches;
  if (!switches.displaysTarget && !switches.display) return kNoError;
  const HostPicture shown = copyOf(*map, *source);
  if (switches.display) switches.display(shown, row, column, context);
  if (switches.displaysTarget) host().displayed = shown;
  return kNoError;
}

DisplayPixelsProc offerDisplayPixels() {
  return host().switches.displayPixels ? displayPixels : nullptr;
}

void drawIntoTarget(const HostPicture& shown, int32_t row, int32_t column, void* context) {
  const auto* target = static_cast<const PixelTarget*>(context);
  for (int32_t y = 0; y < shown.height; ++y) {
    for (int32_t x = 0; x < shown.width; ++x) {
      const int32_t atX = column + x;
      const int32_t atY = row + y;
      if (atX < 0 || atX >= target->width || atY < 0 || atY >= target->height) continue;
      const size_t from = (static_cast<size_t>(y) * shown.width + x) * shown.planes;
      uint8_t* pixel = target->rgb + 3 * (static_cast<size_t>(atY) * target->width + atX);
      for (int32_t channel = 0; channel < 3; ++channel) {
        pixel[channel] = shown.samples[from + (shown.planes == 1 ? 0 : channel)];
      }
    }
  }
}

const HostPicture& displayedPicture() {
  return host().displayed;
}
