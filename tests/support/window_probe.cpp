#include "tests/support/window_probe.h"

#include <utility>

static std::string describeKey(const WindowEvent& event) {
  static const char* const kNames[] = {"none",     "left", "right", "up",    "down",   "pageUp",
                                       "pageDown", "home", "end",   "enter", "escape", "backspace",
                                       "undo",     "redo", "copy",  "tab",   "help"};
  std::string text = event.key == WindowKey::character ? std::string("'") + event.character + "'"
                                                       : kNames[static_cast<int>(event.key)];
  if (event.shift) text += " shift";
  return text + " on " + std::to_string(event.id);
}

static std::string describe(const WindowEvent& event) {
  const std::string at = std::to_string(event.point.h) + "," + std::to_string(event.point.v);
  const std::string id = std::to_string(event.id);
  switch (event.kind) {
    case WindowEventKind::initialise:
      return "initialise";
    case WindowEventKind::drawItem:
      return "draw " + id + (event.state.pressed ? " pressed" : "") +
             (event.state.focused ? " focused" : "") + (event.state.disabled ? " disabled" : "");
    case WindowEventKind::command:
      return "command " + id + (event.notification != 0 ? " notified" : "");
    case WindowEventKind::mouseMove:
      return "move " + at;
    case WindowEventKind::buttonDown:
      return "down " + at;
    case WindowEventKind::buttonUp:
      return "up " + at;
    case WindowEventKind::doubleClick:
      return "double " + at;
    case WindowEventKind::otherDown:
      return "other down " + at;
    case WindowEventKind::otherUp:
      return "other up " + at;
    case WindowEventKind::wheel:
      return "wheel " + std::to_string(event.amount) + " at " + at;
    case WindowEventKind::use:
      return "use " + id;
    case WindowEventKind::set:
      return "set " + id + " to " + std::to_string(event.amount);
    case WindowEventKind::key:
      return "key " + describeKey(event);
    case WindowEventKind::rest:
      return "rest";
  }
  return "?";
}

std::vector<std::string> WindowProbe::take() {
  return std::exchange(events, {});
}

bool probeProcedure(Window* window, const WindowEvent& event, void* probe) {
  auto* told = static_cast<WindowProbe*>(probe);
  told->events.push_back(describe(event));
  return told->answer(window, event);
}
