#include "platform/none/window_record.h"

std::unique_ptr<Window> newWindow(int32_t width, int32_t height, WindowProcedure procedure,
                                  void* context) {
  auto window = std::make_unique<Window>();
  window->procedure = procedure;
  window->context = context;
  window->open = true;
  window->code = kDialogUnavailable;
  const size_t pixels = static_cast<size_t>(width) * static_cast<size_t>(height);
  window->shown = {width, height, std::vector<uint8_t>(pixels * 3)};
  return window;
}

WindowEvent pointerEvent(WindowEventKind kind, Point point) {
  WindowEvent event = eventOf(kind);
  event.point = point;
  return event;
}

static Window* rootOf(Window* window) {
  return window->owner != nullptr ? window->owner : window;
}

bool sendEvent(Window* window, const WindowEvent& event) {
  if (!window->open) return false;
  Window* root = rootOf(window);  // a pop-up may be gone after its event
  ++root->eventsInProgress;
  const bool used = window->procedure(window, event, window->context);
  --root->eventsInProgress;
  while (root->eventsInProgress == 0 && root->open && !root->posted.empty()) {
    const WindowEvent next = root->posted.front();
    root->posted.pop_front();
    sendEvent(root, next);
  }
  if (root->eventsInProgress == 0 && root->awaitsRest) {
    root->awaitsRest = false;
    sendEvent(root, eventOf(WindowEventKind::rest));
  }
  return used;
}

const WindowControl* findControl(const Window* window, int32_t id) {
  if (window->content == nullptr) return nullptr;
  for (int32_t i = 0; i < window->content->controlCount; ++i) {
    if (window->content->controls[i].id == id) return &window->content->controls[i];
  }
  return nullptr;
}

const WindowControl* buttonUnder(const Window* window, Point point) {
  if (window->content == nullptr) return nullptr;
  for (int32_t i = 0; i < window->content->controlCount; ++i) {
    const WindowControl& control = window->content->controls[i];
    if (control.kind == ControlKind::button && pointInRect(point, &control.rect)) return &control;
  }
  return nullptr;
}

ItemState stateOf(const Window* window, int32_t id) {
  const bool pressed = window->pressedButton == id && window->pressedInside;
  return {pressed, window->focused == id, /*disabled=*/false};
}

void moveFocus(Window* window, int32_t id) {
  const int32_t before = window->focused;
  if (before == id) return;
  window->focused = id;
  redrawItem(window, before);
  redrawItem(window, id);
}

void cancelWindow(Window* window) {
  const int32_t cancel = window->content->cancelButton;
  if (cancel == 0) return endModalWindow(window, kDialogUnavailable);
  sendEvent(window, commandEvent(cancel));
}

void dismissPopup(Window* owner) {
  if (owner->popup == nullptr) return;
  constexpr Point kOutside = {-1000, -1000};
  sendEvent(owner->popup.get(), pointerEvent(WindowEventKind::mouseMove, kOutside));
  if (owner->popup == nullptr) return;
  sendEvent(owner->popup.get(), pointerEvent(WindowEventKind::buttonUp, kOutside));
  owner->popup.reset();
}
