#include "hosts/commands/gallery_command.h"

#include <algorithm>
#include <cstdio>
#include <vector>

#include "hosts/commands/contact_sheet.h"
#include "hosts/effect_choices/preset_lookup.h"
#include "hosts/effect_choices/setting_text.h"
#include "hosts/effect_runs/color_use.h"
#include "hosts/effect_runs/effect_run.h"
#include "hosts/effect_runs/selection.h"
#include "hosts/picture_files/picture_load.h"
#include "hosts/picture_files/picture_save.h"
#include "hosts/process/child_processes.h"
#include "hosts/process/command_failure.h"
#include "hosts/process/file_access.h"
#include "hosts/process/file_names.h"
#include "hosts/process/interrupt.h"

static std::vector<std::string> presetFiles(const std::string& folder) {
  if (folder.empty()) {
    std::vector<std::string> own = ownPresets();
    if (own.empty()) failOnUsage("no presets have been installed; add --presets FOLDER");
    return own;
  }
  if (!fileExists(folder)) failOnFile(folder, "there is no such folder");
  if (!isFolder(folder)) failOnFile(folder, "is not a folder");
  std::vector<std::string> files = filesIn(folder, ".q9q");
  if (files.empty()) failOnFile(folder, "holds no settings files (.q9q)");
  return files;
}

static Picture loadImage(const GalleryOptions& options) {
  return loadPicture(options.image, std::max(1, parseFrame(options.frame)));
}

// Leaves the picture under one preset in the file, small enough for the sheet.
static void renderCell(const GalleryOptions& options, uint32_t seed, const std::string& preset,
                       const std::string& file) {
  EffectOptions effect;
  effect.preset = preset;
  effect.pictures = options.pictures;
  effect.assignments = options.assignments;
  effect.limit = options.limit;
  const EffectPlan plan = planEffect(effect, chooseEffect(effect), seed);
  Picture picture = loadImage(options);
  if (options.color) makeColorful(&picture);
  Selection selection = loadSelection(options.mask, picture, options.image);
  renderEffect(plan, &picture, std::move(selection), /*quiet=*/true, preset);
  Picture cell;
  cell.colors = cellPicture(picture);
  savePicture(std::move(cell), pictureFormatOf(file), {}, file);
}

// A picture or selection that fails would fail under every preset.
static void checkPicture(const GalleryOptions& options) {
  if (options.image == kStandardStream) readWholeFile(options.image, "a picture");
  runInChild([&options] {
    const Picture picture = loadImage(options);
    warnOfEmptiness(loadSelection(options.mask, picture, options.image));
    if (picture.colors.planes == 1 && !options.color && !options.quiet) {
      reportWarning(options.image +
                    ": is grey, and so is every look; --color shows them in colour");
    }
    return kExitDone;
  });
}

static bool isSameSize(const HostPicture& a, const HostPicture& b) {
  return a.width == b.width && a.height == b.height;
}

static std::vector<SheetCell> renderCells(const GalleryOptions& options, uint32_t seed, int jobs,
                                          const std::vector<std::string>& presets) {
  checkPicture(options);
  const TemporaryFolder folder;
  const std::string start = pathOf(folder) + "/";
  const auto cellFile = [&start](size_t i) { return start + std::to_string(i) + ".png"; };
  ChildWork work;
  work.names = presets;
  work.jobs = jobs;
  work.quiet = options.quiet;
  work.command = [&](size_t i) {
    renderCell(options, seed, work.names[i], cellFile(i));
    return kExitDone;
  };
  const std::vector<bool> done = runInChildren(work);
  std::vector<SheetCell> cells;
  for (size_t i = 0; i < done.size(); ++i) {
    if (!done[i]) continue;
    HostPicture cell = loadPicture(cellFile(i)).colors;
    // Each has read the picture anew, which may have been replaced meanwhile.
    if (cells.empty() || isSameSize(cell, cells[0].picture)) {
      cells.push_back({bareName(presets[i]), std::move(cell)});
    }
  }
  return cells;
}

int runGalleryCommand(const GalleryOptions& options) {
  const uint32_t seed = parseSeed(options.seed);
  const int jobs = parseJobs(options.jobs);
  parseFrame(options.frame);
  checkMaskOptions(options.mask);
  for (const std::string& text : options.assignments) parseAssignment(text);
  const PictureFormat& format = pictureFormatOf(options.output);
  if (!format.colors) failOnUsage(options.output + ": this format holds no colours");
  for (const std::string& file : {options.image, options.mask.mask}) {
    if (file.empty() || file == kStandardStream || placeOf(file) != placeOf(options.output))
      continue;
    failOnUsage("the sheet would replace " + file + "; choose another name for it");
  }
  watchForInterrupts();
  const std::vector<std::string> presets = presetFiles(options.presets);
  checkWritable(options.output);
  runInChild([] {
    checkFont();
    return kExitDone;
  });
  const std::vector<SheetCell> cells = renderCells(options, seed, jobs, presets);
  if (cells.empty()) throw CommandFailure{kExitFailed, "none of the presets can be shown"};
  savePicture(drawSheet(cells), format, {}, options.output);
  if (!options.quiet && options.seed.empty()) {
    std::fprintf(options.output == kStandardStream ? stderr : stdout, "seed %u\n", seed);
  }
  const size_t missing = presets.size() - cells.size();
  if (missing == 0) return kExitDone;
  throw CommandFailure{kExitFailed, std::to_string(missing) + " of " +
                                        std::to_string(presets.size()) +
                                        " presets are missing from the sheet"};
}
