#include "platform/alerts.h"

#include "platform/windows/dialog_place.h"
#include "platform/windows/windows_api.h"

// The resources hold the texts with their parameters; what is shown are the expanded ones.
static void startUp(HWND dialog, const AlertContent& content) {
  placeDialog(dialog);
  for (int32_t i = 0; i < content.textCount; ++i) {
    const AlertText& text = content.texts[i];
    if (text.number != 0) SetDlgItemTextA(dialog, text.number, text.text);
  }
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
      EndDialog(dialog, LOWORD(wParam));
      return 1;
    default:
      return 0;
  }
}

int32_t showPlatformAlert(const AlertContent& content) {
  const INT_PTR answer = DialogBoxParamA(moduleInstance(), content.name, nullptr, alertProcedure,
                                         reinterpret_cast<LPARAM>(&content));
  return answer > 0 ? static_cast<int32_t>(answer) : -1;
}

void showPlatformMessage(const char* caption, const char* text) {
  MessageBoxA(nullptr, text, caption, MB_OK | MB_ICONHAND);
}
