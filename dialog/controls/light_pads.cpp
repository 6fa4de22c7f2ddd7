#include "dialog/controls/light_pads.h"

#include <algorithm>
#include <cmath>

#include "dialog/controls/dialog_controls.h"
#include "dialog/controls/small_controls.h"
#include "dialog/dialog_scale.h"
#include "dialog/dialog_state.h"
#include "services/fixed_point.h"

constexpr int32_t kPad1 = 218;  // bitmaps
constexpr int32_t kPad2 = 219;
constexpr int32_t kHandle = 122;   // icon
constexpr double kPadRadius = 33;  // pixels at 100 percent
constexpr double kFootDivisor = 2.9;
constexpr int32_t kHandlePlace = 40;  // of its picture, for a light from straight ahead
constexpr int32_t kHandleInset = 2;
constexpr int32_t kMostAway = 100;

constexpr Rgb8 kTowardViewer = {255, 255, 0};
constexpr Rgb8 kAwayFromViewer = {255, 0, 255};

static Direction* directionOf(DialogState* dialog, int32_t id) {
  EffectSettings* settings = settingsOf(dialog);
  return id == kLight1Pad ? &settings->light1Dir : &settings->light2Dir;
}

static double pixelsPerUnit() {
  return static_cast<double>(dialogScale()) / kPlainScale;
}

// Pixels of the screen from the pad's centre; a damaged direction stays within the pad.
static int32_t offset(double along) {
  const int32_t most = scaled(kMostAway);
  return std::clamp(truncateToInt32(along * pixelsPerUnit()), -most, most);
}

void drawLightPad(DialogState* dialog, int32_t id) {
  const Rectangle rect = controlRect(id);
  const Direction light = *directionOf(dialog, id);
  const double x = kPadRadius * static_cast<double>(light.x);
  const double y = kPadRadius * static_cast<double>(light.y);
  drawResource(&dialog->canvas, id == kLight1Pad ? kPad1 : kPad2, rect.left, rect.top);
  const int32_t handleX = rect.left + offset(x) + scaled(kHandlePlace);
  const int32_t handleY = rect.top + offset(y) + scaled(kHandlePlace - 1);
  const int32_t footX = rect.left + offset((x + 0.5) / kFootDivisor) + scaled(41);
  const int32_t footY = rect.top + offset((y + 0.5) / kFootDivisor) + scaled(40);
  const int32_t inset = scaled(kHandleInset);
  drawLine(&dialog->canvas, footX, footY, handleX + inset, handleY + inset,
           light.z >= 0 ? kTowardViewer : kAwayFromViewer);
  drawIcon(&dialog->canvas, kHandle, handleX, handleY);
}

// From the pad's centre, in pixels at 100 percent; outside the circle it is the direction there.
static void setLight(DialogState* dialog, int32_t id, double dx, double dy) {
  const double distance = std::max(std::sqrt(dx * dx + dy * dy), kPadRadius);
  Direction* light = directionOf(dialog, id);
  light->x = static_cast<float>(dx / distance);
  light->y = static_cast<float>(dy / distance);
  repaintControl(dialog, id);
  tellReading(dialog->window, id);
}

void stepLight(DialogState* dialog, int32_t id, int32_t right, int32_t down, bool end) {
  const Direction light = *directionOf(dialog, id);
  // Back to pixels as a drag counts them, so that steps neither drift nor stand still.
  double dx = std::round(kPadRadius * std::clamp(static_cast<double>(light.x), -1.0, 1.0));
  double dy = std::round(kPadRadius * std::clamp(static_cast<double>(light.y), -1.0, 1.0));
  if (end) {
    dx = std::copysign(std::sqrt(std::max(kPadRadius * kPadRadius - dy * dy, 0.0)), right);
  } else {
    dx += right;
    dy += down;
  }
  setLight(dialog, id, dx, dy);
  refreshPreview(dialog, {ChangeKind::steps, id, /*continues=*/true});
}

void turnLight(DialogState* dialog, int32_t id, int32_t degrees) {
  const Direction light = *directionOf(dialog, id);
  const double away = std::hypot(static_cast<double>(light.x), static_cast<double>(light.y));
  const bool hasDirection = std::isfinite(away) && away > 0;
  const double distance = kPadRadius * (hasDirection ? std::min(away, 1.0) : 1.0);
  const double angle = degrees / kDegreesPerRadian;
  setLight(dialog, id, distance * std::cos(angle), -distance * std::sin(angle));
  refreshPreview(dialog, {ChangeKind::steps, id, /*continues=*/true});
}

void dragLight(DialogState* dialog, int32_t id) {
  if (pointerStands(dialog)) return;
  const Rectangle rect = controlRect(id);
  const Point mouse = settingsOf(dialog)->mouse;
  // The centre for dragging lies one pixel right of the centre for drawing.
  setLight(dialog, id, (mouse.h - (rect.left + scaled(43))) / pixelsPerUnit(),
           (mouse.v - (rect.top + scaled(41))) / pixelsPerUnit());
  pointerHandled(dialog);
}
