#include "hosts/command_line/apply_command.h"

#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <cstdio>

#include "hosts/command_line/child_processes.h"
#include "hosts/command_line/command_failure.h"
#include "hosts/command_line/effect_run.h"
#include "hosts/command_line/file_access.h"
#include "hosts/command_line/interrupt.h"
#include "hosts/command_line/output_names.h"
#include "hosts/command_line/picture_load.h"
#include "hosts/command_line/picture_save.h"
#include "hosts/command_line/selection.h"
#include "hosts/command_line/setting_text.h"
#include "hosts/command_line/usage_errors.h"

static void applyToPicture(const EffectPlan& plan, const ApplyOptions& options,
                           const std::string& image, const std::string& output) {
  const PictureFormat& format = pictureFormatOf(output);
  Picture picture = loadPicture(image);
  checkFormatHolds(format, picture, output);
  Selection selection = loadSelection(options.mask, picture, image);
  if (!options.quiet) warnOfLoss(picture, image);
  warnOfEmptiness(selection);
  stopIfInterrupted();
  const bool quiet = options.quiet || options.images.size() > 1;  // those share a progress bar
  renderEffect(plan, &picture, std::move(selection.mask), quiet, image);
  savePicture(picture, format, output);
}

// What fails for all of them fails once, before any is begun.
static void applyToPictures(const ApplyOptions& options, const ChosenEffect& effect, uint32_t seed,
                            const std::vector<std::string>& outputs, int jobs) {
  runInChild([&] {
    planEffect(options.effect, effect, seed);
    return kExitDone;
  });
  ChildWork work;
  work.names = options.images;
  work.jobs = jobs;
  work.quiet = options.quiet;
  work.command = [&](size_t i) {
    checkWritable(outputs[i]);
    const EffectPlan plan = planEffect(options.effect, effect, seed);
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
    if (isSettingAssignment(image) && !QFileInfo::exists(QFile::decodeName(image.c_str()))) {
      failOnUsage(describeStraySetting(image));
    }
  }
}

// Only the built-in textures are drawn by chance.
static bool usesSeed(const EffectSettings& settings) {
  return settings.textureChoice != kTextureChoiceNone &&
         settings.textureChoice != kTextureChoiceFile;
}

int runApplyCommand(const ApplyOptions& options) {
  const uint32_t seed = parseSeed(options.seed);
  const int jobs = parseJobs(options.jobs);
  checkImages(options.images);
  const std::vector<std::string> outputs = outputNames(options.images, options.output);
  for (const std::string& output : outputs) pictureFormatOf(output);
  watchForInterrupts();
  const bool single = outputs.size() == 1;
  if (single) checkWritable(outputs[0]);
  const ChosenEffect effect = chooseEffect(options.effect);
  if (single) {
    const EffectPlan plan = planEffect(options.effect, effect, seed);
    applyToPicture(plan, options, options.images[0], outputs[0]);
  } else {
    applyToPictures(options, effect, seed, outputs, jobs);
  }
  if (!options.quiet && options.seed.empty() && usesSeed(effect.settings)) {
    std::FILE* place = outputs[0] == kStandardStream ? stderr : stdout;
    std::fprintf(place, "seed %u\n", seed);
  }
  return kExitDone;
}
