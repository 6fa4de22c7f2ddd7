#include "settings/light_angles.h"

#include <cmath>

#include "services/fixed_point.h"
#include "settings/effect_settings.h"

constexpr double kPadHalf = 33;  // the directions are read on a square from -33 to 33
constexpr double kDegreesPerRadian = 57.29577951308232;
constexpr double kElevationScale = 600;

// Angle of the point (h, v) about the centre, clockwise from "up", in whole degrees; v grows down.
static int32_t compassAngle(int32_t h, int32_t v) {
  if (v == 0) {
    if (h == 0) return 0;
    return h < 0 ? 270 : 90;
  }
  const double up = -static_cast<double>(v) * 66;
  const float quotient = static_cast<float>(static_cast<double>(h) * 66 / up);
  // The diagonals are whole by definition; an arc tangent may miss them by its last bit.
  double angle = quotient == 1 || quotient == -1
                     ? 45 * static_cast<double>(quotient)
                     : std::atan(static_cast<double>(quotient)) * kDegreesPerRadian;
  if (up < 1) angle += 180;
  const int32_t whole = truncateToInt32(angle);
  return whole < 0 ? whole + 360 : whole;
}

static int32_t lightAngle(const Direction& direction) {
  const int32_t h = truncateToInt32(kPadHalf * static_cast<double>(direction.x));
  const int32_t v = truncateToInt32(kPadHalf * static_cast<double>(direction.y));
  return compassAngle(h, v) - 90;
}

static int32_t lightElevation(const Direction& direction) {
  return truncateToInt32((1 - static_cast<double>(direction.z)) * kElevationScale);
}

void lightAngles(EffectSettings* settings) {
  settings->light1Angle = lightAngle(settings->light1Dir);
  settings->light2Angle = lightAngle(settings->light2Dir);
  settings->light1Elevation = lightElevation(settings->light1Dir);
  settings->light2Elevation = lightElevation(settings->light2Dir);
}
