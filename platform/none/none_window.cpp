#include "platform/none/none_window.h"

#include <algorithm>

#include "platform/none/window_record.h"

// --- Mouse ----------------------------------------------------------------------------------

static bool seesPointer(const Window* window) {
  return window->open && window->popup == nullptr;
}

static void pressButton(Window* window, int32_t id) {
  moveFocus(window, id);
  window->pressedButton = id;
  window->pressedInside = true;
  redrawItem(window, id);
}

static void releaseButton(Window* window) {
  const int32_t id = window->pressedButton;
  const bool inside = window->pressedInside;
  window->pressedButton = 0;
  window->pressedInside = false;
  if (!inside) return;
  redrawItem(window, id);
  sendEvent(window, commandEvent(id));
}

// A held button follows the pointer in and out of its rectangle.
static void dragButton(Window* window, Point point) {
  const WindowControl* button = findControl(window, window->pressedButton);
  const bool inside = pointInRect(point, &button->rect);
  if (inside == window->pressedInside) return;
  window->pressedInside = inside;
  redrawItem(window, button->id);
}

static void pressAs(Window* window, WindowEventKind kind, Point point) {
  if (!seesPointer(window)) return;
  const WindowControl* button = buttonUnder(window, point);
  if (button != nullptr && !window->captured) return pressButton(window, button->id);
  sendEvent(window, pointerEvent(kind, point));
}

void NoneWindow::press(Point point) {
  pressAs(window_, WindowEventKind::buttonDown, point);
}

void NoneWindow::move(Point point) {
  if (!seesPointer(window_)) return;
  if (window_->pressedButton != 0) return dragButton(window_, point);
  if (buttonUnder(window_, point) != nullptr && !window_->captured) return;
  sendEvent(window_, pointerEvent(WindowEventKind::mouseMove, point));
}

void NoneWindow::release(Point point) {
  if (!seesPointer(window_)) return;
  if (window_->pressedButton != 0) {
    dragButton(window_, point);
    return releaseButton(window_);
  }
  if (buttonUnder(window_, point) != nullptr && !window_->captured) return;
  sendEvent(window_, pointerEvent(WindowEventKind::buttonUp, point));
}

void NoneWindow::click(Point point) {
  press(point);
  release(point);
}

void NoneWindow::doubleClick(Point point) {
  click(point);
  pressAs(window_, WindowEventKind::doubleClick, point);
  release(point);
}

void NoneWindow::otherDown(Point point) {
  if (seesPointer(window_)) sendEvent(window_, pointerEvent(WindowEventKind::otherDown, point));
}

void NoneWindow::otherUp(Point point) {
  if (seesPointer(window_)) sendEvent(window_, pointerEvent(WindowEventKind::otherUp, point));
}

void NoneWindow::wheel(Point point, int32_t notches, bool shift) {
  if (!seesPointer(window_)) return;
  WindowEvent event = pointerEvent(WindowEventKind::wheel, point);
  event.amount = notches;
  event.shift = shift;
  sendEvent(window_, event);
}

// --- Buttons and keys -----------------------------------------------------------------------

void NoneWindow::clickButton(int32_t id) {
  const WindowControl* button = findControl(window_, id);
  if (!window_->open || button == nullptr || button->kind != ControlKind::button) return;
  pressButton(window_, id);
  releaseButton(window_);
}

void NoneWindow::command(int32_t id, int32_t notification) {
  sendEvent(window_, commandEvent(id, notification));
}

// The next or previous button in the order of the controls, beginning anew at the end.
static int32_t neighbourOf(const Window* window, int32_t id, bool backwards) {
  std::vector<int32_t> buttons;
  size_t at = 0;
  bool found = false;
  for (int32_t i = 0; i < window->content->controlCount; ++i) {
    const WindowControl& control = window->content->controls[i];
    if (control.kind != ControlKind::button) continue;
    found |= control.id == id;
    if (control.id == id) at = buttons.size();
    buttons.push_back(control.id);
  }
  if (buttons.empty()) return id;
  if (!found) return backwards ? buttons.back() : buttons.front();
  return buttons[(at + (backwards ? buttons.size() - 1 : 1)) % buttons.size()];
}

