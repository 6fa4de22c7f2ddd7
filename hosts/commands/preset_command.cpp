#include "hosts/commands/preset_command.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "hosts/commands/json_text.h"
#include "hosts/effect_choices/other_bitmaps.h"
#include "hosts/effect_choices/picture_lookup.h"
#include "hosts/effect_choices/preset_file.h"
#include "hosts/effect_choices/preset_lookup.h"
#include "hosts/effect_choices/setting_text.h"
#include "hosts/effect_runs/color_use.h"
#include "hosts/process/command_failure.h"
#include "hosts/process/file_access.h"
#include "hosts/process/file_names.h"
#include "hosts/process/interrupt.h"
#include "platform/user_files.h"

// --- Showing --------------------------------------------------------------------------------

struct ShownItem {
  std::string name;
  std::string value;  // as --set takes it, where it does
  std::string json;
};

static ShownItem shownSetting(const SettingRange& row, const EffectSettings& settings) {
  const std::vector<std::string> parts = componentsOf(row, settings);
  return {row.name, formatValue(row, settings), parts.size() == 1 ? parts[0] : jsonArray(parts)};
}

static ShownItem shownPattern(const EffectSettings& settings) {
  std::vector<std::string> parts;
  std::string text;
  for (int i = 0; i < 3; ++i) {
    parts.push_back(std::to_string(settings.proceduralTexture[i]));
    text += (i == 0 ? "" : ",") + parts.back();
  }
  return {"proceduralTexture", text, jsonArray(parts)};
}

// An item that no option sets.
static ShownItem shownNumber(const SettingsItem& item, const EffectSettings& settings) {
  if (item.offset == offsetof(EffectSettings, constantOne)) {
    const std::string text = std::to_string(settings.constantOne);
    return {item.field, text, text};
  }
  int32_t number = 0;
  std::memcpy(&number, reinterpret_cast<const char*>(&settings) + item.offset, sizeof(number));
  return {item.field, std::to_string(number), std::to_string(number)};
}

static ShownItem shownItem(const SettingsItem& item, const EffectSettings& settings) {
  const SettingRange* row = findSetting(item.field);
  if (row != nullptr) return shownSetting(*row, settings);
  if (std::strcmp(item.field, "proceduralTexture") == 0) return shownPattern(settings);
  return shownNumber(item, settings);
}

// Fields of several items, and one that old and new files hold at different places, appear once.
static std::vector<ShownItem> shownItems(const Preset& preset) {
  const std::string version = std::to_string(preset.decoded.version);
  std::vector<ShownItem> items = {{"formatVersion", version, version}};
  int32_t names = 0;
  for (const SettingsItem& item : kSettingsItems) {
    const bool known = std::any_of(items.begin(), items.end(), [&item](const ShownItem& other) {
      return other.name == item.field;
    });
    if (known || item.form == ItemForm::block || item.form == ItemForm::encoding) continue;
    if (item.form == ItemForm::name) {
      const std::string name = nameInUtf8(preset.decoded.names[names++]);
      items.push_back({item.field, name, jsonString(name)});
    } else {
      items.push_back(shownItem(item, preset.settings));
    }
  }
  return items;
}

static void printJson(const std::vector<ShownItem>& items) {
  std::puts("{");
  for (const ShownItem& item : items) {
    const char* end = &item == &items.back() ? "" : ",";
    std::printf("  %s: %s%s\n", jsonString(item.name).c_str(), item.json.c_str(), end);
  }
  std::puts("}");
}

static void printTable(const std::vector<ShownItem>& items) {
  size_t width = 0;
  size_t valueWidth = 0;
  for (const ShownItem& item : items) {
    width = std::max(width, item.name.size());
    if (findSetting(item.name.c_str()) != nullptr) {
      valueWidth = std::max(valueWidth, item.value.size());
    }
  }
  for (const ShownItem& item : items) {
    const SettingRange* row = findSetting(item.name.c_str());
    const std::string value = printableLine(item.value);  // names may hold anything
    if (row == nullptr) {
      std::printf("%-*s  %s\n", static_cast<int>(width), item.name.c_str(), value.c_str());
    } else {
      std::printf("%-*s  %-*s  %s\n", static_cast<int>(width), item.name.c_str(),
                  static_cast<int>(valueWidth), value.c_str(), row->meaning);
    }
  }
}

