// The substitute host judges the module, so its services are judged here, through the record's own
// callbacks and without the module. The record is packed, so its pointers are compared in place:
// EXPECT_EQ would bind a reference to a misaligned one.

#include "hosts/substitute_host/substitute_host.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr int32_t kWidth = 7;
constexpr int32_t kHeight = 5;

// Every sample of the picture is another number.
uint8_t sampleAt(int32_t x, int32_t y, int32_t plane) {
  return static_cast<uint8_t>(plane * 60 + y * 8 + x);
}

uint8_t maskAt(int32_t x, int32_t y) {
  return static_cast<uint8_t>(250 - y * 8 - x);
}

HostPicture testPicture(int32_t planes) {
  HostPicture picture = {kWidth, kHeight, planes, {}};
  for (int32_t y = 0; y < kHeight; ++y) {
    for (int32_t x = 0; x < kWidth; ++x) {
      for (int32_t p = 0; p < planes; ++p) picture.samples.push_back(sampleAt(x, y, p));
    }
  }
  return picture;
}

HostMask testMask() {
  HostMask mask;
  for (int32_t y = 0; y < kHeight; ++y) {
    for (int32_t x = 0; x < kWidth; ++x) mask.push_back(maskAt(x, y));
  }
  return mask;
}

Rectangle rectOf(int left, int top, int right, int bottom) {
  return {static_cast<int16_t>(top), static_cast<int16_t>(left), static_cast<int16_t>(bottom),
          static_cast<int16_t>(right)};
}

class SubstituteHost : public ::testing::Test {
 protected:
  void open(const HostSwitches& switches, int32_t planes = 3, bool masked = true) {
    openHost(switches, testPicture(planes), masked ? testMask() : HostMask{});
    record = hostRecord();
    record->inHiPlane = record->outHiPlane = static_cast<int16_t>(planes - 1);
  }
  void TearDown() override {
    closeHost();
    const HostLedger ledger = hostLedger();
    EXPECT_EQ(ledger.handles + ledger.buffers, 0);
  }
  FilterRecord* record = nullptr;
};

TEST_F(SubstituteHost, DeliversTheRequestedPlanesWithoutGaps) {
  for (int16_t planes = 1; planes <= 4; ++planes) {
    open({}, planes);
    EXPECT_EQ(record->planes, planes);
    EXPECT_EQ(record->imageMode, planes < 3 ? kImageModeGrey : kImageModeRgb);
    for (int16_t lo = 0; lo < planes; ++lo) {
      for (int16_t hi = lo; hi < planes; ++hi) {
        record->inRect = record->outRect = record->maskRect = {};
        ASSERT_EQ(record->advanceState(), 0);
        EXPECT_TRUE(record->inData == nullptr);
        EXPECT_TRUE(record->outData == nullptr);
        EXPECT_TRUE(record->maskData == nullptr);

        record->inRect = record->outRect = record->maskRect = rectOf(2, 1, 6, 4);
        record->inLoPlane = record->outLoPlane = lo;
        record->inHiPlane = record->outHiPlane = hi;
        ASSERT_EQ(record->advanceState(), 0);
        const int32_t step = hi - lo + 1;
        ASSERT_EQ(record->inRowBytes, 4 * step);
        ASSERT_EQ(record->outRowBytes, 4 * step);
        ASSERT_EQ(record->maskRowBytes, 4);
        for (int32_t y = 0; y < 3; ++y) {
          for (int32_t x = 0; x < 4; ++x) {
            ASSERT_EQ(record->maskData[y * 4 + x], maskAt(x + 2, y + 1));
            for (int32_t p = 0; p < step; ++p) {
              const int32_t at = y * record->inRowBytes + x * step + p;
              ASSERT_EQ(record->inData[at], sampleAt(x + 2, y + 1, lo + p));
              ASSERT_EQ(record->outData[at], sampleAt(x + 2, y + 1, lo + p));
            }
          }
        }
      }
    }
  }
}

