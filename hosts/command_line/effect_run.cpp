#include "hosts/command_line/effect_run.h"

#include <charconv>
#include <cstring>

#include "hosts/command_line/command_failure.h"
#include "hosts/command_line/interrupt.h"
#include "hosts/command_line/progress_bar.h"
#include "platform/clock.h"
#include "platform/desktop/desktop_session.h"
#include "platform/remembered_values.h"

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
  if (!environment.empty()) writeRememberedValue("ChromeFile", environment.c_str());
  if (!texture.empty()) writeRememberedValue("TextureFile", texture.c_str());
  return plan;
}

static std::string reasonOf(int16_t result) {
  switch (result) {
    case kMemoryFull:
    case kRenderBuffersMissing:
      return "there is not enough memory for the effect";
    case kFilterBadParameters:
      return "the effect cannot work on this picture";
    default:
      return "the effect failed (result " + std::to_string(result) + ")";
  }
}

// An alert has already said on standard error what went wrong.
static void checkResult(int16_t result, const std::string& file) {
  stopIfInterrupted();
  if (result == kNoError) return;
  if (reportedAlerts() > 0) throw CommandFailure{kExitFailed, ""};
  failOnFile(file, reasonOf(result));
}

static size_t bytesOf(ItemForm form) {
  switch (form) {
    case ItemForm::integer:
    case ItemForm::hundredths:
      return 4;
    case ItemForm::channel:
      return 2;
    default:
      return 0;
  }
}

// Everything that settings files hold. The module keeps the rest of its record itself.
static void prepareSettings(const EffectSettings& chosen, const std::string& file) {
  checkResult(callSelector(kSelectorPrepare), file);
  const Handle handle = hostRecord()->parameters;
  if (handle == nullptr) failOnFile(file, reasonOf(kMemoryFull));
  const char* from = reinterpret_cast<const char*>(&chosen);
  char* to = static_cast<char*>(*handle);
  for (const SettingsItem& item : kSettingsItems) {
    std::memcpy(to + item.offset, from + item.offset, bytesOf(item.form));
  }
}

struct OpenHost {
  OpenHost(const HostSwitches& switches, const HostPicture& picture, const HostMask& mask) {
    openHost(switches, picture, mask);
  }
  ~OpenHost() {
    closeHost();
  }
};

HostPicture renderEffect(const EffectPlan& plan, const Picture& picture, const HostMask& mask,
                         bool quiet, const std::string& file) {
  ProgressBar bar = makeProgressBar(quiet);
  HostSwitches switches;
  switches.dirtyMemory = false;
  switches.abortTest = interrupted;
  switches.progress = [&bar](int32_t done, int32_t total) { drawProgress(&bar, done, total); };
  const OpenHost host(switches, picture.colors, mask);
  prepareSettings(plan.settings, file);
  const int16_t result = renderFilter();
  clearProgress(&bar);
  checkResult(result, file);
  return mixByMask(picture.colors, filteredPicture(), mask);
}
