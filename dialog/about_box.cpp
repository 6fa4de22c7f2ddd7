#include "dialog/about_box.h"

#include "dialog/canvas.h"
#include "platform/window.h"
#include "services/memory_blocks.h"

// Client size: 255 x 244 dialog units in pixels of the dialogs' font.
constexpr int32_t kWidth = 383;
constexpr int32_t kHeight = 397;
constexpr int32_t kCloseButton = -1;  // every picture closes the box

struct AboutPicture {
  int32_t bitmap;
  int16_t left;
  int16_t top;
  int16_t width;
  int16_t height;
};

// Places from dialog units, sizes of the pictures themselves.
constexpr AboutPicture kPictures[] = {{131, 59, 189, 262, 152},
                                      {126, 56, 26, 172, 90},
                                      {127, 56, 143, 110, 14},
                                      {144, 30, 138, 18, 18}};

static const WindowTemplate kAboutBox = {
    "ABOUTBOX", "About Morvalis", kWidth, kHeight, nullptr, 0, 0, 0};

static bool onPicture(Point point) {
  for (const AboutPicture& picture : kPictures) {
    const Rectangle rect = {picture.top, picture.left,
                            static_cast<int16_t>(picture.top + picture.height),
                            static_cast<int16_t>(picture.left + picture.width)};
    if (pointInRect(point, &rect)) return true;
  }
  return false;
}

static bool handleEvent(Window* window, const WindowEvent& event, void* context) {
  auto* canvas = static_cast<Canvas*>(context);
  switch (event.kind) {
    case WindowEventKind::initialise:
      fillArea(canvas, canvas->clip, kWhite);
      for (const AboutPicture& picture : kPictures) {
        drawResource(canvas, picture.bitmap, picture.left, picture.top);
      }
      presentPixels(window, canvas->target, canvas->clip);
      return true;
    case WindowEventKind::buttonDown:
      if (onPicture(event.point)) endModalWindow(window, kCloseButton);
      return true;
    case WindowEventKind::key:
      if (event.key != WindowKey::enter) return false;
      endModalWindow(window, kCloseButton);
      return true;
    default:
      return false;
  }
}

void showAboutBox(void* ownerWindow) {
  Canvas canvas = {{kWidth, kHeight, nullptr}, {0, 0, kHeight, kWidth}};
  canvas.target.rgb = static_cast<uint8_t*>(newModuleBlock(uint64_t{3} * kWidth * kHeight));
  if (canvas.target.rgb == nullptr) return;
  runModalWindow(kAboutBox, ownerWindow, handleEvent, &canvas);
  freeModuleBlock(canvas.target.rgb);
}
