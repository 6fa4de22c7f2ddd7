#include "tests/support/dialog_scripts.h"

#include <cstdlib>

#include "dialog/dialog_scale.h"
#include "hosts/substitute_host/substitute_host.h"
#include "tests/support/dialog_recording.h"
#include "tests/support/dialog_user.h"

void runScript(const DialogScript& script) {
  const char* scale = std::getenv("MORVALIS_SCALE");
  setDialogScale(scale == nullptr ? kPlainScale : std::atoi(scale));  // for places before it opens
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
