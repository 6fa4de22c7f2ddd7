// Every call of a host and every block of the module's own fails once, at every place of a run, and
// every exchange and abort test ends one: the result says what has failed or the run does without,
// nothing stays locked, and the next run is as if nothing had happened.

#include <gtest/gtest.h>

#include <iterator>
#include <map>
#include <set>
#include <string>

#include "dialog/controls/control_table.h"
#include "hosts/substitute_host/host_record.h"
#include "hosts/substitute_host/host_state.h"
#include "platform/none/none_script.h"
#include "tests/support/dialog/dialog_runs.h"
#include "tests/support/hosts/heap_faults.h"
#include "tests/support/hosts/host_runs.h"

// What may come of a call that fails; kNoError: the run does without.
using Results = std::set<int16_t>;
static const std::map<std::string, Results> kOutcomes = {
    {"newProc", {kMemoryFull}},
    {"getSizeProc", {kNoError}},            // 0: hosts that cannot tell
    {"lockProc", {kNoError, kMemoryFull}},  // of a buffer, of a handle
    {"allocateProc", {kNoError}},           // a block of the module's own takes its place
    {"displayPixels", {kNoError}},
    {"colorServices", {kNoError}},
    {"openReadDescriptorProc", {kNoError}},
    {"getKeyProc", {kNoError}},
    {"getUnitFloatProc", {kParameterError}},
    {"getEnumeratedProc", {kParameterError}},
    {"getBooleanProc", {kParameterError}},
    {"closeReadDescriptorProc", {kParameterError}},
    {"openWriteDescriptorProc", {kNoError}},
    {"putUnitFloatProc", {kNoError}},
    {"putEnumeratedProc", {kNoError}},
    {"putBooleanProc", {kNoError}},
    {"closeWriteDescriptorProc", {kNoError}}};
static const Results kOfOwnBlocks = {kNoError, kUserInformed, kRenderBuffersMissing, kMemoryFull};

// A pop-up may be refused.
static void chooseThirdRow(DialogUser& user, int32_t picker) {
  user.press(middleOf(picker));
  if (user.hasPopup()) {
    user.popupRelease(at(20, 90));
  } else {
    user.release(middleOf(picker));
  }
}

static void editEverything(DialogUser& user) {
  user.press(sliderPoint(kReflectionSlider, 10));
  user.move(sliderPoint(kReflectionSlider, 60));
  user.release(sliderPoint(kReflectionSlider, 60));
  user.click(sliderPoint(kRadiusSlider, 12));
  chooseThirdRow(user, kTexturePicker);
  chooseThirdRow(user, kShapePicker);
  user.click(middleOf(kLight1Pad));
  user.clickButton(kLight1Button);
  user.clickButton(kEnvironmentButton);
  user.clickButton(kZoomOutButton);
  user.clickButton(kOkButton);
}

struct Scenario {
  const char* name;
  HostSwitches switches;
  bool again;  // with the blocks of an earlier run
  bool dialog;
};

static std::vector<Scenario> scenarios() {
  HostSwitches rowByRow;
  rowByRow.advanceState = false;
  rowByRow.moveBuffers = true;
  HostSwitches scripted;
  scripted.scripting = SuiteOffer::usable;
  return {{"first run", {}, false, false},
          {"second run", {}, true, false},
          {"row by row", rowByRow, true, false},
          {"scripted", scripted, true, false},
          {"dialog", displayingHost(), false, true}};
}

// A relief costs more than all the rest of a run, and no call of the host depends on it: one run
// with it and the dialog are enough.
static void leaveReliefOut() {
  ASSERT_EQ(callSelector(kSelectorPrepare), 0);
  hostSettings()->textureChoice = kTextureChoiceNone;
}

static void openScenario(const Scenario& scenario) {
  resetNone();
  scriptBitmap("sky.bmp", 20, 10, std::vector<uint8_t>(600, 90));
  noneScript().chosenPaths.assign(4, "sky.bmp");
  noneScript().chosenColors.assign(4, NoneColor{10, 200, 30});
  closeHost();
  openHost(scenario.switches, testPicture(23, 17, 3), testMask(23, 17));
  if (scenario.again) {
    leaveReliefOut();
    ASSERT_EQ(repeatFilter(), 0);
  }
}

