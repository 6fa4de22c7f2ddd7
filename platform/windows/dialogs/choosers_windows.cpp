#include "platform/choosers.h"

#include <algorithm>
#include <cstring>
#include <cwchar>

#include "platform/windows/dialogs/narrow_path.h"
#include "platform/windows/window/window_record.h"
// The choosers' header wants the other one first.
#include <commdlg.h>
// These two likewise.
#include <cderr.h>

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

constexpr int32_t kWideBytes = 1024;  // characters, so that a path that is too long can be told
constexpr int32_t kTextLength = 128;  // the module's own texts are short

struct WideText {
  wchar_t text[kTextLength];
};

static WideText widened(const char* text) {
  WideText wide = {};
  MultiByteToWideChar(CP_ACP, 0, text, -1, wide.text, kTextLength - 1);
  return wide;
}

// "name\0pattern\0\0".
static void buildFilter(const FileChooser& chooser, wchar_t filter[2 * kTextLength]) {
  const WideText name = widened(chooser.filterName);
  const WideText pattern = widened(chooser.pattern);
  const size_t length = std::wcslen(name.text) + 1;
  std::memset(filter, 0, 2 * kTextLength * sizeof(wchar_t));
  std::wmemcpy(filter, name.text, length);
  std::wmemcpy(filter + length, pattern.text, std::wcslen(pattern.text));
}

// Empty when nothing was chosen.
static bool askForFile(const FileChooser& chooser, bool forSaving, wchar_t path[kWideBytes],
                       ChooserAnswer* answer) {
  const WideText title = widened(chooser.title);
  const WideText extension = widened(chooser.defaultExtension);
  wchar_t filter[2 * kTextLength];
  buildFilter(chooser, filter);
  path[0] = 0;
  OPENFILENAMEW request = {};
  request.lStructSize = sizeof(request);
  request.hwndOwner = topWindow() != nullptr ? topWindow()->handle : nullptr;
  request.lpstrFilter = filter;
  request.nFilterIndex = 1;
  request.lpstrFile = path;
  request.nMaxFile = kWideBytes;
  request.lpstrTitle = title.text;
  request.lpstrDefExt = extension.text;
  request.Flags = (forSaving ? OFN_OVERWRITEPROMPT : OFN_FILEMUSTEXIST) | OFN_EXPLORER |
                  OFN_PATHMUSTEXIST | OFN_HIDEREADONLY | OFN_ENABLEHOOK |
                  OFN_NOCHANGEDIR;  // the host's current folder stays what it was
  request.lpfnHook = chooserHook;
  if ((forSaving ? GetSaveFileNameW(&request) : GetOpenFileNameW(&request)) != FALSE) return true;
  const bool tooLong = CommDlgExtendedError() == FNERR_BUFFERTOOSMALL;
  *answer = tooLong ? ChooserAnswer::tooLong : ChooserAnswer::cancelled;
  return false;
}

static ChooserAnswer chooseFile(const FileChooser& chooser, bool forSaving, char* path,
                                int32_t bytes) {
  if (bytes <= 0) return ChooserAnswer::cancelled;
  path[0] = '\0';
  wchar_t wide[kWideBytes];
  ChooserAnswer answer = ChooserAnswer::cancelled;
  if (!askForFile(chooser, forSaving, wide, &answer)) return answer;
  switch (forSaving ? narrowPathToWrite(wide, path, bytes) : narrowPath(wide, path, bytes)) {
    case NarrowAnswer::done:
      return ChooserAnswer::chosen;
    case NarrowAnswer::tooLong:
      return ChooserAnswer::tooLong;
    default:
      return ChooserAnswer::noName;
  }
}

ChooserAnswer choosePlatformFileToOpen(const FileChooser& chooser, char* path, int32_t bytes) {
  return chooseFile(chooser, /*forSaving=*/false, path, bytes);
}

ChooserAnswer choosePlatformFileToSave(const FileChooser& chooser, char* path, int32_t bytes) {
  return chooseFile(chooser, /*forSaving=*/true, path, bytes);
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
  HWND dialog = shutTopWindow();
  const bool chosen = ChooseColorA(&request) != FALSE;
  openTopWindow(dialog);
  if (!chosen) return false;
  unpack(request.rgbResult, color);
  for (int32_t i = 0; i < kCustomColors; ++i) unpack(custom[i], customColors[i]);
  return true;
}
