#include "tests/support/hosts/direct_render.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <memory>

#include "geometry/render_buffers.h"
#include "geometry/render_setup.h"
#include "geometry/row_machine.h"
#include "pictures/run_pictures.h"
#include "platform/none/none_script.h"
#include "platform/remembered_values.h"
#include "services/random_numbers.h"
#include "settings/light_angles.h"
#include "settings/settings_defaults.h"

using Clock = std::chrono::steady_clock;

static void scriptPictures(const DirectInput& input) {
  if (!input.environment.empty()) {
    scriptBitmap("environment.bmp", 64, 64, input.environment);
    writeRememberedValue("ChromeFile", "environment.bmp");
  }
  if (!input.texture.empty()) {
    std::vector<uint8_t> rgb;
    for (uint8_t grey : input.texture) rgb.insert(rgb.end(), 3, grey);
    scriptBitmap("texture.bmp", input.textureWidth, input.textureHeight, rgb);
    writeRememberedValue("TextureFile", "texture.bmp");
  }
}

static void handOver(const DirectInput& input, FilterRecord* filter) {
  const auto width = static_cast<int16_t>(input.width);
  const auto height = static_cast<int16_t>(input.height);
  filter->planes = static_cast<int16_t>(input.planes);
  filter->filterRect = {0, 0, height, width};
  filter->inRect = filter->outRect = filter->maskRect = filter->filterRect;
  filter->inHiPlane = filter->outHiPlane = static_cast<int16_t>(input.planes - 1);
  filter->inRowBytes = filter->outRowBytes = input.width * input.planes;
  filter->haveMask = input.mask.empty() ? 0 : 1;
  filter->maskData = input.mask.empty() ? nullptr : const_cast<uint8_t*>(input.mask.data());
  filter->maskRowBytes = input.width;
}

static void runRows(const DirectInput& input, SessionRecord* session, DirectOutput* output,
                    const PhaseWatcher& watcher) {
  RenderState* render = &session->render;
  FilterRecord* filter = session->filter;
  const bool preview = input.settings.previewMode != 0;
  auto* source = const_cast<uint8_t*>(input.source.data());
  while (render->running == 1 && *session->result == 0) {
    const int64_t row = preview || render->phase != kPhaseShade ? 0 : render->row;
    filter->inData = source + row * filter->inRowBytes;
    filter->outData = output->effect.data() + row * filter->outRowBytes;
    const int32_t phase = render->phase;
    const Clock::time_point start = Clock::now();
    step(session);
    const std::chrono::duration<double> taken = Clock::now() - start;
    output->longestStep = std::max(output->longestStep, taken.count());
    ++output->steps;
    if (watcher && render->phase != phase) watcher(*session, phase);
  }
}

DirectOutput renderDirectly(const DirectInput& input, const PhaseWatcher& watcher) {
  resetNone();
  scriptPictures(input);
  int16_t result = 0;
  FilterRecord filter = {};
  handOver(input, &filter);
  EffectSettings settings = input.settings;
  void* master = &settings;
  filter.parameters = &master;
  auto session = std::make_unique<SessionRecord>();
  session->result = &result;
  session->filter = &filter;
  session->settings = &settings;
  session->render.buildHeightField = 1;

  DirectOutput output;
  output.effect = input.source;
  output.steps = 0;
  output.longestStep = 0;
  const std::clock_t start = std::clock();
  seedRandomNumbers(input.seed);
  setGeometry(session.get(), filter.filterRect, std::max(input.settings.previewScale, 1));
  allocateBuffers(session.get());
  createBuiltInTexture(session.get());
  createBuiltInEnvironment(session.get());
  lightAngles(&settings);
  renderSetUp(session.get());
  runRows(input, session.get(), &output, watcher);
  output.seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
  freeBuffers(session.get());
  return output;
}

EffectSettings defaultSettings() {
  EffectSettings settings;
  fillDefaultSettings(&settings);
  return settings;
}
