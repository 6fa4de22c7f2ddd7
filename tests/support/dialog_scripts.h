// dialog_scripts: sessions of the main dialog, from what the user does to the settings and pixels
// that come of it. They run on every back end; what they look at (see dialog_recording) must be the
// same on all of them.

#pragma once

#include <ostream>
#include <vector>

struct DialogScript {
  const char* name;
  void (*run)();
};

// Begins with nothing remembered and a clock that stands, at the scale that MORVALIS_SCALE names.
void runScript(const DialogScript& script);

const std::vector<DialogScript>& dialogScripts();

// Their parts.
const std::vector<DialogScript>& controlScripts();
const std::vector<DialogScript>& pictureScripts();
const std::vector<DialogScript>& previewScripts();
const std::vector<DialogScript>& extraScripts();
const std::vector<DialogScript>& keyboardScripts();
const std::vector<DialogScript>& readingScripts();

inline std::ostream& operator<<(std::ostream& out, const DialogScript& script) {
  return out << script.name;
}
