// A host that does as it likes: any services, any settings block, any order of calls, any rectangle
// and planes. Whatever comes, the module answers and gives back the buffers of a run that it ended.

#include "entry/handles.h"
#include "fuzz/fuzz_input.h"
#include "fuzz/fuzz_runs.h"
#include "hosts/substitute_host/host_state.h"
#include "hosts/substitute_host/substitute_host.h"
#include "platform/none/none_script.h"
#include "settings/effect_settings.h"
#include "tests/support/hosts/host_pictures.h"

constexpr int32_t kLongestRun = 12;  // calls

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
  return switches;
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
  settings->showDialog = 0;
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
}

static void freeOwnHandles() {
  disposeModuleHandle(reinterpret_cast<Handle>(host().dataSlot));
  disposeModuleHandle(reinterpret_cast<Handle>(hostRecord()->parameters));
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t count) {
  FuzzInput input = {bytes, count};
  resetNone();
  const HostSwitches switches = takeSwitches(&input);
  const int32_t width = takeBetween(&input, 1, 40);
  const int32_t height = takeBetween(&input, 1, 40);
  const HostPicture picture = testPicture(width, height, takeBetween(&input, 1, 4));
  openHost(switches, picture, take<uint8_t>(&input) & 1 ? testMask(width, height) : HostMask());
  for (int32_t i = 0; i < kLongestRun && input.left > 0; ++i) {
    switch (takeBetween(&input, 0, 9)) {
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
      default:
        callSelector(static_cast<int16_t>(takeBetween(&input, -1, 6)));
        break;
    }
  }
  finishAndCheck();
  if (switches.handleSuite != SuiteOffer::usable) freeOwnHandles();
  closeHost();
  return 0;
}
