#include "hosts/effect_choices/effect_choices.h"

#include <algorithm>

#include "hosts/effect_choices/last_settings.h"
#include "hosts/effect_choices/picture_lookup.h"
#include "hosts/effect_choices/preset_file.h"
#include "hosts/effect_choices/preset_lookup.h"
#include "hosts/effect_choices/setting_text.h"
#include "hosts/process/command_failure.h"
#include "hosts/process/file_names.h"
#include "settings/light_angles.h"
#include "settings/setting_fields.h"

// Which file the settings come from, for messages.
static std::string originOf(const EffectOptions& options) {
  return options.last ? "--last" : options.preset;
}

// The built-in textures and a picture file exclude each other: either without the other's part is
// a slip that would pass unnoticed.
static void checkTexture(const EffectOptions& options, int32_t assignedChoice,
                         const ChosenEffect& effect) {
  if (options.texture.empty()) {
    const ChosenPicture& known = effect.pictures[kTextureName];
    if (assignedChoice == kTextureChoiceFile && known.path.empty() && known.name.empty()) {
      failOnUsage("--set textureChoice=file needs a picture: add --texture FILE");
    }
  } else if (assignedChoice != 0 && assignedChoice != kTextureChoiceFile) {
    failOnUsage("--texture chooses the picture file, but --set textureChoice=" +
                std::to_string(assignedChoice) + " chooses another texture; leave one of them out");
  }
}

// The texture choice among the assignments, 0 for none.
static int32_t applyAssignments(const EffectOptions& options, EffectSettings* settings) {
  std::vector<SettingAssignment> assignments;
  for (const std::string& text : options.assignments) assignments.push_back(parseAssignment(text));
  int32_t textureChoice = 0;
  for (const SettingAssignment& assignment : assignments) {
    applyAssignment(assignment, settings);
    if (assignment.row->offset == offsetof(EffectSettings, textureChoice)) {
      textureChoice = settings->textureChoice;
    }
  }
  lightAngles(settings);
  return textureChoice;
}

bool assignsTurns(const EffectOptions& options) {
  return std::any_of(
      options.assignments.begin(), options.assignments.end(), [](const std::string& text) {
        return parseAssignment(text).row->offset == offsetof(EffectSettings, environmentTurns);
      });
}

// Settings that nobody could have set are not to be rendered by chance.
static EffectSettings accepted(const EffectOptions& options, const Preset& preset) {
  EffectSettings settings = preset.settings;
  if (preset.oddities.empty()) return settings;
  if (!options.limit) {
    failOnFile(originOf(options), preset.oddities + "; --limit brings it into its ranges");
  }
  limitSettings(&settings);
  return settings;
}

static ChosenEffect startingPoint(const EffectOptions& options) {
  ChosenEffect effect;
  if (options.last) {
    const LastSettings last = readLastSettings();
    // What a dialog was confirmed with is rendered as it is: a random radius may be below its
    // range.
    const EffectSettings& settings = last.preset.settings;
    effect.settings = last.seed.has_value() ? settings : accepted(options, last.preset);
    effect.seed = last.seed;
    effect.pictures[kEnvironmentName].path = settings.environmentPath;
    effect.pictures[kTextureName].path = settings.texturePath;
  } else if (!options.preset.empty()) {
    const Preset preset = readPreset(findPreset(options.preset));
    effect.settings = accepted(options, preset);
    for (int32_t i = 0; i < kPictureNames; ++i) effect.pictures[i].name = preset.decoded.names[i];
  } else {
    effect.settings = emptyPreset().settings;
  }
  return effect;
}

void checkOptions(const EffectOptions& options) {
  if (options.preset.empty() && !options.pictures.empty()) {
    failOnUsage("--pictures says where a preset's pictures are; add --preset FILE");
  }
  if (!options.pictures.empty() && !isFolder(options.pictures)) {
    failOnFile(options.pictures, "there is no such folder");
  }
  for (const std::string& text : options.assignments) parseAssignment(text);
}

void applyOptions(const EffectOptions& options, ChosenEffect* effect) {
  const int32_t assignedChoice = applyAssignments(options, &effect->settings);
  checkTexture(options, assignedChoice, *effect);
  if (!options.environment.empty()) effect->pictures[kEnvironmentName] = {options.environment, ""};
  if (options.texture.empty()) return;
  effect->pictures[kTextureName] = {options.texture, ""};
  effect->settings.textureChoice = kTextureChoiceFile;
}

ChosenEffect chooseEffect(const EffectOptions& options) {
  checkOptions(options);
  ChosenEffect effect = startingPoint(options);
  applyOptions(options, &effect);
  return effect;
}

static const char* kindOf(int32_t kind) {
  return kind == kEnvironmentName ? "environment" : "texture";
}

static BitmapPath findPicture(const EffectOptions& options, const ChosenPicture& picture,
                              int32_t kind) {
  if (!picture.path.empty()) return findBitmap(picture.path);
  if (picture.name.empty()) return BitmapPath();
  const std::string folder =
      options.pictures.empty() ? usualPictureFolder(findPreset(options.preset)) : options.pictures;
  const std::string file = findPictureOfPreset(folder, picture.name.c_str());
  if (file.empty()) {
    failOnFile(options.preset,
               "names the " + std::string(kindOf(kind)) + " picture \"" +
                   nameInUtf8(picture.name.c_str()) + "\", which is not in \"" + folder + "\"" +
                   (options.pictures.empty() ? "; tell its folder with --pictures" : ""));
  }
  return findBitmap(file);
}

// A render that mirrors nothing never looks at the environment. What an option asks for is to be
// there all the same.
static bool isSpare(const EffectOptions& options, const ChosenEffect& effect) {
  return effect.settings.reflection == 0 && options.environment.empty();
}

// For a dialog, in which the user may turn the reflection up.
static BitmapPath findSparePicture(const EffectOptions& options, const ChosenPicture& picture) {
  try {
    return findPicture(options, picture, kEnvironmentName);
  } catch (const CommandFailure&) {
    return BitmapPath();
  }
}

FoundPictures findPictures(const EffectOptions& options, const ChosenEffect& effect) {
  FoundPictures found;
  for (int32_t kind = 0; kind < kPictureNames; ++kind) {
    if (kind == kTextureName && effect.settings.textureChoice != kTextureChoiceFile) continue;
    found.pictures[kind] = kind == kEnvironmentName && isSpare(options, effect)
                               ? findSparePicture(options, effect.pictures[kind])
                               : findPicture(options, effect.pictures[kind], kind);
  }
  if (effect.settings.textureChoice == kTextureChoiceFile &&
      found.pictures[kTextureName].path.empty()) {
    failOnFile(originOf(options),
               "takes its relief from a picture, but does not say which; add --texture FILE");
  }
  return found;
}
