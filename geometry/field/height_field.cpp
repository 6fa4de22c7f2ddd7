#include "geometry/field/height_field.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "entry/session_record.h"
#include "geometry/field/cone_kernel.h"
#include "geometry/field/selection_mask.h"
#include "vector/fast_passes.h"

// Weights of the 3 x 3 smoothing.
constexpr int32_t kCornerWeight = 12;
constexpr int32_t kSideWeight = 31;
constexpr int32_t kCentreWeight = 80;
constexpr int32_t kWeightSum = 4 * kCornerWeight + 4 * kSideWeight + kCentreWeight;

void clearField(RenderState* render) {
  std::memset(fieldCells(render), 0,
              size_t{2} * static_cast<size_t>(render->fieldStride) * render->fieldRows);
}

// Puts the larger of field and edge kernel into every field cell under the half of the kernel that
// faces the stamp's side. (x0, y0) is the field cell under the kernel's first cell.
static void stampKernel(RenderState* render, int32_t kind, int32_t x0, int32_t y0) {
  const int32_t radius = render->effRadius;
  int32_t left = x0;
  int32_t right = x0 + 2 * radius + 1;
  int32_t top = y0;
  int32_t bottom = y0 + 2 * radius + 1;
  if (kind == kStampLeft) right = x0 + radius + 2;
  if (kind == kStampRight) left = x0 + radius;
  if (kind == kStampUp) bottom = y0 + radius + 2;
  if (kind == kStampDown) top = y0 + radius;
  if (right < 0 || left >= render->renderWidth || top >= render->renderHeight || bottom < 0) return;
  left = std::max(left, 0);
  right = std::min(right, render->renderWidth + 1);
  top = std::max(top, 0);
  bottom = std::min(bottom, render->renderHeight + 1);
  const auto* edge = static_cast<const int16_t*>(render->edgeKernel.address);
  for (int32_t y = top; y <= bottom; ++y) {
    int16_t* cells = fieldRow(render, y) + left;
    const int16_t* stamp = edge + (y - y0) * render->kernelStride + (left - x0);
    for (int32_t i = 0; i <= right - left; ++i) cells[i] = std::max(cells[i], stamp[i]);
  }
}

static void stampSide(SessionRecord* session, int32_t kind, int32_t weight, int32_t x0,
                      int32_t y0) {
  buildEdgeKernel(session, kind, weight);
  stampKernel(&session->render, kind, x0, y0);
}

void stampRow(SessionRecord* session) {
  RenderState* render = &session->render;
  if (render->heightField.address == nullptr || render->edgeKernel.address == nullptr) return;
  const int32_t y = render->currentRow;
  const int32_t radius = render->effRadius;
  const MaskRow above = maskRow(session, y - 1);
  const MaskRow row = maskRow(session, y);
  const MaskRow below = maskRow(session, y + 1);
  int32_t before = 0;
  int32_t here = row.value(-1);
  for (int32_t x = -1; x <= render->renderWidth; ++x) {
    const int32_t after = row.value(x + 1);
    if (here == 0) {
      const int32_t x0 = x - radius + 1;
      const int32_t y0 = y - radius + 1;
      // For the left and upper neighbour the unshifted cone stands on the neighbour itself.
      if (before != 0) stampSide(session, kStampLeft, 255 - before, x0 - 1, y0);
      if (after != 0) stampSide(session, kStampRight, after, x0, y0);
      const int32_t up = above.value(x);
      if (up != 0) stampSide(session, kStampUp, 255 - up, x0, y0 - 1);
      const int32_t down = below.value(x);
      if (down != 0) stampSide(session, kStampDown, down, x0, y0);
    }
    before = here;
    here = after;
  }
}

