// fuzz_runs: what keeps runs of the fuzzers short, and what each ends with.

#pragma once

#include <algorithm>
#include <cstdlib>
#include <vector>

#include "entry/handles.h"
#include "fuzz/fuzz_input.h"
#include "hosts/substitute_host/host_state.h"
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

// Settings that a host has taken out of its record, to be freed in the end.
inline std::vector<Handle>& takenHandles() {
  static std::vector<Handle> handles;
  return handles;
}

// What a host may do to its record whenever it is called, now and then. It does not lie about the
// rows that it has delivered, but takes them away.
inline void changeRecord(FuzzInput* input) {
  FilterRecord* record = hostRecord();
  switch (takeBetween(input, 0, 63)) {
    case 1:
      takenHandles().push_back(Handle{record->parameters});
      record->parameters = nullptr;
      break;
    case 2:
      record->planes = static_cast<int16_t>(takeBetween(input, -1, 5));
      break;
    case 3:
      record->filterRect = takeRectangle(input);
      break;
    case 4:
      record->haveMask = take<uint8_t>(input) & 1;
      break;
    case 5:
      record->inRect = takeRectangle(input);
      break;
    case 6:
      record->outRect = takeRectangle(input);
      break;
    case 7:
      record->maskRect = takeRectangle(input);
      break;
    case 8:
      record->inData = nullptr;
      break;
    case 9:
      record->outData = nullptr;
      break;
    case 10:
      record->maskData = nullptr;
      break;
    case 11:
      record->advanceState = nullptr;
      break;
    case 12:
      record->displayPixels = nullptr;
      break;
    case 13:
      record->inputRate = record->maskRate = take<int32_t>(input);
      break;
    case 14:
      record->imageMode = static_cast<int16_t>(takeBetween(input, 0, 4));
      break;
    case 15:
      record->imageSize = take<Point>(input);
      break;
    case 16:  // which says nothing of a single row
      if (record->inRect.bottom - record->inRect.top == 1)
        record->inRowBytes = take<int32_t>(input);
      break;
    default:
      break;
  }
}

// Of the module's own; the host frees its own ones.
inline void freeOwnHandles() {
  disposeModuleHandle(reinterpret_cast<Handle>(host().dataSlot));
  disposeModuleHandle(hostRecord()->parameters);
  for (const Handle handle : takenHandles()) disposeModuleHandle(handle);
  takenHandles().clear();
}

// A run that the host broke off keeps its memory until the next Start, or this Finish. After it the
// host has all that it gave.
inline void finishAndCheck() {
  failHostCall(0);
  callSelector(kSelectorFinish);
  if (hostLedger().misuses != 0 || hostLedger().buffers != 0) std::abort();
}
