#include "hosts/substitute_host/suites/color_services.h"

#include <cstddef>
#include <cstdint>

#include "hosts/substitute_host/host_log.h"
#include "hosts/substitute_host/host_state.h"

constexpr int16_t kChooseColor = 0;
constexpr int16_t kConvertColor = 1;
constexpr int16_t kSamplePoint = 2;
constexpr int16_t kSpecialColor = 3;

constexpr int16_t kSpaceRgb = 0;
constexpr int16_t kSpaceGrey = 4;
constexpr int16_t kSpaceChosen = -1;  // as a result: whatever the user chose in

constexpr int16_t kBadSamplePoint = -30903;

static bool isKnownSpace(int16_t space) {
  return space == kSpaceRgb || space == kSpaceGrey;
}

// Between grey and RGB; grey is the usual weighted sum in hundredths.
static int16_t convert(ColorServicesInfo* info) {
  if (info->resultSpace == kSpaceChosen) info->resultSpace = info->sourceSpace;
  if (info->sourceSpace == info->resultSpace) return kNoError;
  if (!isKnownSpace(info->sourceSpace) || !isKnownSpace(info->resultSpace)) return kServiceMissing;
  int16_t* parts = info->colorComponents;
  if (info->resultSpace == kSpaceGrey) {
    parts[0] = static_cast<int16_t>((parts[0] * 30 + parts[1] * 59 + parts[2] * 11 + 50) / 100);
  } else {
    parts[1] = parts[0];
    parts[2] = parts[0];
  }
  return kNoError;
}

static int16_t samplePoint(ColorServicesInfo* info) {
  const Point* point = reinterpret_cast<const Point*>(info->selectorParameter);
  const HostPicture& picture = hostSource();
  if (point == nullptr || point->h < 0 || point->v < 0 || point->h >= picture.width ||
      point->v >= picture.height) {
    return kBadSamplePoint;
  }
  const size_t pixel = static_cast<size_t>(point->v) * picture.width + point->h;
  const uint8_t* samples = &picture.samples[pixel * picture.planes];
  const bool grey = picture.planes < 3;
  for (int32_t part = 0; part < 3; ++part) info->colorComponents[part] = samples[grey ? 0 : part];
  info->sourceSpace = grey ? kSpaceGrey : kSpaceRgb;
  return convert(info);
}

static int16_t specialColor(ColorServicesInfo* info) {
  const FilterRecord& record = *host().record;
  const HostRgb16 color = info->selectorParameter == 0 ? record.foreground : record.background;
  info->colorComponents[0] = static_cast<int16_t>(color.red >> 8);
  info->colorComponents[1] = static_cast<int16_t>(color.green >> 8);
  info->colorComponents[2] = static_cast<int16_t>(color.blue >> 8);
  info->sourceSpace = kSpaceRgb;
  return convert(info);
}

static int16_t MORVALIS_CALL colorServices(ColorServicesInfo* info) {
  if (callFails("colorServices")) return kServiceMissing;
  if (info == nullptr || info->infoSize < static_cast<int32_t>(sizeof(ColorServicesInfo))) {
    return kServiceMissing;
  }
  switch (info->selector) {
    case kChooseColor:
    case kConvertColor:
      return convert(info);
    case kSamplePoint:
      return samplePoint(info);
    case kSpecialColor:
      return specialColor(info);
    default:
      return kServiceMissing;
  }
}

ColorServicesProc offerColorServices() {
  return host().switches.colorServices ? colorServices : nullptr;
}
