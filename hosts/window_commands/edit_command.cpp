#include "hosts/window_commands/edit_command.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QApplication>
#include <QTimer>
#include <algorithm>
#include <climits>
#include <cstdio>

#include "hosts/effect_runs/color_use.h"
#include "hosts/effect_runs/effect_run.h"
#include "hosts/effect_runs/selection.h"
#include "hosts/picture_files/picture_load.h"
#include "hosts/picture_files/picture_save.h"
#include "hosts/picture_files/picture_warnings.h"
#include "hosts/process/command_failure.h"
#include "hosts/process/file_access.h"
#include "hosts/process/file_names.h"
#include "hosts/process/interrupt.h"
#include "hosts/window_commands/edit_run.h"
#include "hosts/window_commands/progress_window.h"
#include "hosts/window_commands/window_program.h"
#include "platform/choosers.h"
#include "platform/unix/program_session.h"

constexpr char kNameEnding[] = "-morvalis";
// Beyond these reading and coding take a while.
constexpr int64_t kLargePicture = 1 << 22;  // pixels
constexpr int64_t kLargeFile = 1 << 22;     // bytes
constexpr int kInterruptPause = 100;        // milliseconds between two looks

// Empty when the user thought better of it.
static std::string askForPicture() {
  const std::string filter = "Pictures (" + readablePatterns() + ")";
  char path[PATH_MAX];
  choosePlatformFileToOpen({"Choose a picture", filter.c_str(), "*", ""}, path, PATH_MAX);
  return path;
}

// In the picture's own format where that can be written and holds it, with all colours that the
// effect brings.
static std::string nameBeside(const std::string& image, const Picture& picture) {
  const std::string start = image.substr(0, image.rfind('/') + 1) + bareName(image) + kNameEnding;
  const std::string ending = lastName(image).substr(bareName(image).size());
  const std::string name = start + ending;
  const PictureFormat* format = findPictureFormat(name);
  const bool holds =
      format != nullptr && format->kind != FormatKind::gif && formatHolds(*format, picture);
  return holds ? name : start + ".png";
}

// Ctrl-C closes whatever window is open, and with it the windows below, one after another.
static void closeWhenInterrupted() {
  if (!interrupted()) return;
  QWidget* window = QApplication::activePopupWidget();
  if (window == nullptr) window = QApplication::activeModalWidget();
  if (window != nullptr) window->close();
}

// Textures that the dialog has drawn anew have another seed than the one asked for.
static void tellSeed(const EditOptions& options, const EditOutcome& outcome) {
  if (!outcome.seed.has_value()) return;
  if (!options.seed.empty() && *outcome.seed == parseSeed(options.seed)) return;
  std::FILE* place = options.output == kStandardStream ? stderr : stdout;
  std::fprintf(place, "seed %u\n", *outcome.seed);
}

struct EditedPicture {
  Picture picture;
  Selection selection;
  std::string wanted;  // before a number is put behind it
  std::string output;
  const PictureFormat* format;
};

// Everything that can fail fails before the dialog opens, but for the writing itself.
static EditedPicture openPicture(const EditOptions& options, const std::string& image) {
  const int32_t frame = parseFrame(options.frame);
  EditedPicture edited = {
      loadPicture(image, std::max(1, frame)), {}, withName(options.output, image), "", nullptr};
  if (frame != 0) edited.picture.pictureCount = 1;  // the others are left out as they should be
  if (options.color) makeColorful(&edited.picture);
  if (edited.wanted.empty()) edited.wanted = nameBeside(image, edited.picture);
  edited.output = options.keep ? freeName(edited.wanted, fileExists) : edited.wanted;
  edited.format = &pictureFormatOf(edited.output);
  checkWritable(edited.output);
  checkFormatHolds(*edited.format, edited.picture, edited.output);
  edited.selection = loadSelection(options.mask, edited.picture, image);
  return edited;
}

static bool isLarge(const HostPicture& picture) {
  return int64_t{picture.width} * picture.height > kLargePicture;
}

static bool isLargeFile(const std::string& file) {
  struct stat about = {};
  return stat(file.c_str(), &about) == 0 && about.st_size > kLargeFile;
}

static int editFile(const EditPlan& plan, const EditOptions& options, const std::string& image) {
  ProgressWindow progress;
  EditedPicture edited;
  const auto read = [&] { edited = openPicture(options, image); };
  if (!runBehindWindow(&progress,
                       {"reading", "Reading the picture...", isLargeFile(image), read})) {
    stopIfInterrupted();
    return kExitFailed;
  }
  closeProgressLater(&progress);  // the dialog of a large picture takes a while to come
  warnOfLoss(edited.picture, *edited.format, /*stripped=*/false, image);
  warnOfEmptiness(edited.selection);
  const RenderWatch watch = {
      [&progress] { return renderStopped(&progress); },
      [&progress](int32_t done, int32_t total) { showProgress(&progress, done, total); }};
  const EditOutcome outcome = editPicture(plan, &edited.picture, edited.selection, image, watch);
  if (!outcome.confirmed) return kExitFailed;
  // Another dialog on the same picture may have been quicker.
  if (options.keep) {
    edited.output = freeName(edited.wanted, fileExists);
    replaceNothing(edited.wanted);
  }
  const bool large = isLarge(edited.picture.colors);
  const auto write = [&] {
    savePicture(std::move(edited.picture), *edited.format, {}, edited.output);
  };
  if (!runBehindWindow(&progress, {"writing", "Writing the picture...", large, write})) {
    stopIfInterrupted();
    return kExitFailed;
  }
  const bool chosen = options.output.empty() || options.keep || hasMark(options.output);
  if (chosen) std::printf("%s\n", edited.output.c_str());
  tellSeed(options, outcome);
  return kExitDone;
}

static int edit(const EditOptions& options) {
  const uint32_t seed = parseSeed(options.seed);
  parseFrame(options.frame);
  checkMaskOptions(options.mask);
  if (options.image == kStandardStream && options.output.empty()) {
    failOnUsage("-: say with -o where the result of standard input goes");
  }
  if (options.keep && options.output == kStandardStream) {
    failOnUsage("--keep is about files; -o - has none");
  }
  if (!options.output.empty()) pictureFormatOf(options.output);
  const EditPlan plan = planEdit(options.effect);
  fixClock(seed);
  const std::string image = options.image.empty() ? askForPicture() : options.image;
  stopIfInterrupted();
  return image.empty() ? kExitFailed : editFile(plan, options, image);
}

// Whoever reads standard error is told at once. A wrong command line has been typed by someone who
// does.
static int reportInWindow(const CommandFailure& failure) {
  const int exitCode = reportFailure(failure);
  std::fflush(stderr);
  const bool unread = isatty(STDERR_FILENO) != 1;
  if (unread && failure.exitCode == kExitFailed && !failure.text.empty()) {
    showFailure(printableLine(failure.text));
    if (interrupted()) return interruptedExitCode();
  }
  return exitCode;
}

int runEditCommand(const EditOptions& options) {
  watchForInterrupts();
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, closeWhenInterrupted);
  timer.start(kInterruptPause);
  return runReporting([&options] { return edit(options); }, reportInWindow);
}
