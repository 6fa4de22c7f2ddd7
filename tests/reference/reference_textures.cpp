#include "tests/reference/reference_textures.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kDegrees = 57.295779524;
constexpr int32_t kSide = 256;
constexpr int32_t kSeamRows = 16;

struct Pattern {
  int32_t type;  // 0 flat, 1 walk, 6 and 7 cells, 9 and 10 noise
  int32_t p2;
  int32_t p3;
  int32_t variant;
  int32_t p4;
};

constexpr Pattern kPatterns[12] = {
    {0, 5, 1, 1, 0}, {1, 5, 1, 1, 0},   {1, 5, 1, 3, 0},  {1, 5, 1, 5, 0},
    {1, 5, 1, 2, 0}, {10, 4, 3, 3, 40}, {7, 5, 2, 55, 0}, {6, 5, 2, 3, 0},
    {9, 5, 3, 3, 0}, {9, 5, 3, 3, 0},   {9, 5, 3, 3, 0},  {10, 5, 3, 2, 40},
};

// Separate storage for everything that one picture needs.
struct Generator {
  int32_t choice;
  Pattern pattern;
  ReferenceRandom random;
  std::array<int32_t, 256> tone;
  int32_t walkStep;
  int32_t walkScale;
  int32_t walkPrevious;
  std::array<int16_t, kSide> walkMemory;
  int32_t cellShift;
  std::array<int32_t, 1025> jitter;
  std::array<int32_t, 2148> root;
  std::array<int32_t, 2048> noise;
  int32_t noiseFloor;
  int32_t noiseStripe;
  std::vector<uint8_t> grey;
};

void buildTone(Generator& g) {
  float gain = 0.25F;
  if (g.choice == 2 || g.choice == 7) gain = -0.25F;
  if (g.choice == 6 || g.choice == 12) gain = 0.5F;
  if (g.choice == 8) gain = -0.5F;
  const double k = gain;
  auto& tone = g.tone;
  switch (g.pattern.variant) {
    case 1:
      for (int32_t i = 0; i < 256; ++i) tone[i] = static_cast<int32_t>(i * k);
      for (int32_t n = 0; n < 16; ++n) tone[240 + n] = static_cast<int32_t>((248 - 16 * n) * k);
      break;
    case 2:
      for (int32_t i = 0; i < 128; ++i) tone[i] = static_cast<int32_t>(i * k * 2);
      for (int32_t i = 0; i < 128; ++i) tone[128 + i] = static_cast<int32_t>((255 - 2 * i) * k);
      break;
    case 3:
      for (int32_t i = 0; i < 256; ++i) {
        const int32_t q = i * 180 / 255;
        tone[i] = static_cast<int32_t>(std::sin(q / kDegrees) * (k * 255));
      }
      break;
    case 5:
      for (int32_t i = 0; i < 256; ++i) tone[i] = 0;
      for (int32_t i = 0; i < 128; ++i) {
        const int32_t q = i * 180 / 127;
        tone[64 + i] = static_cast<int32_t>(std::sin(q / kDegrees) * (k * 255));
      }
      break;
    case 55:
      for (int32_t i = 0; i < 256; ++i) {
        const int32_t q = i * 90 / 255;
        tone[i] = static_cast<int32_t>(255 - std::sin(q / kDegrees + 90.0) * (k * 3 * 255));
      }
      break;
    default:
      break;
  }
}

void setUp(Generator& g) {
  buildTone(g);
  g.walkPrevious = 0;
  const Pattern& p = g.pattern;
  if (p.type == 1) {
    for (int32_t x = 0; x < kSide; ++x) {
      g.walkMemory[x] = static_cast<int16_t>(referenceRandomNumber(g.random) & 2047);
    }
    g.walkScale = 6 - p.p2;
    g.walkStep = 128 >> p.p3;
  }
  if (p.type == 6 || p.type == 7) {
    const int32_t c = 8 - p.p2;
    g.cellShift = 3 - p.p3;
    for (int32_t& entry : g.jitter) entry = (referenceRandomNumber(g.random) >> 3) % 28;
    for (int32_t i = 0; i < 2148; ++i) {
      g.root[i] = static_cast<int32_t>(std::sqrt(static_cast<double>(i)) * (3 * c));
    }
  }
  if (p.type == 9 || p.type == 10) {
    for (int32_t& entry : g.noise) entry = referenceRandomNumber(g.random) & 255;
    g.noiseFloor = p.type == 9 ? p.p4 * 512 / 100 - 127 : p.p4 * 64 / 100;
    g.noiseStripe = (16 >> p.p3) * (6 - p.p2);
  }
}

int32_t walkPixel(Generator& g, int32_t x) {
  const int32_t w = (referenceRandomNumber(g.random) & 7) + 12;
  int32_t v = (g.walkMemory[x] * w + g.walkPrevious * (32 - w)) / 32;
  v = v + g.walkStep;
  if (v > 1023) v = v - 2047;
  g.walkMemory[x] = static_cast<int16_t>(v);
  g.walkPrevious = v;
  return g.tone[((v + 1023) * g.walkScale / 8) & 255] + 128;
}

