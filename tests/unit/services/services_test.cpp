// Rectangles, counted texts, random numbers, fixed point, host services: the small parts that
// everything else stands on.

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

#include "entry/handles.h"
#include "services/counted_text.h"
#include "services/fixed_point.h"
#include "services/host_buffers.h"
#include "services/random_numbers.h"
#include "services/rectangle.h"
#include "settings/effect_settings.h"
#include "settings/random_values.h"
#include "tests/support/hosts/heap_faults.h"

TEST(Rectangles, BottomAndRightLieOutside) {
  Rectangle rect;
  ASSERT_TRUE(setRect(&rect, 0, 10, 20, 11));
  EXPECT_FALSE(setRect(nullptr, 0, 0, 1, 1));
  EXPECT_FALSE(pointInRect({10, 20}, &rect));
  rect.right = 21;
  EXPECT_TRUE(pointInRect({10, 20}, &rect));
  EXPECT_FALSE(pointInRect({11, 20}, &rect));
  EXPECT_FALSE(pointInRect({9, 0}, &rect));
  offsetRect(&rect, -5, 3);
  EXPECT_EQ(rect.left, -5);
  EXPECT_EQ(rect.bottom, 14);
  offsetRect(&rect, 100000, -100000);
  EXPECT_EQ(rect.right, INT16_MAX);
  EXPECT_EQ(rect.top, INT16_MIN);
  EXPECT_TRUE(isEmptyRect(intersectRects({0, 0, 5, 5}, {5, 0, 9, 5})));
}

TEST(CountedTexts, AppendAndConvert) {
  uint8_t text[kCountedTextBytes] = {};
  std::string filling(250, 'x');
  appendToCountedText(text, filling.c_str(), 250);
  appendToCountedText(text, "0123456789", 10);
  EXPECT_EQ(text[0], 255);
  EXPECT_EQ(text[255], '4');
  EXPECT_EQ(text[256], 0);
  appendToCountedText(text, "more", -3);
  appendToCountedText(text, nullptr, 4);
  EXPECT_EQ(text[0], 255);

  for (size_t length : {0, 1, 11, 254, 255}) {
    char buffer[256] = {};
    const std::string plain(length, 'q');
    std::memcpy(buffer, plain.data(), length);
    if (length < 255) buffer[length] = 0;
    textToCounted(buffer);
    EXPECT_EQ(static_cast<uint8_t>(buffer[0]), length);
    countedToText(buffer);
    EXPECT_EQ(std::string(buffer), plain);
  }
  EXPECT_EQ(boundedLength(nullptr), 0);
  EXPECT_EQ(boundedLength(std::string(40000, 'a').c_str()), 32767);
  EXPECT_EQ(lowerCaseAscii('Q'), 'q');
  EXPECT_EQ(lowerCaseAscii('['), '[');
  EXPECT_EQ(lowerCaseAscii('\xC4'), '\xC4');
}

TEST(RandomNumbers, TheSequenceOfOldPresets) {
  seedRandomNumbers(1);
  for (int32_t expected : {41, 18467, 6334, 26500, 19169}) EXPECT_EQ(randomNumber(), expected);
  seedRandomNumbers(7);
  bool reachedEnds[2] = {};
  for (int32_t i = 0; i < 20000; ++i) {
    const int32_t value = randomInRange(-100, 100);
    ASSERT_TRUE(value >= -100 && value <= 100);
    reachedEnds[0] |= value == -100;
    reachedEnds[1] |= value == 100;
    const int32_t small = randomInRange(1, 3);
    ASSERT_TRUE(small >= 1 && small <= 3);
    ASSERT_LE(randomInRange(0, 30000), 255);
    Color16 color;
    randomColor(&color);
    ASSERT_EQ((color.red | color.green | color.blue) & 255, 0);
  }
  EXPECT_TRUE(reachedEnds[0] && reachedEnds[1]);
  EXPECT_EQ(randomInRange(5, 2), 5);
}

TEST(FixedPoint, DefinedForEveryValue) {
  EXPECT_EQ((Word32(INT32_MAX) + 1).value, INT32_MIN);
  EXPECT_EQ((Word32(INT32_MIN) - 1).value, INT32_MAX);
  EXPECT_EQ((Word32(INT32_MIN) / -1).value, INT32_MIN);
  EXPECT_EQ((Word32(7) / 0).value, 0);
  EXPECT_EQ((Word32(-7) / 2).value, -3);
  EXPECT_EQ((Word32(-7) >> 1).value, -4);
  EXPECT_EQ(absolute(INT32_MIN).value, INT32_MIN);
  EXPECT_EQ(truncateToInt32(-2.9), -2);
  EXPECT_EQ(truncateToInt32(1e300), INT32_MAX);
  EXPECT_EQ(truncateToInt32(-1e300), INT32_MIN);
  EXPECT_EQ(truncateToInt32(std::nan("")), 0);
  EXPECT_EQ(saturateToInt16(40000), 32767);
}

