#include "hosts/command_line/apply_command.h"

#include <charconv>
#include <cstdio>

#include "hosts/command_line/bitmap_path.h"
#include "hosts/command_line/command_failure.h"
#include "hosts/command_line/interrupt.h"
#include "hosts/command_line/picture_load.h"
#include "hosts/command_line/picture_save.h"
#include "hosts/command_line/progress_bar.h"
#include "hosts/command_line/selection.h"
#include "hosts/command_line/setting_text.h"
#include "platform/clock.h"
#include "platform/desktop/desktop_session.h"
#include "platform/remembered_values.h"

// --- What was asked for ---------------------------------------------------------------------

static uint32_t parseSeed(const std::string& text) {
  if (text.empty()) return secondsNow();
  uint32_t seed = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, seed);
  if (stop != end || error != std::errc()) {
    failOnUsage("--seed " + text + ": takes a whole number, 0 to 4294967295");
  }
  return seed;
}

// The built-in textures and a picture file exclude each other: either without the other's part is
// a slip that would pass unnoticed.
static std::vector<SettingAssignment> parseAssignments(const ApplyOptions& options) {
  std::vector<SettingAssignment> assignments;
  const SettingAssignment fileChosen =
      parseAssignment("textureChoice=" + std::to_string(kTextureChoiceFile));
  int32_t textureChoice = 0;  // 0: not set
  for (const std::string& text : options.assignments) {
    assignments.push_back(parseAssignment(text));
    if (assignments.back().row == fileChosen.row) {
      textureChoice = static_cast<int32_t>(assignments.back().values[0]);
    }
  }
  if (textureChoice == kTextureChoiceFile && options.texture.empty()) {
    failOnUsage("--set textureChoice=file needs a picture: add --texture FILE.bmp");
  }
  if (!options.texture.empty()) {
    if (textureChoice != 0 && textureChoice != kTextureChoiceFile) {
      failOnUsage("--texture chooses the picture file, but --set textureChoice=" +
                  std::to_string(textureChoice) +
                  " chooses another texture; leave one of them out");
    }
    assignments.push_back(fileChosen);
  }
  return assignments;
}

// --- The module's run -----------------------------------------------------------------------

static std::string reasonOf(int16_t result) {
  switch (result) {
    case kMemoryFull:
    case kRenderBuffersMissing:
      return "there is not enough memory for the effect";
    case kFilterBadParameters:
      return "the effect cannot work on this picture";
    default:
      return "the effect failed (result " + std::to_string(result) + ")";
  }
}

// An alert has already said on standard error what went wrong.
static void checkResult(int16_t result, const std::string& file) {
  stopIfInterrupted();
  if (result == kNoError) return;
  if (reportedAlerts() > 0) throw CommandFailure{kExitFailed, ""};
  failOnFile(file, reasonOf(result));
}

static void prepareSettings(const std::vector<SettingAssignment>& assignments,
                            const std::string& file) {
  checkResult(callSelector(kSelectorPrepare), file);
  const Handle handle = hostRecord()->parameters;
  if (handle == nullptr) failOnFile(file, reasonOf(kMemoryFull));
  EffectSettings* settings = static_cast<EffectSettings*>(*handle);
  for (const SettingAssignment& assignment : assignments) applyAssignment(assignment, settings);
}

struct OpenHost {
  OpenHost(const HostSwitches& switches, const HostPicture& picture, const HostMask& mask) {
    openHost(switches, picture, mask);
  }
  ~OpenHost() {
    closeHost();
  }
};

static HostPicture renderEffect(const ApplyOptions& options, const Picture& picture,
                                const HostMask& mask,
                                const std::vector<SettingAssignment>& assignments) {
  ProgressBar bar = makeProgressBar(options.quiet);
  HostSwitches switches;
  switches.dirtyMemory = false;
  switches.abortTest = interrupted;
  switches.progress = [&bar](int32_t done, int32_t total) { drawProgress(&bar, done, total); };
  const OpenHost host(switches, picture.colors, mask);
  prepareSettings(assignments, options.image);
  const int16_t result = renderFilter();
  clearProgress(&bar);
  checkResult(result, options.image);
  return mixByMask(picture.colors, filteredPicture(), mask);
}

int runApplyCommand(const ApplyOptions& options) {
  const std::vector<SettingAssignment> assignments = parseAssignments(options);
  const uint32_t seed = parseSeed(options.seed);
  const PictureFormat* format = findPictureFormat(options.output);
  if (format == nullptr) {
    failOnUsage(options.output + ": cannot tell the format by the extension; there are " +
                writableExtensions());
  }
  watchForInterrupts();
  checkWritable(options.output);

  keepRememberedValuesInMemory();
  fixClock(seed);
  BitmapPath environment;
  BitmapPath texture;
  if (!options.environment.empty()) {
    environment = findBitmap(options.environment);
    writeRememberedValue("ChromeFile", environment.path.c_str());
  }
  if (!options.texture.empty()) {
    texture = findBitmap(options.texture);
    writeRememberedValue("TextureFile", texture.path.c_str());
  }

  Picture picture = loadPicture(options.image);
  checkFormatHolds(*format, picture, options.output);
  const HostMask mask = loadSelection(options.mask, picture, options.image);
  stopIfInterrupted();
  picture.colors = renderEffect(options, picture, mask, assignments);
  savePicture(picture, *format, options.output);
  if (!options.quiet && options.seed.empty()) std::printf("seed %u\n", seed);
  return kExitDone;
}