int32_t cellPixel(const Generator& g, int32_t x, int32_t row) {
  const int32_t px = x << g.cellShift;
  const int32_t py = row << g.cellShift;
  const int32_t cx = (px - 16) >> 5;
  const int32_t cy = (py - 16) >> 5;
  int32_t d = g.pattern.type == 6 ? 1023 : 10000;
  for (int32_t i = cx; i <= cx + 2; ++i) {
    for (int32_t j = cy; j <= cy + 2; ++j) {
      const int32_t dx = g.jitter[(i & 15) * 17 + (j & 15) * 27] & 31;
      const int32_t dy = g.jitter[(i & 15) * 19 + (j & 15) * 37] & 31;
      const int32_t awayX = px - (32 * i + dx);
      const int32_t awayY = py - (32 * j + dy);
      d = std::min(d, awayX * awayX + awayY * awayY);
    }
  }
  if (d > 2047) d = 4095 - d;
  int32_t t = g.root[d];
  if (t > 255) t = 511 - t;
  const int32_t value = g.pattern.type == 6 ? g.tone[t] + 208 : g.tone[t] - 160;
  return std::clamp(value, 0, 255);
}

int32_t latticeNoise(const Generator& g, int32_t u, int32_t w, int32_t pu, int32_t pw) {
  u = u & 4095;
  w = w & 4095;
  if (u > 2047) u = 4096 - u;
  if (w > 2048) w = 4096 - w;
  const int32_t fu = u & 127;
  const int32_t fw = w & 127;
  const int32_t iu = u >> 7;
  const int32_t iw = w >> 7;
  const int32_t mu = (pu >> 7) - 1;
  const int32_t mw = (pw >> 7) - 1;
  const int32_t i0 = (iu & mu) * 29;
  const int32_t i1 = ((iu + 1) & mu) * 29;
  const int32_t j0 = (iw & mw) * 37;
  const int32_t j1 = ((iw + 1) & mw) * 37;
  auto corner = [&g](int32_t i, int32_t j) { return g.noise[(i + j) & 2047]; };
  const int32_t upper = (corner(i1, j1) * fu + corner(i0, j1) * (127 - fu)) >> 3;
  const int32_t lower = (corner(i1, j0) * fu + corner(i0, j0) * (127 - fu)) >> 3;
  return ((upper * fw + lower * (127 - fw)) >> 5) - 16256;
}

int32_t noisePixel(const Generator& g, int32_t x, int32_t y) {
  const int32_t a = g.choice == 11 ? 0 : 1;
  const int32_t b = g.choice == 10 ? 0 : 1;
  const int32_t q = g.choice == 10 ? 1 : 2;
  auto n = [&g, a, b](int32_t u, int32_t w, int32_t k, int32_t period) {
    return latticeNoise(g, u << (k + b), w << (k + a), period, 256 << (k + a));
  };
  int32_t v = (n(x + 2, y + 2, 6, 16384 * q) + 3 * n(x + 3, y + 3, 5, 8192 * q) +
               5 * n(x + 4, y + 4, 4, 4096 * q) + 7 * n(x, y, 3, 2048 * q) +
               10 * n(x + 1, y + 1, 2, 1024 * q)) >>
              12;
  if (g.pattern.type == 10) {
    return g.tone[((x + y) * g.noiseStripe + ((v * g.noiseFloor) >> 4)) & 255];
  }
  if (g.pattern.variant != 1) v = 3 * g.tone[v & 255];
  return std::max(v, g.noiseFloor);
}

void generateRow(Generator& g, int32_t row) {
  for (int32_t x = 0; x < kSide; ++x) {
    int32_t value = 192;
    if (g.pattern.type == 1) value = walkPixel(g, x);
    if (g.pattern.type == 6 || g.pattern.type == 7) value = cellPixel(g, x, row);
    if (g.pattern.type == 9 || g.pattern.type == 10) value = noisePixel(g, x, row);
    g.grey[row * kSide + x] = static_cast<uint8_t>(value & 255);
  }
}

void blendSeam(Generator& g) {
  constexpr int32_t n = kSeamRows;
  for (int32_t y = 0; y <= n; ++y) {
    for (int32_t x = 0; x < kSide; ++x) {
      const int32_t a = g.grey[y * kSide + x];
      const int32_t b = g.grey[(255 - n + y) * kSide + x];
      g.grey[y * kSide + x] = static_cast<uint8_t>(((a * y + b * (n - y)) / n) & 255);
    }
  }
}

}  // namespace

int32_t referenceRandomNumber(ReferenceRandom& random) {
  random.state = random.state * 214013U + 2531011U;
  return static_cast<int32_t>((random.state >> 16) & 32767U);
}

ReferenceTexture referenceTexture(int32_t choice, uint32_t seed) {
  Generator g{};
  g.choice = choice;
  g.pattern = kPatterns[std::clamp(choice, 1, 12) - 1];
  g.random = {seed};
  g.grey.assign(kSide * kSide, 0);
  setUp(g);
  if (g.pattern.type == 1) {
    for (int32_t row = 0; row <= 7; ++row) generateRow(g, row);
  }
  for (int32_t row = 0; row < kSide; ++row) generateRow(g, row);
  if (g.pattern.type == 1) blendSeam(g);
  return {g.grey, kSide, g.pattern.type == 1 ? 240 : kSide, g.tone};
}