static int16_t run(const Scenario& scenario) {
  return scenario.dialog ? rerunDialog(editEverything) : repeatFilter();
}

static std::vector<uint8_t> bytesOf(const Scenario& scenario) {
  openScenario(scenario);
  EXPECT_EQ(run(scenario), 0);
  return filteredPicture().samples;
}

// A run in the host as it is, and what it leaves; then the same once more, in good order.
static void expectOrderAfter(const Scenario& scenario, const std::vector<uint8_t>& expected,
                             bool finish = true) {
  if (finish) {
    EXPECT_EQ(callSelector(kSelectorFinish), 0);
  } else {
    EXPECT_EQ(run(scenario), 0);
  }
  const HostLedger ledger = hostLedger();
  EXPECT_LE(ledger.handles, 2 + (scenario.switches.scripting == SuiteOffer::usable ? 1 : 0));
  EXPECT_EQ(ledger.buffers, 0);
  EXPECT_EQ(ledger.lockedHandles, 0);
  EXPECT_EQ(ledger.lockedBuffers, 0);
  EXPECT_EQ(ledger.misuses, 0);
  // What a dialog has got to by then differs.
  if (scenario.dialog) return;
  EXPECT_EQ(run(scenario), 0);
  if (!expected.empty()) {
    EXPECT_EQ(filteredPicture().samples, expected);
  }
}

TEST(HostFaults, EveryCallFailsOnce) {
  int32_t faults = 0;
  std::set<std::string> procedures;
  for (const Scenario& scenario : scenarios()) {
    const std::vector<uint8_t> expected = bytesOf(scenario);
    for (int32_t n = 1; !HasFailure(); ++n, ++faults) {
      openScenario(scenario);
      failHostCall(n);
      const int16_t result = run(scenario);
      const char* failed = failedHostCall();
      failHostCall(0);
      if (failed == nullptr) break;
      SCOPED_TRACE(std::string(scenario.name) + ", call " + std::to_string(n) + ": " + failed);
      procedures.insert(failed);
      const auto outcome = kOutcomes.find(failed);
      ASSERT_NE(outcome, kOutcomes.end());
      EXPECT_EQ(outcome->second.count(result), 1U) << result;
      if (result == 0 && !scenario.dialog) {
        EXPECT_EQ(filteredPicture().samples, expected);
      }
      expectOrderAfter(scenario, expected);
    }
  }
  EXPECT_GE(procedures.size(), 14U);
  RecordProperty("faults", faults);
}

TEST(HostFaults, EveryOwnBlockIsRefusedOnce) {
  std::vector<Scenario> all = scenarios();
  for (Scenario& scenario : all) {
    scenario.switches.handleSuite = scenario.switches.bufferSuite = SuiteOffer::usable;
  }
  all.push_back({"refused buffers", {}, false, false});
  all.back().switches.refuseAllBuffers = true;
  int32_t faults = 0;
  for (const Scenario& scenario : all) {
    const std::vector<uint8_t> expected = bytesOf(scenario);
    for (int32_t n = 1; !HasFailure(); ++n, ++faults) {
      SCOPED_TRACE(std::string(scenario.name) + ", block " + std::to_string(n));
      openScenario(scenario);
      refuseModuleBlock(n);
      const int16_t result = run(scenario);
      const bool refused = moduleBlocksAsked() >= n;
      refuseModuleBlock(0);
      if (!refused) break;
      // A dialog that cannot be built counts as cancelled.
      const bool cancelled = scenario.dialog && result == kUserCanceled;
      EXPECT_TRUE(cancelled || kOfOwnBlocks.count(result) == 1) << result;
      if (result == 0 && !scenario.dialog) {
        EXPECT_EQ(filteredPicture().samples, expected);
      }
      expectOrderAfter(scenario, expected);
    }
  }
  RecordProperty("faults", faults);
}

