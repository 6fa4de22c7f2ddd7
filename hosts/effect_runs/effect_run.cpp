#include "hosts/effect_runs/effect_run.h"

#include <charconv>
#include <utility>

#include "hosts/effect_runs/enlarged_run.h"
#include "hosts/effect_runs/open_host.h"
#include "hosts/effect_runs/render_result.h"
#include "hosts/process/command_failure.h"
#include "hosts/process/interrupt.h"
#include "hosts/process/progress_bar.h"
#include "platform/clock.h"
#include "platform/remembered_values.h"
#include "platform/unix/program_session.h"

uint32_t parseSeed(const std::string& text) {
  if (text.empty()) return secondsNow();
  uint32_t seed = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, seed);
  if (stop != end || error != std::errc()) {
    failOnUsage("--seed " + text + ": takes a whole number, 0 to 4294967295");
  }
  return seed;
}

EffectPlan planEffect(const EffectOptions& options, const ChosenEffect& effect, uint32_t seed) {
  EffectPlan plan = {};
  plan.settings = effect.settings;
  keepRememberedValuesInMemory();
  fixClock(seed);
  plan.found = findPictures(options, effect);
  const std::string& environment = plan.found.pictures[kEnvironmentName].path;
  const std::string& texture = plan.found.pictures[kTextureName].path;
  const bool turnsBuiltIn = options.last || assignsTurns(options);
  if (turnsBuiltIn || !environment.empty()) {
    writeRememberedValue("ChromeFile", environment.c_str());
  }
  if (!texture.empty()) writeRememberedValue("TextureFile", texture.c_str());
  return plan;
}

void enlargePlan(int32_t times, EffectPlan* plan) {
  plan->supersample = times;
  enlargeSettings(times, &plan->settings);
}

static void render(const EffectPlan& plan, Picture* picture, Selection selection,
                   const TellProgress& progress, const std::function<void()>& ended,
                   const std::string& file) {
  const bool enlarged = plan.supersample > 1;
  HostSwitches switches;
  switches.dirtyMemory = false;
  switches.keepsLog = false;
  switches.inPlace = enlarged ? InPlace::off : placeFor(*picture, selection);
  switches.abortTest = interrupted;
  switches.progress = progress;
  const bool mixedHere = enlarged || !picture->deep.colors.empty();
  const HostMask mask = mixedHere ? selection.mask : HostMask();
  const OpenHost host(
      switches,
      enlarged ? enlargedPicture(picture->colors, plan.supersample) : std::move(picture->colors),
      std::move(selection.mask));
  checkResult(callSelector(kSelectorPrepare), file);
  copySettings(plan.settings, moduleSettings(file));
  const int16_t result = renderFilter();
  ended();
  checkResult(result, file);
  if (enlarged) {
    mixEnlarged(filteredPicture(), mask, plan.supersample, picture);
  } else {
    takeResult(mask, selection.coversAgain, picture);
  }
}

void renderTelling(const EffectPlan& plan, Picture* picture, Selection selection,
                   const TellProgress& progress, const std::string& file) {
  render(
      plan, picture, std::move(selection), progress, [] {}, file);
}

void renderEffect(const EffectPlan& plan, Picture* picture, Selection selection, bool quiet,
                  const std::string& file) {
  ProgressBar bar = makeProgressBar(quiet);
  const auto draw = [&bar](int32_t done, int32_t total) { drawProgress(&bar, done, total); };
  render(
      plan, picture, std::move(selection), draw, [&bar] { clearProgress(&bar); }, file);
}
