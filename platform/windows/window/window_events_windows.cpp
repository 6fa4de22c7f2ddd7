#include <algorithm>

#include "platform/windows/window/window_record.h"
#include "services/fixed_point.h"

// --- Delivery -------------------------------------------------------------------------------

static bool comesFromUser(WindowEventKind kind) {
  return kind != WindowEventKind::initialise && kind != WindowEventKind::drawItem;
}

static Window* countingWindow(Window* window) {
  return window->owner != nullptr ? window->owner : window;
}

bool deliverEvent(Window* window, const WindowEvent& event) {
  if (window->ended) return false;
  Window* counting = countingWindow(window);  // outlives a pop-up that closes itself
  ++counting->eventsInProgress;
  const bool used = window->procedure(window, event, window->context);
  --counting->eventsInProgress;
  return used;
}

bool sendEvent(Window* window, const WindowEvent& event) {
  if (countingWindow(window)->eventsInProgress > 0 && comesFromUser(event.kind)) return false;
  return deliverEvent(window, event);
}

// Posted messages wait in the system's queue until the event in progress is done.
void postMouseMove(Window* window, Point point) {
  window->movePosted = true;
  window->postedMove = point;
  PostMessageA(window->handle, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(point.h, point.v));
}

// Paint messages come when no others are left.
void awaitRest(Window* window) {
  window->awaitsRest = true;
  RedrawWindow(window->handle, nullptr, nullptr, RDW_INTERNALPAINT);
}

void postCommand(Window* window, int32_t id) {
  PostMessageA(window->handle, WM_COMMAND, MAKEWPARAM(id, 0), 0);
}

// --- Records --------------------------------------------------------------------------------

static bool isDown(int virtualKey) {
  return (GetKeyState(virtualKey) & 0x8000) != 0;
}

static WindowEvent pointerEvent(WindowEventKind kind, LPARAM position) {
  WindowEvent event = eventOf(kind);
  event.point = {static_cast<int16_t>(HIWORD(position)), static_cast<int16_t>(LOWORD(position))};
  event.shift = isDown(VK_SHIFT);
  return event;
}

// --- Mouse ----------------------------------------------------------------------------------

static void sendWheel(Window* window, WPARAM wParam, LPARAM lParam) {
  window->wheelRest += static_cast<int16_t>(HIWORD(wParam));
  const int32_t notches = window->wheelRest / WHEEL_DELTA;
  window->wheelRest -= notches * WHEEL_DELTA;
  if (notches == 0) return;
  POINT point = {static_cast<int16_t>(LOWORD(lParam)), static_cast<int16_t>(HIWORD(lParam))};
  ScreenToClient(window->handle, &point);
  WindowEvent event = pointerEvent(WindowEventKind::wheel, 0);
  event.point = {saturateToInt16(point.y), saturateToInt16(point.x)};
  event.amount = notches;
  event.shift = (LOWORD(wParam) & MK_SHIFT) != 0;
  sendEvent(window, event);
}

// A release that was queued right behind its press arrives before the move that the press has
// posted.
static void sendPostedMove(Window* window) {
  if (!window->movePosted) return;
  window->movePosted = false;
  sendEvent(window, pointerEvent(WindowEventKind::mouseMove,
                                 MAKELPARAM(window->postedMove.h, window->postedMove.v)));
}

// Another window may have taken the mouse in the middle of a drag: the release went there.
static void endLostDrag(Window* window, WPARAM wParam, LPARAM lParam) {
  const bool held = (wParam & (MK_LBUTTON | MK_RBUTTON)) != 0;
  if (!window->captured || held || GetCapture() == window->handle) return;
  releaseMouse(window);
  sendEvent(window, pointerEvent(WindowEventKind::buttonUp, lParam));
  sendEvent(window, pointerEvent(WindowEventKind::otherUp, lParam));
}

