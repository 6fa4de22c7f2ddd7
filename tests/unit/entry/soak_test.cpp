// Many runs and dialogs one after the other, in hosts of every kind: nothing is left behind, and
// memory stays where it was. MORVALIS_LONG=1 makes it 10,000 renders and 1,000 dialogs.

#include <gtest/gtest.h>
#include <malloc.h>

#include <cstdlib>
#include <filesystem>

#include "dialog/controls/control_table.h"
#include "dialog/dialog_scale.h"
#include "platform/none/none_script.h"
#include "tests/support/dialog/dialog_runs.h"
#include "tests/support/random_inputs.h"

static int32_t times(int32_t few, int32_t many) {
  return std::getenv("MORVALIS_LONG") != nullptr ? many : few;
}

// Bytes that the heap has given out. Under the address sanitizer it gives none, and the sanitizer
// itself tells what is lost.
static int64_t heapBytes() {
  const struct mallinfo2 info = mallinfo2();
  return static_cast<int64_t>(info.uordblks + info.hblkhd);
}

static int64_t openFiles() {
  const std::filesystem::directory_iterator files("/proc/self/fd");
  return std::distance(begin(files), end(files));
}

// Runs the first half, and wants the second to need nothing more.
static void expectFlat(int32_t count, const std::function<void(int32_t number)>& run) {
  for (int32_t i = 0; i < count / 2 && !::testing::Test::HasFailure(); ++i) run(i);
  closeHost();
  resetNone();
  const int64_t bytes = heapBytes();
  const int64_t files = openFiles();
  for (int32_t i = count / 2; i < count && !::testing::Test::HasFailure(); ++i) run(i);
  closeHost();
  resetNone();
  // A few lists of the tests themselves may have grown.
  EXPECT_LE(heapBytes(), bytes + 300000);
  EXPECT_EQ(openFiles(), files);
}

static HostSwitches randomHost(TestRandom* random) {
  HostSwitches switches;
  const int32_t bits = randomBetween(random, 0, 255);
  switches.advanceState = (bits & 1) != 0;
  switches.moveBuffers = (bits & 2) != 0;
  switches.dirtyMemory = (bits & 4) != 0;
  switches.deliverMask = (bits & 8) != 0;
  switches.refuseAllBuffers = (bits & 48) == 48;
  switches.scripting = (bits & 64) != 0 ? SuiteOffer::usable : SuiteOffer::absent;
  if ((bits & 128) != 0) switches.abortAtTest = randomBetween(random, 1, 40);
  return switches;
}

TEST(Soak, Renders) {
  TestRandom random = {99};
  expectFlat(times(400, 10000), [&random](int32_t number) {
    const int32_t width = randomBetween(&random, 1, 60);
    const int32_t height = randomBetween(&random, 1, 40);
    const HostMask mask = number % 3 == 0 ? HostMask() : testMask(width, height);
    const HostSwitches switches = randomHost(&random);
    resetNone();
    openHost(switches, testPicture(width, height, randomBetween(&random, 1, 4)), mask);
    ASSERT_EQ(callSelector(kSelectorPrepare), 0);
    randomSettings(&random, hostSettings());
    const int16_t result = renderFilter();
    ASSERT_TRUE(result == 0 || (result == kUserInformed && switches.abortAtTest != 0)) << result;
    // A run that was stopped keeps its memory until this or the next Start.
    ASSERT_EQ(callSelector(kSelectorFinish), 0);
    ASSERT_EQ(hostLedger().misuses, 0);
    ASSERT_EQ(hostLedger().buffers, 0);
    ASSERT_EQ(hostLedger().lockedHandles, 0);
    closeHost();
  });
}

TEST(Soak, Dialogs) {
  TestRandom random = {77};
  expectFlat(times(30, 1000), [&random](int32_t number) {
    resetNone();
    const int32_t width = randomBetween(&random, 20, 500);
    const auto play = [&](DialogUser& user) {
      for (int32_t i = 0; i < 12 && user.isOpen(); ++i) {
        user.click(at(randomBetween(&random, 0, kDialogWidth), randomBetween(&random, 60, 330)));
        if (user.hasPopup()) user.popupRelease(at(20, 36 * randomBetween(&random, 1, 9)));
      }
      if (!user.isOpen()) return;
      if (number % 2 == 0) return user.escape();
      user.clickButton(kOkButton);
    };
    const int16_t result =
        runDialog(displayingHost(), testPicture(width, 90, 3), testMask(width, 90), play);
    ASSERT_TRUE(result == 0 || result == kUserCanceled) << result;
    ASSERT_EQ(hostLedger().buffers, 0);
    ASSERT_EQ(hostLedger().misuses, 0);
  });
}
