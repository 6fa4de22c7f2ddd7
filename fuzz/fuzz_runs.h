// fuzz_runs: what keeps runs of the fuzzers short.

#pragma once

#include "hosts/substitute_host/substitute_host.h"
#include "settings/effect_settings.h"
#include "tests/support/hosts/host_pictures.h"

// Takes the relief out of the settings that the host holds: to make one costs many times what the
// rest of a small render does.
inline void takeReliefAway() {
  if (hostRecord()->parameters != nullptr) hostSettings()->textureChoice = kTextureChoiceNone;
}

// The host's first Prepare.
inline void prepareFirst() {
  callSelector(kSelectorPrepare);
  takeReliefAway();
}
