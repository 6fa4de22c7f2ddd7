#include "hosts/effect_runs/enlarged_run.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "hosts/process/command_failure.h"

// In the settings' own measure: from here on the bevel's width grows twice as fast.
constexpr int32_t kPlainRadius = 50;
constexpr int32_t kLargestRadius = 100;

// The relief's size doubles with every so many steps.
constexpr double kStepsToDouble = 100.0 / 7;
constexpr int32_t kLargestTextureScale = 100;

int32_t parseSupersample(const std::string& text) {
  if (text.empty()) return 1;
  if (text != "2" && text != "4") failOnUsage("--supersample " + text + ": takes 2 or 4");
  return text == "2" ? 2 : 4;
}

static int32_t pixelsOf(int32_t radius) {
  return radius <= kPlainRadius ? radius : 2 * radius - kPlainRadius;
}

static int32_t radiusOf(int32_t pixels) {
  return pixels <= kPlainRadius ? pixels : (pixels + kPlainRadius) / 2;
}

void enlargeSettings(int32_t times, EffectSettings* settings) {
  if (times == 1) return;
  const int32_t most = pixelsOf(kLargestRadius) / times;
  const int32_t radius = radiusOf(pixelsOf(settings->radius) * times);
  if (radius > kLargestRadius) {
    failOnUsage("--supersample " + std::to_string(times) + " takes a radius of " +
                std::to_string(radiusOf(most)) + " at most; this one is " +
                std::to_string(settings->radius));
  }
  settings->radius = radius;
  const auto steps = static_cast<int32_t>(std::lround(kStepsToDouble * std::log2(times)));
  settings->textureScale = std::min(settings->textureScale + steps, kLargestTextureScale);
}

HostPicture enlargedPicture(const HostPicture& picture, int32_t times) {
  HostPicture enlarged = {picture.width * times, picture.height * times, picture.planes, {}};
  const auto planes = static_cast<size_t>(picture.planes);
  const size_t row = static_cast<size_t>(picture.width) * planes;
  std::vector<uint8_t>& samples = enlarged.samples;
  samples.reserve(picture.samples.size() * static_cast<size_t>(times * times));
  for (size_t start = 0; start < picture.samples.size(); start += row) {
    const size_t begin = samples.size();
    for (size_t i = 0; i < row; i += planes) {
      const auto pixel = picture.samples.begin() + static_cast<ptrdiff_t>(start + i);
      for (int32_t k = 0; k < times; ++k)
        samples.insert(samples.end(), pixel, pixel + picture.planes);
    }
    const size_t bytes = samples.size() - begin;
    for (int32_t k = 1; k < times; ++k) {
      samples.resize(samples.size() + bytes);
      std::copy_n(samples.begin() + static_cast<ptrdiff_t>(begin), bytes,
                  samples.end() - static_cast<ptrdiff_t>(bytes));
    }
  }
  return enlarged;
}

// What the small pixels of one large one add up to.
struct PixelSums {
  uint32_t weight;     // of the selection
  uint32_t effect[3];  // times the selection
};

static PixelSums sumsAt(const HostPicture& effect, const HostMask& mask, int32_t times, size_t x,
                        size_t y) {
  PixelSums sums = {};
  const auto planes = static_cast<size_t>(effect.planes);
  const auto side = static_cast<size_t>(times);
  for (size_t row = y * side; row < (y + 1) * side; ++row) {
    const size_t start = row * static_cast<size_t>(effect.width) + x * side;
    for (size_t i = start; i < start + side; ++i) {
      sums.weight += mask[i];
      for (size_t plane = 0; plane < planes; ++plane) {
        sums.effect[plane] += uint32_t{effect.samples[i * planes + plane]} * mask[i];
      }
    }
  }
  return sums;
}

void mixEnlarged(const HostPicture& effect, const HostMask& mask, int32_t times, Picture* picture) {
  const HostPicture& colors = picture->colors;
  const auto planes = static_cast<size_t>(colors.planes);
  const auto width = static_cast<size_t>(colors.width);
  const uint64_t whole = 255U * static_cast<uint32_t>(times * times);
  std::vector<uint16_t>& deep = picture->deep.colors;
  for (size_t i = 0; i < colors.samples.size() / planes; ++i) {
    const PixelSums sums = sumsAt(effect, mask, times, i % width, i / width);
    if (sums.weight == 0) continue;
    for (size_t plane = 0; plane < planes; ++plane) {
      uint8_t& sample = picture->colors.samples[i * planes + plane];
      if (deep.empty()) {
        const uint64_t sum = sample * (whole - sums.weight) + sums.effect[plane];
        sample = static_cast<uint8_t>((sum + whole / 2) / whole);
      } else {
        uint16_t& exact = deep[i * planes + plane];
        const uint64_t sum = exact * (whole - sums.weight) + sums.effect[plane] * uint64_t{257};
        exact = static_cast<uint16_t>((sum + whole / 2) / whole);
        sample = shallow(exact);
      }
    }
  }
}
