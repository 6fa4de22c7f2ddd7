#include <cstring>

#include "platform/windows/window/control_access.h"
#include "platform/windows/window/screen_scale.h"
#include "platform/windows/window/window_record.h"
#include "services/fixed_point.h"

void captureMouse(Window* window) {
  window->captured = true;
  SetCapture(window->handle);
}

void releaseMouse(Window* window) {
  window->captured = false;
  if (GetCapture() == window->handle) ReleaseCapture();
}

// An area has no window that could have the focus: the dialog takes the keyboard for it.
void setFocusedControl(Window* window, int32_t id) {
  const WindowControl* control = findControl(window, id);
  const bool isButton = control != nullptr && control->kind == ControlKind::button;
  window->focusedArea = isButton ? 0 : id;
  SetFocus(isButton ? GetDlgItem(window->handle, id) : window->handle);
  if (!isButton) tellFocus(window, id);
}

void copyTextToClipboard(const char* text) {
  Window* window = topWindow();
  if (!OpenClipboard(window != nullptr ? window->handle : nullptr)) return;
  EmptyClipboard();
  const size_t bytes = std::strlen(text) + 1;
  HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, bytes);
  void* copy = block != nullptr ? GlobalLock(block) : nullptr;
  if (copy != nullptr) {
    std::memcpy(copy, text, bytes);
    GlobalUnlock(block);
    if (SetClipboardData(CF_TEXT, block) != nullptr) block = nullptr;  // now the clipboard's
  }
  if (block != nullptr) GlobalFree(block);
  CloseClipboard();
}

Point clientToScreen(Window* window, Point point) {
  POINT screen = {point.h, point.v};
  ClientToScreen(window->handle, &screen);
  return {saturateToInt16(screen.y), saturateToInt16(screen.x)};
}

int32_t screenHeight() {
  return GetSystemMetrics(SM_CYSCREEN);
}

static void channelsOf(COLORREF colour, uint8_t channels[3]) {
  channels[0] = GetRValue(colour);
  channels[1] = GetGValue(colour);
  channels[2] = GetBValue(colour);
}

MenuLook menuLook() {
  MenuLook look = {};
  look.checkMarkWidth = GetSystemMetrics(SM_CXMENUCHECK) * kPlainDots / systemDots();
  channelsOf(GetSysColor(COLOR_HIGHLIGHT), look.highlight);
  channelsOf(GetSysColor(COLOR_HIGHLIGHTTEXT), look.highlightText);
  return look;
}
