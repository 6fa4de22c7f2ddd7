#include "hosts/command_line/preset_lookup.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <vector>

#include "hosts/command_line/command_failure.h"
#include "hosts/command_line/file_access.h"
#include "hosts/command_line/name_matching.h"

// Seen from the program: bin/ beside share/, and build/desktop/ in the tree.
constexpr const char* kPresetFolders[] = {"../share/morvalis/presets", "../../presets"};

static std::string withoutEnding(const std::string& name) {
  return name.ends_with(".q9q") ? name.substr(0, name.size() - 4) : name;
}

static QFileInfoList ownPresets() {
  const QDir program(QCoreApplication::applicationDirPath());
  for (const char* folder : kPresetFolders) {
    const QDir presets(program.filePath(folder));
    const QFileInfoList files = presets.entryInfoList({"*.q9q"}, QDir::Files, QDir::Name);
    if (!files.isEmpty()) return files;
  }
  return {};
}

std::string findPreset(const std::string& name) {
  if (name == kStandardStream || name.find('/') != std::string::npos) return name;
  if (name.empty() || QFileInfo::exists(QFile::decodeName(name.c_str()))) return name;
  const std::string wanted = withoutEnding(name);
  std::vector<std::string> known;
  for (const QFileInfo& file : ownPresets()) {
    known.push_back(file.completeBaseName().toStdString());
    if (foldedName(known.back()) == foldedName(wanted)) {
      return QFile::encodeName(QDir::cleanPath(file.absoluteFilePath())).toStdString();
    }
  }
  failOnFile(name, "there is no such file, and no preset of this name comes with the program" +
                       suggestionFor(wanted, known));
}
