#include "platform/choosers.h"

#include <algorithm>
#include <cstdio>

#include "platform/none/none_state.h"

static ChooserAnswer answerChooser(const FileChooser& chooser, bool forSaving, char* path,
                                   int32_t bytes) {
  NoneState& state = noneState();
  const size_t answered = state.record.choosers.size();
  state.record.choosers.push_back({chooser.title, chooser.pattern, forSaving});
  path[0] = 0;
  if (answered >= state.script.chosenPaths.size()) return ChooserAnswer::cancelled;
  const std::string& chosen = state.script.chosenPaths[answered];
  if (chosen.empty()) return ChooserAnswer::cancelled;
  if (chosen.size() >= static_cast<size_t>(bytes)) return ChooserAnswer::tooLong;
  std::snprintf(path, static_cast<size_t>(bytes), "%s", chosen.c_str());
  return ChooserAnswer::chosen;
}

ChooserAnswer choosePlatformFileToOpen(const FileChooser& chooser, char* path, int32_t bytes) {
  return answerChooser(chooser, /*forSaving=*/false, path, bytes);
}

ChooserAnswer choosePlatformFileToSave(const FileChooser& chooser, char* path, int32_t bytes) {
  return answerChooser(chooser, /*forSaving=*/true, path, bytes);
}

bool choosePlatformColor(uint8_t color[3], uint8_t[kCustomColors][3]) {
  NoneState& state = noneState();
  const size_t answered = state.record.colorChoosers.size();
  state.record.colorChoosers.push_back({color[0], color[1], color[2]});
  if (answered >= state.script.chosenColors.size()) return false;
  const std::optional<NoneColor>& chosen = state.script.chosenColors[answered];
  if (!chosen) return false;
  std::copy(chosen->begin(), chosen->end(), color);
  return true;
}
