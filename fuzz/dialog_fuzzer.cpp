// A user who does anything at all in the dialog, with pointer, keys or a screen reader, in a host
// that may change its record and fail meanwhile.

#include <cstdlib>

#include "dialog/controls/control_table.h"
#include "fuzz/fuzz_input.h"
#include "fuzz/fuzz_runs.h"
#include "hosts/substitute_host/substitute_host.h"
#include "platform/none/none_script.h"
#include "tests/support/hosts/heap_faults.h"
#include "tests/support/hosts/host_pictures.h"

constexpr char kPicture[] = "C:\\environments and textures\\any.bmp";
constexpr char kNoPicture[] = "C:\\missing.bmp";

static int16_t between(int32_t low, int32_t high, int32_t fraction) {
  return static_cast<int16_t>(low + (high - low) * fraction / 256);
}

static Point lastPoint = {};

// Of a control, mostly, or anywhere.
static Point takePoint(FuzzInput* input) {
  const int32_t which = takeBetween(input, 0, kMainDialog.controlCount + 7);
  if (which >= kMainDialog.controlCount) {
    const int32_t h = take<uint16_t>(input) % (kMainDialog.width + 40) - 20;
    const int32_t v = take<uint16_t>(input) % (kMainDialog.height + 40) - 20;
    return lastPoint = {static_cast<int16_t>(v), static_cast<int16_t>(h)};
  }
  const Rectangle& rect = kMainDialog.controls[which].rect;
  const int32_t v = take<uint8_t>(input);
  const int32_t h = take<uint8_t>(input);
  return lastPoint = {between(rect.top, rect.bottom, v), between(rect.left, rect.right, h)};
}

static int32_t takeControl(FuzzInput* input) {
  return kMainDialog.controls[takeBetween(input, 0, kMainDialog.controlCount - 1)].id;
}

// Most sessions are to go on.
static bool mayEnd(FuzzInput* input) {
  return take<uint8_t>(input) < 24;
}

static void pressKey(NoneWindow& window, FuzzInput* input) {
  const auto key = static_cast<WindowKey>(takeBetween(input, 0, 18));
  const bool ends = key == WindowKey::enter || key == WindowKey::escape;
  if (ends && !window.hasPopup() && !mayEnd(input)) return;
  if (key != WindowKey::character) return window.key(key, take<uint8_t>(input) & 1);
  const char character[2] = {static_cast<char>(takeBetween(input, 1, 127)), 0};
  window.type(character);
}

// What a screen reader asks of a window at any time.
static void readAll(const NoneWindow& window) {
  for (int32_t id = -1; id <= kControlIds; ++id) {
    ControlReading reading;
    if (!window.read(id, &reading)) continue;
    const bool within = reading.amount >= reading.minimum && reading.amount <= reading.maximum;
    if (reading.name == nullptr || (reading.hasRange && !within)) std::abort();
  }
}

static void actInPopup(NoneWindow& window, FuzzInput* input) {
  NoneWindow popup = window.popup();
  constexpr int32_t kWide = 220;
  constexpr int32_t kHigh = 520;
  const auto takePlace = [input] {
    const auto v = static_cast<int16_t>(take<uint16_t>(input) % kHigh - 20);
    return Point{v, between(-20, kWide, take<uint8_t>(input))};
  };
  switch (takeBetween(input, 0, 7)) {
    case 0:
      return popup.move(takePlace());
    case 1:
      return popup.press(takePlace());
    case 2:
      return popup.release(takePlace());
    case 3:  // where it was opened from
      return popup.release(window.placeInPopup(lastPoint));
    case 4:
      return readAll(window);
    case 5:
      return window.set(takeControl(input), take<int16_t>(input));
    default:
      return pressKey(window, input);
  }
}

static void act(NoneWindow& window, FuzzInput* input) {
  if (window.hasPopup()) return actInPopup(window, input);
  switch (takeBetween(input, 0, 17)) {
    case 0:
      return window.press(takePoint(input));
    case 1:
      return window.move(takePoint(input));
    case 2:
      return window.release(takePoint(input));
    case 3:
      return window.click(takePoint(input));
    case 4:
      return window.wheel(takePoint(input), takeBetween(input, -3, 3), take<uint8_t>(input) & 1);
    case 5:
      return window.doubleClick(takePoint(input));
    case 6:
      return window.otherDown(takePoint(input));
    case 7:
      return window.otherUp(takePoint(input));
    case 8: {
      const int32_t id = takeControl(input);
      // What is saved would be there for the next session.
      if (id == kSaveButton) return;
      if ((id == kOkButton || id == kCancelButton) && !mayEnd(input)) return;
      return window.command(id, take<uint8_t>(input) % 8 == 0 ? 1 : 0);
    }
    case 9:
      return window.command(1990 + takeBetween(input, 0, 60));
    case 10:
    case 11:
      return pressKey(window, input);
    case 12:
      for (int32_t digits = takeBetween(input, 1, 4); digits > 0; --digits) {
        const char digit[2] = {static_cast<char>(takeBetween(input, '-', '9')), 0};
        window.type(digit);
      }
      return;
    case 13:
      return window.use(takeControl(input));
    case 14:
      return window.set(takeControl(input), take<int16_t>(input));
    case 15:
      return readAll(window);
    case 16: {
      const auto state = take<uint8_t>(input);
      return window.drawButton(takeControl(input),
                               {(state & 1) != 0, (state & 2) != 0, (state & 4) != 0});
    }
    default:
      noneScript().milliseconds += take<uint16_t>(input);
      return;
  }
}

