#include "geometry/bevel_profiles.h"

#include <algorithm>
#include <cmath>

#include "entry/session_record.h"
#include "services/fixed_point.h"
#include "vector/fast_passes.h"

constexpr int32_t kLast = kProfileEntries - 1;  // 3000
constexpr int32_t kHalf = kLast / 2;            // 1500
constexpr double kDegreesPerRadian = 57.295779524;
constexpr double kPi = 3.14159265359;
constexpr int32_t kKinkReach = 10;  // entries smoothed on either side of a kink
constexpr int32_t kKinkPasses = 7;
constexpr int32_t kScaleDivisor = 5000;

// Position along the table in thousandths.
static int32_t thousandths(int32_t i) {
  return i * 1000 / kLast;
}

static int16_t entry(double value) {
  return static_cast<int16_t>(truncateToInt32(value));
}

static void smoothKink(int16_t* p, int32_t c) {
  const int32_t low = std::max(c - kKinkReach, 1);
  const int32_t high = std::min(c + kKinkReach, kLast - 1);
  const auto average = [p](int32_t i) { p[i] = static_cast<int16_t>((p[i - 1] + p[i + 1]) / 2); };
  for (int32_t pass = 0; pass < kKinkPasses; ++pass) {
    for (int32_t i = low; i <= high; ++i) average(i);
    for (int32_t i = high; i >= low; --i) average(i);
  }
}

static void reverse(int16_t* p) {
  std::reverse(p, p + kProfileEntries);
}

static void chisel(int16_t* p) {
  for (int32_t i = 0; i <= kLast; ++i) p[i] = static_cast<int16_t>(10 * thousandths(i));
}

static void ridge(int16_t* p) {
  for (int32_t i = 0; i <= kHalf; ++i) p[i] = static_cast<int16_t>(10000 - 10 * thousandths(i));
  for (int32_t i = kHalf; i <= kLast; ++i) {
    p[i] = static_cast<int16_t>(10000 - 10 * (1000 - thousandths(i)));
  }
  smoothKink(p, kHalf);
  reverse(p);
}

static void sine(int16_t* p) {
  for (int32_t i = 0; i <= kLast; ++i) p[i] = entry(5000 - 4999.9 * std::sin(i * kPi / kLast));
  reverse(p);
}

static double quarterWave(int32_t i) {
  return std::sin(i * 89.99 / kLast / kDegreesPerRadian);
}

static void round(int16_t* p) {
  for (int32_t i = 0; i <= kLast; ++i) p[kLast - i] = entry(10000 - 9999.5 * quarterWave(i));
}

static void hollow(int16_t* p) {
  for (int32_t i = 0; i <= kLast; ++i) p[i] = entry(9999.5 * quarterWave(i));
}

static void step(int16_t* p) {
  for (int32_t i = 0; i <= 1000; ++i) p[i] = static_cast<int16_t>(10 * thousandths(i));
  for (int32_t i = 1000; i <= 2000; ++i) p[i] = 3330;
  for (int32_t i = 2000; i <= kLast; ++i) {
    p[i] = static_cast<int16_t>((thousandths(i) - 333) * 10);
  }
  smoothKink(p, 1000);
  smoothKink(p, 2000);
}

// Down and up again over the first half of the table.
static void firstHalfRidge(int16_t* p) {
  for (int32_t i = 0; i <= 750; ++i) p[i] = static_cast<int16_t>(10000 - 10 * thousandths(i));
  for (int32_t i = 750; i <= kHalf; ++i) {
    p[i] = static_cast<int16_t>(10000 - (500 - thousandths(i)) * 10);
  }
}

static void doubleRidge(int16_t* p) {
  firstHalfRidge(p);
  for (int32_t i = kHalf; i <= kLast; ++i) {
    p[i] = static_cast<int16_t>(10000 - (thousandths(i) - 500) * 10);
  }
  smoothKink(p, 750);
  smoothKink(p, kHalf);
  reverse(p);
}