TEST_F(SubstituteHost, StoresTheOutputBeforeItDelivers) {
  open({});
  record->outRect = rectOf(1, 1, 3, 3);
  record->outLoPlane = record->outHiPlane = 1;
  ASSERT_EQ(record->advanceState(), 0);
  std::fill_n(record->outData, 4, uint8_t{199});

  // The rows are stored where and for the planes that they were delivered for; input is the source.
  record->outRect = record->inRect = rectOf(0, 0, kWidth, kHeight);
  record->outLoPlane = 0;
  record->outHiPlane = 2;
  ASSERT_EQ(record->advanceState(), 0);
  for (int32_t y = 0; y < kHeight; ++y) {
    for (int32_t x = 0; x < kWidth; ++x) {
      for (int32_t p = 0; p < 3; ++p) {
        const bool written = p == 1 && 1 <= x && x < 3 && 1 <= y && y < 3;
        const uint8_t expected = written ? 199 : sampleAt(x, y, p);
        const size_t at = static_cast<size_t>((y * kWidth + x) * 3 + p);
        ASSERT_EQ(filteredPicture().samples[at], expected);
        ASSERT_EQ(record->outData[at], expected);
        ASSERT_EQ(record->inData[at], sampleAt(x, y, p));
      }
    }
  }

  // An unchanged rectangle is stored, too.
  record->outData[0] = 201;
  ASSERT_EQ(record->advanceState(), 0);
  EXPECT_EQ(filteredPicture().samples[0], 201);
  EXPECT_EQ(record->outData[0], 201);
}

TEST_F(SubstituteHost, ReducesOnlyWithAnotherRectangle) {
  open({}, 1);
  record->inRect = record->maskRect = rectOf(0, 0, 2, 1);
  ASSERT_EQ(record->advanceState(), 0);
  record->inputRate = record->maskRate = 3 * kFixedOne;
  ASSERT_EQ(record->advanceState(), 0);
  EXPECT_EQ(record->inData[1], sampleAt(1, 0, 0));
  EXPECT_EQ(record->maskData[1], maskAt(1, 0));

  record->inRect = record->maskRect = {};
  ASSERT_EQ(record->advanceState(), 0);
  record->inRect = record->maskRect = rectOf(0, 0, 2, 1);
  ASSERT_EQ(record->advanceState(), 0);
  EXPECT_EQ(record->inData[1], sampleAt(3, 0, 0));
  EXPECT_EQ(record->maskData[1], maskAt(3, 0));

  // 7 x 5 by 3 is 2 x 1; the pixel at 6 and the row at 3 belong to no whole step.
  for (const Rectangle& beyond : {rectOf(0, 0, 3, 1), rectOf(0, 0, 2, 2)}) {
    record->inRect = beyond;
    EXPECT_EQ(record->advanceState(), -50);
  }
  record->outRect = rectOf(0, 0, kWidth, kHeight);  // never reduced
  record->inRect = {};
  EXPECT_EQ(record->advanceState(), 0);
  EXPECT_EQ(record->outData[kWidth * kHeight - 1], sampleAt(6, 4, 0));

  for (const int32_t rate : {0, 2 * kFixedOne}) {
    HostSwitches switches;
    switches.honourSampling = rate == 0;
    open(switches, 1);
    EXPECT_EQ(record->samplingSupport, rate == 0 ? 1 : 0);
    record->inputRate = rate;
    record->inRect = rectOf(0, 0, kWidth, kHeight);
    ASSERT_EQ(record->advanceState(), 0);
    EXPECT_EQ(record->inData[8], sampleAt(1, 1, 0));
  }
}

