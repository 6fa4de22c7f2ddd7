#include "tests/support/dialog/dialog_runs.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstring>

#include "dialog/controls/control_table.h"
#include "dialog/dialog_scale.h"
#include "entry/handles.h"
#include "hosts/substitute_host/host_record.h"
#include "hosts/substitute_host/host_state.h"
#include "settings/setting_ranges.h"

static int16_t startWithDialog(const DialogPlay& play, const std::function<void()>& prepare) {
  int16_t result = callSelector(kSelectorParameters);
  if (result == kNoError) result = callSelector(kSelectorPrepare);
  if (result != kNoError) return result;
  if (prepare) prepare();
  return playDialog(play, renderFilter);
}

int16_t runDialog(const HostSwitches& switches, const HostPicture& picture, const HostMask& mask,
                  const DialogPlay& play, const std::function<void()>& prepare) {
  closeHost();
  openHost(switches, picture, mask);
  return startWithDialog(play, prepare);
}

int16_t runDialog(const DialogPlay& play) {
  return runDialog(displayingHost(), testPicture(40, 30, 3), {}, play);
}

int16_t rerunDialog(const DialogPlay& play) {
  beginRun();
  return startWithDialog(play, nullptr);
}

HostSwitches displayingHost() {
  HostSwitches switches;
  switches.displaysTarget = true;
  switches.display = drawIntoTarget;
  return switches;
}

SessionRecord* hostSession() {
  auto* session = static_cast<SessionRecord*>(*reinterpret_cast<Handle>(host().dataSlot));
  // Between calls no settings are locked, and tests call procedures that want them.
  if (session->lockedSettings == nullptr) session->settings = hostSettings();
  return session;
}

int32_t settingOf(const char* name) {
  int32_t value = 0;
  std::memcpy(&value, reinterpret_cast<char*>(hostSettings()) + findSetting(name)->offset,
              sizeof(value));
  return value;
}

std::string temporaryFile(const std::string& name) {
  return ::testing::TempDir() + "morvalis-" + std::to_string(getpid()) + "-" + name;
}

static Point pixelAt(int32_t h, int32_t v) {
  return {static_cast<int16_t>(v), static_cast<int16_t>(h)};
}

Point at(int32_t h, int32_t v) {
  return pixelAt(scaled(h), scaled(v));
}

Point shifted(Point point, int32_t h, int32_t v) {
  return pixelAt(point.h + scaled(h), point.v + scaled(v));
}

Point sliderPoint(int32_t id, int32_t value) {
  const Slider* slider = findSlider(id);
  const Rectangle rect = controlRect(id);
  const int32_t width = rect.right - scaled(13) - (rect.left + scaled(1));
  const int32_t range = slider->maximum - slider->minimum;
  // The first pixel whose value is at least this one.
  const int32_t along = ((value - slider->minimum) * width + range - 1) / range;
  return pixelAt(rect.left + scaled(1) + along + scaled(4), rect.top + scaled(5));
}

Point middleOf(int32_t id) {
  const Rectangle rect = controlRect(id);
  return pixelAt((rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2);
}

void chooseRow(DialogUser& user, int32_t picker, int32_t row) {
  user.press(middleOf(picker));
  if (!user.hasPopup()) {
    ADD_FAILURE() << "no pop-up of picker " << picker;
    return;
  }
  user.popupMove(at(20, 36 * row - 18));
  user.popupRelease(at(20, 36 * row - 18));
}