void fillBorderRow(SessionRecord* session) {
  RenderState* render = &session->render;
  if (render->heightField.address == nullptr) return;
  int16_t* cells = fieldRow(render, render->currentRow);
  const MaskRow row = maskRow(session, render->currentRow - 1);
  for (int32_t i = 0; i <= render->renderWidth + 1; ++i) {
    const int32_t m = row.value(i - 1);
    if (m == 0) {
      cells[i] = kConeTop;
    } else if (m < 255) {
      cells[i] = static_cast<int16_t>((m * render->coneStep + (255 - m) * kConeTop) >> 8);
    }
  }
}

// One column of the 3 x 3 neighbourhood.
struct Column {
  int32_t above;
  int32_t centre;
  int32_t below;
};

static int16_t smoothed(const Column& left, const Column& middle, const Column& right) {
  const int32_t corners = left.above + left.below + right.above + right.below;
  const int32_t sides = middle.above + middle.below + left.centre + right.centre;
  return static_cast<int16_t>(
      (kCornerWeight * corners + kSideWeight * sides + kCentreWeight * middle.centre) / kWeightSum);
}

constexpr Column kOutside = {kConeTop, kConeTop, kConeTop};

// Cells 1 to renderWidth at once: no cell depends on another's new value in its own row. The line
// buffer keeps the row as it was; nothing else is in there before the texture columns.
static void smoothInnerCells(RenderState* render, int16_t* cells) {
  auto* before = static_cast<int16_t*>(render->lineBuffer.address);
  std::copy_n(cells, render->fieldStride, before);
  const int16_t* above = cells - render->fieldStride;
  const int16_t* below = cells + render->fieldStride;
  render->fast->surface->smoothRow(above + 1, before + 1, below + 1, render->renderWidth,
                                   cells + 1);
}

// The first row has no row above and is left to the plain form.
static bool smoothsFast(const RenderState* render, int32_t row) {
  return render->fast != nullptr && row > 0 && render->lineBuffer.address != nullptr;
}

void smoothForwardRow(SessionRecord* session) {
  RenderState* render = &session->render;
  if (render->heightField.address == nullptr) return;
  const int32_t j = render->currentRow;
  int16_t* cells = fieldRow(render, j);
  const int16_t* above = cells - render->fieldStride;
  const int16_t* below = cells + render->fieldStride;
  const auto column = [&](int32_t i) {
    return Column{j == 0 ? kConeTop : above[i], cells[i], below[i]};
  };
  if (smoothsFast(render, j)) {
    const int16_t first = smoothed(kOutside, column(0), column(1));
    smoothInnerCells(render, cells);
    cells[0] = first;
    return;
  }
  // The columns are read ahead of the writing, so the row itself is seen as it was before.
  Column left = kOutside;
  Column middle = column(0);
  for (int32_t i = 0; i <= render->renderWidth; ++i) {
    const Column right = column(i + 1);
    cells[i] = smoothed(left, middle, right);
    left = middle;
    middle = right;
  }
}

void smoothBackwardRow(SessionRecord* session) {
  RenderState* render = &session->render;
  if (render->heightField.address == nullptr) return;
  const int32_t j = render->currentRow;
  int16_t* cells = fieldRow(render, j);
  const int16_t* above = cells - render->fieldStride;
  const int16_t* below = cells + render->fieldStride;
  const auto column = [&](int32_t i) {
    return Column{j == 0 ? kConeTop : above[i], cells[i], below[i]};
  };
  // The field is one run of cells: right of a row's last cell comes the next row's first, and past
  // the field's end it is all outside.
  const int32_t last = render->renderWidth + 1;
  const bool nextRowIsLast = j + 1 == render->fieldRows - 1;
  Column right = {j == 0 ? kConeTop : above[last + 1], cells[last + 1],
                  nextRowIsLast ? kConeTop : below[last + 1]};
  Column middle = column(last);
  if (smoothsFast(render, j)) {
    const int16_t end = smoothed(column(last - 1), middle, right);
    smoothInnerCells(render, cells);
    cells[last] = end;
    return;
  }
  for (int32_t i = last; i >= 1; --i) {
    const Column left = column(i - 1);
    cells[i] = smoothed(left, middle, right);
    right = middle;
    middle = left;
  }
}
