// The same pixels from every host, and the right end from every host that fails.

#include <gtest/gtest.h>

#include <atomic>
#include <cfenv>
#include <set>
#include <thread>

#include "entry/entry_point.h"
#include "entry/handles.h"
#include "platform/none/none_script.h"
#include "platform/remembered_values.h"
#include "tests/support/hosts/heap_faults.h"
#include "tests/support/hosts/host_runs.h"

constexpr int32_t kWidth = 53;
constexpr int32_t kHeight = 38;

struct Variant {
  const char* name;
  HostSwitches switches;
};

static std::vector<Variant> variants() {
  std::vector<Variant> all;
  const auto add = [&all](const char* name, const std::function<void(HostSwitches*)>& change) {
    all.push_back({name, {}});
    change(&all.back().switches);
  };
  add("no advanceState", [](HostSwitches* s) { s->advanceState = false; });
  add("no displayPixels", [](HostSwitches* s) { s->displayPixels = false; });
  add("no colorServices", [](HostSwitches* s) { s->colorServices = false; });
  add("buffers that move", [](HostSwitches* s) { s->moveBuffers = true; });
  add("buffers that move, no advanceState", [](HostSwitches* s) {
    s->moveBuffers = true;
    s->advanceState = false;
  });
  add("clean memory", [](HostSwitches* s) { s->dirtyMemory = false; });
  add("no sampling", [](HostSwitches* s) { s->honourSampling = false; });
  add("buffers numbered from 0", [](HostSwitches* s) { s->bufferIdsFromZero = true; });
  add("all buffers refused", [](HostSwitches* s) { s->refuseAllBuffers = true; });
  add("null scripting suites", [](HostSwitches* s) {
    s->scripting = SuiteOffer::usable;
    s->scriptingSuitesNull = true;
  });
  for (SuiteOffer offer : {SuiteOffer::absent, SuiteOffer::wrongVersion, SuiteOffer::shortCount,
                           SuiteOffer::missingProc}) {
    add("handle suite", [offer](HostSwitches* s) { s->handleSuite = offer; });
    add("buffer suite", [offer](HostSwitches* s) { s->bufferSuite = offer; });
    add("scripting", [offer](HostSwitches* s) { s->scripting = offer; });
  }
  add("scripting usable", [](HostSwitches* s) { s->scripting = SuiteOffer::usable; });
  return all;
}

// What the module may keep: session record and settings, unlocked.
static void expectOnlyTheTwoBlocks(const HostRun& run, const HostSwitches& switches) {
  const bool hostHandles = switches.handleSuite == SuiteOffer::usable;
  EXPECT_EQ(run.ledgerAfter.handles, hostHandles ? 2 : 0);
  EXPECT_EQ(run.ledgerAfter.lockedHandles, 0);
  EXPECT_EQ(run.ledgerAfter.buffers, 0);
  EXPECT_EQ(run.ledgerAfter.lockedBuffers, 0);
  EXPECT_EQ(run.ledgerAfter.misuses, 0);
}

// Tables are truncated, so that another rounding would show in them.
TEST(HostVariants, HostsRoundingIsNeitherUsedNorLost) {
  const HostPicture picture = testPicture(kWidth, kHeight, 3);
  const HostRun expected = runHost({}, picture, testMask(kWidth, kHeight));
  for (const int rounding : {FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO}) {
    std::fesetround(rounding);
    const HostRun run = runHost({}, picture, testMask(kWidth, kHeight));
    const int roundingAfter = std::fegetround();
    std::fesetround(FE_TONEAREST);
    EXPECT_EQ(run.effect.samples, expected.effect.samples);
    EXPECT_EQ(roundingAfter, rounding);
  }
}

TEST(HostVariants, SamePixelsFromEveryHost) {
  for (int32_t planes : {1, 3}) {
    for (bool masked : {true, false}) {
      const HostPicture picture = testPicture(kWidth, kHeight, planes);
      const HostMask mask = masked ? testMask(kWidth, kHeight) : HostMask();
      const HostRun expected = runHost({}, picture, mask);
      ASSERT_EQ(expected.result, 0);
      EXPECT_NE(expected.effect.samples, picture.samples);
      expectOnlyTheTwoBlocks(expected, {});
      for (const Variant& variant : variants()) {
        SCOPED_TRACE(variant.name);
        const HostRun run = runHost(variant.switches, picture, mask);
        EXPECT_EQ(run.result, 0);
        EXPECT_EQ(run.effect.samples, expected.effect.samples);
        expectOnlyTheTwoBlocks(run, variant.switches);
      }
    }
  }
}

