// A user who does anything at all in the dialog.

#include <cstdlib>

#include "fuzz/fuzz_input.h"
#include "fuzz/fuzz_runs.h"
#include "hosts/substitute_host/substitute_host.h"
#include "platform/none/none_script.h"
#include "tests/support/hosts/host_pictures.h"

constexpr char kPicture[] = "C:\\environments and textures\\any.bmp";

static Point takePoint(FuzzInput* input) {
  const int32_t h = take<uint16_t>(input) % 720 - 20;
  const int32_t v = take<uint16_t>(input) % 410 - 20;
  return {static_cast<int16_t>(v), static_cast<int16_t>(h)};
}

static void actInPopup(NoneWindow popup, FuzzInput* input) {
  const Point point = takePoint(input);
  if (take<uint8_t>(input) & 1) return popup.release(point);
  popup.move(point);
}

// Save by its button is left out: it writes files.
static void act(NoneWindow& window, FuzzInput* input) {
  constexpr int32_t kSave = 61;
  if (window.hasPopup()) return actInPopup(window.popup(), input);
  switch (takeBetween(input, 0, 9)) {
    case 0:
      return window.press(takePoint(input));
    case 1:
      return window.move(takePoint(input));
    case 2:
      return window.release(takePoint(input));
    case 3:
      return window.wheel(takePoint(input), takeBetween(input, -3, 3));
    case 4: {
      const int32_t id = takeBetween(input, 0, 100);
      if (id != kSave) window.command(id, takeBetween(input, 0, 1));
      return;
    }
    case 5:
      return window.command(1990 + takeBetween(input, 0, 60));
    case 6:
      return window.key(static_cast<WindowKey>(takeBetween(input, 0, 10)),
                        take<uint8_t>(input) & 1);
    case 7: {
      const char digit[2] = {static_cast<char>(takeBetween(input, ' ', '9')), 0};
      if (digit[0] != ' ') window.type(digit);
      return;
    }
    case 8:
      return window.doubleClick(takePoint(input));
    default:
      window.otherDown(takePoint(input));
      return window.otherUp(takePoint(input));
  }
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t count) {
  constexpr int32_t kMostActions = 60;
  FuzzInput input = {bytes, count};
  resetNone();
  scriptBitmap(kPicture, 20, 30, std::vector<uint8_t>(3 * 20 * 30, 50));
  noneScript().chosenPaths.assign(8, kPicture);
  noneScript().modalWindow = [&input](NoneWindow& window) {
    for (int32_t i = 0; i < kMostActions && input.left > 0 && window.isOpen(); ++i) {
      act(window, &input);
    }
  };
  HostSwitches switches;
  switches.display = drawIntoTarget;
  const auto shape = take<uint8_t>(&input);
  switches.displayPixels = shape & 1;
  openHost(switches, testPicture(shape & 2 ? 400 : 30, 20, shape & 4 ? 1 : 3),
           shape & 8 ? testMask(shape & 2 ? 400 : 30, 20) : HostMask());
  callSelector(kSelectorParameters);
  if ((shape & 16) == 0) takeReliefAway();
  if (callSelector(kSelectorPrepare) == 0) renderFilter();
  finishAndCheck();
  closeHost();
  return 0;
}
