// No window opens, so that nothing of one is ever asked for.

#include "platform/choosers.h"
#include "platform/dialog_text.h"
#include "platform/resource_access.h"
#include "platform/window.h"

int32_t runModalWindow(const WindowTemplate&, void*, WindowProcedure, void*) {
  return kDialogUnavailable;
}

Window* openPopup(Window*, Point, int32_t, int32_t, WindowProcedure, void*) {
  return nullptr;
}

ChooserAnswer choosePlatformFileToOpen(const FileChooser&, char* path, int32_t) {
  path[0] = '\0';
  return ChooserAnswer::cancelled;
}

ChooserAnswer choosePlatformFileToSave(const FileChooser&, char* path, int32_t) {
  path[0] = '\0';
  return ChooserAnswer::cancelled;
}

bool choosePlatformColor(uint8_t[3], uint8_t[kCustomColors][3]) {
  return false;
}

ScreenRoom screenRoom(void*) {
  return {kPlainScale, 0, 0, 0};
}

int32_t textWidth(const char*, int32_t) {
  return 0;
}

void* beginHostDrawing(Window*, PixelTarget* target) {
  return target;
}

Point clientToScreen(Window*, Point point) {
  return point;
}

int32_t screenHeight() {
  return 0;
}

MenuLook menuLook() {
  return {};
}

bool findPicturePack(int32_t, const uint8_t**, int32_t*) {
  return false;
}

void drawTextCoverage(const char*, int32_t, uint8_t*) {
}
void endModalWindow(Window*, int32_t) {
}
void presentPixels(Window*, const PixelTarget&, const Rectangle&) {
}
void redrawItem(Window*, int32_t) {
}
void tellReading(Window*, int32_t) {
}
void nameRow(Window*, const Rectangle&, const char*, bool) {
}
void setToolTip(Window*, int32_t, const char*) {
}
void endHostDrawing(Window*, PixelTarget*, void*) {
}
void setCursor(Window*, CursorShape) {
}
void captureMouse(Window*) {
}
void releaseMouse(Window*) {
}
void postMouseMove(Window*, Point) {
}
void postCommand(Window*, int32_t) {
}
void awaitRest(Window*) {
}
void setFocusedControl(Window*, int32_t) {
}
void copyTextToClipboard(const char*) {
}
void closePopup(Window*) {
}
