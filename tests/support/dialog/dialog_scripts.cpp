#include "tests/support/dialog/dialog_scripts.h"

#include <cstdlib>
#include <string>

#include "dialog/dialog_scale.h"
#include "hosts/substitute_host/substitute_host.h"
#include "tests/support/dialog/dialog_recording.h"
#include "tests/support/dialog/dialog_user.h"

void runScript(const DialogScript& script, int32_t scale) {
  const char* named = std::getenv("MORVALIS_SCALE");
  const int32_t wanted = named == nullptr ? kPlainScale : std::atoi(named);
  setDialogScale(scale != 0 ? scale : wanted);  // for places before it opens
  resetDialogUser();
  beginRecording();
  script.run();
  closeHost();
}

const std::vector<DialogScript>& dialogScripts() {
  static const std::vector<DialogScript> all = [] {
    std::vector<DialogScript> scripts;
    for (const auto& part : {controlScripts(), pictureScripts(), previewScripts(),
                             keyboardScripts(), readingScripts(), extraScripts()}) {
      scripts.insert(scripts.end(), part.begin(), part.end());
    }
    return scripts;
  }();
  return all;
}

// --- At the other scales --------------------------------------------------------------------

static bool playsEverywhere(const DialogScript& script) {
  for (const char* name : {"KeyboardAlone", "BelowTheMinimum", "PictureMenus", "AboutBox"}) {
    if (script.name == std::string(name)) return true;
  }
  return false;
}

std::vector<ScaledScript> scaledScripts() {
  std::vector<ScaledScript> scripts;
  for (const int32_t scale : kScales) {
    for (const DialogScript& script : dialogScripts()) {
      const bool twice = scale == 2 * kPlainScale && script.scales != ScriptScales::plain;
      if (scale == kPlainScale || (!twice && !playsEverywhere(script))) continue;
      scripts.push_back({script, scale});
    }
  }
  return scripts;
}

void runScript(const ScaledScript& scaled) {
  setenv("MORVALIS_SCALE", std::to_string(scaled.scale).c_str(), 1);
  runScript(scaled.script);
  unsetenv("MORVALIS_SCALE");
  setDialogScale(kPlainScale);
}

std::string nameOf(const ScaledScript& scaled) {
  return scaled.script.name + std::to_string(scaled.scale);
}