TEST(HostVariants, ExtraPlaneStaysTheHosts) {
  const HostMask mask = testMask(kWidth, kHeight);
  for (int32_t colours : {1, 3}) {
    const HostPicture plain = testPicture(kWidth, kHeight, colours);
    const HostPicture withAlpha = testPicture(kWidth, kHeight, colours + 1);
    const HostRun expected = runHost({}, plain, mask);
    const HostRun run = runHost({}, withAlpha, mask);
    ASSERT_EQ(run.result, 0);
    for (int32_t pixel = 0; pixel < kWidth * kHeight; ++pixel) {
      const int32_t at = pixel * (colours + 1);
      for (int32_t plane = 0; plane < colours; ++plane) {
        ASSERT_EQ(run.effect.samples[at + plane], expected.effect.samples[pixel * colours + plane]);
      }
      ASSERT_EQ(run.effect.samples[at + colours], withAlpha.samples[at + colours]);
    }
  }
}

// A part of a picture renders as that part alone would.
TEST(HostVariants, FilterRectangleAnywhere) {
  const HostPicture whole = testPicture(kWidth, kHeight, 3);
  const Rectangle rect = {5, 7, 30, 41};
  HostPicture part = {rect.right - rect.left, rect.bottom - rect.top, 3, {}};
  for (int32_t y = rect.top; y < rect.bottom; ++y) {
    const auto from = whole.samples.begin() + (y * kWidth + rect.left) * 3;
    part.samples.insert(part.samples.end(), from, from + part.width * 3);
  }
  const HostRun expected = runHost({}, part, {});
  const HostRun run = runHost({}, whole, {}, [rect] { setFilterRect(rect); });
  ASSERT_EQ(run.result, 0);
  for (int32_t y = 0; y < kHeight; ++y) {
    for (int32_t x = 0; x < kWidth * 3; ++x) {
      const bool inside =
          y >= rect.top && y < rect.bottom && x >= rect.left * 3 && x < rect.right * 3;
      const uint8_t wanted =
          inside ? expected.effect.samples[(y - rect.top) * part.width * 3 + x - rect.left * 3]
                 : whole.samples[y * kWidth * 3 + x];
      ASSERT_EQ(run.effect.samples[y * kWidth * 3 + x], wanted) << x << ", " << y;
    }
  }
}

TEST(HostVariants, MaskThatIsNeverDeliveredSelectsEverything) {
  const HostPicture picture = testPicture(kWidth, kHeight, 3);
  HostSwitches switches;
  switches.deliverMask = false;
  const HostRun run = runHost(switches, picture, testMask(kWidth, kHeight));
  EXPECT_EQ(run.result, 0);
  EXPECT_EQ(run.effect.samples, runHost({}, picture, {}).effect.samples);
}

// A second thread in the middle of a run gets an error, and the run its picture.
TEST(HostVariants, OneThreadAtATime) {
  const HostPicture picture = testPicture(kWidth, kHeight, 3);
  const HostMask mask = testMask(kWidth, kHeight);
  const HostRun expected = runHost({}, picture, mask);
  int32_t refused = 0;
  HostSwitches switches;
  switches.progress = [&refused](int32_t, int32_t) {
    std::thread([&refused] {
      for (int16_t selector = kSelectorParameters; selector <= kSelectorFinish; ++selector) {
        FilterRecord record = *hostRecord();
        intptr_t slot = 0;
        int16_t result = 0;
        ENTRYPOINT(selector, &record, &slot, &result);
        if (result == kFilterBadParameters && slot == 0) ++refused;
      }
    }).join();
  };
  const HostRun run = runHost(switches, picture, mask);
  EXPECT_EQ(run.result, 0);
  EXPECT_EQ(run.effect.samples, expected.effect.samples);
  EXPECT_GE(refused, 5);
  EXPECT_EQ(refused % 5, 0);
}