int runPresetList(bool json) {
  std::vector<std::string> names;
  for (const std::string& file : ownPresets()) names.push_back(bareName(file));
  if (names.empty()) {
    throw CommandFailure{kExitFailed, "no presets have been installed with the program"};
  }
  if (json) {
    for (std::string& name : names) name = jsonString(name);
    std::printf("%s\n", jsonArray(names).c_str());
  } else {
    for (const std::string& name : names) std::printf("%s\n", name.c_str());
  }
  return kExitDone;
}

int runPresetShow(const PresetShowOptions& options) {
  const Preset preset = readPreset(findPreset(options.file));
  const std::vector<ShownItem> items = shownItems(preset);
  if (options.json) {
    printJson(items);
  } else {
    printTable(items);
  }
  if (!preset.oddities.empty()) {
    reportWarning(options.file + ": " + preset.oddities +
                  "; the other commands take it only with --limit");
  }
  return kExitDone;
}

// --- Saving ---------------------------------------------------------------------------------

// The name that the file will hold has to lead back to the picture: it has no folder, it is read
// in small letters and with the usual ending, and its character set is small.
static std::string nameOfPicture(const std::string& file) {
  const BitmapPath checked = findBitmap(file);
  char stored[kPathBytes];
  windowsNameFromPath(lastName(file).c_str(), stored, kPathBytes);
  if (lastName(findPictureByName(folderOf(file), stored)) != lastName(file)) {
    failOnFile(file,
               "a settings file cannot name this picture; its name has to end in .bmp, consist of "
               "Western European letters, and differ from others in more than capitals");
  }
  return stored;
}

static std::string nameBesidePreset(const std::string& picture, const std::string& preset) {
  char stored[kPathBytes];
  windowsNameFromPath(lastName(placeBesidePreset(picture, preset)).c_str(), stored, kPathBytes);
  return stored;
}

static void tellOfCopy(const std::string& picture, const std::string& name,
                       const std::string& preset) {
  reportWarning(preset + ": stands for " + picture + " with a copy beside it, \"" +
                lastName(usualPictureFolder(preset)) + "/" + nameInUtf8(name.c_str()) + "\"");
}

// Of pictures that a render needs and that are not found from where the file is now.
static void warnOfMissingPictures(const PresetSaveOptions& options, const EffectSettings& settings,
                                  const std::string names[kPictureNames]) {
  const bool mirrors = settings.reflection != 0 || !options.effect.environment.empty();
  const bool needed[kPictureNames] = {mirrors, settings.textureChoice == kTextureChoiceFile};
  const std::string folder = usualPictureFolder(options.output);
  std::string missing;
  for (int32_t kind = 0; kind < kPictureNames; ++kind) {
    const std::string& name = names[kind];
    if (!needed[kind] || name.empty() || !findPictureOfPreset(folder, name.c_str()).empty()) {
      continue;
    }
    missing += std::string(missing.empty() ? "" : " and ") +
               (kind == kEnvironmentName ? "environment" : "texture") + " picture \"" +
               nameInUtf8(name.c_str()) + "\"";
  }
  if (missing.empty()) return;
  reportWarning(options.output + ": will not find its " + missing +
                "; --with-pictures copies what it names into \"" + lastName(folder) +
                "\" beside it");
}

int runPresetSave(const PresetSaveOptions& options) {
  const std::string& output = options.output;
  const bool intoFile = output != kStandardStream;
  if (options.withPictures && !intoFile) {
    failOnUsage("--with-pictures needs a file that they can stand beside, instead of -");
  }
  const ChosenEffect effect = chooseEffect(options.effect);
  warnOfDarkLights(effect.settings);
  FoundPictures found;
  if (options.withPictures) found = findPictures(options.effect, effect);
  watchForInterrupts();
  checkWritable(output);
  checkReplaceable(output);
  std::string names[kPictureNames];
  for (int32_t kind = 0; kind < kPictureNames; ++kind) {
    const ChosenPicture& picture = effect.pictures[kind];
    const std::string& path = picture.path.empty() ? found.pictures[kind].path : picture.path;
    if (path.empty()) {
      names[kind] = picture.name;
    } else if (options.withPictures || (intoFile && !isWindowsBitmap(path))) {
      findBitmap(path);
      names[kind] = nameBesidePreset(path, output);
      if (!options.withPictures) tellOfCopy(path, names[kind], output);
    } else {
      names[kind] = nameOfPicture(path);
    }
  }
  writePreset(effect.settings, names, output);
  if (intoFile) warnOfMissingPictures(options, effect.settings, names);
  if (intoFile && !output.ends_with(".q9q")) {
    reportWarning(output + ": does not end in .q9q, so that `morvalis gallery` leaves it out");
  }
  return kExitDone;
}
