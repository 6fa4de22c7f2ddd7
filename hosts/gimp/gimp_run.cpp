#include "hosts/gimp/gimp_run.h"

#include <cstdlib>
#include <utility>

#include "hosts/effect_choices/effect_choices.h"
#include "hosts/effect_runs/effect_run.h"
#include "hosts/gimp/layer_pictures.h"
#include "hosts/process/command_failure.h"
#include "hosts/process/file_names.h"
#include "hosts/process/libraries/own_library.h"
#include "hosts/window_commands/dialog_call.h"
#include "platform/user_files.h"

constexpr char kTitle[] = "Morvalis";
constexpr int kLeastStep = 100;  // part of the whole that is worth a message to GIMP

// Where the user stops it, GIMP ends the plug-in, which has not changed anything yet.
static void showProgress(int32_t done, int32_t total) {
  static int32_t shown = -1;
  if (total <= 0) return;
  const auto step = static_cast<int32_t>(int64_t{done} * kLeastStep / total);
  if (step == shown) return;
  if (step < shown || shown < 0) gimp_progress_init(kTitle);
  shown = step;
  gimp_progress_update(double{1} * step / kLeastStep);
}

// --- What is asked for ----------------------------------------------------------------------

static std::vector<std::string> wordsOf(const std::string& text) {
  std::vector<std::string> words;
  if (text.find_first_not_of(" \t\n") == std::string::npos) return words;
  int count = 0;
  char** parts = nullptr;
  GError* error = nullptr;
  if (!g_shell_parse_argv(text.c_str(), &count, &parts, &error)) {
    const std::string reason = error->message;
    g_error_free(error);
    failOnUsage(text + ": " + reason);
  }
  words.assign(parts, parts + count);
  g_strfreev(parts);
  return words;
}

static EffectOptions optionsOf(const GimpCall& call) {
  EffectOptions options;
  options.last = call.manner == CallManner::byLastValues;
  if (call.manner != CallManner::byArguments) return options;
  options.preset = call.preset;
  const std::pair<const char*, std::string*> files[] = {{"environment=", &options.environment},
                                                        {"texture=", &options.texture},
                                                        {"pictures=", &options.pictures}};
  for (const std::string& word : wordsOf(call.settings)) {
    std::string* file = nullptr;
    for (const auto& [start, place] : files) {
      if (word.starts_with(start)) file = place;
    }
    if (file == nullptr) {
      options.assignments.push_back(word);
    } else {
      *file = word.substr(word.find('=') + 1);
    }
  }
  return options;
}

static void checkLastValues() {
  char path[kPathBytes];
  if (cachedSettingsPath(/*forWriting=*/false, path, kPathBytes) && fileExists(path)) return;
  throw CommandFailure{kExitFailed,
                       "there are no last values: the dialog has not been confirmed yet"};
}

// --- The run --------------------------------------------------------------------------------

static void runWithoutDialog(const GimpCall& call) {
  if (call.manner == CallManner::byLastValues) checkLastValues();
  const EffectOptions options = optionsOf(call);
  const ChosenEffect effect = chooseEffect(options);
  const uint32_t clock = parseSeed("");
  const uint32_t seed =
      call.seed >= 0 ? static_cast<uint32_t>(call.seed) : effect.seed.value_or(clock);
  const EffectPlan plan = planEffect(options, effect, seed);
  LayerPicture layer = fetchLayer(call.drawable, /*whole=*/false);
  renderTelling(plan, &layer.picture, layer.selection, showProgress, kTitle);
  storeEffect(call.drawable, layer);
}

static bool hasDisplay() {
  for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY"}) {
    const char* value = std::getenv(name);
    if (value != nullptr && *value != 0) return true;
  }
  return false;
}

// False when the user has cancelled.
static bool runDialog(const GimpCall& call) {
  std::string reason = "there is no display";
  void* procedure =
      hasDisplay() ? ownProcedure("libmorvalis_window.so", "morvalisDialog", &reason) : nullptr;
  if (procedure == nullptr) {
    throw CommandFailure{kExitFailed, "the dialog cannot be opened (" + reason + ")"};
  }
  LayerPicture layer = fetchLayer(call.drawable, /*whole=*/true);
  DialogCall dialog;
  dialog.picture = &layer.picture;
  dialog.selection = layer.selection;
  dialog.name = kTitle;
  dialog.owner = call.window;
  dialog.progress = showProgress;
  reinterpret_cast<void (*)(DialogCall*)>(procedure)(&dialog);
  if (dialog.failure.exitCode != kExitDone) throw CommandFailure(dialog.failure);
  if (dialog.confirmed) storeEffect(call.drawable, layer);
  return dialog.confirmed;
}

// Callers know the words of a call, not the options of a command.
static std::string inWordsOfCall(std::string text) {
  for (const char* option : {"--set ", "--"}) {
    const std::string start = option;
    for (size_t at = 0; (at = text.find(start, at)) != std::string::npos;) {
      const bool ofName = at == 0 || text[at - 1] == ' ';
      if (ofName) text.erase(at, start.size());
      at += ofName ? 0 : start.size();
    }
  }
  return text;
}

GimpAnswer runInGimp(const GimpCall& call) {
  GimpAnswer answer;
  const auto run = [&call, &answer] {
    if (call.manner != CallManner::byDialog) {
      runWithoutDialog(call);
    } else if (!runDialog(call)) {
      answer.end = CallEnd::cancelled;
    }
    return kExitDone;
  };
  const auto report = [&answer](const CommandFailure& failure) {
    answer.end = failure.exitCode == kExitUsage ? CallEnd::wrongCall : CallEnd::failed;
    answer.text = printableLine(inWordsOfCall(failure.text));
    return failure.exitCode;
  };
  runReporting(run, report);
  return answer;
}

GimpPDBStatusType statusOf(CallEnd end) {
  switch (end) {
    case CallEnd::done:
      return GIMP_PDB_SUCCESS;
    case CallEnd::cancelled:
      return GIMP_PDB_CANCEL;
    case CallEnd::wrongCall:
      return GIMP_PDB_CALLING_ERROR;
    default:
      return GIMP_PDB_EXECUTION_ERROR;
  }
}
