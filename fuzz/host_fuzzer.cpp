// A host that does as it likes: any services that fail, any settings block, any order of calls, any
// rectangle, mask, planes and rates, and changes of its record while it is asked. Whatever comes,
// the module answers and gives back the buffers of a run that it ended.

#include "fuzz/fuzz_input.h"
#include "fuzz/fuzz_runs.h"
#include "hosts/substitute_host/host_state.h"
#include "hosts/substitute_host/substitute_host.h"
#include "platform/none/none_script.h"
#include "settings/effect_settings.h"
#include "tests/support/hosts/heap_faults.h"
#include "tests/support/hosts/host_pictures.h"

constexpr int32_t kLongestRun = 12;  // calls

static int16_t takeSelector(FuzzInput* input) {
  return static_cast<int16_t>(takeBetween(input, -1, 6));
}

static HostSwitches takeSwitches(FuzzInput* input) {
  HostSwitches switches;
  const auto bits = take<uint16_t>(input);
  switches.advanceState = bits & 1;
  switches.displayPixels = bits & 2;
  switches.colorServices = bits & 4;
  switches.moveBuffers = bits & 8;
  switches.dirtyMemory = bits & 16;
  switches.deliverMask = bits & 32;
  switches.honourSampling = bits & 64;
  switches.scriptingSuitesNull = bits & 128;
  switches.refuseAllBuffers = bits & 256;
  switches.handleSuite = static_cast<SuiteOffer>(takeBetween(input, 0, 4));
  switches.bufferSuite = static_cast<SuiteOffer>(takeBetween(input, 0, 4));
  switches.scripting = static_cast<SuiteOffer>(takeBetween(input, 0, 4));
  switches.abortAtTest = takeBetween(input, 0, 40);
  switches.failExchangeAt = takeBetween(input, 0, 40);
  switches.refuseAllocationAt = takeBetween(input, 0, 12);
  if (bits & 512) {
    switches.abortTest = [input] {
      changeRecord(input);
      // A call out of a callback.
      if (takeBetween(input, 0, 63) == 1) callSelector(takeSelector(input));
      return false;
    };
    switches.progress = [input](int32_t, int32_t) { changeRecord(input); };
  }
  switches.maskBeyondOutput = bits & 1024;
  switches.keepsLog = false;
  return switches;
}

// None, one that tests share, or runs of any values.
static HostMask takeMask(FuzzInput* input, int32_t width, int32_t height) {
  const int32_t kind = takeBetween(input, 0, 2);
  if (kind == 0) return {};
  if (kind == 1) return testMask(width, height);
  const auto pixels = static_cast<size_t>(width) * static_cast<size_t>(height);
  HostMask mask;
  while (mask.size() < pixels && input->left > 0) {
    const int32_t run = takeBetween(input, 1, 64);
    mask.insert(mask.end(), static_cast<size_t>(run), take<uint8_t>(input));
  }
  mask.resize(pixels);
  return mask;
}

// A user who takes the dialog as it comes, or closes it.
static void scriptUser(FuzzInput* input) {
  const int32_t button = takeBetween(input, 0, 3);
  if (button == 0) return;
  noneScript().modalWindow = [button](NoneWindow& window) { window.clickButton(button); };
}

// Everything but what says whose the block is: a stranger's pointers are no honest input.
static void scrambleSettings(FuzzInput* input) {
  if (hostRecord()->parameters == nullptr) return;
  EffectSettings* settings = hostSettings();
  const EffectSettings kept = *settings;
  *settings = take<EffectSettings>(input);
  settings->environmentPicture = kept.environmentPicture;
  settings->texturePicture = kept.texturePicture;
  settings->environmentRef = kept.environmentRef;
  settings->textureRef = kept.textureRef;
  settings->loadMark = kept.loadMark;
  settings->texturePath[kPathBytes - 1] = 0;
  settings->environmentPath[kPathBytes - 1] = 0;
  settings->pictureFolder[kPathBytes - 1] = 0;
}

static void scrambleRecord(FuzzInput* input) {
  FilterRecord* record = hostRecord();
  record->filterRect = takeRectangle(input);
  record->imageSize = take<Point>(input);
  record->planes = static_cast<int16_t>(takeBetween(input, -1, 5));
  record->imageMode = static_cast<int16_t>(takeBetween(input, 0, 4));
  record->haveMask = take<uint8_t>(input) & 1;
  record->inputRate = take<int32_t>(input);
  record->maskRate = take<int32_t>(input);
  record->samplingSupport = take<uint8_t>(input) & 1;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t count) {
  FuzzInput input = {bytes, count};
  resetNone();
  const HostSwitches switches = takeSwitches(&input);
  const int32_t width = takeBetween(&input, 1, 40);
  const int32_t height = takeBetween(&input, 1, 40);
  const HostPicture picture = testPicture(width, height, takeBetween(&input, 1, 4));
  openHost(switches, picture, takeMask(&input, width, height));
  scriptUser(&input);
  for (int32_t i = 0; i < kLongestRun && input.left > 0; ++i) {
    switch (takeBetween(&input, 0, 11)) {
      case 0:
        scrambleSettings(&input);
        break;
      case 1:
        scrambleRecord(&input);
        break;
      case 2:
        repeatFilter();
        break;
      case 3:
        renderFilter();
        break;
      case 4:
        failHostCall(takeBetween(&input, 0, 40));
        break;
      case 5:
        refuseModuleBlock(takeBetween(&input, 0, 40));
        break;
      default:
        callSelector(takeSelector(&input));
        break;
    }
  }
  refuseModuleBlock(0);
  finishAndCheck();
  freeOwnHandles();
  closeHost();
  return 0;
}