TEST_F(SubstituteHost, PadsOutsideTheImage) {
  open({}, 1);
  struct Expectation {
    int16_t padding;
    int16_t error;
    uint8_t topLeft;  // at -2, -1
    uint8_t right;    // at 7, 2
  };
  const Expectation expectations[] = {{-1, 0, sampleAt(0, 0, 0), sampleAt(6, 2, 0)},
                                      {-2, 0, 0xA5, 0xA5},
                                      {0, 0, 0, 0},
                                      {255, 0, 255, 255},
                                      {-3, -50, 0, 0},
                                      {-4, -50, 0, 0},
                                      {256, -50, 0, 0}};
  for (const Expectation& expected : expectations) {
    SCOPED_TRACE(expected.padding);
    record->inRect = {};
    ASSERT_EQ(record->advanceState(), 0);
    record->inRect = rectOf(-2, -1, kWidth + 1, kHeight);
    record->inputPadding = expected.padding;
    ASSERT_EQ(record->advanceState(), expected.error);
    if (expected.error != 0) {
      EXPECT_TRUE(record->inData == nullptr);
      record->inRect = rectOf(0, 0, kWidth, kHeight);  // inside, padding does not matter
      EXPECT_EQ(record->advanceState(), 0);
      continue;
    }
    const int32_t rowBytes = kWidth + 3;
    ASSERT_EQ(record->inRowBytes, rowBytes);
    EXPECT_EQ(record->inData[0], expected.topLeft);
    EXPECT_EQ(record->inData[3 * rowBytes + kWidth + 2], expected.right);
    EXPECT_EQ(record->inData[rowBytes + 2], sampleAt(0, 0, 0));
  }

  // Output and mask follow their own padding; what lies outside is not stored.
  record->inRect = {};
  record->outRect = record->maskRect = rectOf(-1, -1, 1, 1);
  record->outputPadding = 9;
  record->maskPadding = 8;
  ASSERT_EQ(record->advanceState(), 0);
  EXPECT_EQ(record->outData[0], 9);
  EXPECT_EQ(record->maskData[0], 8);
  std::fill_n(record->outData, 4, uint8_t{77});
  record->outRect = {};
  ASSERT_EQ(record->advanceState(), 0);
  EXPECT_EQ(filteredPicture().samples[0], 77);
  EXPECT_EQ(filteredPicture().samples[1], sampleAt(1, 0, 0));
  EXPECT_EQ(filteredPicture().samples[kWidth], sampleAt(0, 1, 0));
}

TEST_F(SubstituteHost, AnswersSenselessRequestsWithErrors) {
  open({});
  record->inputPadding = record->outputPadding = record->maskPadding = kPaddingRepeatEdge;
  const int16_t badPlanes[][2] = {{-1, 0}, {0, 3}, {2, 1}};
  for (const auto& planes : badPlanes) {
    record->inRect = rectOf(0, 0, 1, 1);
    record->inLoPlane = planes[0];
    record->inHiPlane = planes[1];
    EXPECT_EQ(record->advanceState(), kFilterBadParameters);
    EXPECT_TRUE(record->inData == nullptr);
  }
  record->inLoPlane = record->inHiPlane = 0;

  for (const Rectangle& rect : {rectOf(5, 4, 1, 2), rectOf(-3, 0, -7, 3), rectOf(3, 3, 3, 9)}) {
    record->inRect = record->outRect = record->maskRect = rect;
    EXPECT_EQ(record->advanceState(), 0);
    EXPECT_TRUE(record->inData == nullptr);
    EXPECT_TRUE(record->outData == nullptr);
    EXPECT_TRUE(record->maskData == nullptr);
  }
  record->outRect = record->maskRect = {};
  record->inRect = rectOf(-32768, -1, -32760, 1);
  EXPECT_EQ(record->advanceState(), 0);
  record->inRect = rectOf(-32768, -32768, 32767, 32767);
  EXPECT_EQ(record->advanceState(), kMemoryFull);
}

