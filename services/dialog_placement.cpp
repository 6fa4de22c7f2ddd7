#include "services/dialog_placement.h"

#include <algorithm>

DialogOrigin centreDialog(const DialogSurroundings& around) {
  int32_t shift = around.captionButtonWidth;
  if (!around.hasSystemMenu) shift -= shift / 3;
  DialogOrigin origin;
  origin.x = std::max(0, around.width - around.dialogWidth) / 2 + around.left - shift;
  origin.y = std::max(0, around.height - around.dialogHeight) / 3 + around.top;
  if (origin.x + around.dialogWidth > around.screenWidth) {
    origin.x = std::max(0, around.screenWidth - around.dialogWidth);
  }
  if (origin.y + around.dialogHeight > around.screenHeight) {
    origin.y = std::max(0, around.screenHeight - around.dialogHeight);
  }
  return origin;
}
