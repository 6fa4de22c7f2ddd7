#include "dialog/choices/colour_choice.h"

#include <cstring>

#include "dialog/dialog_state.h"
#include "platform/choosers.h"
#include "services/counted_text.h"

constexpr int16_t kChooseColorSelector = 0;
constexpr int16_t kRgbSpace = 0;

static uint16_t channelOf(int32_t component) {
  return static_cast<uint16_t>(component * 256);
}

// True when the host has answered for the user: chosen or cancelled. Some hosts have the procedure
// and refuse every call.
static bool chooseWithHost(const FilterRecord* filter, const char* prompt, Color16* colour) {
  if (filter->colorServices == nullptr) return false;
  uint8_t countedPrompt[kCountedTextBytes] = {};
  appendToCountedText(countedPrompt, prompt, boundedLength(prompt));
  ColorServicesInfo info = {};
  info.infoSize = sizeof(info);
  info.selector = kChooseColorSelector;
  info.sourceSpace = kRgbSpace;
  info.resultSpace = kRgbSpace;
  info.colorComponents[0] = static_cast<int16_t>(colour->red >> 8);
  info.colorComponents[1] = static_cast<int16_t>(colour->green >> 8);
  info.colorComponents[2] = static_cast<int16_t>(colour->blue >> 8);
  info.selectorParameter = reinterpret_cast<intptr_t>(countedPrompt);
  const int16_t error = filter->colorServices(&info);
  if (error != kNoError && error != kUserCanceled) return false;
  *colour = {channelOf(info.colorComponents[0]), channelOf(info.colorComponents[1]),
             channelOf(info.colorComponents[2])};
  return true;
}

static void chooseWithPlatform(Color16* colour) {
  static uint8_t customColors[kCustomColors][3];
  static bool customColorsReady = false;
  if (!customColorsReady) std::memset(customColors, 255, sizeof(customColors));
  customColorsReady = true;
  uint8_t rgb[3] = {static_cast<uint8_t>(colour->red >> 8),
                    static_cast<uint8_t>(colour->green >> 8),
                    static_cast<uint8_t>(colour->blue >> 8)};
  if (choosePlatformColor(rgb, customColors)) {
    *colour = {channelOf(rgb[0]), channelOf(rgb[1]), channelOf(rgb[2])};
  }
}

void chooseColor(DialogState* dialog, const char* prompt, Color16* colour) {
  if (!chooseWithHost(dialog->session->filter, prompt, colour)) chooseWithPlatform(colour);
}
