#include "dialog/help/about_box.h"

#include <algorithm>
#include <iterator>

#include "dialog/controls/canvas.h"
#include "dialog/dialog_scale.h"
#include "pictures/sources/scaled_pictures.h"
#include "platform/window.h"
#include "services/memory_blocks.h"

// Client size: 255 x 244 dialog units in pixels of the dialogs' font, as are the places below.
constexpr int32_t kWidth = 383;
constexpr int32_t kHeight = 397;
constexpr int32_t kCloseButton = -1;  // every picture closes the box

// Bitmaps, in the order of their places below.
constexpr int32_t kPictures[] = {131, 126, 127, 144};

// Places from dialog units, sizes of the pictures themselves.
constexpr WindowControl kPlaces[] = {
    {kCloseButton, ControlKind::area, {189, 59, 341, 321}, nullptr, nullptr},
    {kCloseButton, ControlKind::area, {26, 56, 116, 228}, nullptr, nullptr},
    {kCloseButton, ControlKind::area, {143, 56, 157, 166}, nullptr, nullptr},
    {kCloseButton, ControlKind::area, {138, 30, 156, 48}, nullptr, nullptr}};

static const WindowTemplate kAboutBox = {"ABOUTBOX", "About Morvalis",   kWidth, kHeight,
                                         kPlaces,    std::size(kPlaces), 0,      0};

static bool onPicture(Point point) {
  return std::any_of(std::begin(kPlaces), std::end(kPlaces), [point](const WindowControl& control) {
    const Rectangle rect = scaled(control.rect);
    return pointInRect(point, &rect);
  });
}

static bool handleEvent(Window* window, const WindowEvent& event, void* context) {
  auto* canvas = static_cast<Canvas*>(context);
  switch (event.kind) {
    case WindowEventKind::initialise:
      fillArea(canvas, canvas->clip, kWhite);
      for (size_t i = 0; i < std::size(kPictures); ++i) {
        const Rectangle rect = scaled(kPlaces[i].rect);
        drawResource(canvas, kPictures[i], rect.left, rect.top);
      }
      presentPixels(window, canvas->target, canvas->clip);
      return true;
    case WindowEventKind::buttonDown:
      if (onPicture(event.point)) endModalWindow(window, kCloseButton);
      return true;
    case WindowEventKind::command:  // where the pictures are controls of the system's own
      if (event.notification == 0) endModalWindow(window, event.id);
      return true;
    case WindowEventKind::key:
      if (event.key != WindowKey::enter) return false;
      endModalWindow(window, kCloseButton);
      return true;
    default:
      return false;
  }
}

static void runAboutBox(void* ownerWindow) {
  const Rectangle whole = scaled({0, 0, kHeight, kWidth});
  Canvas canvas = {{whole.right, whole.bottom, nullptr}, whole};
  canvas.target.rgb = static_cast<uint8_t*>(newModuleBlock(
      uint64_t{3} * static_cast<uint32_t>(whole.right) * static_cast<uint32_t>(whole.bottom)));
  if (canvas.target.rgb == nullptr) return;
  WindowControl controls[std::size(kPlaces)];
  runModalWindow(scaledTemplate(kAboutBox, controls), ownerWindow, handleEvent, &canvas);
  freeModuleBlock(canvas.target.rgb);
}

void showAboutBox(void* ownerWindow) {
  const int32_t scale = dialogScale();
  setDialogScale(chooseScale(ownerWindow, kWidth, kHeight));
  runAboutBox(ownerWindow);
  forgetScaledPictures();
  setDialogScale(scale);
}
