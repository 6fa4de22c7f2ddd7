#include "tests/reference/reference_pictures.h"

#include <algorithm>

namespace {

constexpr int64_t kPictureSide = 64;
constexpr int32_t kSurfaceSide = 128;
constexpr int32_t kTextureSide = 256;
constexpr uint8_t kBuiltInGrey = 188;

// How much of the target pixel's interval lies in the source pixel, in units of 1/64 source pixel.
int64_t overlap(int64_t target, int64_t source, int64_t sourceSize) {
  const int64_t low = std::max(target * sourceSize, source * kPictureSide);
  const int64_t high = std::min((target + 1) * sourceSize, (source + 1) * kPictureSide);
  return std::max<int64_t>(high - low, 0);
}

uint8_t& sample(std::vector<uint8_t>& picture, int32_t side, int32_t x, int32_t y, int32_t c) {
  return picture[(static_cast<size_t>(y) * side + x) * 3 + c];
}

std::vector<uint8_t> turnedOnce(std::vector<uint8_t> old) {
  std::vector<uint8_t> turned(old.size());
  const int32_t side = kPictureSide;
  for (int32_t y = 0; y < side; ++y) {
    for (int32_t x = 0; x < side; ++x) {
      for (int32_t c = 0; c < 3; ++c) {
        sample(turned, side, x, y, c) = sample(old, side, y, side - 1 - x, c);
      }
    }
  }
  return turned;
}

}  // namespace

std::vector<uint8_t> referenceResample(int32_t width, int32_t height,
                                       const std::vector<uint8_t>& rgb) {
  std::vector<uint8_t> small;
  const int64_t area = static_cast<int64_t>(width) * height;
  for (int64_t y = 0; y < kPictureSide; ++y) {
    for (int64_t x = 0; x < kPictureSide; ++x) {
      int64_t sums[3] = {0, 0, 0};
      for (int64_t v = y * height / kPictureSide; v < height; ++v) {
        const int64_t rows = overlap(y, v, height);
        if (rows == 0) break;
        for (int64_t u = x * width / kPictureSide; u < width; ++u) {
          const int64_t share = overlap(x, u, width) * rows;
          if (share == 0) break;
          for (int32_t c = 0; c < 3; ++c) sums[c] += share * rgb[(v * width + u) * 3 + c];
        }
      }
      for (int64_t sum : sums) small.push_back(static_cast<uint8_t>((2 * sum + area) / (2 * area)));
    }
  }
  return small;
}

std::vector<uint8_t> referenceRipMap(const std::vector<uint8_t>& environment, int32_t turns) {
  std::vector<uint8_t> picture = environment;
  if (turns >= 1 && turns <= 3) {
    for (int32_t turn = 0; turn < turns; ++turn) picture = turnedOnce(picture);
  }
  std::vector<uint8_t> surface(kSurfaceSide * kSurfaceSide * 3, 0);
  for (int32_t y = 0; y < kPictureSide; ++y) {
    for (int32_t x = 0; x < kPictureSide; ++x) {
      for (int32_t c = 0; c < 3; ++c) {
        sample(surface, kSurfaceSide, x, y, c) = sample(picture, kPictureSide, x, y, c);
      }
    }
  }
  // Each block is half as wide as the one on its left, then half as high as the one above it.
  int32_t source = 0;
  for (int32_t size = kPictureSide; size > 1; size /= 2) {
    const int32_t target = source + size;
    for (int32_t y = 0; y < kPictureSide; ++y) {
      for (int32_t n = 0; n < size / 2; ++n) {
        for (int32_t c = 0; c < 3; ++c) {
          const int32_t a = sample(surface, kSurfaceSide, source + 2 * n, y, c);
          const int32_t b = sample(surface, kSurfaceSide, source + 2 * n + 1, y, c);
          sample(surface, kSurfaceSide, target + n, y, c) = static_cast<uint8_t>((a + b) >> 1);
        }
      }
    }
    source = target;
  }
  source = 0;
  for (int32_t size = kPictureSide; size > 1; size /= 2) {
    const int32_t target = source + size;
    for (int32_t n = 0; n < size / 2; ++n) {
      for (int32_t x = 0; x < kSurfaceSide; ++x) {
        for (int32_t c = 0; c < 3; ++c) {
          const int32_t a = sample(surface, kSurfaceSide, x, source + 2 * n, c);
          const int32_t b = sample(surface, kSurfaceSide, x, source + 2 * n + 1, c);
          sample(surface, kSurfaceSide, x, target + n, c) = static_cast<uint8_t>((a + b) >> 1);
        }
      }
    }
    source = target;
  }
  return surface;
}

std::vector<uint8_t> referenceTextureSurface(int32_t width, int32_t height,
                                             const std::vector<uint8_t>& grey) {
  std::vector<uint8_t> surface(kTextureSide * kTextureSide, 0);
  for (int32_t y = 0; y < kPictureSide; ++y) {
    for (int32_t x = 0; x < kPictureSide; ++x) surface[y * kTextureSide + x] = kBuiltInGrey;
  }
  if (grey.empty()) return surface;
  for (int32_t y = 0; y < height; ++y) {
    for (int32_t x = 0; x < width; ++x) surface[y * kTextureSide + x] = grey[y * width + x];
  }
  if (width >= kPictureSide && height >= kPictureSide) return surface;

  // Whole blocks: the last one may pass the square.
  for (int32_t down = height; down < kPictureSide; down += height) {
    for (int32_t y = 0; y < height; ++y) {
      for (int32_t x = 0; x < width; ++x) {
        surface[(down + y) * kTextureSide + x] = surface[y * kTextureSide + x];
      }
    }
  }
  for (int32_t across = width; across < kPictureSide; across += width) {
    for (int32_t y = 0; y < kPictureSide; ++y) {
      for (int32_t x = 0; x < width; ++x) {
        surface[y * kTextureSide + across + x] = surface[y * kTextureSide + x];
      }
    }
  }
  return surface;
}

std::vector<uint8_t> referenceTextureTable(const std::vector<uint8_t>& surface) {
  std::vector<uint8_t> table;
  for (uint8_t green : surface) table.push_back(static_cast<uint8_t>(255 - green));
  return table;
}
