#include "platform/choosers.h"

#include <cstdio>

#include "platform/none/none_state.h"

static bool answerChooser(const FileChooser& chooser, bool forSaving, char* path, int32_t bytes) {
  NoneState& state = noneState();
  const size_t answered = state.record.choosers.size();
  state.record.choosers.push_back({chooser.title, chooser.pattern, forSaving});
  path[0] = 0;
  if (answered >= state.script.chosenPaths.size()) return false;
  const std::string& chosen = state.script.chosenPaths[answered];
  if (chosen.empty() || chosen.size() >= static_cast<size_t>(bytes)) return false;
  std::snprintf(path, static_cast<size_t>(bytes), "%s", chosen.c_str());
  return true;
}

bool choosePlatformFileToOpen(const FileChooser& chooser, char* path, int32_t bytes) {
  return answerChooser(chooser, /*forSaving=*/false, path, bytes);
}

bool choosePlatformFileToSave(const FileChooser& chooser, char* path, int32_t bytes) {
  return answerChooser(chooser, /*forSaving=*/true, path, bytes);
}