static HandleProcs completeHandleProcs() {
  HandleProcs procs = {};
  procs.handleProcsVersion = 1;
  procs.numHandleProcs = 7;
  procs.newProc = [](int32_t) -> Handle { return nullptr; };
  procs.disposeProc = [](Handle) {};
  procs.getSizeProc = [](Handle) -> int32_t { return 0; };
  procs.setSizeProc = [](Handle, int32_t) -> int16_t { return 0; };
  return procs;
}

TEST(HostServices, UsableHandleSuites) {
  EXPECT_FALSE(hostHandlesUsable(nullptr));
  const HandleProcs complete = completeHandleProcs();
  EXPECT_TRUE(hostHandlesUsable(&complete)) << "lock and unlock are not asked for";
  for (int16_t count : {8, 100, -1}) {
    HandleProcs procs = complete;
    procs.numHandleProcs = count;
    EXPECT_TRUE(hostHandlesUsable(&procs)) << count;
  }
  for (int16_t version : {0, 2}) {
    HandleProcs procs = complete;
    procs.handleProcsVersion = version;
    EXPECT_FALSE(hostHandlesUsable(&procs)) << version;
  }
  HandleProcs procs = complete;
  procs.numHandleProcs = 6;
  EXPECT_FALSE(hostHandlesUsable(&procs));
  procs = complete;
  procs.newProc = nullptr;
  EXPECT_FALSE(hostHandlesUsable(&procs));
  procs = complete;
  procs.disposeProc = nullptr;
  EXPECT_FALSE(hostHandlesUsable(&procs));
  procs = complete;
  procs.getSizeProc = nullptr;
  EXPECT_FALSE(hostHandlesUsable(&procs));
  procs = complete;
  procs.setSizeProc = nullptr;
  EXPECT_FALSE(hostHandlesUsable(&procs));
}

TEST(HostServices, UsableBufferSuites) {
  EXPECT_FALSE(hostBuffersUsable(nullptr));
  BufferProcs complete = {};
  complete.bufferProcsVersion = 2;
  complete.numBufferProcs = 5;
  complete.allocateProc = [](int32_t, HostBufferId*) -> int16_t { return 0; };
  complete.lockProc = [](HostBufferId, uint8_t) -> void* { return nullptr; };
  complete.unlockProc = [](HostBufferId) {};
  complete.freeProc = [](HostBufferId) {};
  complete.spaceProc = []() -> int32_t { return 0; };
  EXPECT_TRUE(hostBuffersUsable(&complete));
  BufferProcs procs = complete;
  procs.numBufferProcs = -1;
  EXPECT_TRUE(hostBuffersUsable(&procs));
  procs.numBufferProcs = 4;
  EXPECT_FALSE(hostBuffersUsable(&procs));
  procs = complete;
  procs.bufferProcsVersion = 3;
  EXPECT_FALSE(hostBuffersUsable(&procs));
  procs = complete;
  procs.spaceProc = nullptr;
  EXPECT_FALSE(hostBuffersUsable(&procs));

  // A host that allocates but cannot lock is not used, and its answer is not left in the id.
  FilterRecord filter = {};
  HostBufferId id = 99;
  EXPECT_EQ(allocateHostBuffer(&filter, 10, &id), -108);
  EXPECT_EQ(id, 0);
  EXPECT_EQ(lockHostBuffer(&filter, 5, true), nullptr);
}

TEST(ModuleHandles, TwoZeroFilledBlocks) {
  Handle handle = newModuleHandle(84);
  ASSERT_NE(handle, nullptr);
  EXPECT_GE(moduleHandleSize(handle), 84);
  const auto* bytes = static_cast<const uint8_t*>(*handle);
  for (int32_t i = 0; i < 84; ++i) EXPECT_EQ(bytes[i], 0);
  disposeModuleHandle(handle);
  disposeModuleHandle(nullptr);
  EXPECT_EQ(moduleHandleSize(nullptr), 0);
  EXPECT_EQ(newModuleHandle(-1), nullptr);
  for (int32_t block : {1, 2}) {
    refuseModuleBlock(block);
    EXPECT_EQ(newModuleHandle(84), nullptr);
    refuseModuleBlock(0);
  }
}
