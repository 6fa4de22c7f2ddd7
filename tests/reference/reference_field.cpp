#include "tests/reference/reference_field.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int32_t kConeTop = 3000;
constexpr int32_t kOutside = 3000;

// Square tables of side 2R + 2, centre at (R, R).
struct Kernel {
  int32_t stride;
  std::vector<int32_t> cells;
};

int32_t& kernelCell(Kernel& kernel, int32_t u, int32_t v) {
  return kernel.cells[static_cast<size_t>(v) * kernel.stride + u];
}

Kernel emptyKernel(int32_t radius) {
  const int32_t stride = 2 * radius + 2;
  return {stride, std::vector<int32_t>(static_cast<size_t>(stride) * stride, 0)};
}

Kernel buildCone(int32_t radius) {
  Kernel cone = emptyKernel(radius);
  for (int32_t v = 0; v <= 2 * radius; ++v) {
    for (int32_t u = 0; u <= 2 * radius; ++u) {
      const double squared = (u - radius) * (u - radius) + (v - radius) * (v - radius);
      const float distance = static_cast<float>(std::sqrt(squared));
      if (distance > static_cast<float>(radius + 1)) continue;
      const double value =
          (radius + 1 - static_cast<double>(distance)) * kConeTop / static_cast<double>(radius + 1);
      kernelCell(cone, u, v) = static_cast<int32_t>(value);
    }
  }
  return cone;
}

// The direction from an unselected pixel to its selected neighbour.
enum Kind { kLeft = 0, kRight = 1, kUp = 2, kDown = 3 };

// The cone shifted by a fraction of a pixel, only the half that the kind's stamp reads.
Kernel buildEdge(Kernel& cone, int32_t radius, Kind kind, int32_t weight) {
  Kernel edge = emptyKernel(radius);
  const bool lowHalf = kind == kLeft || kind == kUp;
  const int32_t first = lowHalf ? 0 : radius;
  const int32_t last = lowHalf ? radius + 2 : 2 * radius + 1;
  for (int32_t across = 0; across <= radius; ++across) {
    for (int32_t along = first; along <= last; ++along) {
      if (kind == kLeft || kind == kRight) {
        const int32_t before = along == first ? 0 : kernelCell(cone, along - 1, across);
        const int32_t value =
            (before * (255 - weight) + kernelCell(cone, along, across) * weight) >> 8;
        kernelCell(edge, along, across) = value;
        kernelCell(edge, along, 2 * radius - across) = value;
      } else {
        const int32_t before = along == first ? 0 : kernelCell(cone, across, along - 1);
        const int32_t value =
            (before * (255 - weight) + kernelCell(cone, across, along) * weight) >> 8;
        kernelCell(edge, across, along) = value;
        kernelCell(edge, 2 * radius - across, along) = value;
      }
    }
  }
  return edge;
}

void stamp(ReferenceField& field, Kernel& cone, int32_t radius, Kind kind, int32_t weight,
           int32_t x0, int32_t y0) {
  const int32_t width = field.columns - 2;
  const int32_t height = field.rows - 2;
  int32_t left = x0;
  int32_t right = x0 + 2 * radius + 1;
  int32_t top = y0;
  int32_t bottom = y0 + 2 * radius + 1;
  if (kind == kLeft) right = x0 + radius + 2;
  if (kind == kRight) left = x0 + radius;
  if (kind == kUp) bottom = y0 + radius + 2;
  if (kind == kDown) top = y0 + radius;
  if (right < 0 || left >= width || top >= height || bottom < 0) return;

  Kernel edge = buildEdge(cone, radius, kind, weight);
  for (int32_t y = std::max(top, 0); y <= std::min(bottom, height + 1); ++y) {
    for (int32_t x = std::max(left, 0); x <= std::min(right, width + 1); ++x) {
      const int16_t value = static_cast<int16_t>(kernelCell(edge, x - x0, y - y0));
      int16_t& cell = referenceCell(field, x, y);
      cell = std::max(cell, value);
    }
  }
}

constexpr int32_t kSmoothing[3][3] = {{12, 31, 12}, {31, 80, 31}, {12, 31, 12}};
constexpr int32_t kSmoothingSum = 252;

int16_t smoothed(const int32_t (&around)[3][3]) {
  int32_t sum = 0;
  for (int32_t v = 0; v < 3; ++v) {
    for (int32_t u = 0; u < 3; ++u) sum += kSmoothing[v][u] * around[v][u];
  }
  return static_cast<int16_t>(sum / kSmoothingSum);
}

}  // namespace

