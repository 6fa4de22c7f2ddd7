#include "hosts/process/file_names.h"

#include <stdlib.h>

#include <algorithm>
#include <filesystem>

#include "hosts/process/command_failure.h"
#include "hosts/process/interrupt.h"
#include "hosts/process/leftovers.h"
#include "hosts/process/name_matching.h"

namespace fs = std::filesystem;

bool fileExists(const std::string& file) {
  std::error_code failed;
  return fs::exists(file, failed);
}

bool isFolder(const std::string& file) {
  std::error_code failed;
  return fs::is_directory(file, failed);
}

bool isOrdinaryFile(const std::string& file) {
  std::error_code failed;
  return fs::is_regular_file(file, failed);
}

std::string lastName(const std::string& file) {
  return file.substr(file.rfind('/') + 1);
}

std::string bareName(const std::string& file) {
  const std::string name = lastName(file);
  return name.substr(0, name.rfind('.'));
}

bool hasMark(const std::string& pattern) {
  return pattern.find(kNameMark) != std::string::npos ||
         pattern.find(kFolderMark) != std::string::npos;
}

// Marks in what has been put in are part of its name.
std::string withName(const std::string& pattern, const std::string& file) {
  const std::string name = file == "-" ? "stdin" : bareName(file);
  std::string text;
  size_t start = 0;
  for (;;) {
    const size_t ofName = pattern.find(kNameMark, start);
    const size_t ofFolder = pattern.find(kFolderMark, start);
    const size_t mark = std::min(ofName, ofFolder);
    text += pattern.substr(start, mark - start);
    if (mark == std::string::npos) return text;
    text += mark == ofName ? name : folderOf(file);
    start = mark + (mark == ofName ? sizeof(kNameMark) : sizeof(kFolderMark)) - 1;
  }
}

std::string freeName(const std::string& wanted,
                     const std::function<bool(const std::string&)>& isTaken) {
  const size_t end = wanted.size() - (lastName(wanted).size() - bareName(wanted).size());
  std::string name = wanted;
  for (int number = 2; isTaken(name); ++number) {
    name = wanted.substr(0, end) + "-" + std::to_string(number) + wanted.substr(end);
  }
  return name;
}

std::string extensionOf(const std::string& file) {
  const std::string name = lastName(file);
  const size_t dot = name.rfind('.');
  return dot == std::string::npos ? "" : foldedName(name.substr(dot + 1));
}

std::string wholePath(const std::string& file) {
  std::error_code failed;
  const fs::path path = fs::absolute(file, failed);
  return failed ? file : path.lexically_normal().string();
}

std::string folderOf(const std::string& file) {
  const size_t slash = file.rfind('/');
  return slash == std::string::npos ? "." : slash == 0 ? "/" : file.substr(0, slash);
}

std::string placeOf(const std::string& file) {
  std::error_code failed;
  const fs::path whole = fs::canonical(file, failed);
  if (!failed) return whole.string();
  const fs::path absolute = fs::absolute(file, failed);
  const fs::path folder = fs::canonical(absolute.parent_path(), failed);
  return failed ? absolute.string() : (folder / absolute.filename()).string();
}

static bool comesBefore(const std::string& a, const std::string& b) {
  const std::string first = foldedName(bareName(a));
  const std::string second = foldedName(bareName(b));
  return first != second ? first < second : a < b;
}

std::vector<std::string> filesIn(const std::string& folder, const std::string& ending) {
  std::vector<std::string> files;
  std::error_code failed;
  const std::string start = folder.ends_with('/') ? folder : folder + "/";
  for (const fs::directory_entry& entry : fs::directory_iterator(folder, failed)) {
    const std::string name = entry.path().filename().string();
    std::error_code unreadable;
    const bool named = !name.starts_with('.') && foldedName(name).ends_with(ending);
    if (named && entry.is_regular_file(unreadable)) files.push_back(start + name);
  }
  std::sort(files.begin(), files.end(), comesBefore);
  return files;
}

std::string programFolder() {
  std::error_code failed;
  const fs::path program = fs::read_symlink("/proc/self/exe", failed);
  return failed ? "" : program.parent_path().string();
}

TemporaryFolder::TemporaryFolder() {
  const char* place = getenv("TMPDIR");
  std::string name =
      std::string(place == nullptr || *place == 0 ? "/tmp" : place) + "/morvalis-XXXXXX";
  stopIfInterrupted();
  if (mkdtemp(name.data()) == nullptr) return;
  path = name;
  noteLeftover(path);
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code failed;
  if (path.empty()) return;
  fs::remove_all(path, failed);
  forgetLeftover(path);
}

const std::string& pathOf(const TemporaryFolder& folder) {
  if (folder.path.empty()) {
    throw CommandFailure{kExitFailed, "there is no room for temporary files"};
  }
  return folder.path;
}
