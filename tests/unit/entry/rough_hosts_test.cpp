// Hosts that call back, change their record or their suites in the middle of a call.

#include <gtest/gtest.h>

#include "dialog/controls/control_table.h"
#include "entry/entry_point.h"
#include "hosts/substitute_host/host_state.h"
#include "hosts/substitute_host/suites/handle_suite.h"
#include "tests/support/dialog/dialog_runs.h"
#include "tests/support/hosts/host_runs.h"

static int32_t calls = 0;
static int16_t nested[6] = {};  // results, by selector

// One call of each kind, for the session that the host waits for.
static uint8_t callAllAtTwentieth() {
  if (++calls != 20) return 0;
  for (int16_t selector = kSelectorParameters; selector <= kSelectorFinish; ++selector) {
    nested[selector] = callSelector(selector);
  }
  return 0;
}

TEST(RoughHosts, CallsOutOfCallbacksAreRefused) {
  const HostPicture picture = testPicture(20, 12, 3);
  const HostMask mask = testMask(20, 12);
  const HostPicture expected = runHost({}, picture, mask).effect;
  const HostRun run = runHost({}, picture, mask, [] {
    calls = 0;
    hostRecord()->abortProc = callAllAtTwentieth;
  });
  EXPECT_EQ(run.result, 0);
  EXPECT_EQ(run.effect.samples, expected.samples);
  EXPECT_EQ(run.ledgerAfter.lockedHandles, 0);
  for (int16_t selector = kSelectorParameters; selector <= kSelectorFinish; ++selector) {
    EXPECT_EQ(nested[selector], -30100) << selector;
  }
}

TEST(RoughHosts, SlotThatChangesDuringACall) {
  openHost({}, testPicture(20, 12, 3), testMask(20, 12));
  ASSERT_EQ(callSelector(kSelectorPrepare), 0);
  calls = 0;
  hostRecord()->abortProc = []() -> uint8_t {
    if (++calls == 5) host().dataSlot = 0;
    return 0;
  };
  renderFilter();
  EXPECT_EQ(hostLedger().misuses, 0);
  EXPECT_EQ(hostLedger().lockedHandles, 0);
}

// Blocks of the module's own stay its own.
TEST(RoughHosts, HandleSuiteThatComesLater) {
  HostSwitches switches;
  switches.handleSuite = SuiteOffer::absent;
  openHost(switches, testPicture(20, 12, 3), {});
  ASSERT_EQ(callSelector(kSelectorPrepare), 0);
  host().switches.handleSuite = SuiteOffer::usable;
  hostRecord()->handleProcs = offerHandleSuite();
  EXPECT_EQ(renderFilter(), 0);
  EXPECT_EQ(hostLedger().misuses, 0);
}

static AdvanceStateProc originalAdvance = nullptr;

static int16_t cutRows() {
  FilterRecord* record = hostRecord();
  if (record->outRect.bottom - record->outRect.top > 40) {
    record->outRect.bottom = static_cast<int16_t>(record->outRect.top + 40);
    record->inRect.bottom = record->outRect.bottom;
  }
  return originalAdvance();
}

// With bands of the mask one pixel of input is asked for.
static int16_t withdrawInBands() {
  FilterRecord* record = hostRecord();
  if (record->inRect.right - record->inRect.left == 1) record->advanceState = nullptr;
  return originalAdvance();
}

static void useDialog(DialogUser& user) {
  user.click(sliderPoint(kRadiusSlider, 12));
  for (int32_t i = 0; i < 8 && user.isOpen(); ++i) user.clickButton(kZoomInButton);
  const Point middle = middleOf(kPreviewArea);
  user.otherDown(middle);
  user.otherUp(middle);
  user.press(middle);
  user.move(shifted(middle, -20, -20));
  user.release(shifted(middle, -20, -20));
  user.clickButton(kOkButton);
}

// Each ends, whatever it shows until then.
TEST(RoughHosts, RecordThatChangesUnderTheDialog) {
  const std::function<void()> changes[] = {
      [] {
        hostRecord()->filterRect = {5, 5, 5, 5};
      },
      [] {
        hostRecord()->filterRect = {0, 0, 104, 104};
      },
      [] { hostRecord()->planes = 1; },
      [] { hostRecord()->outRect.right += 40; },
      [] { hostRecord()->outRect = {}; },
      [] { hostRecord()->advanceState = nullptr; },
      [] { EXPECT_EQ(callSelector(kSelectorParameters), -30100); }};
  for (size_t i = 0; i < std::size(changes); ++i) {
    for (const auto& [width, height] : {std::pair{700, 500}, {1000, 10}}) {
      HostSwitches switches = displayingHost();
      switches.display = [&](const HostPicture& shown, int32_t row, int32_t column, void* target) {
        EXPECT_LE(shown.samples.size(), host().output.size) << i;
        drawIntoTarget(shown, row, column, target);
        changes[i]();
      };
      runDialog(switches, testPicture(width, height, 3), testMask(width, height), useDialog);
      EXPECT_EQ(hostLedger().misuses, 0) << i;
    }
  }
  HostSwitches switches = displayingHost();
  const auto cutting = [] {
    originalAdvance = hostRecord()->advanceState;
    hostRecord()->advanceState = cutRows;
  };
  runDialog(switches, testPicture(400, 90, 3), testMask(400, 90), useDialog, cutting);
  // A mask so large is fetched in two.
  const auto withdrawing = [] {
    originalAdvance = hostRecord()->advanceState;
    hostRecord()->advanceState = withdrawInBands;
  };
  runDialog(switches, testPicture(2500, 2000, 1), testMask(2500, 2000), useDialog, withdrawing);
  EXPECT_TRUE(hostRecord() == nullptr || hostRecord()->advanceState != withdrawInBands);
}