TEST_F(SubstituteHost, MovesRowsAndBuffersWhenAsked) {
  HostSwitches switches;
  switches.moveBuffers = true;
  open(switches);
  record->inRect = record->outRect = record->maskRect = rectOf(0, 0, 2, 2);
  ASSERT_EQ(record->advanceState(), 0);
  record->outData[0] = 123;
  const uint8_t* before[] = {record->inData, record->outData, record->maskData};
  record->inputRate = 2 * kFixedOne;  // moving is no refilling
  ASSERT_EQ(record->advanceState(), 0);
  EXPECT_TRUE(record->inData != before[0]);
  EXPECT_TRUE(record->outData != before[1]);
  EXPECT_TRUE(record->maskData != before[2]);
  EXPECT_EQ(record->inData[3], sampleAt(1, 0, 0));
  EXPECT_EQ(record->outData[0], 123);
  EXPECT_EQ(record->maskData[1], maskAt(1, 0));

  HostBufferId id = 0;
  ASSERT_EQ(record->bufferProcs->allocateProc(3, &id), 0);
  uint8_t* first = static_cast<uint8_t*>(record->bufferProcs->lockProc(id, 0));
  first[2] = 5;
  EXPECT_EQ(record->bufferProcs->lockProc(id, 0), first);
  record->bufferProcs->unlockProc(id);
  record->bufferProcs->unlockProc(id);
  uint8_t* second = static_cast<uint8_t*>(record->bufferProcs->lockProc(id, 0));
  EXPECT_NE(second, first);
  EXPECT_EQ(second[2], 5);
}

TEST_F(SubstituteHost, WithholdsTheMask) {
  open({}, 3, /*masked=*/false);
  EXPECT_EQ(record->haveMask, 0);
  record->maskRect = rectOf(0, 0, 1, 1);
  EXPECT_EQ(record->advanceState(), 0);
  EXPECT_TRUE(record->maskData == nullptr);

  HostSwitches switches;
  switches.deliverMask = false;
  open(switches);
  EXPECT_EQ(record->haveMask, 1);
  record->maskRect = rectOf(0, 0, 1, 1);
  EXPECT_EQ(record->advanceState(), 0);
  EXPECT_TRUE(record->maskData == nullptr);
}

constexpr uint32_t kRadius = fourCharacterCode("radi");
constexpr uint32_t kShape = fourCharacterCode("shap");
constexpr uint32_t kShapeType = fourCharacterCode("shpT");
constexpr uint32_t kTiled = fourCharacterCode("tile");
constexpr uint32_t kAbsent = fourCharacterCode("abst");
constexpr uint32_t kFound = fourCharacterCode("null");
constexpr uint32_t kPercent = fourCharacterCode("#Prc");

