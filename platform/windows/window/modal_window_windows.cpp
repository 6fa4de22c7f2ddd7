// The modal windows. Each is a dialog of the module's resources, whose buttons draw themselves
// through the core and whose other controls are mere places.

#include "platform/export.h"
#include "platform/windows/dialogs/dialog_place.h"
#include "platform/windows/scaled_images.h"
#include "platform/windows/window/control_access.h"
#include "platform/windows/window/screen_scale.h"
#include "platform/windows/window/window_record.h"
// The common controls' header wants the other one first.
#include <commctrl.h>

static Window* openWindow = nullptr;

Window* topWindow() {
  return openWindow;
}

static Window* windowOf(HWND dialog) {
  return reinterpret_cast<Window*>(GetWindowLongPtrA(dialog, DWLP_USER));
}

HWND shutTopWindow() {
  if (openWindow == nullptr || !IsWindowEnabled(openWindow->handle)) return nullptr;
  dismissPopup(openWindow);
  if (openWindow->toolTips != nullptr) SendMessageA(openWindow->toolTips, TTM_POP, 0, 0);
  EnableWindow(openWindow->handle, FALSE);
  return openWindow->handle;
}

void openTopWindow(HWND shut) {
  if (shut == nullptr) return;
  EnableWindow(shut, TRUE);
  SetForegroundWindow(shut);
}

// --- Start-up -------------------------------------------------------------------------------