bool sendMouseMessage(Window* window, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_MOUSEMOVE:
      window->movePosted = false;
      endLostDrag(window, wParam, lParam);
      sendEvent(window, pointerEvent(WindowEventKind::mouseMove, lParam));
      return true;
    case WM_LBUTTONDOWN:
      sendEvent(window, pointerEvent(WindowEventKind::buttonDown, lParam));
      return true;
    case WM_LBUTTONDBLCLK:
      sendEvent(window, pointerEvent(WindowEventKind::doubleClick, lParam));
      return true;
    case WM_LBUTTONUP:
      sendPostedMove(window);
      sendEvent(window, pointerEvent(WindowEventKind::buttonUp, lParam));
      return true;
    case WM_RBUTTONDOWN:
      // The release has to come here wherever it happens.
      if (!window->captured) captureMouse(window);
      sendEvent(window, pointerEvent(WindowEventKind::otherDown, lParam));
      return true;
    case WM_RBUTTONUP:
      if ((wParam & MK_LBUTTON) == 0) releaseMouse(window);
      sendEvent(window, pointerEvent(WindowEventKind::otherUp, lParam));
      return true;
    case WM_MOUSEWHEEL:
      sendWheel(window, wParam, lParam);
      return true;
    default:
      return false;
  }
}

// --- Keys -----------------------------------------------------------------------------------

static WindowKey commandKey(WPARAM virtualKey) {
  switch (virtualKey) {
    case 'Z':
      return isDown(VK_SHIFT) ? WindowKey::redo : WindowKey::undo;
    case 'Y':
      return WindowKey::redo;
    case 'C':
      return WindowKey::copy;
    default:
      return WindowKey::none;
  }
}

static WindowKey plainKey(WPARAM virtualKey) {
  switch (virtualKey) {
    case VK_LEFT:
      return WindowKey::left;
    case VK_RIGHT:
      return WindowKey::right;
    case VK_UP:
      return WindowKey::up;
    case VK_DOWN:
      return WindowKey::down;
    case VK_PRIOR:
      return WindowKey::pageUp;
    case VK_NEXT:
      return WindowKey::pageDown;
    case VK_HOME:
      return WindowKey::home;
    case VK_END:
      return WindowKey::end;
    case VK_RETURN:
      return WindowKey::enter;
    case VK_ESCAPE:
      return WindowKey::escape;
    case VK_BACK:
      return WindowKey::backspace;
    case VK_TAB:
      return WindowKey::tab;
    case VK_F1:
      return WindowKey::help;
    default:
      return WindowKey::none;
  }
}

// The character that the keyboard's layout gives a key, 0 for none in ASCII.
static char characterOf(const MSG& message) {
  BYTE keys[256] = {};
  if (!GetKeyboardState(keys)) return 0;
  WORD characters[2] = {};
  const UINT scanCode = static_cast<UINT>(message.lParam >> 16) & 0xFF;
  const int count = ToAscii(static_cast<UINT>(message.wParam), scanCode, keys, characters, 0);
  const char character = static_cast<char>(characters[0] & 0xFF);
  return count == 1 && character >= ' ' && character <= '~' ? character : char{0};
}

bool offerKey(Window* window, const MSG& message) {
  if (message.message != WM_KEYDOWN || isDown(VK_MENU)) return false;
  sendPostedMove(window);
  WindowEvent event = eventOf(WindowEventKind::key);
  event.id = focusedControl(window);
  event.shift = isDown(VK_SHIFT);
  if (isDown(VK_CONTROL)) {
    event.key = commandKey(message.wParam);
  } else {
    event.key = plainKey(message.wParam);
    if (event.key == WindowKey::none) event.character = characterOf(message);
    if (event.character != 0) event.key = WindowKey::character;
  }
  return event.key != WindowKey::none && sendEvent(window, event);
}

// --- Controls -------------------------------------------------------------------------------

const WindowControl* findControl(const Window* window, int32_t id) {
  if (window->content == nullptr) return nullptr;
  const WindowControl* end = window->content->controls + window->content->controlCount;
  const WindowControl* found = std::find_if(window->content->controls, end,
                                            [id](const WindowControl& c) { return c.id == id; });
  return found != end ? found : nullptr;
}

int32_t focusedControl(const Window* window) {
  HWND focused = GetFocus();
  if (focused != nullptr && GetParent(focused) == window->handle) {
    const int32_t id = GetDlgCtrlID(focused);
    if (findControl(window, id) != nullptr) return id;
  }
  return window->focusedArea;
}
