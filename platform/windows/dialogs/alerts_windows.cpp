#include "platform/alerts.h"

#include <cstdio>
#include <cstdlib>

#include "dialog/dialog_scale.h"
#include "platform/windows/dialogs/dialog_place.h"
#include "platform/windows/dialogs/scaled_template.h"
#include "platform/windows/scaled_images.h"
#include "platform/windows/window/screen_scale.h"
#include "platform/windows/window/window_record.h"

constexpr int32_t kCancelButton = 1;  // the number of every alert's Cancel

constexpr WORD kAlertIcon = 148;

static HWND openAlert = nullptr;
static HICON alertIcon = nullptr;
static int32_t alertScale = kPlainScale;

// The system has enlarged the template's from 32 pixels.
static void showIcon(HWND dialog) {
  if (alertScale == kPlainScale) return;
  for (HWND item = GetWindow(dialog, GW_CHILD); item != nullptr;
       item = GetWindow(item, GW_HWNDNEXT)) {
    if ((SendMessageA(item, WM_GETDLGCODE, 0, 0) & DLGC_STATIC) == 0) continue;
    if ((GetWindowLongPtrA(item, GWL_STYLE) & SS_TYPEMASK) != SS_ICON) continue;
    alertIcon = scaledIcon(kAlertIcon, alertScale);
    if (alertIcon != nullptr)
      SendMessageA(item, STM_SETICON, reinterpret_cast<WPARAM>(alertIcon), 0);
  }
}

// The resources hold the texts with their parameters; what is shown are the expanded ones.
static void startUp(HWND dialog, const AlertContent& content) {
  openAlert = dialog;
  placeDialog(dialog);
  for (int32_t i = 0; i < content.textCount; ++i) {
    const AlertText& text = content.texts[i];
    if (text.number != 0) SetDlgItemTextA(dialog, text.number, text.text);
  }
  showIcon(dialog);
  SetFocus(GetDlgItem(dialog, kCancelButton));
}

// The system's own number for cancelling may be another button's: what comes without a button is
// none of its presses.
static int32_t answerOf(WPARAM wParam, LPARAM lParam) {
  return lParam == 0 && LOWORD(wParam) == IDCANCEL ? kCancelButton : LOWORD(wParam);
}

static INT_PTR CALLBACK alertProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_INITDIALOG:
      // Other programs can send the message again, with anything in it.
      if (lParam == 0 || GetWindowLongPtrA(dialog, DWLP_USER) != 0) return 0;
      SetWindowLongPtrA(dialog, DWLP_USER, lParam);
      startUp(dialog, *reinterpret_cast<const AlertContent*>(lParam));
      return 0;
    case WM_COMMAND:
      if (HIWORD(wParam) != 0) return 0;
      EndDialog(dialog, answerOf(wParam, lParam));
      return 1;
    case WM_CLOSE:
      EndDialog(dialog, kCancelButton);
      return 1;
    default:
      return 0;
  }
}

// Escape before the dialog manager takes it for a press on the button of its number.
static LRESULT CALLBACK filterMessage(int code, WPARAM wParam, LPARAM lParam) {
  const auto* message = reinterpret_cast<const MSG*>(lParam);
  const bool ours = code == MSGF_DIALOGBOX && openAlert != nullptr &&
                    (message->hwnd == openAlert || IsChild(openAlert, message->hwnd));
  if (ours && message->message == WM_KEYDOWN && message->wParam == VK_ESCAPE) {
    EndDialog(openAlert, kCancelButton);
    return 1;
  }
  return CallNextHookEx(nullptr, code, wParam, lParam);
}

// The system measures dialogs by its own scale; only one that the user asks for is ours to apply.
static INT_PTR runAlert(const AlertContent& content) {
  const auto parameter = reinterpret_cast<LPARAM>(&content);
  const int32_t larger = alertScale * kPlainDots / systemDots();
  if (wantedScale() == 0 || larger == kPlainScale) {
    return DialogBoxParamA(moduleInstance(), content.name, nullptr, alertProcedure, parameter);
  }
  DLGTEMPLATE* box = templateAtScale(content.name, larger);
  if (box == nullptr) return -1;
  const INT_PTR answer =
      DialogBoxIndirectParamA(moduleInstance(), box, nullptr, alertProcedure, parameter);
  std::free(box);
  return answer;
}

// The dialog below has to be kept from the user, as the alert has no owner that the system would
// keep from them.
int32_t showPlatformAlert(const AlertContent& content) {
  HWND dialog = shutTopWindow();
  HHOOK hook = SetWindowsHookExA(WH_MSGFILTER, filterMessage, nullptr, GetCurrentThreadId());
  alertScale = chooseScale(dialog, content.width, content.height);
  const INT_PTR answer = runAlert(content);
  openAlert = nullptr;
  if (alertIcon != nullptr) DestroyIcon(alertIcon);
  alertIcon = nullptr;
  if (hook != nullptr) UnhookWindowsHookEx(hook);
  openTopWindow(dialog);
  return answer > 0 ? static_cast<int32_t>(answer) : -1;
}

void showPlatformMessage(const char* caption, const char* text) {
  HWND dialog = shutTopWindow();
  MessageBoxA(nullptr, text, caption, MB_OK | MB_ICONHAND);
  openTopWindow(dialog);
}

constexpr size_t kSheetBytes = 4096;

// The system's message box knows no columns: each term stands on a line of its own.
void showPlatformSheet(const char* caption, const SheetRow* rows, int32_t count) {
  char text[kSheetBytes] = "";
  size_t length = 0;
  for (int32_t i = 0; i < count && length < kSheetBytes; ++i) {
    const int added = std::snprintf(text + length, kSheetBytes - length, "%s%s\r\n      %s",
                                    i == 0 ? "" : "\r\n", rows[i].term, rows[i].meaning);
    if (added > 0) length += static_cast<size_t>(added);
  }
  HWND dialog = shutTopWindow();
  MessageBoxA(dialog, text, caption, MB_OK);
  openTopWindow(dialog);
}