// The frame is what the system makes of it at the scale of the screen.
static void sizeWindow(HWND dialog, LONG width, LONG height) {
  SetWindowPos(dialog, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

static void sizeClientArea(const Window* window) {
  RECT rect = {0, 0, window->content->width, window->content->height};
  const auto style = static_cast<DWORD>(GetWindowLongA(window->handle, GWL_STYLE));
  const auto extended = static_cast<DWORD>(GetWindowLongA(window->handle, GWL_EXSTYLE));
  AdjustWindowRectEx(&rect, style, FALSE, extended);
  sizeWindow(window->handle, rect.right - rect.left, rect.bottom - rect.top);
  RECT client = {};
  RECT outer = {};
  GetClientRect(window->handle, &client);
  GetWindowRect(window->handle, &outer);
  const LONG wider = window->content->width - client.right;
  const LONG taller = window->content->height - client.bottom;
  if (wider == 0 && taller == 0) return;
  sizeWindow(window->handle, outer.right - outer.left + wider, outer.bottom - outer.top + taller);
}

// The next item of the template that has this id and comes after another one (null: the first);
// several may share an id. Templates keep ids as 16-bit numbers.
static HWND nextItem(HWND dialog, HWND after, int32_t id) {
  HWND item = after == nullptr ? GetWindow(dialog, GW_CHILD) : GetWindow(after, GW_HWNDNEXT);
  while (item != nullptr && static_cast<int16_t>(GetDlgCtrlID(item)) != id) {
    item = GetWindow(item, GW_HWNDNEXT);
  }
  return item;
}

static void layOut(const Window* window) {
  HWND item = nullptr;
  int32_t placed = 0;
  for (int32_t i = 0; i < window->content->controlCount; ++i) {
    const WindowControl& control = window->content->controls[i];
    item = nextItem(window->handle, control.id == placed ? item : nullptr, control.id);
    placed = control.id;
    if (item == nullptr) continue;
    const Rectangle& rect = control.rect;
    MoveWindow(item, rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top, FALSE);
    if (control.name != nullptr) SetWindowTextA(item, control.name);
  }
}

static void startUp(HWND dialog, Window* window) {
  SetWindowLongPtrA(dialog, DWLP_USER, reinterpret_cast<LONG_PTR>(window));
  window->handle = dialog;
  keepLayout(dialog);
  sizeClientArea(window);
  layOut(window);
  placeDialog(dialog);
  if (window->content->defaultButton != 0) {
    SendMessageA(dialog, DM_SETDEFID, static_cast<WPARAM>(window->content->defaultButton), 0);
  }
  addToolTips(window);
  sendEvent(window, eventOf(WindowEventKind::initialise));
  scalePictures(window);
}

// --- Messages -------------------------------------------------------------------------------

static void drawItem(Window* window, const DRAWITEMSTRUCT& item) {
  const WindowControl* control = findControl(window, static_cast<int32_t>(item.CtlID));
  if (item.CtlType != ODT_BUTTON || control == nullptr) return;
  sendDrawItem(window, control->id,
               {(item.itemState & ODS_SELECTED) != 0, (item.itemState & ODS_FOCUS) != 0,
                (item.itemState & ODS_DISABLED) != 0});
  const Rectangle& rect = control->rect;
  showSurface(window, item.hDC, {rect.left, rect.top, rect.right, rect.bottom},
              {rect.left - item.rcItem.left, rect.top - item.rcItem.top});
}

static void showAll(const Window* window, HDC context) {
  showSurface(window, context, {0, 0, window->surface.width, window->surface.height}, {0, 0});
}

static void paint(const Window* window) {
  HDC context = GetDC(window->handle);
  if (context == nullptr) return;
  showAll(window, context);
  ReleaseDC(window->handle, context);
}

static void tellRest(Window* window) {
  if (!window->awaitsRest) return;
  window->awaitsRest = false;
  sendEvent(window, eventOf(WindowEventKind::rest));
}

static HCURSOR handCursor(WORD number) {
  HCURSOR cursor = scaledCursor(number);
  return cursor != nullptr ? cursor : LoadCursorA(moduleInstance(), MAKEINTRESOURCEA(number));
}

static HCURSOR cursorOf(CursorShape shape) {
  constexpr WORD kClosedHand = 107;  // cursor resources
  constexpr WORD kOpenHand = 108;
  switch (shape) {
    case CursorShape::closedHand:
      return handCursor(kClosedHand);
    case CursorShape::openHand:
      return handCursor(kOpenHand);
    case CursorShape::wait:
      return LoadCursorA(nullptr, MAKEINTRESOURCEA(32514));
    default:
      return LoadCursorA(nullptr, MAKEINTRESOURCEA(32512));
  }
}

void setCursor(Window* window, CursorShape shape) {
  window->cursor = shape;
  SetCursor(cursorOf(shape));
}

bool showsBitmap(HWND item) {
  char name[8] = {};
  GetClassNameA(item, name, sizeof(name));
  const LONG_PTR type = GetWindowLongPtrA(item, GWL_STYLE) & SS_TYPEMASK;
  return lstrcmpiA(name, "Static") == 0 && type == SS_BITMAP;
}

// Statics load the pictures that the template names; not every system frees them. Whoever takes one
// away has to.
static void freePictures(HWND dialog) {
  for (HWND item = GetWindow(dialog, GW_CHILD); item != nullptr;
       item = GetWindow(item, GW_HWNDNEXT)) {
    if (!showsBitmap(item)) continue;
    const LRESULT picture = SendMessageA(item, STM_SETIMAGE, IMAGE_BITMAP, 0);
    if (picture != 0) DeleteObject(reinterpret_cast<HGDIOBJ>(picture));
  }
}

static void useControl(Window* window, int32_t id) {
  if (findControl(window, id) == nullptr) return;
  WindowEvent event = eventOf(WindowEventKind::use);
  event.id = id;
  sendEvent(window, event);
}

static bool belongsTo(const Window* window, HWND target) {
  return target == window->handle || IsChild(window->handle, target);
}

// The system keeps a button's focus for the time when the window comes back, unless the window was
// disabled meanwhile. Without one, or with an area's, for which the window itself has it, it would
// give it to the first button.
static void keepFocus(Window* window) {
  HWND focused = GetFocus();
  if (focused != nullptr && belongsTo(window, focused)) window->focusKept = focused;
}

static INT_PTR bringFocusBack(const Window* window, WPARAM wParam) {
  const bool minimised = HIWORD(wParam) != 0;
  if (minimised) return 0;
  SetFocus(window->focusKept != nullptr ? window->focusKept : window->handle);
  return 1;
}

static INT_PTR handleMessage(Window* window, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_COMMAND:
      sendEvent(window, commandEvent(static_cast<int16_t>(LOWORD(wParam)), HIWORD(wParam)));
      return 1;
    case kUseMessage:
      useControl(window, static_cast<int32_t>(wParam));
      return 1;
    case WM_PAINT:
      paint(window);
      tellRest(window);
      return 0;  // the system counts the window as painted
    case WM_ACTIVATE:
      if (LOWORD(wParam) != WA_INACTIVE) return bringFocusBack(window, wParam);
      dismissPopup(window);
      keepFocus(window);
      return 0;
    case WM_CANCELMODE:  // before it is disabled
      keepFocus(window);
      return 0;
    case WM_ERASEBKGND:
      showAll(window, reinterpret_cast<HDC>(wParam));
      return 1;
    case WM_PRINTCLIENT:
      showAll(window, reinterpret_cast<HDC>(wParam));
      return 1;
    case WM_DRAWITEM:
      if (lParam == 0) return 0;
      drawItem(window, *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
      return 1;
    case WM_SETCURSOR:
      if (LOWORD(lParam) != HTCLIENT || reinterpret_cast<HWND>(wParam) != window->handle) return 0;
      SetCursor(cursorOf(window->cursor));
      SetWindowLongPtrA(window->handle, DWLP_MSGRESULT, 1);
      return 1;
    case WM_DESTROY:
      freePictures(window->handle);
      return 0;
    case WM_GETOBJECT:
      return answerReader(window, wParam, lParam);
    case WM_SETFOCUS:
      return 1;  // the system would pass the focus on to the first button
    default:
      return sendMouseMessage(window, message, wParam, lParam) ? 1 : 0;
  }
}

// The name under which the module exports the procedure of its windows.
MORVALIS_EXPORT INT_PTR CALLBACK DissolveProc(HWND dialog, UINT message, WPARAM wParam,
                                              LPARAM lParam) {
  Window* window = windowOf(dialog);
  if (message == WM_INITDIALOG) {
    // Other programs can send the message again, with anything in it.
    if (window == nullptr && lParam != 0) startUp(dialog, reinterpret_cast<Window*>(lParam));
    return 0;
  }
  return window == nullptr ? 0 : handleMessage(window, message, wParam, lParam);
}

// --- Running --------------------------------------------------------------------------------

static bool useBeforeSystem(Window* window, const MSG& message) {
  if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST) return false;
  if (window->popup == nullptr) return offerKey(window, message);
  offerKey(window->popup, message);
  return true;  // the menu has the user's attention
}

// Sees every message of a modal loop before the dialog manager does. Choosers and alerts have loops
// of their own, whose messages are none of this window's.
static LRESULT CALLBACK filterMessage(int code, WPARAM wParam, LPARAM lParam) {
  const auto* message = reinterpret_cast<const MSG*>(lParam);
  if (code == MSGF_DIALOGBOX && openWindow != nullptr && belongsTo(openWindow, message->hwnd) &&
      useBeforeSystem(openWindow, *message)) {
    return 1;
  }
  return CallNextHookEx(nullptr, code, wParam, lParam);
}

static void showModally(Window* window, HWND owner) {
  window->below = openWindow;
  openWindow = window;
  registerPopupClass();
  HHOOK hook = SetWindowsHookExA(WH_MSGFILTER, filterMessage, nullptr, GetCurrentThreadId());
  DialogBoxParamA(moduleInstance(), window->content->name, owner, DissolveProc,
                  reinterpret_cast<LPARAM>(window));
  if (hook != nullptr) UnhookWindowsHookEx(hook);
  openWindow = window->below;
  if (openWindow == nullptr) unregisterPopupClass();
}

int32_t runModalWindow(const WindowTemplate& content, void* ownerWindow, WindowProcedure procedure,
                       void* context) {
  Window window = {};
  window.content = &content;
  window.procedure = procedure;
  window.context = context;
  window.code = kDialogUnavailable;
  if (!makeSurface(&window.surface, content.width, content.height)) return kDialogUnavailable;
  const auto owner = static_cast<HWND>(ownerWindow);
  showModally(&window, IsWindow(owner) ? owner : nullptr);
  endReading(&window);
  dismissPopup(&window);  // still there when the window went with its owner
  window.ended = true;
  if (window.tipLetters != nullptr) DeleteObject(window.tipLetters);
  freeSurface(&window.hostSurface);
  freeSurface(&window.surface);
  return window.code;
}

void endModalWindow(Window* window, int32_t code) {
  if (window->ended) return;
  dismissPopup(window);
  releaseMouse(window);
  window->ended = true;
  window->code = code;
  EndDialog(window->handle, code);
}
