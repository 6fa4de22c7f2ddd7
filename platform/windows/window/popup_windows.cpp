#include <initializer_list>
#include <new>

#include "dialog/dialog_scale.h"
#include "platform/windows/window/window_record.h"

constexpr char kPopupClass[] = "PopupClass";
constexpr int32_t kFrameWidth = 10;  // both sides of the dialog frame, pixels at 100 percent
constexpr int32_t kFrameHeight = 8;
constexpr Point kOutside = {-1000, -1000};

static Window* popupOf(HWND handle) {
  return reinterpret_cast<Window*>(GetWindowLongPtrA(handle, GWLP_USERDATA));
}

// The frame leaves the client area a little larger than the picture; its corner's colour goes on.
static void eraseBackground(const Window* popup, HDC context) {
  RECT client = {};
  GetClientRect(popup->handle, &client);
  const uint32_t corner = popup->surface.pixels[0];
  HBRUSH ground = CreateSolidBrush(RGB((corner >> 16) & 0xFF, (corner >> 8) & 0xFF, corner & 0xFF));
  FillRect(context, &client, ground);
  DeleteObject(ground);
  showSurface(popup, context, client, {0, 0});
}

static void paint(const Window* popup) {
  PAINTSTRUCT state;
  HDC context = BeginPaint(popup->handle, &state);
  showSurface(popup, context, state.rcPaint, {0, 0});
  EndPaint(popup->handle, &state);
}

static LRESULT CALLBACK popupProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
  Window* popup = popupOf(handle);
  if (popup == nullptr) return DefWindowProcA(handle, message, wParam, lParam);
  switch (message) {
    case WM_ERASEBKGND:
      eraseBackground(popup, reinterpret_cast<HDC>(wParam));
      return 1;
    case WM_PRINTCLIENT:
      eraseBackground(popup, reinterpret_cast<HDC>(wParam));
      return 0;
    case WM_PAINT:
      paint(popup);
      return 0;
    case WM_MOUSEMOVE:
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP:
      sendMouseMessage(popup, message, wParam, lParam);
      return 0;
    case WM_CAPTURECHANGED:
      // Another window took the mouse: the release will never come.
      if (popup->captured && reinterpret_cast<HWND>(lParam) != handle) dismissPopup(popup->owner);
      return 0;
    case WM_NCDESTROY:
      SetWindowLongPtrA(handle, GWLP_USERDATA, 0);
      return DefWindowProcA(handle, message, wParam, lParam);
    default:
      return DefWindowProcA(handle, message, wParam, lParam);
  }
}

void registerPopupClass() {
  WNDCLASSA description = {};
  description.style = CS_SAVEBITS;
  description.lpfnWndProc = popupProcedure;
  description.hInstance = moduleInstance();
  description.hCursor = LoadCursorA(nullptr, MAKEINTRESOURCEA(32512));
  description.hbrBackground = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
  description.lpszClassName = kPopupClass;
  RegisterClassA(&description);
}

void unregisterPopupClass() {
  UnregisterClassA(kPopupClass, moduleInstance());
}

static void freePopup(Window* popup) {
  freeSurface(&popup->surface);
  delete popup;
}

Window* openPopup(Window* owner, Point screenOrigin, int32_t width, int32_t height,
                  WindowProcedure procedure, void* context) {
  if (owner->ended || owner->popup != nullptr) return nullptr;
  auto* popup = new (std::nothrow) Window();
  if (popup == nullptr) return nullptr;
  popup->procedure = procedure;
  popup->context = context;
  popup->owner = owner;
  if (!makeSurface(&popup->surface, width + scaled(kFrameWidth), height)) {
    delete popup;
    return nullptr;
  }
  popup->handle =
      CreateWindowExA(0, kPopupClass, kPopupTitle, WS_POPUP | WS_DLGFRAME, screenOrigin.h,
                      screenOrigin.v, width + scaled(kFrameWidth), height + scaled(kFrameHeight),
                      owner->handle, nullptr, moduleInstance(), nullptr);
  if (popup->handle == nullptr) {
    freePopup(popup);
    return nullptr;
  }
  SetWindowLongPtrA(popup->handle, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(popup));
  owner->popup = popup;
  sendEvent(popup, eventOf(WindowEventKind::initialise));
  if (owner->popup == nullptr) return nullptr;  // it closed itself at once
  ShowWindow(popup->handle, SW_SHOWNOACTIVATE);
  UpdateWindow(popup->handle);
  captureMouse(popup);
  return owner->popup;
}

// Screen readers take the pop-up's title for its name.
void nameRow(Window* popup, const Rectangle& row, const char* name, bool isWritten) {
  SetWindowTextA(popup->handle, name != nullptr ? name : kPopupTitle);
  const bool beside = name != nullptr && !isWritten;
  showTipBeside(popup, row, beside ? name : nullptr);
}

void closePopup(Window* popup) {
  showTipBeside(popup, {}, nullptr);
  popup->ended = true;
  popup->owner->popup = nullptr;
  SetWindowLongPtrA(popup->handle, GWLP_USERDATA, 0);
  releaseMouse(popup);
  DestroyWindow(popup->handle);
  freePopup(popup);
}

void dismissPopup(Window* owner) {
  for (const WindowEventKind kind : {WindowEventKind::mouseMove, WindowEventKind::buttonUp}) {
    if (owner->popup == nullptr) return;
    WindowEvent event = eventOf(kind);
    event.point = kOutside;
    deliverEvent(owner->popup, event);
  }
  if (owner->popup != nullptr) closePopup(owner->popup);
}