TEST_F(SubstituteHost, RecordsAScriptAndPlaysItBack) {
  HostSwitches switches;
  switches.scripting = SuiteOffer::usable;
  open(switches);
  PIDescriptorParameters* block = record->descriptorParameters;
  EXPECT_EQ(block->descriptor, nullptr);
  const WriteDescriptorProcs& writing = *block->writeDescriptorProcs;
  const WriteToken written = writing.openWriteDescriptorProc();
  const double radius = 62.5;
  EXPECT_EQ(writing.putUnitFloatProc(written, kRadius, kPercent, &radius), 0);
  EXPECT_EQ(writing.putEnumeratedProc(written, kShape, kShapeType, 11), 0);
  EXPECT_EQ(writing.putBooleanProc(written, kTiled, 1), 0);
  EXPECT_EQ(writing.closeWriteDescriptorProc(written, &block->descriptor), 0);
  EXPECT_NE(writing.putBooleanProc(written, kTiled, 1), 0);
  EXPECT_EQ(hostLedger().misuses, 1);
  ASSERT_EQ(recordedScript().size(), 3U);
  EXPECT_EQ(recordedScript()[1].enumeration, 11U);

  const ReadDescriptorProcs& reading = *block->readDescriptorProcs;
  uint32_t keys[] = {kShape, kAbsent, kTiled, kRadius, 0};
  const ReadToken token = reading.openReadDescriptorProc(block->descriptor, keys);
  ASSERT_NE(token, nullptr);
  uint32_t key = 0;
  uint32_t type = 0;
  int32_t flags = -1;
  ASSERT_NE(reading.getKeyProc(token, &key, &type, &flags), 0);
  EXPECT_EQ(key, kRadius);
  EXPECT_EQ(type, fourCharacterCode("UntF"));
  EXPECT_EQ(keys[0], kShape);
  EXPECT_EQ(keys[3], kFound);
  uint32_t unit = 0;
  double number = 0;
  EXPECT_EQ(reading.getUnitFloatProc(token, &unit, &number), 0);
  EXPECT_EQ(unit, kPercent);
  EXPECT_EQ(number, 62.5);
  ASSERT_NE(reading.getKeyProc(token, &key, &type, &flags), 0);
  EXPECT_EQ(type, kShapeType);
  uint32_t shape = 0;
  EXPECT_EQ(reading.getEnumeratedProc(token, &shape), 0);
  EXPECT_EQ(shape, 11U);
  ASSERT_NE(reading.getKeyProc(token, &key, &type, &flags), 0);
  uint8_t tiled = 0;
  EXPECT_EQ(reading.getBooleanProc(token, &tiled), 0);
  EXPECT_EQ(tiled, 1);
  EXPECT_EQ(reading.getKeyProc(token, &key, &type, &flags), 0);
  EXPECT_EQ(keys[0], kFound);
  EXPECT_EQ(keys[1], kAbsent);
  EXPECT_EQ(reading.closeReadDescriptorProc(token), 0);
  EXPECT_EQ(hostLedger().handles, 0);  // the descriptor is the host's

  record->handleProcs->disposeProc(block->descriptor);
  EXPECT_EQ(hostLedger().misuses, 1);
  EXPECT_EQ(reading.openReadDescriptorProc(block->descriptor, nullptr), nullptr);
  EXPECT_EQ(hostLedger().misuses, 2);
}

TEST_F(SubstituteHost, AnswersScriptErrorsAgainAtTheClose) {
  HostSwitches switches;
  switches.scripting = SuiteOffer::usable;
  open(switches);
  ScriptValue radius;
  radius.key = kRadius;
  radius.type = fourCharacterCode("UntF");
  radius.number = 150;
  ScriptValue tiled;
  tiled.key = kTiled;
  tiled.type = fourCharacterCode("bool");
  tiled.error = kMissingParameter;
  setScript({radius, tiled});
  const PIDescriptorParameters& block = *record->descriptorParameters;
  const ReadDescriptorProcs& reading = *block.readDescriptorProcs;
  uint32_t key = 0;
  uint32_t type = 0;
  int32_t flags = 0;
  uint32_t unit = 0;
  uint8_t boolean = 9;
  double number = 0;
  const double low = 2;
  const double high = 100;

  for (const bool pinnedOnly : {true, false}) {
    const ReadToken token = reading.openReadDescriptorProc(block.descriptor, nullptr);
    ASSERT_NE(token, nullptr);
    EXPECT_NE(reading.getFloatProc(token, &number), 0);  // no key yet
    EXPECT_EQ(reading.closeReadDescriptorProc(token), 0);
    const ReadToken again = reading.openReadDescriptorProc(block.descriptor, nullptr);
    ASSERT_NE(reading.getKeyProc(again, &key, &type, &flags), 0);
    EXPECT_EQ(reading.getPinnedUnitFloatProc(again, &low, &high, &unit, &number), 2);
    EXPECT_EQ(number, 100);
    if (!pinnedOnly) {
      ASSERT_NE(reading.getKeyProc(again, &key, &type, &flags), 0);
      EXPECT_EQ(reading.getBooleanProc(again, &boolean), kMissingParameter);
      EXPECT_EQ(boolean, 9);
    }
    EXPECT_EQ(reading.closeReadDescriptorProc(again), pinnedOnly ? 2 : kMissingParameter);
  }
  setScript({});
  EXPECT_EQ(block.descriptor, nullptr);
}

