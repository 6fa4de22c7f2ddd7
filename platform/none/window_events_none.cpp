#include <algorithm>

#include "dialog/dialog_scale.h"
#include "platform/none/none_state.h"
#include "platform/none/window_record.h"

constexpr Point kClientOrigin = {100, 80};  // on the screen
constexpr int32_t kScreenHeight = 768;      // at 100 percent
constexpr MenuLook kMenuLook = {13, {0, 0, 128}, {255, 255, 255}};

ScreenRoom screenRoom(void*) {
  return noneState().script.room;
}

using ModalScript = std::function<void(NoneWindow&)>;

static ModalScript scriptFor(const char* name) {
  const NoneScript& script = noneState().script;
  const auto found = script.modalWindows.find(name);
  return found != script.modalWindows.end() ? found->second : script.modalWindow;
}

int32_t runModalWindow(const WindowTemplate& content, void* ownerWindow, WindowProcedure procedure,
                       void* context) {
  noneState().record.windows.push_back(
      {content.name, content.caption, content.width, content.height, ownerWindow});
  const ModalScript script = scriptFor(content.name);
  if (!script) return kDialogUnavailable;
  const std::unique_ptr<Window> window =
      newWindow(content.width, content.height, procedure, context);
  window->content = &content;
  sendEvent(window.get(), eventOf(WindowEventKind::initialise));
  for (int32_t i = 0; i < content.controlCount; ++i) {
    redrawItem(window.get(), content.controls[i].id);
  }
  NoneWindow user(window.get());
  if (window->open) script(user);
  if (window->open) cancelWindow(window.get());
  // The script is over, so a procedure that keeps its window open cannot have its way.
  if (window->open) endModalWindow(window.get(), kDialogUnavailable);
  return window->code;
}

void endModalWindow(Window* window, int32_t code) {
  dismissPopup(window);
  window->open = false;
  window->code = code;
  window->captured = false;
}

// --- Pixels ---------------------------------------------------------------------------------

void presentPixels(Window* window, const PixelTarget& target, const Rectangle& part) {
  NonePicture& shown = window->shown;
  const int32_t left = std::max<int32_t>(part.left, 0);
  const int32_t right = std::min({int32_t{part.right}, target.width, shown.width});
  const int32_t bottom = std::min({int32_t{part.bottom}, target.height, shown.height});
  if (left >= right) return;
  for (int32_t y = std::max<int32_t>(part.top, 0); y < bottom; ++y) {
    const uint8_t* from = target.rgb + 3 * (int64_t{y} * target.width + left);
    std::copy_n(from, 3 * (right - left),
                shown.rgb.begin() + 3 * (int64_t{y} * shown.width + left));
  }
}

void redrawItem(Window* window, int32_t id) {
  const WindowControl* control = findControl(window, id);
  if (control == nullptr || control->kind != ControlKind::button) return;
  WindowEvent event = eventOf(WindowEventKind::drawItem);
  event.id = id;
  event.state = stateOf(window, id);
  sendEvent(window, event);
}

void setToolTip(Window* window, int32_t id, const char* text) {
  window->toolTips[id] = text == nullptr ? "" : text;
}

void tellReading(Window* window, int32_t id) {
  ++window->toldReadings[id];
}

void nameRow(Window* popup, const Rectangle&, const char* name, bool) {
  popup->rowName = name == nullptr ? "" : name;
}

void* beginHostDrawing(Window*, PixelTarget* target) {
  return target;
}

void endHostDrawing(Window*, PixelTarget*, void*) {
}

// --- Pointer, focus, clipboard --------------------------------------------------------------

void setCursor(Window* window, CursorShape shape) {
  window->cursor = shape;
}

void captureMouse(Window* window) {
  window->captured = true;
}

void releaseMouse(Window* window) {
  window->captured = false;
}

// Outside every event there is nothing to wait for.
static void postEvent(Window* window, const WindowEvent& event) {
  if (!window->open) return;
  if (window->eventsInProgress == 0) {
    sendEvent(window, event);
  } else {
    window->posted.push_back(event);
  }
}

void postMouseMove(Window* window, Point point) {
  postEvent(window, pointerEvent(WindowEventKind::mouseMove, point));
}

void postCommand(Window* window, int32_t id) {
  postEvent(window, commandEvent(id));
}

// There is nothing to wait for but what has been posted.
void awaitRest(Window* window) {
  window->awaitsRest = true;
}

void setFocusedControl(Window* window, int32_t id) {
  moveFocus(window, id);
}

void copyTextToClipboard(const char* text) {
  noneState().record.clipboard = text;
}

// --- Pop-up and screen ----------------------------------------------------------------------

Window* openPopup(Window* owner, Point screenOrigin, int32_t width, int32_t height,
                  WindowProcedure procedure, void* context) {
  noneState().record.popups.push_back({screenOrigin, width, height});
  if (noneState().script.refusesPopups || owner->popup != nullptr) return nullptr;
  owner->popup = newWindow(width, height, procedure, context);
  Window* popup = owner->popup.get();
  popup->owner = owner;
  popup->origin = screenOrigin;
  popup->captured = true;
  sendEvent(popup, eventOf(WindowEventKind::initialise));
  return owner->popup.get();  // null when it closed itself at once
}

void closePopup(Window* popup) {
  Window* owner = popup->owner;
  popup->open = false;
  owner->closedPopups.push_back(std::move(owner->popup));
}

Point clientToScreen(Window* window, Point point) {
  const Point origin = window->owner != nullptr ? window->origin : kClientOrigin;
  return {static_cast<int16_t>(point.v + origin.v), static_cast<int16_t>(point.h + origin.h)};
}

int32_t screenHeight() {
  return scaled(kScreenHeight);
}

MenuLook menuLook() {
  return kMenuLook;
}
