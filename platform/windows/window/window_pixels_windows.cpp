#include <algorithm>

#include "platform/windows/window/window_record.h"

void showSurface(const Window* window, HDC context, const RECT& part, POINT origin) {
  const Surface& surface = window->surface;
  const LONG left = std::max<LONG>(part.left, 0);
  const LONG top = std::max<LONG>(part.top, 0);
  const LONG right = std::min<LONG>(part.right, surface.width);
  const LONG bottom = std::min<LONG>(part.bottom, surface.height);
  if (left >= right || top >= bottom) return;
  BitBlt(context, left - origin.x, top - origin.y, right - left, bottom - top, surface.context,
         left, top, SRCCOPY);
}

// Shown at once: a drag, or a render that takes its time, comes before the next paint message.
void presentPixels(Window* window, const PixelTarget& target, const Rectangle& part) {
  Rectangle area = part;
  if (!commonPart(window->surface, target, &area)) return;
  copyToSurface(&window->surface, target, area);
  HDC context = GetDC(window->handle);
  if (context == nullptr) return;
  showSurface(window, context, {area.left, area.top, area.right, area.bottom}, {0, 0});
  ReleaseDC(window->handle, context);
  GdiFlush();
}

// --- Buttons --------------------------------------------------------------------------------

void sendDrawItem(Window* window, int32_t id, const ItemState& state) {
  WindowEvent event = eventOf(WindowEventKind::drawItem);
  event.id = id;
  event.state = state;
  sendEvent(window, event);
}

void redrawItem(Window* window, int32_t id) {
  HWND button = GetDlgItem(window->handle, id);
  if (button == nullptr) return;
  const bool pressed = (SendMessageA(button, BM_GETSTATE, 0, 0) & BST_PUSHED) != 0;
  sendDrawItem(window, id, {pressed, GetFocus() == button, !IsWindowEnabled(button)});
}

// --- The host's drawing ---------------------------------------------------------------------

// The host draws on a copy of the core's pixels: a context of the window itself would show nothing
// before the window does, and would lose what lies outside the screen.
void* beginHostDrawing(Window* window, PixelTarget* target) {
  Surface* surface = &window->hostSurface;
  if (surface->context == nullptr && !makeSurface(surface, target->width, target->height)) {
    return nullptr;
  }
  Rectangle all = {0, 0, INT16_MAX, INT16_MAX};
  if (commonPart(*surface, *target, &all)) copyToSurface(surface, *target, all);
  SaveDC(surface->context);
  return surface->context;
}

void endHostDrawing(Window* window, PixelTarget* target, void* hostContext) {
  if (hostContext == nullptr) return;
  RestoreDC(window->hostSurface.context, -1);  // whatever the host has left selected
  Rectangle all = {0, 0, INT16_MAX, INT16_MAX};
  if (commonPart(window->hostSurface, *target, &all)) {
    copyFromSurface(window->hostSurface, target, all);
  }
}