// --- The host -------------------------------------------------------------------------------

static FuzzInput* hostInput = nullptr;  // null: the host keeps to what is usual
static AdvanceStateProc usualAdvance = nullptr;

static int16_t advanceOrFail() {
  constexpr int16_t kErrors[] = {kMemoryFull, kParameterError, kFilterBadParameters, kUserCanceled};
  const int16_t result = usualAdvance();
  changeRecord(hostInput);
  const auto chance = take<uint8_t>(hostInput);
  return chance < 16 ? kErrors[chance % 4] : result;
}

static HostSwitches takeSwitches(FuzzInput* input) {
  HostSwitches switches;
  const auto bits = take<uint8_t>(input);
  switches.keepsLog = false;
  switches.displayPixels = (bits & 3) != 0;
  switches.colorServices = bits & 64;
  switches.moveBuffers = bits & 4;
  switches.maskBeyondOutput = bits & 8;
  switches.honourSampling = (bits & 0x30) != 0;
  switches.display = [](const HostPicture& shown, int32_t row, int32_t column, void* target) {
    drawIntoTarget(shown, row, column, target);
    if (hostInput != nullptr) changeRecord(hostInput);
  };
  return switches;
}

static void scriptUser(FuzzInput* input) {
  constexpr int32_t kMostActions = 60;
  const auto bits = take<uint8_t>(input);
  scriptBitmap(kPicture, 20, 30, std::vector<uint8_t>(3 * 20 * 30, 50));
  noneScript().chosenPaths = {kPicture, kPicture, kNoPicture, "",      kPicture,
                              kPicture, kPicture, kNoPicture, kPicture};
  noneScript().chosenColors = {NoneColor{1, 2, 255}, std::nullopt, NoneColor{200, 100, 0}};
  noneScript().refusesPopups = (bits & 7) == 7;
  noneScript().modalWindow = [input](NoneWindow& window) {
    for (int32_t i = 0; i < kMostActions && input->left > 0 && window.isOpen(); ++i) {
      act(window, input);
    }
  };
  noneScript().modalWindows["ABOUTBOX"] = [input](NoneWindow& window) {
    for (int32_t i = 0; i < 6 && window.isOpen(); ++i) {
      if (take<uint8_t>(input) & 1) {
        pressKey(window, input);
      } else {
        window.press(takePoint(input));
      }
    }
  };
  if (bits & 8) callAbout();
}

// A width that the preview shows as it is, one that it pans over, and one that it opens at a part.
static int32_t takeWidth(FuzzInput* input) {
  constexpr int32_t kWidths[] = {30, 900, 30, 2400};
  return kWidths[take<uint8_t>(input) & 3];
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t count) {
  FuzzInput input = {bytes, count};
  lastPoint = {};
  resetNone();
  scriptUser(&input);
  const HostSwitches switches = takeSwitches(&input);
  const int32_t width = takeWidth(&input);
  const int32_t height = width > 1000 ? 30 : 20;
  const auto shape = take<uint8_t>(&input);
  openHost(switches, testPicture(width, height, shape & 1 ? 1 : 3),
           shape & 2 ? testMask(width, height) : HostMask());
  callSelector(kSelectorParameters);
  if ((shape & 12) != 0) takeReliefAway();
  const bool changes = (shape & 48) == 48;
  if (changes) {
    hostInput = &input;
    usualAdvance = hostRecord()->advanceState;
    hostRecord()->advanceState = advanceOrFail;
  }
  if ((shape & 192) == 192) refuseModuleBlock(take<uint8_t>(&input));
  if (callSelector(kSelectorPrepare) == 0) renderFilter();
  hostInput = nullptr;
  refuseModuleBlock(0);
  finishAndCheck();
  freeOwnHandles();
  closeHost();
  return 0;
}
