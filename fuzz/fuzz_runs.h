// fuzz_runs: what keeps runs of the fuzzers short, and what each ends with.

#pragma once

#include <algorithm>
#include <cstdlib>

#include "fuzz/fuzz_input.h"
#include "hosts/substitute_host/substitute_host.h"
#include "settings/effect_settings.h"
#include "tests/support/hosts/host_pictures.h"

// Takes the relief out of the settings that the host holds: to make one costs many times what the
// rest of a small render does.
inline void takeReliefAway() {
  if (hostRecord()->parameters != nullptr) hostSettings()->textureChoice = kTextureChoiceNone;
}

// The host's first Prepare.
inline void prepareFirst() {
  callSelector(kSelectorPrepare);
  takeReliefAway();
}

// Any rectangle of few pixels, or of so many that there is no memory for it: the host would deliver
// those between, for minutes.
inline Rectangle takeRectangle(FuzzInput* input) {
  constexpr int32_t kFewPixels = 10000;
  constexpr int64_t kTooManyPixels = 250'000'000;  // two bytes each are beyond what is allocated
  auto rect = take<Rectangle>(input);
  const int32_t width = rect.right - rect.left;
  const int32_t height = rect.bottom - rect.top;
  const int64_t pixels = int64_t{width} * height;
  if (width <= 0 || height <= 0 || pixels <= kFewPixels || pixels > kTooManyPixels) return rect;
  rect.right = static_cast<int16_t>(rect.left + std::min(width, kFewPixels));
  rect.bottom = static_cast<int16_t>(rect.top + std::max(kFewPixels / width, 1));
  return rect;
}

// A run that the host broke off keeps its memory until the next Start, or this Finish. After it the
// host has all that it gave.
inline void finishAndCheck() {
  failHostCall(0);
  callSelector(kSelectorFinish);
  if (hostLedger().misuses != 0 || hostLedger().buffers != 0) std::abort();
}
