// Every division of the surface passes that is done by another operation, over its whole range, in
// every instruction set. MORVALIS_LONG=1 takes every scale.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <vector>

#include "vector/fast_passes.h"
#include "vector/instruction_sets.h"

template <typename Check>
static void inEverySet(Check check) {
  const InstructionSet before = chosenInstructionSet();
  for (int32_t set = 1; set <= static_cast<int32_t>(bestInstructionSet()); ++set) {
    limitInstructionSet(static_cast<InstructionSet>(set));
    SCOPED_TRACE(instructionSetName(static_cast<InstructionSet>(set)));
    check(*fastPasses()->surface);
  }
  limitInstructionSet(before);
}

constexpr int32_t kTop = 3000;

// Four cells of at most kTop with this sum.
static void share(int32_t sum, int16_t* const (&cells)[4]) {
  for (int16_t* cell : cells) {
    *cell = static_cast<int16_t>(std::min(sum, kTop));
    sum -= *cell;
  }
}

// 12 corners + 31 sides + 80 centre = sum; false where whole numbers cannot give it.
static bool solve(int32_t sum, int32_t* corners, int32_t* sides, int32_t* centre) {
  for (*centre = std::min(sum / 80, kTop); *centre >= 0; --*centre) {
    const int32_t rest = sum - 80 * *centre;
    const int32_t least = std::max(0, rest - 12 * 4 * kTop) / 31;
    for (*sides = least; *sides < least + 13 && 31 * *sides <= rest; ++*sides) {
      *corners = (rest - 31 * *sides) / 12;
      if (12 * *corners + 31 * *sides == rest && *corners <= 4 * kTop && *sides <= 4 * kTop) {
        return true;
      }
    }
    if (sum / 80 - *centre > 40) return false;
  }
  return false;
}

TEST(SurfacePasses, SmoothingDividesEverySumExactly) {
  // Three columns a sum; those beside the middle one give no results that count.
  std::vector<int16_t> above;
  std::vector<int16_t> middle;
  std::vector<int16_t> below;
  std::vector<int32_t> sums;
  for (int32_t sum = 0; sum <= 252 * kTop; ++sum) {
    int32_t corners = 0;
    int32_t sides = 0;
    int32_t centre = 0;
    if (!solve(sum, &corners, &sides, &centre)) continue;
    int16_t a[3] = {};
    int16_t m[3] = {0, static_cast<int16_t>(centre), 0};
    int16_t b[3] = {};
    share(corners, {&a[0], &a[2], &b[0], &b[2]});
    share(sides, {&a[1], &b[1], &m[0], &m[2]});
    above.insert(above.end(), a, a + 3);
    middle.insert(middle.end(), m, m + 3);
    below.insert(below.end(), b, b + 3);
    sums.push_back(sum);
  }
  ASSERT_GT(sums.size(), 252U * kTop - 1000);
  const auto count = static_cast<int32_t>(above.size()) - 2;
  std::vector<int16_t> dst(above.size());
  inEverySet([&](const SurfacePasses& passes) {
    passes.smoothRow(above.data() + 1, middle.data() + 1, below.data() + 1, count, dst.data() + 1);
    for (size_t i = 0; i < sums.size(); ++i) ASSERT_EQ(dst[3 * i + 1], sums[i] / 252) << sums[i];
  });
}

TEST(SurfacePasses, ReliefDividesEveryLevelExactly) {
  // At a texel's own row the cubic is 64 times the texel; 400 is the largest depth, and a step of 2
  // leaves out no quotient by 65536.
  constexpr int32_t kDepth = 400;
  constexpr CubicWeights kOwnRow = {{0, -32768, 0, 0}};
  std::vector<int16_t> texels;
  for (int32_t texel = -32768; texel <= 32767; texel += 2) {
    texels.push_back(static_cast<int16_t>(texel));
  }
  const auto count = static_cast<int32_t>(texels.size());
  const int16_t* const rows[4] = {texels.data(), texels.data(), texels.data(), texels.data()};
  const bool all = std::getenv("MORVALIS_LONG") != nullptr;
  inEverySet([&](const SurfacePasses& passes) {
    for (int32_t scale = 1; scale <= 32767; scale += all || scale < 400 ? 1 : 131) {
      std::vector<int16_t> cells(texels.size());
      passes.pressRow(rows, kOwnRow, kDepth, scale, count, cells.data());
      for (int32_t i = 0; i < count; ++i) {
        const int32_t expected = -2 * (64 * texels[i] * kDepth / 65536 / scale);
        ASSERT_EQ(cells[i], expected) << texels[i] << " / " << scale;
      }
    }
  });
}

TEST(SurfacePasses, ReliefStopsAtTheEndsOf16Bits) {
  constexpr CubicWeights kOwnRow = {{0, -32768, 0, 0}};
  inEverySet([&](const SurfacePasses& passes) {
    for (const int16_t texel : {-16000, -3, 0, 3, 16000}) {
      const std::vector<int16_t> texels(65536, texel);
      const int16_t* const rows[4] = {texels.data(), texels.data(), texels.data(), texels.data()};
      std::vector<int16_t> cells(65536);
      for (int32_t i = 0; i < 65536; ++i) cells[i] = static_cast<int16_t>(i - 32768);
      passes.pressRow(rows, kOwnRow, 400, 1, 65536, cells.data());
      const int32_t pressed = 2 * (64 * texel * 400 / 65536);
      for (int32_t i = 0; i < 65536; ++i) {
        ASSERT_EQ(cells[i], std::clamp(i - 32768 - pressed, -32768, 32767)) << texel << ' ' << i;
      }
    }
  });
}
