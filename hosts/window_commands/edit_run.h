// edit_run: the module's dialog on a picture in memory, and the render that it is confirmed with.
// What was confirmed is remembered for the user, as in every other host.

#pragma once

#include <functional>
#include <optional>
#include <string>

#include "hosts/effect_choices/effect_choices.h"
#include "hosts/effect_runs/selection.h"

// Where the dialog starts: at a preset, or at what was confirmed last, with the options on top.
struct EditPlan {
  EffectOptions options;
  std::optional<ChosenEffect> preset;
};

// Ends the command when an option, the preset or a picture is not to be had. The pictures are what
// the module finds remembered from here on, until it remembers others itself.
EditPlan planEdit(const EffectOptions& options);

struct EditOutcome {
  bool confirmed;                // else there are no pixels left
  std::optional<uint32_t> seed;  // of the texture that was drawn by chance
};

// What the render asks and tells, once the dialog has been confirmed and not before.
struct RenderWatch {
  std::function<bool()> stopped;  // whether the user has thought better of it
  std::function<void(int32_t done, int32_t total)> progress;
};

// Puts the effect into the picture's selection. Failures name `file`, where the picture is from.
EditOutcome editPicture(const EditPlan& plan, Picture* picture, const Selection& selection,
                        const std::string& file, const RenderWatch& watch);
