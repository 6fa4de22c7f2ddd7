#include "platform/windows/dialogs/dialog_place.h"

#include "platform/windows/window/screen_scale.h"
#include "services/dialog_placement.h"

void placeDialog(HWND dialog) {
  HWND owner = GetParent(dialog);
  // A minimised window stands far outside the screen, and the dialog would with it.
  const bool standsAlone = owner == nullptr || IsIconic(owner);
  HWND reference = standsAlone ? GetDesktopWindow() : owner;
  RECT client = {};
  GetClientRect(reference, &client);
  POINT origin = {0, 0};
  ClientToScreen(reference, &origin);
  RECT outer = {};
  GetWindowRect(dialog, &outer);
  const bool hasSystemMenu = (GetWindowLongA(dialog, GWL_STYLE) & WS_SYSMENU) != 0;
  // Counted from the corner of the owner's screen.
  const RECT screen = monitorOf(standsAlone ? nullptr : owner).rcMonitor;
  const DialogOrigin place = centreDialog(
      {static_cast<int32_t>(origin.x - screen.left), static_cast<int32_t>(origin.y - screen.top),
       static_cast<int32_t>(client.right), static_cast<int32_t>(client.bottom),
       static_cast<int32_t>(outer.right - outer.left),
       static_cast<int32_t>(outer.bottom - outer.top), metricAt(SM_CXSIZE, dotsOf(dialog)),
       hasSystemMenu, static_cast<int32_t>(screen.right - screen.left),
       static_cast<int32_t>(screen.bottom - screen.top)});
  SetWindowPos(dialog, nullptr, place.x + screen.left, place.y + screen.top, 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}
