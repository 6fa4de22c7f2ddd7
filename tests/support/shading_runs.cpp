#include "tests/support/shading_runs.h"

#include <algorithm>

#include "geometry/render_buffers.h"
#include "geometry/render_setup.h"
#include "geometry/row_machine.h"
#include "pictures/run_pictures.h"
#include "settings/light_angles.h"
#include "shading/shade_row.h"
#include "tests/reference/reference_tables.h"

static void handOver(ShadingRun* run) {
  const ShadingInput& input = *run->input;
  FilterRecord* filter = &run->fixture.filter;
  filter->planes = static_cast<int16_t>(input.planes);
  filter->inHiPlane = filter->outHiPlane = static_cast<int16_t>(input.planes - 1);
  filter->inRowBytes = filter->outRowBytes = input.width * input.planes;
  filter->maskRect = filter->filterRect;
  filter->haveMask = input.mask.empty() ? 0 : 1;
  filter->maskData = input.mask.empty() ? nullptr : const_cast<uint8_t*>(input.mask.data());
  filter->maskRowBytes = input.width;
}

void beginShading(ShadingRun* run, const ShadingInput& input, InstructionSet set) {
  const InstructionSet before = chosenInstructionSet();
  limitInstructionSet(set);
  run->input = &input;
  run->fixture.settings = input.settings;
  run->fixture.allocate(static_cast<int16_t>(input.width), static_cast<int16_t>(input.height));
  SessionRecord* session = run->fixture.session.get();
  run->fixture.settings.previewScale = input.settings.previewScale;
  handOver(run);
  createBuiltInEnvironment(session);
  lightAngles(&run->fixture.settings);
  session->render.buildHeightField = 0;
  renderSetUp(session);
  std::copy(input.cells.begin(), input.cells.end(), fieldCells(&session->render));
  session->render.profile[kProfileEntries - 1] = input.edgeHeight;
  session->render.depthLow = input.depthLow;
  run->output = input.source;
  limitInstructionSet(before);
}

void shadeRows(ShadingRun* run) {
  SessionRecord* session = run->fixture.session.get();
  FilterRecord* filter = &run->fixture.filter;
  enterShading(session);
  for (int32_t r = 0; r < run->input->height; ++r) {
    // In the preview the host's buffers hold the whole picture.
    const int64_t row = run->input->settings.previewMode != 0 ? 0 : r;
    filter->inData = const_cast<uint8_t*>(run->input->source.data()) + row * filter->inRowBytes;
    filter->outData = run->output.data() + row * filter->outRowBytes;
    session->render.currentRow = r;
    shadeRow(session);
  }
}

TwinShading twinShading(const ShadingRun& run) {
  const ShadingInput& input = *run.input;
  TwinShading twin = {{input.width + 2, input.height + 2, input.cells},
                      {input.width, input.height, input.mask},
                      {},
                      referenceTables(input.settings),
                      {}};
  twin.profile.heights[kProfileEntries - 1] = input.edgeHeight;
  twin.profile.depthLow = input.depthLow;
  const auto* table =
      static_cast<const uint8_t*>(run.fixture.session->render.environmentTable.address);
  for (int32_t i = 0; i < 128 * 128; ++i) {
    twin.environment.insert(twin.environment.end(), table + 4 * i + 1, table + 4 * i + 4);
  }
  return twin;
}

std::vector<uint8_t> shadeByTwin(const ShadingInput& input, const TwinShading& twin) {
  return referenceShade({input.settings, twin.field, twin.mask, twin.profile, twin.tables,
                         twin.environment, input.planes, input.source});
}
