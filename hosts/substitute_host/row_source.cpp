#include "hosts/substitute_host/row_source.h"

#include <algorithm>
#include <cstring>

#include "hosts/substitute_host/host_state.h"

constexpr int16_t kPaddingUndefined = -2;

size_t requestedBytes(const RowRequest& request) {
  const Rectangle& rect = request.rect;
  return static_cast<size_t>(rect.right - rect.left) * static_cast<size_t>(rect.bottom - rect.top) *
         static_cast<size_t>(request.hiPlane - request.loPlane + 1);
}

static int32_t wholeFactor(int32_t rate) {
  return host().switches.honourSampling ? std::max(rate >> 16, 1) : 1;
}

// Which pixels of a side a request covers, in reduced coordinates: those before the picture, those
// inside, those behind.
struct Span {
  int32_t before;
  int32_t inside;
  int32_t behind;
};

static Span spanOf(int32_t first, int32_t end, int32_t reducedSize) {
  const int32_t start = std::clamp(0, first, end);
  const int32_t stop = std::clamp(reducedSize, start, end);
  return {start - first, stop - start, end - stop};
}

// `count` pixels of a row, every factor-th one.
static uint8_t* copyPixels(const RowRequest& request, const uint8_t* from, int32_t count,
                           int32_t factor, uint8_t* to) {
  const size_t planes = static_cast<size_t>(request.hiPlane - request.loPlane + 1);
  const size_t step = static_cast<size_t>(factor) * static_cast<size_t>(request.planes);
  if (step == planes) {
    std::memcpy(to, from, planes * static_cast<size_t>(count));
    return to + planes * static_cast<size_t>(count);
  }
  for (int32_t i = 0; i < count; ++i, from += step) {
    for (size_t plane = 0; plane < planes; ++plane) *to++ = from[plane];
  }
  return to;
}

// `count` times the one pixel.
static uint8_t* repeatPixel(const uint8_t* pixel, size_t planes, int32_t count, uint8_t* to) {
  for (int32_t i = 0; i < count; ++i, to += planes) std::memcpy(to, pixel, planes);
  return to;
}

int16_t fillRows(const RowRequest& request, uint8_t* rows) {
  const int32_t factor = wholeFactor(request.rate);
  const Rectangle& rect = request.rect;
  const int16_t padding = request.padding;
  const int32_t width = request.width / factor;
  const int32_t height = request.height / factor;
  const Span columns = spanOf(rect.left, rect.right, width);
  const Span lines = spanOf(rect.top, rect.bottom, height);
  const bool repeats = padding == kPaddingRepeatEdge && width > 0 && height > 0;
  const bool allInside = columns.before + columns.behind + lines.before + lines.behind == 0;
  const bool paddingKnown = kPaddingUndefined <= padding && padding <= 255;
  if (!paddingKnown && !allInside) return kBadParameter;

  const uint8_t outside = padding >= 0 ? static_cast<uint8_t>(padding) : kGarbage;
  const size_t planes = static_cast<size_t>(request.hiPlane - request.loPlane + 1);
  const size_t rowBytes = planes * static_cast<size_t>(rect.right - rect.left);
  const int32_t left = std::max<int32_t>(rect.left, 0);
  for (int32_t y = rect.top; y < rect.bottom; ++y, rows += rowBytes) {
    if (!repeats && (y < 0 || y >= height || columns.inside == 0)) {
      std::memset(rows, outside, rowBytes);
      continue;
    }
    const size_t line = static_cast<size_t>(repeats ? std::clamp(y, 0, height - 1) : y) *
                        static_cast<size_t>(factor) * static_cast<size_t>(request.width);
    const auto pixelAt = [&](int32_t x) {
      return request.samples +
             (line + static_cast<size_t>(x) * static_cast<size_t>(factor)) *
                 static_cast<size_t>(request.planes) +
             request.loPlane;
    };
    uint8_t* to = rows;
    if (repeats) {
      to = repeatPixel(pixelAt(0), planes, columns.before, to);
    } else {
      std::memset(to, outside, planes * static_cast<size_t>(columns.before));
      to += planes * static_cast<size_t>(columns.before);
    }
    if (columns.inside > 0) to = copyPixels(request, pixelAt(left), columns.inside, factor, to);
    if (repeats) {
      repeatPixel(pixelAt(width - 1), planes, columns.behind, to);
    } else {
      std::memset(to, outside, planes * static_cast<size_t>(columns.behind));
    }
  }
  return kNoError;
}
