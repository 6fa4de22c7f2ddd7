#include "hosts/command_line/apply_command.h"

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

static const PictureFormat& formatOf(const std::string& output) {
  const PictureFormat* format = findPictureFormat(output);
  if (format == nullptr) {
    failOnUsage(output + ": cannot tell the format by the extension; there are " +
                writableExtensions());
  }
  return *format;
}

static void applyToPicture(const EffectPlan& plan, const std::string& image,
                           const std::string& mask, const std::string& output, bool quiet) {
  const PictureFormat& format = formatOf(output);
  Picture picture = loadPicture(image);
  checkFormatHolds(format, picture, output);
  const HostMask selection = loadSelection(mask, picture, image);
  stopIfInterrupted();
  picture.colors = renderEffect(plan, picture, selection, quiet, image);
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
    applyToPicture(plan, options.images[i], options.mask, outputs[i], /*quiet=*/true);
    return kExitDone;
  };
  const std::vector<bool> done = runInChildren(work);
  const auto failed = std::count(done.begin(), done.end(), false);
  if (failed == 0) return;
  throw CommandFailure{kExitFailed, std::to_string(failed) + " of " + std::to_string(done.size()) +
                                        " pictures failed"};
}

int runApplyCommand(const ApplyOptions& options) {
  const uint32_t seed = parseSeed(options.seed);
  const int jobs = parseJobs(options.jobs);
  const std::vector<std::string> outputs = outputNames(options.images, options.output);
  for (const std::string& output : outputs) formatOf(output);
  watchForInterrupts();
  const bool single = outputs.size() == 1;
  if (single) checkWritable(outputs[0]);
  const ChosenEffect effect = chooseEffect(options.effect);
  if (single) {
    const EffectPlan plan = planEffect(options.effect, effect, seed);
    applyToPicture(plan, options.images[0], options.mask, outputs[0], options.quiet);
  } else {
    applyToPictures(options, effect, seed, outputs, jobs);
  }
  if (!options.quiet && options.seed.empty()) {
    std::FILE* place = outputs[0] == kStandardStream ? stderr : stdout;
    std::fprintf(place, "seed %u\n", seed);
  }
  return kExitDone;
}
