#include "hosts/window_commands/edit_run.h"

#include "hosts/effect_choices/last_settings.h"
#include "hosts/effect_choices/other_bitmaps.h"
#include "hosts/effect_choices/preset_file.h"
#include "hosts/effect_runs/open_host.h"
#include "hosts/effect_runs/render_result.h"
#include "hosts/process/command_failure.h"
#include "hosts/process/file_names.h"
#include "hosts/process/interrupt.h"
#include "platform/remembered_values.h"
#include "platform/unix/program_session.h"
#include "platform/user_files.h"

constexpr const char* kRememberedNames[kPictureNames] = {"ChromeFile", "TextureFile"};
static_assert(kEnvironmentName == 0 && kTextureName == 1);

// A short way around a long path ends with this run; it is not to be remembered.
static void stagePicture(const EffectOptions& options, int32_t kind, const BitmapPath& picture) {
  if (picture.shortWay != nullptr) {
    failOnFile(picture.path, "stands for a path that is too long to be remembered");
  }
  const bool turnsBuiltIn = kind == kEnvironmentName && assignsTurns(options);
  const bool some = turnsBuiltIn || !picture.path.empty();
  stageRememberedValue(kRememberedNames[kind], some ? picture.path.c_str() : nullptr);
}

static bool isRemembered(int32_t kind) {
  char path[kPathBytes];
  return readRememberedValue(kRememberedNames[kind], path, kPathBytes);
}

// What the dialog saves as a preset needs a bitmap beside it where another picture is used.
static void placePicturesOf(const char* file) {
  char cached[kPathBytes];
  const bool ofSession = cachedSettingsPath(/*forWriting=*/false, cached, kPathBytes) &&
                         placeOf(cached) == placeOf(file);
  if (ofSession || extensionOf(file) != "q9q") return;
  try {
    const Preset preset = readPreset(file);
    const EffectSettings* settings = moduleSettings(file);
    const char* const paths[kPictureNames] = {settings->environmentPath, settings->texturePath};
    for (int32_t kind = 0; kind < kPictureNames; ++kind) {
      const std::string path = paths[kind];
      const bool named = preset.decoded.names[kind][0] != 0 && !path.empty();
      if (!named || !fileExists(path) || isWindowsBitmap(path)) continue;
      reportWarning(std::string(file) + ": stands for " + path + " with a copy beside it, " +
                    placeBesidePreset(path, file));
    }
  } catch (const CommandFailure& failure) {
    reportFailure(failure);
  } catch (const std::exception& failure) {
    reportFailure({kExitFailed, failure.what()});
  }
}

EditPlan planEdit(const EffectOptions& options) {
  EditPlan plan = {options, std::nullopt};
  allowOtherPictures();
  watchUserFiles(placePicturesOf);
  checkOptions(options);
  if (!options.preset.empty()) {
    plan.preset = chooseEffect(options);
    const FoundPictures found = findPictures(options, *plan.preset);
    for (int32_t kind = 0; kind < kPictureNames; ++kind) {
      stagePicture(options, kind, found.pictures[kind]);
    }
    return plan;
  }
  if (!options.environment.empty()) {
    stagePicture(options, kEnvironmentName, findBitmap(options.environment));
  } else if (assignsTurns(options) && !isRemembered(kEnvironmentName)) {
    stagePicture(options, kEnvironmentName, {});
  }
  if (!options.texture.empty()) stagePicture(options, kTextureName, findBitmap(options.texture));
  return plan;
}

// Without a preset the module has already fetched what was confirmed last.
static ChosenEffect startingPoint(const EditPlan& plan, const EffectSettings& current) {
  if (plan.preset.has_value()) return *plan.preset;
  ChosenEffect effect;
  effect.settings = current;
  char path[kPathBytes] = "";
  readRememberedValue(kRememberedNames[kTextureName], path, kPathBytes);
  effect.pictures[kTextureName].path = path;
  applyOptions(plan.options, &effect);
  return effect;
}

// The dialog, then the rows.
static int16_t runModule(const EditPlan& plan, const std::string& file) {
  checkResult(callSelector(kSelectorParameters), file);
  EffectSettings* settings = moduleSettings(file);
  copySettings(startingPoint(plan, *settings).settings, settings);
  checkResult(callSelector(kSelectorPrepare), file);
  return renderFilter();
}

EditOutcome editPicture(const EditPlan& plan, Picture* picture, const Selection& selection,
                        const std::string& file, const RenderWatch& watch) {
  bool rendering = false;
  HostSwitches switches;
  switches.dirtyMemory = false;
  switches.keepsLog = false;
  switches.colorServices = false;  // the desktop's own chooser serves
  switches.display = drawIntoTarget;
  switches.abortTest = [&] { return watch.stopped() || interrupted(); };
  switches.progress = [&](int32_t done, int32_t total) {
    rendering = true;
    watch.progress(done, total);
  };
  const OpenHost host(switches, picture->colors, selection.mask);
  const int16_t result = runModule(plan, file);
  const EffectSettings settings = *moduleSettings(file);
  // The render begins once the dialog has been confirmed, whatever becomes of it.
  if (rendering) rememberExactly(settings);
  stopIfInterrupted();
  if (result == kUserCanceled || (rendering && watch.stopped())) return {};
  if (result == kUserInformed) {  // in a window; standard error is for who started the program
    reportFailure({kExitFailed, file + ": there is not enough memory for the effect"});
    return {};
  }
  checkResult(result, file);
  mixResult(selection, picture);
  EditOutcome outcome = {/*confirmed=*/true, std::nullopt};
  if (dependsOnSeed(settings)) outcome.seed = settings.textureSeed;
  return outcome;
}
