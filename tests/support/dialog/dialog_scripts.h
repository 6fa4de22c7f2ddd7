// dialog_scripts: sessions of the main dialog, from what the user does to the settings and pixels
// that come of it. They run on every back end; what they look at (see dialog_recording) must be the
// same on all of them.

#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

// At which scales what a script expects holds: with pictures of one size, for places that are whole
// pixels, everywhere.
enum class ScriptScales { plain, whole, every };

struct DialogScript {
  const char* name;
  void (*run)();
  ScriptScales scales = ScriptScales::every;
};

// Begins with nothing remembered and a clock that stands; the scale is the one that the dialog will
// choose, 0: the one that MORVALIS_SCALE names.
void runScript(const DialogScript& script, int32_t scale = 0);

const std::vector<DialogScript>& dialogScripts();

// At twice the size all that can be played there, at the other scales some of every kind.
struct ScaledScript {
  DialogScript script;
  int32_t scale;
};
std::vector<ScaledScript> scaledScripts();
void runScript(const ScaledScript& scaled);
std::string nameOf(const ScaledScript& scaled);

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

inline std::ostream& operator<<(std::ostream& out, const ScaledScript& scaled) {
  return out << nameOf(scaled);
}
