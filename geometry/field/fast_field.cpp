#include "geometry/field/fast_field.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "entry/session_record.h"
#include "geometry/field/cone_kernel.h"
#include "geometry/field/height_field.h"
#include "geometry/field/selection_mask.h"
#include "services/memory_blocks.h"
#include "vector/fast_passes.h"

static_assert(kLargestReach == kLargestRadius && kFieldTop == kConeTop);

constexpr int32_t kLargestBound = 65000;  // of squared distances, in the cone's units

static int32_t roundedUp(int32_t value, int32_t unit) {
  return (value + unit - 1) / unit * unit;
}

static void setCone(RenderState* render) {
  FieldCone* cone = &render->fastField.cone;
  const int32_t radius = render->effRadius;
  cone->stride = render->kernelStride;
  cone->centre = static_cast<const int16_t*>(render->coneKernel.address) +
                 static_cast<int64_t>(radius) * (cone->stride + 1);
  cone->radius = radius;
  cone->coneStep = render->coneStep;
  cone->scaleBits = 0;
  while (((radius + 2) * (radius + 2) << (cone->scaleBits + 1)) <= kLargestBound) ++cone->scaleBits;
  cone->scale = static_cast<float>(1 << cone->scaleBits);
  cone->perUnit = 1 / cone->scale;
  // A cell may be wrong by the rounding of its distance, 2^-17 at most.
  cone->reach = static_cast<float>(radius + 2) + 1.0F / 32768;
  cone->perValue = static_cast<float>(256.0 * (radius + 1) / (255.0 * kConeTop));
  const double pixelsPerValue = static_cast<double>(radius + 1) / kConeTop;
  // The last term for roundings, here and there.
  cone->sureReach = static_cast<float>(radius + 1 - pixelsPerValue - 1.0 / 256 - 1.0 / 4096);
  for (int32_t w = 0; w <= kNoDistance; ++w) {
    const bool near = w <= radius;
    const int32_t square = w * w << cone->scaleBits;
    const auto scaled = static_cast<uint16_t>(near ? square : 65535);
    const auto pixels = static_cast<uint16_t>(near ? w * w : 65535);
    cone->squares[kNoDistance - w] = cone->squares[kNoDistance + w] = scaled;
    cone->pixelSquares[kNoDistance - w] = cone->pixelSquares[kNoDistance + w] = pixels;
    const auto cells = static_cast<uint16_t>(near ? w * cone->stride : 0);
    cone->rows[kNoDistance - w] = cone->rows[kNoDistance + w] = cells;
  }
}

// The lists of a row lie in the line buffer, which no other pass uses before the shading.
static void setRow(RenderState* render) {
  FieldRow* row = &render->fastField.row;
  auto* place = static_cast<uint16_t*>(render->lineBuffer.address);
  const int32_t length = render->renderWidth + 2 * kRowMargin;
  row->up = place;
  place += render->renderWidth + kRowMargin + kRowMargin;
  for (uint16_t** list : {&row->codes, &row->bounds, &row->sources, &row->fine, &row->coarse}) {
    *list = place;
    place += length;
  }
}

static int32_t powerOfTwoFrom(int32_t value) {
  int32_t power = 1;
  while (power < value) power *= 2;
  return power;
}

// The ring lies in the edge kernel's buffer.
static void setStrip(RenderState* render) {
  FieldStrip* strip = &render->fastField.strip;
  strip->ringRows = roundedUp(2 * render->effRadius + 1, kFineGroup);
  strip->fineSlots = powerOfTwoFrom(strip->ringRows / kFineGroup + 2);
  strip->coarseSlots = powerOfTwoFrom(strip->ringRows / kCoarseGroup + 2);
  const int32_t lists = 2 * strip->ringRows + strip->fineSlots + strip->coarseSlots;
  const int32_t room = kKernelBytes / 2 / lists / kColumnBlock * kColumnBlock;
  strip->width = std::min({room, kWidestStrip, roundedUp(render->renderWidth, kColumnBlock)});
  strip->codes = static_cast<uint16_t*>(render->edgeKernel.address);
  strip->bounds = strip->codes + strip->ringRows * strip->width;
  strip->fine = strip->bounds + strip->ringRows * strip->width;
  strip->coarse = strip->fine + strip->fineSlots * strip->width;
  strip->firstColumn = 0;
  strip->columns = std::min(strip->width, render->renderWidth);
}

