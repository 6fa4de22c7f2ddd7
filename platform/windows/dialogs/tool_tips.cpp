#include "dialog/dialog_scale.h"
#include "platform/windows/window/screen_scale.h"
#include "platform/windows/window/window_record.h"
// The common controls' header wants the other one first.
#include <commctrl.h>

constexpr int32_t kTipDistance = 14;  // pixels, past the pop-up's frame

// The class is the common controls'; without them there are no tips.
static HWND makeToolTips(HWND owner) {
  return CreateWindowExA(WS_EX_TOPMOST, "tooltips_class32", nullptr, WS_POPUP | TTS_ALWAYSTIP,
                         CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, owner, nullptr,
                         moduleInstance(), nullptr);
}

// `text` is only read.
static TOOLINFOA toolOf(const Window* window, const WindowControl& control, const char* text) {
  TOOLINFOA tool = {};
  tool.cbSize = TTTOOLINFOA_V1_SIZE;
  tool.uFlags = TTF_SUBCLASS;
  tool.hwnd = window->handle;
  tool.uId = static_cast<UINT_PTR>(control.id);
  const Rectangle& rect = control.rect;
  tool.rect = {rect.left, rect.top, rect.right, rect.bottom};
  if (control.kind == ControlKind::button) {
    tool.uFlags |= TTF_IDISHWND;
    tool.uId = reinterpret_cast<UINT_PTR>(GetDlgItem(window->handle, control.id));
  }
  tool.lpszText = const_cast<char*>(text);
  return tool;
}

static LRESULT ask(const Window* window, UINT message, TOOLINFOA tool) {
  return SendMessageA(window->toolTips, message, 0, reinterpret_cast<LPARAM>(&tool));
}

// The system's, but larger where the user asks for another scale than the system's.
static HFONT makeLetters() {
  NONCLIENTMETRICSA metrics = {};
  metrics.cbSize = sizeof(metrics);
  const int32_t larger = dialogScale() * kPlainDots / systemDots();
  if (wantedScale() == 0 || larger == kPlainScale) return nullptr;
  if (!SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0)) return nullptr;
  LOGFONTA letters = metrics.lfStatusFont;
  letters.lfHeight = scaledLength(static_cast<int32_t>(letters.lfHeight), larger);
  letters.lfWidth = 0;
  return CreateFontIndirectA(&letters);
}

void addToolTips(Window* window) {
  if (window->content->controlCount == 0) return;
  window->toolTips = makeToolTips(window->handle);
  window->tipLetters = makeLetters();
  if (window->tipLetters != nullptr) {
    SendMessageA(window->toolTips, WM_SETFONT, reinterpret_cast<WPARAM>(window->tipLetters), FALSE);
  }
  for (int32_t i = 0; i < window->content->controlCount; ++i) {
    const WindowControl& control = window->content->controls[i];
    if (control.toolTip != nullptr) setToolTip(window, control.id, control.toolTip);
  }
}

void setToolTip(Window* window, int32_t id, const char* text) {
  const WindowControl* control = findControl(window, id);
  if (window->toolTips == nullptr || control == nullptr) return;
  const bool known = ask(window, TTM_GETTOOLINFOA, toolOf(window, *control, nullptr)) != FALSE;
  if (text == nullptr) {
    if (known) ask(window, TTM_DELTOOLA, toolOf(window, *control, nullptr));
    return;
  }
  ask(window, known ? TTM_UPDATETIPTEXTA : TTM_ADDTOOLA, toolOf(window, *control, text));
}

void showTipBeside(Window* popup, const Rectangle& row, const char* text) {
  HWND tips = popup->owner->toolTips;
  if (tips == nullptr) return;
  TOOLINFOA tool = {};
  tool.cbSize = TTTOOLINFOA_V1_SIZE;
  tool.uFlags = TTF_TRACK | TTF_ABSOLUTE;
  tool.hwnd = popup->handle;
  tool.lpszText = const_cast<char*>(text);  // only read
  const auto ask = [&](UINT message, WPARAM wParam) {
    SendMessageA(tips, message, wParam, reinterpret_cast<LPARAM>(&tool));
  };
  ask(TTM_TRACKACTIVATE, FALSE);
  ask(TTM_DELTOOLA, 0);
  if (text == nullptr) return;
  const Point corner = clientToScreen(popup, {row.top, row.right});
  ask(TTM_ADDTOOLA, 0);
  SendMessageA(tips, TTM_TRACKPOSITION, 0, MAKELPARAM(corner.h + kTipDistance, corner.v));
  ask(TTM_TRACKACTIVATE, TRUE);
}
