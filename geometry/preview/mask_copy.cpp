#include "geometry/preview/mask_copy.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "entry/session_record.h"
#include "geometry/preview/preview_places.h"
#include "geometry/row_requests.h"
#include "services/fixed_point.h"
#include "services/memory_blocks.h"

constexpr int32_t kBandSamples = 1 << 22;  // asked of the host at a time

bool maskIsDelivered(const FilterRecord* filter, const Rectangle& rect) {
  return filter->maskData != nullptr && isSameRect(filter->maskRect, rect) &&
         std::abs(int64_t{filter->maskRowBytes}) >= rect.right - rect.left;
}

// Hosts take an empty input as the end, so one pixel is asked for and left alone.
static void requestBand(SessionRecord* session, const Rectangle& band) {
  FilterRecord* filter = session->filter;
  filter->inRect = {band.top, band.left, static_cast<int16_t>(band.top + 1),
                    static_cast<int16_t>(band.left + 1)};
  filter->outRect = {};
  filter->maskRect = band;
  requestAllPlanes(filter, kFixedOne);
}

static bool takeBand(SessionRecord* session, const Rectangle& band, uint8_t* samples) {
  const FilterRecord* filter = session->filter;
  if (filter->advanceState == nullptr) return false;  // withdrawn by the last band
  requestBand(session, band);
  if (filter->advanceState() != kNoError || !maskIsDelivered(filter, band)) return false;
  const auto width = static_cast<size_t>(band.right - band.left);
  for (int32_t y = 0; y < band.bottom - band.top; ++y) {
    std::memcpy(samples + width * static_cast<size_t>(y),
                filter->maskData + int64_t{y} * filter->maskRowBytes, width);
  }
  return true;
}

void takeMaskCopy(SessionRecord* session) {
  MaskCopy* copy = &session->render.preview.maskCopy;
  const FilterRecord* filter = session->filter;
  const Rectangle whole = filter->filterRect;
  if (copy->tried != 0 || filter->haveMask == 0 || filter->advanceState == nullptr) return;
  copy->tried = 1;
  const auto width = static_cast<uint32_t>(whole.right - whole.left);
  copy->bytes = uint64_t{width} * static_cast<uint32_t>(whole.bottom - whole.top);
  copy->samples = static_cast<uint8_t*>(newModuleBlock(copy->bytes));
  if (copy->samples == nullptr) return;
  const int32_t rows = std::max(kBandSamples / static_cast<int32_t>(width), 1);
  for (int32_t top = whole.top; top < whole.bottom; top += rows) {
    const int32_t bottom = std::min(top + rows, int32_t{whole.bottom});
    const Rectangle band = {static_cast<int16_t>(top), whole.left, static_cast<int16_t>(bottom),
                            whole.right};
    const auto done = static_cast<uint32_t>(top - whole.top);
    if (!takeBand(session, band, copy->samples + uint64_t{width} * done)) {
      freeModuleBlock(copy->samples);
      copy->samples = nullptr;
      return;
    }
  }
  copy->whole = 1;
}

void freeMaskCopy(SessionRecord* session) {
  MaskCopy* copy = &session->render.preview.maskCopy;
  freeModuleBlock(copy->samples);
  *copy = {};
}