int32_t referenceMaskValue(const ReferenceMask& mask, int32_t x, int32_t y) {
  if (x < 0 || x >= mask.width || y < 0 || y >= mask.height) return 0;
  if (mask.values.empty()) return 255;
  return mask.values[static_cast<size_t>(y) * mask.width + x];
}

int32_t referenceEffectiveRadius(const EffectSettings& settings) {
  int64_t radius = settings.radius;
  if (radius > 50) radius = 2 * radius - 50;
  if (settings.previewMode == 1) radius = radius / settings.previewScale;
  return static_cast<int32_t>(std::clamp<int64_t>(radius, 1, 150));
}

int32_t referenceConeStep(int32_t effectiveRadius) {
  return effectiveRadius * kConeTop / (effectiveRadius + 1);
}

ReferenceField referenceEmptyField(int32_t width, int32_t height) {
  const size_t count = static_cast<size_t>(width + 2) * (height + 2);
  return {width + 2, height + 2, std::vector<int16_t>(count, 0)};
}

void referenceStamp(ReferenceField& field, const ReferenceMask& mask, int32_t effectiveRadius) {
  const int32_t radius = effectiveRadius;
  Kernel cone = buildCone(radius);
  for (int32_t y = -1; y <= mask.height; ++y) {
    for (int32_t x = -1; x <= mask.width; ++x) {
      if (referenceMaskValue(mask, x, y) != 0) continue;
      const int32_t left = referenceMaskValue(mask, x - 1, y);
      const int32_t right = referenceMaskValue(mask, x + 1, y);
      const int32_t upper = referenceMaskValue(mask, x, y - 1);
      const int32_t lower = referenceMaskValue(mask, x, y + 1);
      const int32_t x0 = x - radius + 1;
      const int32_t y0 = y - radius + 1;
      if (left != 0) stamp(field, cone, radius, kLeft, 255 - left, x0 - 1, y0);
      if (right != 0) stamp(field, cone, radius, kRight, right, x0, y0);
      if (upper != 0) stamp(field, cone, radius, kUp, 255 - upper, x0, y0 - 1);
      if (lower != 0) stamp(field, cone, radius, kDown, lower, x0, y0);
    }
  }
}

void referenceFillBorder(ReferenceField& field, const ReferenceMask& mask, int32_t coneStep) {
  for (int32_t j = 0; j < field.rows; ++j) {
    for (int32_t i = 0; i < field.columns; ++i) {
      const int32_t m = referenceMaskValue(mask, i - 1, j - 1);
      if (m == 255) continue;
      const int32_t value = m == 0 ? kOutside : (m * coneStep + (255 - m) * kOutside) >> 8;
      referenceCell(field, i, j) = static_cast<int16_t>(value);
    }
  }
}

void referenceSmoothForward(ReferenceField& field) {
  const ReferenceField before = field;
  for (int32_t j = 0; j < field.rows - 1; ++j) {
    for (int32_t i = 0; i < field.columns - 1; ++i) {
      int32_t around[3][3];
      for (int32_t u = -1; u <= 1; ++u) {
        const bool outside = i + u < 0;
        around[0][u + 1] = outside || j == 0 ? kOutside : referenceCell(field, i + u, j - 1);
        around[1][u + 1] = outside ? kOutside : referenceCell(before, i + u, j);
        around[2][u + 1] = outside ? kOutside : referenceCell(before, i + u, j + 1);
      }
      referenceCell(field, i, j) = smoothed(around);
    }
  }
}

void referenceSmoothBackward(ReferenceField& field) {
  const ReferenceField before = field;
  const int64_t columns = field.columns;
  const int64_t count = static_cast<int64_t>(field.cells.size());
  for (int32_t j = field.rows - 2; j >= 0; --j) {
    for (int32_t i = field.columns - 1; i >= 1; --i) {
      int32_t around[3][3];
      for (int32_t u = -1; u <= 1; ++u) {
        // One continuous run of cells: right of the last column lies the next row's first cell.
        const int64_t here = j * columns + i + u;
        const int64_t below = here + columns;
        around[0][u + 1] = j == 0 ? kOutside : before.cells[here - columns];
        around[1][u + 1] = before.cells[here];
        around[2][u + 1] = below < count ? field.cells[below] : kOutside;
      }
      referenceCell(field, i, j) = smoothed(around);
    }
  }
}
