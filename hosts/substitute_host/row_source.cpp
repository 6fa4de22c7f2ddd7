#include "hosts/substitute_host/row_source.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "hosts/substitute_host/host_state.h"

constexpr int16_t kPaddingUndefined = -2;

constexpr int32_t kOutside = -1;

size_t requestedBytes(const RowRequest& request) {
  const Rectangle& rect = request.rect;
  return static_cast<size_t>(rect.right - rect.left) * static_cast<size_t>(rect.bottom - rect.top) *
         static_cast<size_t>(request.hiPlane - request.loPlane + 1);
}

static int32_t wholeFactor(int32_t rate) {
  return host().switches.honourSampling ? std::max(rate >> 16, 1) : 1;
}

// The picture coordinates that the reduced coordinates from `first` to before `end` stand for:
// every factor-th pixel, of as many whole steps as the picture holds.
static std::vector<int32_t> pictureCoordinates(int32_t first, int32_t end, int32_t size,
                                               int32_t factor, int16_t padding) {
  const int32_t reducedSize = size / factor;
  std::vector<int32_t> coordinates;
  coordinates.reserve(static_cast<size_t>(end - first));
  for (int32_t reduced = first; reduced < end; ++reduced) {
    int32_t used = reduced;
    if (padding == kPaddingRepeatEdge && reducedSize > 0) {
      used = std::clamp(used, 0, reducedSize - 1);
    }
    const bool inside = 0 <= used && used < reducedSize;
    coordinates.push_back(inside ? used * factor : kOutside);
  }
  return coordinates;
}

static bool anyOutside(const std::vector<int32_t>& coordinates) {
  return std::find(coordinates.begin(), coordinates.end(), kOutside) != coordinates.end();
}

int16_t fillRows(const RowRequest& request, uint8_t* rows) {
  const int32_t factor = wholeFactor(request.rate);
  const Rectangle& rect = request.rect;
  const int16_t padding = request.padding;
  const std::vector<int32_t> columns =
      pictureCoordinates(rect.left, rect.right, request.width, factor, padding);
  const std::vector<int32_t> lines =
      pictureCoordinates(rect.top, rect.bottom, request.height, factor, padding);
  const bool paddingKnown = kPaddingUndefined <= padding && padding <= 255;
  if (!paddingKnown && (anyOutside(columns) || anyOutside(lines))) return kBadParameter;

  const uint8_t outside = padding >= 0 ? static_cast<uint8_t>(padding) : kGarbage;
  const size_t planes = static_cast<size_t>(request.hiPlane - request.loPlane + 1);
  uint8_t* to = rows;
  for (const int32_t y : lines) {
    for (const int32_t x : columns) {
      if (x == kOutside || y == kOutside) {
        std::memset(to, outside, planes);
      } else {
        const size_t pixel = static_cast<size_t>(y) * request.width + x;
        std::memcpy(to, request.samples + pixel * request.planes + request.loPlane, planes);
      }
      to += planes;
    }
  }
  return kNoError;
}
