#include "platform/choosers.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "platform/windows/window_record.h"
// The choosers' header wants the other one first.
#include <commdlg.h>

// --- Files ----------------------------------------------------------------------------------

static void centreChooser(HWND chooser) {
  HWND parent = GetParent(chooser);
  if (parent == nullptr) parent = GetDesktopWindow();
  RECT around = {};
  RECT own = {};
  GetWindowRect(parent, &around);
  GetWindowRect(chooser, &own);
  const LONG x = (around.left + around.right - (own.right - own.left)) / 2;
  const LONG y = (around.top + around.bottom - (own.bottom - own.top)) / 2;
  SetWindowPos(chooser, nullptr, std::max<LONG>(x, 0), std::max<LONG>(y, 0), 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// The hook's own window is a child of the chooser.
static UINT_PTR CALLBACK chooserHook(HWND child, UINT message, WPARAM, LPARAM) {
  if (message == WM_INITDIALOG) centreChooser(GetParent(child));
  return 0;
}

// "name\0pattern\0\0"; both are the module's own and short.
constexpr int32_t kFilterBytes = 128;

static void buildFilter(const FileChooser& chooser, char filter[kFilterBytes]) {
  std::memset(filter, 0, kFilterBytes);
  const int length = std::snprintf(filter, kFilterBytes - 2, "%s", chooser.filterName) + 1;
  if (length >= kFilterBytes - 2) return;
  std::snprintf(filter + length, static_cast<size_t>(kFilterBytes - 1 - length), "%s",
                chooser.pattern);
}

using ChooserCall = BOOL(WINAPI*)(OPENFILENAMEA* request);

static ChooserAnswer chooseFile(const FileChooser& chooser, DWORD flags, ChooserCall show,
                                char* path, int32_t bytes) {
  if (bytes <= 0) return ChooserAnswer::cancelled;
  path[0] = '\0';
  char filter[kFilterBytes];
  buildFilter(chooser, filter);
  OPENFILENAMEA request = {};
  request.lStructSize = sizeof(request);
  request.hwndOwner = topWindow() != nullptr ? topWindow()->handle : nullptr;
  request.lpstrFilter = filter;
  request.nFilterIndex = 1;
  request.lpstrFile = path;
  request.nMaxFile = static_cast<DWORD>(bytes);
  request.lpstrTitle = chooser.title;
  request.lpstrDefExt = chooser.defaultExtension;
  request.Flags = flags | OFN_EXPLORER | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY | OFN_ENABLEHOOK |
                  OFN_NOCHANGEDIR;  // the host's current folder stays what it was
  request.lpfnHook = chooserHook;
  if (show(&request)) return ChooserAnswer::chosen;
  const bool tooLong = CommDlgExtendedError() == FNERR_BUFFERTOOSMALL;
  path[0] = '\0';
  return tooLong ? ChooserAnswer::tooLong : ChooserAnswer::cancelled;
}

ChooserAnswer choosePlatformFileToOpen(const FileChooser& chooser, char* path, int32_t bytes) {
  return chooseFile(chooser, OFN_FILEMUSTEXIST, GetOpenFileNameA, path, bytes);
}

ChooserAnswer choosePlatformFileToSave(const FileChooser& chooser, char* path, int32_t bytes) {
  return chooseFile(chooser, OFN_OVERWRITEPROMPT, GetSaveFileNameA, path, bytes);
}

// --- Colours --------------------------------------------------------------------------------

static COLORREF packed(const uint8_t color[3]) {
  return RGB(color[0], color[1], color[2]);
}

static void unpack(COLORREF from, uint8_t color[3]) {
  color[0] = GetRValue(from);
  color[1] = GetGValue(from);
  color[2] = GetBValue(from);
}

// The chooser has no owner that the system would keep from the user meanwhile.
bool choosePlatformColor(uint8_t color[3], uint8_t customColors[kCustomColors][3]) {
  COLORREF custom[kCustomColors];
  for (int32_t i = 0; i < kCustomColors; ++i) custom[i] = packed(customColors[i]);
  CHOOSECOLORA request = {};
  request.lStructSize = sizeof(request);
  request.rgbResult = packed(color);
  request.lpCustColors = custom;
  request.Flags = CC_RGBINIT | CC_FULLOPEN | CC_ANYCOLOR;
  HWND dialog = topWindow() != nullptr ? topWindow()->handle : nullptr;
  if (dialog != nullptr) EnableWindow(dialog, FALSE);
  const bool chosen = ChooseColorA(&request) != FALSE;
  if (dialog != nullptr) {
    EnableWindow(dialog, TRUE);
    SetForegroundWindow(dialog);
  }
  if (!chosen) return false;
  unpack(request.rgbResult, color);
  for (int32_t i = 0; i < kCustomColors; ++i) unpack(custom[i], customColors[i]);
  return true;
}
