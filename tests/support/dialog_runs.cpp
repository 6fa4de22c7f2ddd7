#include "tests/support/dialog_runs.h"

#include "dialog/control_table.h"
#include "entry/handles.h"
#include "hosts/substitute_host/host_state.h"
#include "platform/none/none_script.h"

int16_t runDialog(const HostSwitches& switches, const HostPicture& picture, const HostMask& mask,
                  const DialogPlay& play, const std::function<void()>& prepare) {
  closeHost();
  openHost(switches, picture, mask);
  int16_t result = callSelector(kSelectorParameters);
  if (result == 0) result = callSelector(kSelectorPrepare);
  if (result != 0) return result;
  if (prepare) prepare();
  noneScript().modalWindow = play;
  return renderFilter();
}

int16_t runDialog(const DialogPlay& play) {
  return runDialog({}, testPicture(40, 30, 3), {}, play);
}

SessionRecord* hostSession() {
  return static_cast<SessionRecord*>(*reinterpret_cast<Handle>(host().dataSlot));
}

Point sliderPoint(int32_t id, int32_t value) {
  const Slider* slider = findSlider(id);
  const Rectangle rect = controlRect(id);
  const int32_t width = rect.right - 13 - (rect.left + 1);
  const int32_t range = slider->maximum - slider->minimum;
  // The first pixel whose value is at least this one.
  const int32_t along = ((value - slider->minimum) * width + range - 1) / range;
  return {static_cast<int16_t>(rect.top + 5), static_cast<int16_t>(rect.left + 1 + along + 4)};
}

Point middleOf(int32_t id) {
  const Rectangle rect = controlRect(id);
  return {static_cast<int16_t>((rect.top + rect.bottom) / 2),
          static_cast<int16_t>((rect.left + rect.right) / 2)};
}
