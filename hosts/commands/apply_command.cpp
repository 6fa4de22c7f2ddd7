#include "hosts/commands/apply_command.h"

#include <algorithm>
#include <cstdio>

#include "hosts/commands/apply_to_frames.h"
#include "hosts/commands/output_names.h"
#include "hosts/commands/run_notes.h"
#include "hosts/effect_choices/setting_text.h"
#include "hosts/effect_runs/color_use.h"
#include "hosts/effect_runs/effect_run.h"
#include "hosts/effect_runs/enlarged_run.h"
#include "hosts/effect_runs/selection.h"
#include "hosts/picture_files/picture_load.h"
#include "hosts/picture_files/picture_save.h"
#include "hosts/picture_files/picture_warnings.h"
#include "hosts/process/child_processes.h"
#include "hosts/process/command_failure.h"
#include "hosts/process/file_access.h"
#include "hosts/process/file_names.h"
#include "hosts/process/interrupt.h"
#include "hosts/process/progress_bar.h"

// The picture with this number, from 1 on, and the file's contents, for those that follow.
static Picture loadShowing(const std::string& image, bool quiet, int32_t number,
                           FileBytes* contents) {
  const StepProgress reading(quiet, "reading");
  *contents = readWholeFile(image, "a picture");
  return decodePicture(*contents, image, number);
}

static void applyToPicture(const EffectPlan& plan, const ApplyOptions& options,
                           const std::string& image, const std::string& output) {
  if (options.keep) replaceNothing(withName(options.output, image));
  const PictureFormat& format = chosenFormat(options.saving, output);
  const SavingChoice saving = parseSaving(options.saving);
  const bool quiet = options.quiet || options.images.size() > 1;  // those share a progress bar
  const int32_t frame = parseFrame(options.frame);
  RunNotes notes = {options.verbose, options.images.size() > 1 ? image : ""};
  FileBytes contents;
  Picture picture = loadShowing(image, quiet, std::max(1, frame), &contents);
  noteLoaded(picture, image, &notes);
  const bool all = frame == 0 && formatHoldsAll(format, picture);
  const int32_t count = picture.pictureCount;
  if (all || frame != 0) picture.pictureCount = 1;  // none is left out against the user's will
  if (options.color) makeColorful(&picture);
  setDepth(saving.depth, &picture);
  checkFormatHolds(format, picture, output);
  if (!options.quiet) warnOfLoss(picture, format, saving.choices.strip, image);
  if (!options.quiet) warnOfLostColors(plan.settings, plan.found, picture, image);
  const bool stripped = saving.choices.strip;
  const std::string kept = stripped ? "" : keptIn(format, picture);
  const std::string dropped =
      stripped ? "everything else, as --strip says" : lossesIn(format, picture);
  if (all) {
    applyToFrames(plan, options, {contents, count, image, output}, quiet);
    return noteSaved(output, kept, dropped, &notes);
  }
  contents = {};
  Selection selection = loadSelection(options.mask, picture, image);
  warnOfEmptiness(selection);
  noteSelection(selection.mask, options.mask.mask, &notes);
  stopIfInterrupted();
  renderEffect(plan, &picture, std::move(selection), quiet, image);
  noteRendered(plan, options.effect.preset, &notes);
  const StepProgress writing(quiet, "writing");
  savePicture(std::move(picture), format, saving.choices, output);
  noteSaved(output, kept, dropped, &notes);
}

static EffectPlan planFor(const ApplyOptions& options, const ChosenEffect& effect, uint32_t seed) {
  EffectPlan plan = planEffect(options.effect, effect, seed);
  enlargePlan(options.mask.enlarged, &plan);
  return plan;
}

// What fails for all of them fails once, before any is begun.
static void applyToPictures(const ApplyOptions& options, const ChosenEffect& effect, uint32_t seed,
                            const std::vector<std::string>& outputs, int jobs) {
  runInChild([&] {
    planFor(options, effect, seed);
    return kExitDone;
  });
  ChildWork work;
  work.names = options.images;
  work.jobs = jobs;
  work.quiet = options.quiet;
  work.command = [&](size_t i) {
    checkWritable(outputs[i]);
    const EffectPlan plan = planFor(options, effect, seed);
    applyToPicture(plan, options, options.images[i], outputs[i]);
    return kExitDone;
  };
  const std::vector<bool> done = runInChildren(work);
  const auto failed = std::count(done.begin(), done.end(), false);
  if (failed == 0) return;
  throw CommandFailure{kExitFailed, std::to_string(failed) + " of " + std::to_string(done.size()) +
                                        " pictures failed"};
}

// A list of settings behind one --set ends up among the pictures.
static void checkImages(const std::vector<std::string>& images) {
  for (const std::string& image : images) {
    if (isSettingAssignment(image) && !fileExists(image)) {
      failOnUsage(describeStraySetting(image));
    }
  }
}

// Besides the pictures themselves.
static std::vector<std::string> otherPictures(const ApplyOptions& options) {
  std::vector<std::string> files = {options.effect.environment, options.effect.texture};
  for (const std::string& image : options.images) {
    files.push_back(withName(options.mask.mask, image));
  }
  return files;
}

int runApplyCommand(const ApplyOptions& given) {
  ApplyOptions options = given;
  options.mask.enlarged = parseSupersample(options.supersample);
  uint32_t seed = parseSeed(options.seed);
  const int jobs = parseJobs(options.jobs);
  checkImages(options.images);
  const std::vector<std::string> outputs =
      outputNames(options.images, otherPictures(options), options.output, options.keep);
  parseSaving(options.saving);
  parseFrame(options.frame);
  checkMaskOptions(options.mask);
  for (const std::string& output : outputs) chosenFormat(options.saving, output);
  watchForInterrupts();
  const bool single = outputs.size() == 1;
  if (single) checkWritable(outputs[0]);
  const ChosenEffect effect = chooseEffect(options.effect);
  if (options.seed.empty()) seed = effect.seed.value_or(seed);
  warnOfDarkLights(effect.settings);
  if (!options.quiet) warnOfIdleOptions(options.saving, chosenFormat(options.saving, outputs[0]));
  if (single) {
    const EffectPlan plan = planFor(options, effect, seed);
    applyToPicture(plan, options, options.images[0], outputs[0]);
  } else {
    applyToPictures(options, effect, seed, outputs, jobs);
  }
  if (!options.quiet && options.seed.empty() && dependsOnSeed(effect.settings)) {
    std::FILE* place = outputs[0] == kStandardStream ? stderr : stdout;
    std::fprintf(place, "seed %u\n", seed);
    // The picture is there, whether somebody reads this or not.
    std::fflush(place);
    std::clearerr(place);
  }
  return kExitDone;
}