static void firstHalfDome(int16_t* p) {
  for (int32_t i = 0; i <= kHalf; ++i) {
    p[i] = entry(10000 - 2500 * std::sin(thousandths(i) * 179.9 / 500 / kDegreesPerRadian));
  }
}

static void smoothDomeKink(int16_t* p) {
  for (int32_t i = 0; i < 3; ++i) smoothKink(p, kHalf);
}

// Quarter wave over the second half of the table, by the half's own index.
static double secondHalfWave(int32_t i) {
  return std::sin(thousandths(i) * 89.9 / 500 / kDegreesPerRadian);
}

static void crown(int16_t* p) {
  firstHalfDome(p);
  for (int32_t i = 0; i <= kHalf; ++i) p[kHalf + i] = entry(10000 - 5000 * secondHalfWave(i));
  smoothDomeKink(p);
  reverse(p);
}

static void collar(int16_t* p) {
  for (int32_t i = 0; i <= kHalf; ++i) p[i] = static_cast<int16_t>(10000 - 10 * thousandths(i));
  for (int32_t i = 0; i <= kHalf; ++i) {
    p[kHalf + i] = entry(10000 - (5000 - 5000 * secondHalfWave(i)));
  }
  smoothKink(p, 500);
  reverse(p);
}

// In order of i, each copied value as it then stands: the middle entry is its own copy's source.
static void repeatFirstHalf(int16_t* p) {
  for (int32_t i = 0; i <= kHalf; ++i) p[kHalf + i] = p[i];
}

static void twinRidge(int16_t* p) {
  firstHalfRidge(p);
  repeatFirstHalf(p);
  smoothKink(p, 750);
  smoothKink(p, kHalf);
  smoothKink(p, 2250);
}

static void twinDome(int16_t* p) {
  firstHalfDome(p);
  repeatFirstHalf(p);
  smoothDomeKink(p);
}

static double fullWave(int32_t i) {
  return std::sin(i * 359.9 / kLast / kDegreesPerRadian);
}

static void softGroove(int16_t* p) {
  for (int32_t i = 0; i <= kLast; ++i) {
    const double s = static_cast<float>(fullWave(i));
    p[i] = entry(5000 - 2500 * s * s * s);
  }
  reverse(p);
}

static void groove(int16_t* p) {
  for (int32_t i = 0; i <= kLast; ++i) p[i] = entry(5000 - 2500 * fullWave(i));
  reverse(p);
}

// By shape, from 1.
using ProfileShape = void (*)(int16_t* p);
constexpr ProfileShape kShapes[kShapeCount] = {chisel,   ridge,       sine,  round,  hollow,
                                               step,     doubleRidge, crown, collar, twinRidge,
                                               twinDome, softGroove,  groove};

static int32_t scaled(int32_t value, Word32 factor) {
  return (Word32(value) * factor / kScaleDivisor).value;
}

void buildProfile(SessionRecord* session) {
  const EffectSettings* settings = settingsOf(session);
  RenderState* render = &session->render;
  int16_t* p = render->profile;
  if (settings->shape >= 1 && settings->shape <= kShapeCount) {
    kShapes[settings->shape - 1](p);
  } else {
    std::fill_n(p, kProfileEntries, int16_t{0});
  }
  int32_t depthLow = 30000;
  for (int32_t i = 0; i <= kLast; ++i) depthLow = std::min(depthLow, -p[i]);
  const Word32 factor = Word32(render->effRadius) * settings->height;
  for (int32_t i = 0; i <= kLast; ++i) p[i] = static_cast<int16_t>(scaled(p[i], factor));
  render->depthLow = scaled(depthLow, factor);
}

void mapProfileRow(SessionRecord* session) {
  RenderState* render = &session->render;
  if (render->heightField.address == nullptr) return;
  int16_t* cells = fieldRow(render, render->currentRow);
  if (render->fast != nullptr) {
    return render->fast->surface->mapRow(cells, render->fieldStride, render->profile, kConeTop);
  }
  for (int32_t i = 0; i <= render->renderWidth + 1; ++i) {
    cells[i] = render->profile[std::clamp<int32_t>(cells[i], 0, kConeTop)];
  }
}
