#include "platform/windows/dialog_place.h"

#include "services/dialog_placement.h"

void placeDialog(HWND dialog) {
  HWND reference = GetParent(dialog);
  // A minimised window stands far outside the screen, and the dialog would with it.
  if (reference == nullptr || IsIconic(reference)) reference = GetDesktopWindow();
  RECT client = {};
  GetClientRect(reference, &client);
  POINT origin = {0, 0};
  ClientToScreen(reference, &origin);
  RECT outer = {};
  GetWindowRect(dialog, &outer);
  const bool hasSystemMenu = (GetWindowLongA(dialog, GWL_STYLE) & WS_SYSMENU) != 0;
  const DialogOrigin place =
      centreDialog({static_cast<int32_t>(origin.x), static_cast<int32_t>(origin.y),
                    static_cast<int32_t>(client.right), static_cast<int32_t>(client.bottom),
                    static_cast<int32_t>(outer.right - outer.left),
                    static_cast<int32_t>(outer.bottom - outer.top), GetSystemMetrics(SM_CXSIZE),
                    hasSystemMenu, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)});
  SetWindowPos(dialog, nullptr, place.x, place.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}
