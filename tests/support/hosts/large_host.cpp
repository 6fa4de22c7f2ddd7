#include "tests/support/hosts/large_host.h"

#include <vector>

#include "hosts/substitute_host/substitute_host.h"

struct LargeRows {
  std::vector<uint8_t> bytes;
  int32_t rowBytes;
};

static LargeRows input;
static LargeRows output;
static LargeRows maskRows;

uint8_t largeSample(int32_t x, int32_t y, int32_t plane) {
  return static_cast<uint8_t>((x >> 3) + (y >> 2) * (plane + 1));
}

uint8_t largeMask(int32_t x, int32_t y) {
  const int32_t dx = x % 400 - 200;
  const int32_t dy = y % 400 - 200;
  return dx * dx + dy * dy < 140 * 140 ? 255 : 0;
}

template <typename Sample>
static void make(LargeRows* rows, const Rectangle& rect, int32_t planes, int32_t rate,
                 const Sample& sample) {
  const int32_t factor = rate >> 16;
  rows->bytes.clear();
  rows->rowBytes = (rect.right - rect.left) * planes;
  for (int32_t y = rect.top; y < rect.bottom; ++y) {
    for (int32_t x = rect.left; x < rect.right; ++x) {
      for (int32_t plane = 0; plane < planes; ++plane) {
        rows->bytes.push_back(sample(x * factor, y * factor, plane));
      }
    }
  }
}

static int16_t MORVALIS_CALL deliver() {
  FilterRecord* record = hostRecord();
  make(&input, record->inRect, 3, record->inputRate, largeSample);
  make(&output, record->outRect, 3, kFixedOne, largeSample);
  make(&maskRows, record->maskRect, 1, record->maskRate,
       [](int32_t x, int32_t y, int32_t) { return largeMask(x, y); });
  record->inData = input.bytes.data();
  record->inRowBytes = input.rowBytes;
  record->outData = output.bytes.data();
  record->outRowBytes = output.rowBytes;
  record->maskData = maskRows.bytes.data();
  record->maskRowBytes = maskRows.rowBytes;
  return kNoError;
}

void enlargeHost(int16_t width, int16_t height) {
  FilterRecord* record = hostRecord();
  record->imageSize = record->wholeSize = {height, width};
  record->filterRect = {0, 0, height, width};
  record->haveMask = 1;
  record->advanceState = deliver;
}
