#include "hosts/commands/apply_to_frames.h"

#include <optional>
#include <utility>

#include "hosts/effect_runs/color_use.h"
#include "hosts/picture_files/picture_save.h"
#include "hosts/process/command_failure.h"
#include "hosts/process/interrupt.h"
#include "hosts/process/progress_bar.h"

// A mask's file serves for all pictures; by its transparency each selects for itself.
struct SharedSelection {
  std::optional<Selection> ofFile;
  std::string emptiness;  // of the last one
  bool ofSomething = false;
};

static Selection selectionFor(const MaskOptions& options, const Picture& picture,
                              const std::string& image, SharedSelection* shared) {
  if (shared->ofFile.has_value()) return *shared->ofFile;
  Selection selection = loadSelection(options, picture, image);
  shared->emptiness = selection.emptiness;
  if (selection.emptiness.empty()) shared->ofSomething = true;
  const bool byAlpha = options.mask.empty() || options.mask == kMaskByAlpha;
  if (!byAlpha) shared->ofFile = selection;
  return selection;
}

void applyToFrames(const EffectPlan& plan, const ApplyOptions& options, const FramesFile& file,
                   bool quiet) {
  const SavingChoice saving = parseSaving(options.saving);
  SharedSelection shared;
  ProgressBar bar = makeProgressBar(quiet);
  const ChangePicture change = [&](int32_t number, Picture* picture) {
    stopIfInterrupted();
    drawProgress(&bar, number - 1, file.count);
    if (options.color) makeColorful(picture);
    setDepth(saving.depth, picture);
    Selection selection = selectionFor(options.mask, *picture, file.image, &shared);
    renderEffect(plan, picture, std::move(selection), /*quiet=*/true, file.image);
  };
  convertPictures(file.contents, file.image, chosenFormat(options.saving, file.output),
                  saving.choices, change, file.output);
  clearProgress(&bar);
  if (!shared.ofSomething) reportWarning(shared.emptiness);
}