// Threads that come at the same time, each with a record and a slot of its own: every call is
// served or sent away.
TEST(HostVariants, ThreadsThatRace) {
  constexpr int32_t kCalls = 20000;
  HostSwitches switches;
  switches.handleSuite = SuiteOffer::absent;  // the substitute host is of one thread
  openHost(switches, testPicture(kWidth, kHeight, 3), {});
  FilterRecord records[4];
  intptr_t slots[4] = {};
  std::atomic<int32_t> served = 0;
  std::atomic<int32_t> refused = 0;
  std::vector<std::thread> threads;
  for (int32_t i = 0; i < 4; ++i) {
    records[i] = *hostRecord();
    threads.emplace_back([&, record = &records[i], slot = &slots[i]] {
      for (int32_t call = 0; call < kCalls; ++call) {
        int16_t result = 0;
        ENTRYPOINT(kSelectorPrepare, record, slot, &result);
        if (result == kNoError && *slot != 0 && record->parameters != nullptr) ++served;
        if (result == kFilterBadParameters) ++refused;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(served + refused, 4 * kCalls);
  EXPECT_GT(served, 0);
  RecordProperty("refused", refused);
  for (int32_t i = 0; i < 4; ++i) {
    disposeModuleHandle(reinterpret_cast<Handle>(slots[i]));
    disposeModuleHandle(records[i].parameters);
  }
}

TEST(HostVariants, SmallestPictures) {
  for (const auto& [width, height] : {std::pair{1, 1}, {1, 40}, {40, 1}, {2, 2}}) {
    for (bool advance : {true, false}) {
      HostSwitches switches;
      switches.advanceState = advance;
      const HostRun run = runHost(switches, testPicture(width, height, 3), testMask(width, height));
      EXPECT_EQ(run.result, 0) << width << " x " << height;
      EXPECT_EQ(run.ledgerAfter.buffers, 0);
    }
  }
}

TEST(HostVariants, NothingToFilter) {
  for (const Rectangle& rect :
       {Rectangle{0, 0, 0, 0}, Rectangle{9, 9, 4, 4}, Rectangle{3, 8, 20, 8}}) {
    const HostPicture picture = testPicture(kWidth, kHeight, 3);
    const HostRun run = runHost({}, picture, {}, [rect] { setFilterRect(rect); });
    EXPECT_EQ(run.result, 0);
    EXPECT_EQ(run.effect.samples, picture.samples);
    EXPECT_EQ(run.ledgerAfter.buffers, 0);
  }
}

// Refuses one of the module's own blocks after another, in a host that offers no buffers.
TEST(HostFailures, RefusedModuleBlocks) {
  struct Refusal {
    int32_t block;  // from Start on
    int16_t result;
    size_t alerts;
  };
  // Six buffers in order, then the texture and the environment picture.
  const Refusal refusals[] = {{1, 3, 0}, {2, 3, 0}, {3, 3, 0}, {4, 3, 0},
                              {5, 1, 1}, {6, 1, 1}, {7, 1, 1}, {8, 1, 1}};
  HostSwitches switches;
  switches.bufferSuite = SuiteOffer::absent;
  const HostPicture picture = testPicture(kWidth, kHeight, 3);
  for (const Refusal& refusal : refusals) {
    SCOPED_TRACE(refusal.block);
    resetNone();
    openHost(switches, picture, {});
    ASSERT_EQ(callSelector(kSelectorPrepare), 0);
    refuseModuleBlock(refusal.block);
    EXPECT_EQ(callSelector(kSelectorStart), refusal.result);
    EXPECT_GE(moduleBlocksAsked(), refusal.block);
    refuseModuleBlock(0);
    EXPECT_EQ(noneRecord().alerts.size(), refusal.alerts);
    if (refusal.alerts == 1) {
      EXPECT_EQ(noneRecord().alerts[0].name, "NOT_ENOUGH_MEMORY");
    }
    const FilterRecord* record = hostRecord();
    EXPECT_TRUE(isEmptyRect(record->inRect) && isEmptyRect(record->outRect) &&
                isEmptyRect(record->maskRect));
    EXPECT_EQ(hostSettings()->texturePicture, nullptr);
    EXPECT_EQ(hostSettings()->environmentPicture, nullptr);
    EXPECT_EQ(hostLedger().misuses, 0);
    EXPECT_EQ(renderFilter(), 0);
    closeHost();
  }
}

// Every shape, texture and blend mode gives a picture of its own, on grey and on RGB.
TEST(Choices, EachGivesItsOwnPicture) {
  struct Choice {
    int32_t EffectSettings::*field;
    int32_t count;
  };
  const Choice choices[] = {{&EffectSettings::shape, kShapeCount},
                            {&EffectSettings::textureChoice, kTextureChoiceFile},
                            {&EffectSettings::blendMode, kBlendModeCaustic}};
  std::vector<uint8_t> texture(40 * 30 * 3);
  for (size_t i = 0; i < texture.size(); ++i) texture[i] = static_cast<uint8_t>(i * i / 7);
  for (int32_t planes : {1, 3}) {
    for (const Choice& choice : choices) {
      std::set<std::string> pictures;
      for (int32_t value = 1; value <= choice.count; ++value) {
        const HostRun run = runHost({}, testPicture(90, 60, planes), testMask(90, 60), [&] {
          hostSettings()->texture = 100;
          hostSettings()->*choice.field = value;
          scriptBitmap("texture.bmp", 40, 30, texture);
          writeRememberedValue("TextureFile", "texture.bmp");
        });
        ASSERT_EQ(run.result, 0);
        pictures.emplace(run.effect.samples.begin(), run.effect.samples.end());
      }
      EXPECT_EQ(pictures.size(), static_cast<size_t>(choice.count));
    }
  }
}
