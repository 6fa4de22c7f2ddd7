#include "hosts/effect_runs/mask_softening.h"

#include <algorithm>
#include <vector>

constexpr int kPasses = 3;

// The means over 2 x reach + 1 samples of a line, which goes on beyond its ends as it ends.
static void smoothLine(int reach, const std::vector<uint8_t>& from, std::vector<uint8_t>* to) {
  const int last = static_cast<int>(from.size()) - 1;
  const auto at = [&](int i) { return from[static_cast<size_t>(std::clamp(i, 0, last))]; };
  const int count = 2 * reach + 1;
  int sum = 0;
  for (int i = -reach; i <= reach; ++i) sum += at(i);
  for (int i = 0; i <= last; ++i) {
    (*to)[static_cast<size_t>(i)] = static_cast<uint8_t>((sum + count / 2) / count);
    sum += at(i + reach + 1) - at(i - reach);
  }
}

// `stride` leads from one sample of a line to the next.
static void softenLine(uint8_t* start, size_t count, size_t stride, int reach) {
  std::vector<uint8_t> line(count);
  std::vector<uint8_t> smoothed(count);
  for (size_t i = 0; i < count; ++i) line[i] = start[i * stride];
  for (int pass = 0; pass < kPasses; ++pass) {
    smoothLine(reach, line, &smoothed);
    line.swap(smoothed);
  }
  for (size_t i = 0; i < count; ++i) start[i * stride] = line[i];
}

void softenMask(int32_t width, int32_t height, int pixels, HostMask* mask) {
  const int reach = std::max(1, (pixels + 1) / kPasses);
  const auto columns = static_cast<size_t>(width);
  const auto rows = static_cast<size_t>(height);
  for (size_t y = 0; y < rows; ++y) softenLine(&(*mask)[y * columns], columns, 1, reach);
  for (size_t x = 0; x < columns; ++x) softenLine(&(*mask)[x], rows, columns, reach);
}