// What exchanges answer: without memory, stopped by the user, with a file that cannot be read, and
// the two ways to refuse a request.
constexpr int16_t kExchangeErrors[] = {kMemoryFull, kUserCanceled, -36, kParameterError,
                                       kFilterBadParameters};

// The n-th exchange or abort test ends the run with its own code.
TEST(HostFaults, EveryExchangeAndAbort) {
  std::vector<int16_t> errors(std::begin(kExchangeErrors), std::end(kExchangeErrors));
  errors.push_back(kUserInformed);  // what a stopped run answers
  const std::vector<Scenario> all = {scenarios()[1], scenarios()[2]};
  int32_t faults = 0;
  for (const Scenario& scenario : all) {
    const std::vector<uint8_t> expected = bytesOf(scenario);
    for (const int16_t error : errors) {
      const bool abort = error == kUserInformed;
      int32_t results = 0;
      openScenario(scenario);
      for (int32_t n = 1; !HasFailure(); ++n, ++faults) {
        SCOPED_TRACE(std::to_string(error) + " at " + std::to_string(n));
        host().abortTests = host().exchangeCount = 0;
        host().switches.abortAtTest = abort ? n : 0;
        host().switches.failExchangeAt = abort ? 0 : n;
        host().switches.exchangeError = error;
        const int16_t result = run(scenario);
        const int32_t last = abort ? host().abortTests : host().exchangeCount;
        if (last < n) break;
        EXPECT_EQ(result, error);
        ++results;
        // Hosts need not call Finish after that.
        expectOrderAfter(scenario, expected, n % 2 == 0);
      }
      EXPECT_GT(results, 16) << error;  // one a row at least
    }
  }
  RecordProperty("faults", faults);
}

static void lookAround(DialogUser& user) {
  const Point middle = middleOf(kPreviewArea);
  user.clickButton(kZoomInButton);
  user.press(middle);
  user.move(shifted(middle, -20, 0));
  user.release(shifted(middle, -20, 0));
  user.otherDown(middle);
  user.otherUp(middle);
  user.click(sliderPoint(kRadiusSlider, 12));
  user.clickButton(kZoomOutButton);
  user.clickButton(kOkButton);
}

// A preview does without what the host cannot deliver; the rows of the render behind it do not.
TEST(HostFaults, EveryExchangeOfADialog) {
  int32_t faults = 0;
  for (const int16_t error : {kMemoryFull, kParameterError, kFilterBadParameters}) {
    for (int32_t n = 1; !HasFailure(); ++n, ++faults) {
      SCOPED_TRACE(std::to_string(error) + " at " + std::to_string(n));
      HostSwitches switches = displayingHost();
      switches.failExchangeAt = n;
      switches.exchangeError = error;
      const int16_t result =
          runDialog(switches, testPicture(600, 4, 3), testMask(600, 4), lookAround);
      if (host().exchangeCount < n) break;
      EXPECT_TRUE(result == error || result == 0) << result;
      expectOrderAfter({"", {}, false, false}, {}, n % 2 == 0);
    }
  }
  EXPECT_GT(faults, 30);
  RecordProperty("faults", faults);
}

// Nothing of a dialog that was agreed to can be remembered: the run is as it would be.
TEST(HostFaults, NothingCanBeKept) {
  const Scenario scenario = scenarios().back();
  const std::vector<uint8_t> expected = bytesOf(scenario);
  const std::string folder = ::testing::TempDir();
  for (const std::string& unwritable : {folder, folder + "missing/cached", std::string()}) {
    openScenario(scenario);
    noneScript().forgetsValues = true;
    noneScript().cachedSettingsPath = unwritable;
    EXPECT_EQ(run(scenario), 0) << unwritable;
    EXPECT_EQ(filteredPicture().samples, expected);
    EXPECT_TRUE(rememberedValue("ChromeFile").empty());
    EXPECT_EQ(noneRecord().alerts.size(), 0U);
    expectOrderAfter(scenario, expected);
  }
}
