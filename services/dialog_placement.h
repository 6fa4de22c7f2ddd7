// dialog_placement: where a dialog goes over its parent.

#pragma once

#include <cstdint>

// What the place depends on, in screen pixels.
struct DialogSurroundings {
  int32_t left;  // client area of the parent, or the desktop
  int32_t top;
  int32_t width;
  int32_t height;
  int32_t dialogWidth;  // outer size
  int32_t dialogHeight;
  int32_t captionButtonWidth;
  bool hasSystemMenu;
  int32_t screenWidth;
  int32_t screenHeight;
};

struct DialogOrigin {
  int32_t x;
  int32_t y;
};

// Centred, a caption button to the left, with a third of the free height above. Only the screen's
// right and bottom edges are kept to.
DialogOrigin centreDialog(const DialogSurroundings& around);
