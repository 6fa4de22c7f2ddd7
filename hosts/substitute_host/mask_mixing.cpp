// mask_mixing: how an editor limits a filter's result to the selection.

#include <cstddef>

#include "hosts/substitute_host/substitute_host.h"

HostPicture mixByMask(const HostPicture& source, const HostPicture& effect, const HostMask& mask) {
  if (mask.empty()) return effect;
  HostPicture mixed = source;
  const int32_t colorPlanes = source.planes < 3 ? 1 : 3;
  for (size_t pixel = 0; pixel < mask.size(); ++pixel) {
    const int32_t weight = mask[pixel];
    for (int32_t plane = 0; plane < colorPlanes; ++plane) {
      const size_t at = pixel * source.planes + plane;
      const int32_t sum = source.samples[at] * (255 - weight) + effect.samples[at] * weight;
      mixed.samples[at] = static_cast<uint8_t>((sum + 127) / 255);
    }
  }
  return mixed;
}
