#include "hosts/effect_choices/preset_lookup.h"

#include "hosts/process/command_failure.h"
#include "hosts/process/file_access.h"
#include "hosts/process/file_names.h"
#include "hosts/process/name_matching.h"

// Seen from the program: bin/ beside share/, lib/morvalis/, and build/desktop/ in the tree.
constexpr const char* kPresetFolders[] = {"../share/morvalis/presets",
                                          "../../share/morvalis/presets", "../../presets"};

static std::string withoutEnding(const std::string& name) {
  return name.ends_with(".q9q") ? name.substr(0, name.size() - 4) : name;
}

std::vector<std::string> ownPresets() {
  for (const char* folder : kPresetFolders) {
    const std::string place = wholePath(programFolder() + "/" + folder);
    std::vector<std::string> files = filesIn(place, ".q9q");
    if (!files.empty()) return files;
  }
  return {};
}

static std::string listOf(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "; there are " : ", ") + name;
  return text;
}

// Among those that come with the program and the files of the folder, whose endings are written.
static std::string adviceFor(const std::string& wanted, const std::string& folder,
                             const std::vector<std::string>& known) {
  const std::vector<std::string> files = filesIn(folder, ".q9q");
  std::vector<std::string> names;
  for (const std::string& file : files) names.push_back(bareName(file));
  names.insert(names.end(), known.begin(), known.end());
  const std::string nearest = nearestName(wanted, names);
  for (const std::string& file : files) {
    if (bareName(file) == nearest) return "; did you mean " + lastName(file) + "?";
  }
  return suggestionFor(wanted, known);
}

std::string findPreset(const std::string& name) {
  if (name == kStandardStream) return name;
  if (name.find('/') != std::string::npos) {
    if (fileExists(name)) return name;
    failOnFile(name, "there is no such file" + adviceFor(bareName(name), folderOf(name), {}));
  }
  if (name.empty() || (fileExists(name) && !isFolder(name))) return name;
  const std::string wanted = withoutEnding(name);
  std::vector<std::string> known;
  for (const std::string& file : ownPresets()) {
    known.push_back(bareName(file));
    if (foldedName(known.back()) == foldedName(wanted)) return file;
  }
  if (isFolder(name)) return name;  // told as what it is
  failOnFile(name, "there is no such file, and no preset of this name comes with the program" +
                       adviceFor(wanted, ".", known) + listOf(known));
}