// Rows of the selection, an edge of it, and planes that the module leaves alone.
TEST_F(SubstituteHost, MixesInPlaceAsAnEditorDoes) {
  for (const int32_t planes : {1, 2, 3, 4}) {
    const HostPicture source = testPicture(planes);
    HostMask mask = testMask();
    for (size_t i = 0; i < mask.size(); i += 3) mask[i] = 0;
    HostPicture effect = source;
    for (uint8_t& sample : effect.samples) sample = static_cast<uint8_t>(200 - sample);
    HostMask full = mask;
    for (uint8_t& weight : full) weight = weight == 0 ? 0 : 255;
    for (const InPlace manner : {InPlace::mixed, InPlace::whole}) {
      HostSwitches switches;
      switches.inPlace = manner;
      switches.dirtyMemory = false;
      openHost(switches, source, mask);
      record = hostRecord();
      record->inHiPlane = record->outHiPlane = static_cast<int16_t>(planes - 1);
      const size_t bytes = static_cast<size_t>(kWidth * planes);
      for (int32_t y = 0; y < kHeight; ++y) {
        record->inRect = record->outRect = rectOf(0, y, kWidth, y + 1);
        ASSERT_EQ(record->advanceState(), kNoError);
        const uint8_t* before = &source.samples[static_cast<size_t>(y) * bytes];
        const uint8_t* after = &effect.samples[static_cast<size_t>(y) * bytes];
        EXPECT_TRUE(std::equal(before, before + bytes, static_cast<uint8_t*>(record->inData)));
        std::copy_n(after, bytes, static_cast<uint8_t*>(record->outData));
      }
      record->inRect = record->outRect = {};
      ASSERT_EQ(record->advanceState(), kNoError);
      EXPECT_EQ(takeFilteredPicture().samples,
                mixByMask(source, effect, manner == InPlace::whole ? full : mask).samples);
      closeHost();
    }
  }
}

TEST(MixByMask, RoundsToNearestAndKeepsTheExtraPlane) {
  HostPicture source = {256, 1, 1, std::vector<uint8_t>(256)};
  HostPicture effect = source;
  HostMask mask(256);
  for (int32_t weight = 0; weight < 256; ++weight) mask[weight] = static_cast<uint8_t>(weight);
  for (int32_t from = 0; from < 256; from += 5) {
    for (int32_t to = 0; to < 256; to += 3) {
      source.samples.assign(256, static_cast<uint8_t>(from));
      effect.samples.assign(256, static_cast<uint8_t>(to));
      const HostPicture mixed = mixByMask(source, effect, mask);
      for (int32_t weight = 0; weight < 256; ++weight) {
        const double exact = (from * (255.0 - weight) + to * weight) / 255.0;
        ASSERT_EQ(mixed.samples[weight], std::lround(exact)) << from << ' ' << to << ' ' << weight;
      }
    }
  }

  for (const int32_t planes : {2, 3, 4}) {
    const std::vector<uint8_t> low = {10, 20, 30, 40};
    const std::vector<uint8_t> high = {110, 120, 130, 140};
    const HostPicture before = {1, 1, planes, {low.begin(), low.begin() + planes}};
    const HostPicture after = {1, 1, planes, {high.begin(), high.begin() + planes}};
    const HostPicture mixed = mixByMask(before, after, {255});
    for (int32_t plane = 0; plane < planes; ++plane) {
      const bool extra = planes != 3 && plane == planes - 1;
      EXPECT_EQ(mixed.samples[plane], extra ? low[plane] : high[plane]);
    }
    EXPECT_EQ(mixByMask(before, after, {}).samples, after.samples);
  }
}

}  // namespace
