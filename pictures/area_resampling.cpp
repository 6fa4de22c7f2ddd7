#include "pictures/area_resampling.h"

#include <algorithm>

#include "pictures/picture_surface.h"
#include "platform/bitmap_decoder.h"

// Along one axis, in units in which a source pixel is `targetSize` long and a target pixel
// `sourceSize`: both divisions of the axis then fall on whole numbers.
struct AxisSpan {
  int64_t start;
  int64_t end;
  int64_t sourcePixel;  // length of a source pixel
};

static AxisSpan spanOf(int32_t target, int32_t sourceSize, int32_t targetSize) {
  return {int64_t{target} * sourceSize, (int64_t{target} + 1) * sourceSize, targetSize};
}

static int64_t shareOf(const AxisSpan& span, int64_t source) {
  return std::min(span.end, (source + 1) * span.sourcePixel) -
         std::max(span.start, source * span.sourcePixel);
}

static void averagePixel(const DecodedBitmap& source, const AxisSpan& across, const AxisSpan& down,
                         uint8_t* pixel) {
  int64_t sums[3] = {};
  for (int64_t y = down.start / down.sourcePixel; y * down.sourcePixel < down.end; ++y) {
    const int64_t rowShare = shareOf(down, y);
    const uint8_t* row = source.rgb + 3 * source.width * y;
    for (int64_t x = across.start / across.sourcePixel; x * across.sourcePixel < across.end; ++x) {
      const int64_t share = rowShare * shareOf(across, x);
      for (int32_t channel = 0; channel < 3; ++channel) {
        sums[channel] += share * row[3 * x + channel];
      }
    }
  }
  const int64_t area = (across.end - across.start) * (down.end - down.start);
  for (int32_t channel = 0; channel < 3; ++channel) {
    pixel[channel] = static_cast<uint8_t>((2 * sums[channel] + area) / (2 * area));
  }
}

void resampleByArea(const DecodedBitmap& source, PictureSurface* target, int32_t width,
                    int32_t height) {
  for (int32_t y = 0; y < height; ++y) {
    const AxisSpan down = spanOf(y, source.height, height);
    for (int32_t x = 0; x < width; ++x) {
      averagePixel(source, spanOf(x, source.width, width), down, surfacePixel(target, x, y));
    }
  }
}