static bool haveMaskRoom(FastFieldState* field, uint64_t bytes) {
  if (field->maskBytes >= bytes) return true;
  freeModuleBlock(field->mask);
  field->mask = static_cast<uint8_t*>(newModuleBlock(bytes));
  field->maskBytes = field->mask == nullptr ? 0 : bytes;
  return field->mask != nullptr;
}

void prepareFastField(SessionRecord* session) {
  RenderState* render = &session->render;
  FastFieldState* field = &render->fastField;
  field->inUse = 0;
  if (render->fast == nullptr) return;
  const int32_t stride = roundedUp(render->renderWidth, kColumnBlock);
  if (!haveMaskRoom(field, uint64_t{static_cast<uint32_t>(stride)} *
                               static_cast<uint32_t>(render->renderHeight))) {
    return;
  }
  field->inUse = 1;
  field->soft = 0;
  field->haveMask = session->filter->haveMask != 0 ? 1 : 0;
  field->maskStride = stride;
  field->done = 0;
  setCone(render);
  // The row above the picture is unselected.
  std::fill_n(fieldCells(render), render->fieldStride, int16_t{kUnselectedCode});
}

void giveUpFastField(SessionRecord* session) {
  RenderState* render = &session->render;
  render->fastField.inUse = 0;
  render->edgeKernelKind = -1;  // the ring was in its place
  clearField(render);
}

void freeFastField(SessionRecord* session) {
  FastFieldState* field = &session->render.fastField;
  freeModuleBlock(field->mask);
  field->mask = nullptr;
  field->maskBytes = 0;
  field->inUse = 0;
}

static uint8_t* maskCopyRow(const FastFieldState* field, int32_t y) {
  return field->mask + y * field->maskStride;
}

static bool isDelivered(const SessionRecord* session, const MaskRow& row) {
  const bool expected = session->render.fastField.haveMask != 0;
  return (session->filter->haveMask != 0) == expected && (row.samples != nullptr) == expected;
}

// Whether the host delivers row y as it did before.
static bool isSameRow(const SessionRecord* session, int32_t y) {
  const RenderState* render = &session->render;
  if (y < 0 || y > render->lastRow) return true;
  const MaskRow row = maskRow(session, y);
  if (!isDelivered(session, row)) return false;
  return row.samples == nullptr || std::memcmp(row.samples, maskCopyRow(&render->fastField, y),
                                               static_cast<size_t>(render->renderWidth)) == 0;
}

static bool takeRow(SessionRecord* session, int32_t y) {
  RenderState* render = &session->render;
  FastFieldState* field = &render->fastField;
  if (y > render->lastRow) return true;
  const MaskRow row = maskRow(session, y);
  if (!isDelivered(session, row)) return false;
  uint8_t* copy = maskCopyRow(field, y);
  const auto width = static_cast<size_t>(render->renderWidth);
  if (row.samples == nullptr) {
    std::memset(copy, 255, width);
  } else {
    std::memcpy(copy, row.samples, width);
  }
  std::memset(copy + width, 0, static_cast<size_t>(field->maskStride) - width);
  const FieldPasses* passes = render->fast->field;
  if (field->soft == 0 && passes->isSoft(copy, render->renderWidth)) field->soft = 1;
  auto* codes = reinterpret_cast<uint16_t*>(fieldRow(render, y + 1)) + 1;
  passes->walkDown(copy, codes - render->fieldStride, render->renderWidth, codes);
  return true;
}

bool walkFieldRow(SessionRecord* session) {
  const int32_t y = session->render.currentRow;
  // The rows that a stamp would read.
  return isSameRow(session, y - 1) && isSameRow(session, y) && takeRow(session, y + 1);
}

