// effect_run: one run of the module on a picture in memory.

#pragma once

#include <functional>
#include <string>

#include "hosts/effect_choices/effect_choices.h"
#include "hosts/effect_runs/selection.h"

// Everything a run needs besides the picture.
struct EffectPlan {
  EffectSettings settings;
  FoundPictures found;
  int32_t supersample = 1;  // how many times larger than the picture it is rendered
};

// The seed that --seed names, or the clock's for ""; ends the command when it is not a number.
uint32_t parseSeed(const std::string& text);

// Cuts the run off from the user: from here on it depends on the plan and the seed alone.
EffectPlan planEffect(const EffectOptions& options, const ChosenEffect& effect, uint32_t seed);

// Renders larger from here on; ends the command when the settings leave no room for that.
void enlargePlan(int32_t times, EffectPlan* plan);

// Is told how far a render is.
using TellProgress = std::function<void(int32_t done, int32_t total)>;

// Puts the effect into the picture's selection. Failures name `file`, where the picture is from,
// and leave a picture without pixels.
void renderTelling(const EffectPlan& plan, Picture* picture, Selection selection,
                   const TellProgress& progress, const std::string& file);

// The same with a bar on the terminal.
void renderEffect(const EffectPlan& plan, Picture* picture, Selection selection, bool quiet,
                  const std::string& file);
