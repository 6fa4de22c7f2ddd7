#include "tests/support/field_run.h"

#include "geometry/field/cone_kernel.h"
#include "geometry/field/fast_field.h"
#include "geometry/field/height_field.h"
#include "vector/fast_passes.h"

void prepareFieldRun(FieldRun* run, std::vector<uint8_t> mask, int32_t width, int32_t height,
                     int32_t radius) {
  SessionFixture& fixture = run->fixture;
  fixture.allocate(static_cast<int16_t>(width), static_cast<int16_t>(height));
  run->mask = std::move(mask);
  fixture.filter.haveMask = run->mask.empty() ? 0 : 1;
  fixture.filter.maskRect = fixture.filter.filterRect;
  fixture.filter.maskData = run->mask.empty() ? nullptr : run->mask.data();
  fixture.filter.maskRowBytes = width;
  // As in a preview, whose memory stays for the next one.
  fixture.settings.previewMode = 1;
  RenderState* render = &fixture.session->render;
  render->effRadius = radius;
  render->kernelStride = 2 * radius + 2;
}

void runField(FieldRun* run) {
  SessionRecord* session = run->fixture.session.get();
  RenderState* render = &session->render;
  render->fast = fastPasses();
  buildConeKernel(session);
  prepareFastField(session);
  const bool fast = render->fastField.inUse != 0;
  if (!fast) clearField(render);
  for (render->currentRow = -1; render->currentRow <= render->renderHeight; ++render->currentRow) {
    if (fast) {
      walkFieldRow(session);
    } else {
      stampRow(session);
    }
  }
  for (render->currentRow = 0; render->currentRow < render->fieldRows; ++render->currentRow) {
    if (fast) {
      scanFieldRow(session);
    } else {
      fillBorderRow(session);
    }
  }
}

std::vector<int16_t> fieldCellsOf(FieldRun* run) {
  RenderState* render = &run->fixture.session->render;
  const int16_t* cells = fieldCells(render);
  return {cells, cells + static_cast<int64_t>(render->fieldStride) * render->fieldRows};
}