// By squared distance, up to that of the first cell that is 0; what is unselected has distance 0.
static void buildHardValues(RenderState* render) {
  auto* values = static_cast<int16_t*>(render->edgeKernel.address);
  const int32_t radius = render->effRadius;
  values[0] = kConeTop;
  for (int32_t squared = 1; squared <= (radius + 1) * (radius + 1); ++squared) {
    values[squared] = static_cast<int16_t>(255 * coneAt(radius, squared) >> 8);
  }
}

static void beginScans(RenderState* render) {
  FastFieldState* field = &render->fastField;
  setRow(render);
  render->fast->field->beginRows(field->row, render->renderWidth);
  field->rowsLeft = render->renderHeight;
  field->work = int64_t{render->renderWidth} * render->renderHeight;
  if (field->soft == 0) {
    buildHardValues(render);
    return;
  }
  setStrip(render);
  field->stripRow = 0;
  const int64_t strips = (render->renderWidth + field->strip.width - 1) / field->strip.width;
  field->work += strips * field->strip.width * (render->renderHeight + 2 * render->effRadius);
}

static void scanNextRow(RenderState* render) {
  FastFieldState* field = &render->fastField;
  const int32_t y = --field->rowsLeft;
  int16_t* cells = fieldRow(render, y + 1) + 1;
  const uint8_t* mask = maskCopyRow(field, y);
  const int32_t width = render->renderWidth;
  const FieldPasses* passes = render->fast->field;
  if (field->soft != 0) {
    passes->scanSoftRow(field->cone, field->row, mask, width, cells);
  } else {
    const auto* values = static_cast<const int16_t*>(render->edgeKernel.address);
    passes->scanHardRow(field->cone, field->row, values, mask, width, cells);
  }
  cells[-1] = kConeTop;
  cells[width] = kConeTop;
  field->done += width;
}

static void scanNextStripRow(RenderState* render) {
  FastFieldState* field = &render->fastField;
  FieldStrip* strip = &field->strip;
  const FieldPasses* passes = render->fast->field;
  const int32_t radius = render->effRadius;
  const int32_t width = render->renderWidth;
  const int32_t taken = field->stripRow++;
  const int32_t takenY = taken - radius;
  const bool inside = takenY >= 0 && takenY <= render->lastRow;
  passes->takeStripRow(field->cone, *strip, taken, inside ? maskCopyRow(field, takenY) : nullptr,
                       width);
  const int32_t y = takenY - radius;
  if (y >= 0) {
    passes->finishStripRow(field->cone, *strip, y + radius,
                           maskCopyRow(field, y) + strip->firstColumn,
                           fieldRow(render, y + 1) + 1 + strip->firstColumn);
  }
  if (y == render->lastRow) {
    field->stripRow = 0;
    strip->firstColumn += strip->width;
    strip->columns = std::min(strip->width, width - strip->firstColumn);
  }
  field->done += strip->width;
}

static void endScans(SessionRecord* session) {
  RenderState* render = &session->render;
  for (int32_t row : {0, render->renderHeight + 1}) {
    std::fill_n(fieldRow(render, row), render->fieldStride, int16_t{kConeTop});
  }
  // The next preview needs as much again.
  if (!isPreview(settingsOf(session))) freeFastField(session);
}

bool scanFieldRow(SessionRecord* session) {
  RenderState* render = &session->render;
  FastFieldState* field = &render->fastField;
  const int32_t j = render->currentRow;
  if (!isSameRow(session, j - 1)) return false;
  if (j == 0) beginScans(render);
  // The work of all scans, spread evenly over the steps.
  const int64_t due = field->work * (j + 1) / (render->renderHeight + 2);
  while (field->done < due && field->rowsLeft > 0) scanNextRow(render);
  while (field->done < due) scanNextStripRow(render);
  if (j == render->renderHeight + 1) endScans(session);
  return true;
}