// Where a key goes that the procedure has no use for.
static void actOnKey(NoneWindow user, Window* window, const WindowEvent& event) {
  if (window->content == nullptr) return;
  if (event.key == WindowKey::tab) {
    moveFocus(window, neighbourOf(window, window->focused, event.shift));
  } else if (event.key == WindowKey::enter) {
    user.clickButton(window->content->defaultButton);
  } else if (event.key == WindowKey::escape) {
    cancelWindow(window);
  } else if (event.key == WindowKey::character && event.character == ' ') {
    user.clickButton(window->focused);
  }
}

// An open pop-up has the keyboard.
static void sendKey(NoneWindow user, Window* window, WindowKey key, char character, bool shift) {
  if (!window->open) return;
  if (window->popup != nullptr) {
    WindowEvent event = eventOf(WindowEventKind::key);
    event.key = key;
    event.character = character;
    event.shift = shift;
    sendEvent(window->popup.get(), event);
    return;
  }
  WindowEvent event = eventOf(WindowEventKind::key);
  event.id = window->focused;
  event.key = key;
  event.character = character;
  event.shift = shift;
  if (!sendEvent(window, event) && window->open) actOnKey(user, window, event);
}

void NoneWindow::key(WindowKey key, bool shift) {
  sendKey(*this, window_, key, 0, shift);
}

void NoneWindow::type(const char* characters) {
  for (const char* at = characters; *at != '\0'; ++at) {
    sendKey(*this, window_, WindowKey::character, *at, /*shift=*/false);
  }
}

void NoneWindow::escape() {
  key(WindowKey::escape);
}

void NoneWindow::close() {
  if (window_->popup != nullptr) return dismissPopup(window_);
  if (window_->open && window_->content != nullptr) cancelWindow(window_);
}

void NoneWindow::use(int32_t id) {
  const WindowControl* control = findControl(window_, id);
  if (control == nullptr || control->kind != ControlKind::area) return;
  WindowEvent event = eventOf(WindowEventKind::use);
  event.id = id;
  sendEvent(window_, event);
}

void NoneWindow::set(int32_t id, int32_t amount) {
  ControlReading reading;
  if (!read(id, &reading) || !reading.hasRange) return;
  WindowEvent event = eventOf(WindowEventKind::set);
  event.id = id;
  event.amount = std::clamp(amount, reading.minimum, reading.maximum);
  sendEvent(window_, event);
}

void NoneWindow::drawButton(int32_t id, const ItemState& state) {
  WindowEvent event = eventOf(WindowEventKind::drawItem);
  event.id = id;
  event.state = state;
  sendEvent(window_, event);
}

// --- What there is to see -------------------------------------------------------------------

bool NoneWindow::isOpen() const {
  return window_->open;
}

NonePicture NoneWindow::pixels() const {
  return window_->shown;
}

CursorShape NoneWindow::cursor() const {
  return window_->cursor;
}

bool NoneWindow::captured() const {
  return window_->captured;
}

int32_t NoneWindow::focusedControl() const {
  return window_->focused;
}

std::string NoneWindow::toolTip(int32_t id) const {
  const auto told = window_->toolTips.find(id);
  if (told != window_->toolTips.end()) return told->second;
  const WindowControl* control = findControl(window_, id);
  return control == nullptr || control->toolTip == nullptr ? "" : control->toolTip;
}

bool NoneWindow::read(int32_t id, ControlReading* reading) const {
  const ControlReader reader = window_->content->reader;
  return window_->open && reader != nullptr && reader(window_->context, id, reading);
}

int32_t NoneWindow::toldReadings(int32_t id) const {
  const auto told = window_->toldReadings.find(id);
  return told == window_->toldReadings.end() ? 0 : told->second;
}

std::string NoneWindow::rowName() const {
  return window_->rowName;
}

bool NoneWindow::hasPopup() const {
  return window_->popup != nullptr;
}

Point NoneWindow::placeInPopup(Point point) const {
  const Point screen = clientToScreen(window_, point);
  const Point& origin = window_->popup->origin;
  return {static_cast<int16_t>(screen.v - origin.v), static_cast<int16_t>(screen.h - origin.h)};
}

NoneWindow NoneWindow::popup() const {
  return NoneWindow(window_->popup.get());
}
