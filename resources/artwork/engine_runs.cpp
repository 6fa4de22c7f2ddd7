#include "resources/artwork/engine_runs.h"

#include <algorithm>
#include <memory>

#include "entry/session_record.h"
#include "geometry/bevel_profiles.h"
#include "geometry/render_buffers.h"
#include "geometry/render_setup.h"
#include "geometry/row_machine.h"
#include "pictures/picture_surface.h"
#include "pictures/run_pictures.h"
#include "services/random_numbers.h"
#include "settings/light_angles.h"
#include "settings/settings_defaults.h"
#include "shading/iridescence_table.h"
#include "shading/spectral_tables.h"

constexpr uint32_t kSeed = 7;
constexpr double kFilmGround = 232.0 / 256;  // silver, for multipliers of which 256 is 1.0

// What the procedures of the engine expect around them; stays where it was made.
struct EngineRun {
  EffectSettings settings;
  void* master;
  int16_t result;
  FilterRecord filter;
  SessionRecord session;
};

static std::unique_ptr<EngineRun> startRun(const EffectSettings& settings, int32_t width,
                                           int32_t height) {
  auto run = std::make_unique<EngineRun>();
  run->settings = settings;
  run->master = &run->settings;
  run->filter.parameters = &run->master;
  run->filter.planes = 3;
  run->filter.filterRect = {0, 0, static_cast<int16_t>(height), static_cast<int16_t>(width)};
  run->filter.inRect = run->filter.outRect = run->filter.maskRect = run->filter.filterRect;
  run->filter.inHiPlane = run->filter.outHiPlane = 2;
  run->filter.inRowBytes = run->filter.outRowBytes = 3 * width;
  run->filter.maskRowBytes = width;
  run->session.result = &run->result;
  run->session.filter = &run->filter;
  run->session.settings = &run->settings;
  run->session.render.buildHeightField = 1;
  seedRandomNumbers(kSeed);
  setGeometry(&run->session, run->filter.filterRect, 1);
  allocateBuffers(&run->session);
  createBuiltInTexture(&run->session);
  createBuiltInEnvironment(&run->session);
  lightAngles(&run->settings);
  return run;
}

EffectSettings smoothSettings() {
  EffectSettings settings;
  fillDefaultSettings(&settings);
  settings.textureChoice = kTextureChoiceNone;
  settings.texture = 0;
  settings.caustic = 0;
  settings.iridescence = 0;
  return settings;
}

EffectSettings goldSettings() {
  EffectSettings settings = smoothSettings();
  settings.reflection = 80;
  settings.gloss = 60;
  settings.glare = 35;
  return settings;
}

int32_t radiusFor(int32_t pixels) {
  return pixels <= 50 ? pixels : 50 + (pixels - 50) / 2;
}

Picture renderedPicture(const Picture& source, const std::vector<uint8_t>& coverage,
                        const EffectSettings& settings) {
  const std::unique_ptr<EngineRun> run = startRun(settings, source.width, source.height);
  std::vector<uint8_t> in = source.rgb;
  std::vector<uint8_t> out = source.rgb;
  std::vector<uint8_t> mask = coverage;
  run->filter.haveMask = 1;
  run->filter.maskData = mask.data();
  renderSetUp(&run->session);
  RenderState* render = &run->session.render;
  while (render->running == 1 && run->result == 0) {
    const int64_t row = render->phase == kPhaseShade ? render->row : 0;
    run->filter.inData = in.data() + row * run->filter.inRowBytes;
    run->filter.outData = out.data() + row * run->filter.outRowBytes;
    step(&run->session);
  }
  freeBuffers(&run->session);
  Picture picture = source;
  for (size_t i = 0; i < out.size(); ++i) {
    const int32_t covered = coverage[i / 3];
    picture.rgb[i] = static_cast<uint8_t>((out[i] * covered + in[i] * (255 - covered) + 127) / 255);
  }
  return picture;
}

void raiseObject(Picture* ground, const std::vector<uint8_t>& coverage, Rgb colour,
                 const EffectSettings& settings) {
  const Picture source = newPicture(ground->width, ground->height, colour);
  const Picture object = renderedPicture(source, coverage, settings);
  for (int32_t y = 0; y < ground->height; ++y) {
    for (int32_t x = 0; x < ground->width; ++x) {
      const uint8_t covered = coverage[static_cast<size_t>(y) * ground->width + x];
      blendPixel(ground, x, y, pixelAt(object, x, y), covered / 255.0);
    }
  }
}

Picture generatedTexture(int32_t textureChoice) {
  EffectSettings settings = smoothSettings();
  settings.textureChoice = textureChoice;
  const std::unique_ptr<EngineRun> run = startRun(settings, 64, 64);
  const PictureSurface* surface = run->session.pictures.texture;
  Picture picture = {surface->width, surface->height, {}, {}};
  picture.rgb.assign(surface->rgb, surface->rgb + size_t{3} * surface->width * surface->height);
  freeBuffers(&run->session);
  return picture;
}

std::vector<Rgb> filmColours(int32_t iridescence, int32_t iriColors) {
  EffectSettings settings = smoothSettings();
  settings.iridescence = iridescence;
  settings.iriColors = iriColors;
  const std::unique_ptr<EngineRun> run = startRun(settings, 8, 8);
  buildSessionTables(&run->session);
  buildIridescenceTable(&run->session);
  std::vector<Rgb> colours;
  for (const Rgb32& entry : run->session.shading.iridescence) {
    colours.push_back(
        {entry.red * kFilmGround, entry.green * kFilmGround, entry.blue * kFilmGround});
  }
  freeBuffers(&run->session);
  return colours;
}

std::vector<double> profileHeights(int32_t shape) {
  EffectSettings settings = smoothSettings();
  settings.shape = shape;
  settings.height = 100;
  settings.radius = 50;
  const std::unique_ptr<EngineRun> run = startRun(settings, 8, 8);
  renderSetUp(&run->session);
  const int16_t* profile = run->session.render.profile;
  const auto [low, high] = std::minmax_element(profile, profile + kProfileEntries);
  std::vector<double> heights;
  // The field counts down from the edge, and a profile measures depth.
  for (int32_t i = kProfileEntries - 1; i >= 0; --i) {
    heights.push_back(static_cast<double>(*high - profile[i]) / std::max(1, *high - *low));
  }
  freeBuffers(&run->session);
  return heights;
}
