#include "hosts/effect_choices/last_settings.h"

#include <charconv>
#include <cmath>
#include <cstring>

#include "hosts/process/command_failure.h"
#include "hosts/process/file_names.h"
#include "platform/remembered_values.h"
#include "platform/user_files.h"

// The seed, then the components of both lights, which settings files keep in hundredths.
constexpr char kExactValue[] = "LastRun";
constexpr int kComponents = 6;
constexpr float kFileStep = 0.01001F;

static void componentsOf(EffectSettings* settings, float* components[kComponents]) {
  Direction& first = settings->light1Dir;
  Direction& second = settings->light2Dir;
  float* const all[kComponents] = {&first.x, &first.y, &first.z, &second.x, &second.y, &second.z};
  std::memcpy(components, all, sizeof(all));
}

void rememberExactly(const EffectSettings& settings) {
  EffectSettings kept = settings;
  float* components[kComponents];
  componentsOf(&kept, components);
  char text[kRememberedBytes] = "";
  char* const end = text + sizeof(text) - 1;
  char* at = std::to_chars(text, end, kept.textureSeed).ptr;
  for (const float* component : components) {
    *at++ = ' ';
    at = std::to_chars(at, end, *component).ptr;
  }
  *at = 0;
  writeRememberedValue(kExactValue, text);
}

// Nothing of it counts when it does not belong to the settings, as when another program has written
// those.
static void takeExactly(LastSettings* last) {
  char text[kRememberedBytes];
  if (!readRememberedValue(kExactValue, text, kRememberedBytes)) return;
  const char* const end = text + std::strlen(text);
  uint32_t seed = 0;
  auto read = std::from_chars(text, end, seed);
  float* components[kComponents];
  componentsOf(&last->preset.settings, components);
  float exact[kComponents] = {};
  for (int i = 0; i < kComponents; ++i) {
    if (read.ec != std::errc() || read.ptr == end || *read.ptr != ' ') return;
    read = std::from_chars(read.ptr + 1, end, exact[i]);
    if (!(std::fabs(exact[i] - *components[i]) < kFileStep)) return;
  }
  if (read.ec != std::errc() || read.ptr != end) return;
  for (int i = 0; i < kComponents; ++i) *components[i] = exact[i];
  last->seed = seed;
}

LastSettings readLastSettings() {
  char path[kPathBytes];
  if (!cachedSettingsPath(/*forWriting=*/false, path, kPathBytes)) {
    throw CommandFailure{kExitFailed, "--last: the folder of the last settings cannot be named"};
  }
  if (!fileExists(path)) {
    throw CommandFailure{kExitFailed,
                         "--last: no dialog has been confirmed yet; `morvalis edit` opens it "
                         "(there is no " +
                             std::string(path) + ")"};
  }
  if (!isOrdinaryFile(path)) failOnFile(path, "is not an ordinary file");  // a pipe would wait
  LastSettings last = {readPreset(path), std::nullopt};
  EffectSettings& settings = last.preset.settings;
  readRememberedValue("ChromeFile", settings.environmentPath, kPathBytes);
  readRememberedValue("TextureFile", settings.texturePath, kPathBytes);
  takeExactly(&last);
  return last;
}
