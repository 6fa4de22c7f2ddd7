#include "hosts/substitute_host/mask_mixing.h"

#include <algorithm>
#include <cstddef>

#include "hosts/substitute_host/substitute_host.h"

constexpr int32_t kChunk = 1024;  // samples

// source x (255 - weight) + effect x weight, over 255 and rounded. With t = that sum + 128 the
// rounded quotient is (t + (t >> 8)) >> 8 for every sum of two bytes' products.
static void mixSamples(const uint8_t* weights, const uint8_t* effect, int32_t count,
                       uint8_t* picture) {
  for (int32_t i = 0; i < count; ++i) {
    const uint16_t weight = weights[i];
    const uint16_t rest = static_cast<uint16_t>(255 - weight);
    const uint16_t t = static_cast<uint16_t>(picture[i] * rest + effect[i] * weight + 128);
    picture[i] = static_cast<uint8_t>((t + (t >> 8)) >> 8);
  }
}

// A weight for each sample; none for those of transparency.
template <int32_t kPlanes>
static void spreadWeights(const uint8_t* mask, int32_t pixels, uint8_t* weights) {
  constexpr int32_t kColors = kPlanes < 3 ? 1 : 3;
  for (int32_t x = 0; x < pixels; ++x) {
    for (int32_t plane = 0; plane < kPlanes; ++plane) {
      weights[x * kPlanes + plane] = plane < kColors ? mask[x] : uint8_t{0};
    }
  }
}

static void spread(const uint8_t* mask, int32_t pixels, int32_t planes, uint8_t* weights) {
  switch (planes) {
    case 1:
      return spreadWeights<1>(mask, pixels, weights);
    case 2:
      return spreadWeights<2>(mask, pixels, weights);
    case 3:
      return spreadWeights<3>(mask, pixels, weights);
    default:
      return spreadWeights<4>(mask, pixels, weights);
  }
}

void mixRow(const uint8_t* mask, const uint8_t* effect, int32_t pixels, int32_t planes, bool whole,
            uint8_t* picture) {
  uint8_t weights[kChunk];
  const int32_t most = kChunk / planes;
  for (int32_t x = 0; x < pixels; x += most) {
    const int32_t count = std::min(most, pixels - x);
    const int32_t at = x * planes;
    spread(mask + x, count, planes, weights);
    if (whole) {
      for (int32_t i = 0; i < count * planes; ++i) weights[i] = weights[i] != 0 ? 255 : 0;
    }
    mixSamples(weights, effect + at, count * planes, picture + at);
  }
}

HostPicture mixByMask(const HostPicture& source, const HostPicture& effect, const HostMask& mask) {
  if (mask.empty()) return effect;
  HostPicture mixed = source;
  const size_t rowSamples = static_cast<size_t>(source.width) * static_cast<size_t>(source.planes);
  for (int32_t y = 0; y < source.height; ++y) {
    const size_t row = static_cast<size_t>(y);
    mixRow(&mask[row * static_cast<size_t>(source.width)], &effect.samples[row * rowSamples],
           source.width, source.planes, /*whole=*/false, &mixed.samples[row * rowSamples]);
  }
  return mixed;
}
