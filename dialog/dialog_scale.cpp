#include "dialog/dialog_scale.h"

#include <cstdlib>
#include <iterator>

#include "platform/resource_access.h"

static int32_t openScale = kPlainScale;

int32_t dialogScale() {
  return openScale;
}

void setDialogScale(int32_t scale) {
  openScale = scale;
}

int32_t scaled(int32_t length) {
  return scaledLength(length, openScale);
}

int32_t pen() {
  return scaledPen(openScale);
}

Rectangle scaled(const Rectangle& rect) {
  return scaledRect(rect, openScale);
}

int32_t wantedScale() {
  const char* text = std::getenv("MORVALIS_SCALE");
  if (text == nullptr || *text < '0' || *text > '9') return 0;
  char* end = nullptr;
  const long number = std::strtol(text, &end, 10);
  const bool known = *end == '\0' && number >= kPlainScale && number <= *std::rbegin(kScales);
  return known ? static_cast<int32_t>(number) : 0;
}

static bool hasPictures(int32_t scale) {
  const uint8_t* pack = nullptr;
  int32_t length = 0;
  return scale == kPlainScale || findPicturePack(scale, &pack, &length);
}

int32_t nearestScale(int32_t wanted) {
  int32_t nearest = kPlainScale;
  for (const int32_t scale : kScales) {
    if (std::abs(scale - wanted) <= std::abs(nearest - wanted)) nearest = scale;
  }
  return nearest;
}

static bool fits(int32_t length, int32_t scale, int32_t room) {
  return room <= 0 || scaledLength(length, scale) <= room;
}

int32_t chooseScale(void* ownerWindow, int32_t width, int32_t height, int32_t tallestMenu) {
  const ScreenRoom room = screenRoom(ownerWindow);
  const int32_t wanted = wantedScale();
  const int32_t nearest = nearestScale(wanted != 0 ? wanted : room.scale);
  int32_t chosen = kPlainScale;
  for (const int32_t scale : kScales) {
    const bool usable = scale <= nearest && fits(width, scale, room.width) &&
                        fits(height, scale, room.height) &&
                        fits(tallestMenu, scale, room.menuHeight) && hasPictures(scale);
    if (usable) chosen = scale;
  }
  return chosen;
}

WindowTemplate scaledTemplate(const WindowTemplate& content, WindowControl* controls) {
  WindowTemplate other = content;
  other.width = scaled(content.width);
  other.height = scaled(content.height);
  other.controls = controls;
  for (int32_t i = 0; i < content.controlCount; ++i) {
    controls[i] = content.controls[i];
    controls[i].rect = scaled(content.controls[i].rect);
  }
  return other;
}
