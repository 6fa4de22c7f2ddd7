#include "geometry/field/cone_kernel.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "entry/session_record.h"
#include "services/fixed_point.h"

// The setting at which the effective radius reaches its limit, whatever a file says.
constexpr int32_t kLargestRadiusSetting = (kLargestRadius + 50) / 2;

int32_t fullRadius(int32_t setting) {
  // Beyond 50 the slider moves at twice the pace, to 150 pixels at its end.
  const int32_t radius = std::clamp(setting, 1, kLargestRadiusSetting);
  return radius > 50 ? 2 * radius - 50 : radius;
}

void radiusConstants(SessionRecord* session) {
  const EffectSettings* settings = settingsOf(session);
  RenderState* render = &session->render;
  int32_t radius = fullRadius(settings->radius);
  if (isPreview(settings)) radius /= std::max(settings->previewScale, 1);
  render->effRadius = std::max(radius, 1);
  render->kernelStride = 2 * render->effRadius + 2;
}

int16_t coneAt(int32_t radius, int32_t squared) {
  const auto distance = static_cast<float>(std::sqrt(static_cast<double>(squared)));
  if (distance > static_cast<float>(radius + 1)) return 0;
  const double value = (radius + 1 - static_cast<double>(distance)) * kConeTop / (radius + 1);
  return static_cast<int16_t>(truncateToInt32(value));
}

void buildConeKernel(SessionRecord* session) {
  RenderState* render = &session->render;
  auto* cone = static_cast<int16_t*>(render->coneKernel.address);
  if (cone == nullptr) return;
  const int32_t radius = render->effRadius;
  std::memset(cone, 0, kKernelBytes);
  render->coneStep = radius * kConeTop / (radius + 1);
  render->edgeKernelKind = -1;
  int16_t* centre = cone + radius * (render->kernelStride + 1);
  // One eighth; the others mirror it.
  for (int32_t v = 0; v <= radius; ++v) {
    for (int32_t u = v; u <= radius; ++u) {
      const int16_t value = coneAt(radius, u * u + v * v);
      if (value == 0) break;
      for (const int32_t across : {-v, v}) {
        for (const int32_t along : {-u, u}) {
          centre[across * render->kernelStride + along] = value;
          centre[along * render->kernelStride + across] = value;
        }
      }
    }
  }
}

// The fraction moves the centre by (255 - weight) / 256 pixels toward higher columns or rows. The
// division is by 256, so that even a weight of 255 leaves a cone a little lower.
static int16_t shiftedCell(int32_t previous, int32_t cell, int32_t weight) {
  return static_cast<int16_t>((previous * (255 - weight) + cell * weight) >> 8);
}

static void shiftAcross(const RenderState* render, int32_t firstColumn, int32_t lastColumn,
                        int32_t weight) {
  const auto* cone = static_cast<const int16_t*>(render->coneKernel.address);
  auto* edge = static_cast<int16_t*>(render->edgeKernel.address);
  const int32_t stride = render->kernelStride;
  const int32_t radius = render->effRadius;
  for (int32_t v = 0; v <= radius; ++v) {
    const int16_t* from = cone + v * stride;
    int16_t* to = edge + v * stride;
    to[firstColumn] = shiftedCell(0, from[firstColumn], weight);
    for (int32_t u = firstColumn + 1; u <= lastColumn; ++u) {
      to[u] = shiftedCell(from[u - 1], from[u], weight);
    }
    std::copy(to + firstColumn, to + lastColumn + 1,
              edge + (2 * radius - v) * stride + firstColumn);
  }
  std::fill_n(edge + (2 * radius + 1) * stride, stride, int16_t{0});
}

static void shiftDown(const RenderState* render, int32_t firstRow, int32_t lastRow,
                      int32_t weight) {
  const auto* cone = static_cast<const int16_t*>(render->coneKernel.address);
  auto* edge = static_cast<int16_t*>(render->edgeKernel.address);
  const int32_t stride = render->kernelStride;
  const int32_t radius = render->effRadius;
  for (int32_t v = firstRow; v <= lastRow; ++v) {
    const int16_t* from = cone + v * stride;
    int16_t* to = edge + v * stride;
    for (int32_t u = 0; u <= radius; ++u) {
      const int32_t previous = v == firstRow ? 0 : from[u - stride];
      to[u] = shiftedCell(previous, from[u], weight);
      to[2 * radius - u] = to[u];
    }
  }
  for (int32_t v = 0; v <= 2 * radius + 1; ++v) edge[v * stride + 2 * radius + 1] = 0;
}

void buildEdgeKernel(SessionRecord* session, int32_t kind, int32_t weight) {
  RenderState* render = &session->render;
  if (render->edgeKernelKind == kind && render->edgeKernelWeight == weight) return;
  render->edgeKernelKind = kind;
  render->edgeKernelWeight = weight;
  const int32_t radius = render->effRadius;
  switch (kind) {
    case kStampLeft:
      shiftAcross(render, 0, radius + 2, weight);
      break;
    case kStampRight:
      shiftAcross(render, radius, 2 * radius + 1, weight);
      break;
    case kStampUp:
      shiftDown(render, 0, radius + 2, weight);
      break;
    default:
      shiftDown(render, radius, 2 * radius + 1, weight);
      break;
  }
}
