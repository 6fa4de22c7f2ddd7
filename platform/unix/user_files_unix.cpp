#include "platform/user_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "platform/unix/program_session.h"

constexpr char kStateFolder[] = "morvalis";
constexpr char kCachedSettingsName[] = "Morvalis cached settings";

constexpr char32_t kNone = U'_';

// Characters 0x80 to 0x9F of the Windows character set for Western Europe; all others are those of
// the same number.
constexpr char16_t kWindowsCharacters[32] = {
    0x20AC, kNone,  0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, kNone,  0x017D, kNone,  kNone,  0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, kNone,  0x017E, 0x0178};

char pathSeparator() {
  return '/';
}

// --- Letters --------------------------------------------------------------------------------

static char32_t fromWindows(uint8_t character) {
  return character >= 0x80 && character < 0xA0 ? kWindowsCharacters[character - 0x80] : character;
}

static char toWindows(char32_t character) {
  if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) {
    return static_cast<char>(character);
  }
  for (int i = 0; i < 32; ++i) {
    if (kWindowsCharacters[i] == character) return static_cast<char>(0x80 + i);
  }
  return static_cast<char>(kNone);
}

// Of the letters that the Windows character set has; none takes more than three bytes.
static void appendUtf8(char32_t letter, std::string* text) {
  const auto byte = [text](char32_t value) { text->push_back(static_cast<char>(value)); };
  if (letter < 0x80) {
    byte(letter);
  } else if (letter < 0x800) {
    byte(0xC0 | letter >> 6);
    byte(0x80 | (letter & 0x3F));
  } else {
    byte(0xE0 | letter >> 12);
    byte(0x80 | (letter >> 6 & 0x3F));
    byte(0x80 | (letter & 0x3F));
  }
}

// Bytes that are no UTF-8 become letters that nothing else is.
static std::u32string lettersOf(const std::string& text) {
  constexpr char32_t kNoLetter = 0x110000;
  std::u32string letters;
  for (size_t i = 0; i < text.size();) {
    const auto first = static_cast<uint8_t>(text[i]);
    const size_t count = first < 0x80   ? 1
                         : first < 0xC2 ? 0
                         : first < 0xE0 ? 2
                         : first < 0xF0 ? 3
                         : first < 0xF5 ? 4
                                        : 0;
    char32_t letter = count == 1 ? first : first & (0x7F >> count);
    bool whole = count > 0 && i + count <= text.size();
    for (size_t k = 1; whole && k < count; ++k) {
      const auto next = static_cast<uint8_t>(text[i + k]);
      whole = (next & 0xC0) == 0x80;
      letter = letter << 6 | (next & 0x3F);
    }
    letters.push_back(whole ? letter : kNoLetter + first);
    i += whole ? count : 1;
  }
  return letters;
}

// A letter and the accent behind it as the one letter of the Windows character set.
struct Accent {
  char32_t mark;
  const char32_t* plain;
  const char32_t* accented;
};
constexpr Accent kAccents[] = {
    {0x300, U"AEIOUaeiou", U"\u00C0\u00C8\u00CC\u00D2\u00D9\u00E0\u00E8\u00EC\u00F2\u00F9"},
    {0x301, U"AEIOUYaeiouy",
     U"\u00C1\u00C9\u00CD\u00D3\u00DA\u00DD\u00E1\u00E9\u00ED\u00F3\u00FA\u00FD"},
    {0x302, U"AEIOUaeiou", U"\u00C2\u00CA\u00CE\u00D4\u00DB\u00E2\u00EA\u00EE\u00F4\u00FB"},
    {0x303, U"ANOano", U"\u00C3\u00D1\u00D5\u00E3\u00F1\u00F5"},
    {0x308, U"AEIOUYaeiouy",
     U"\u00C4\u00CB\u00CF\u00D6\u00DC\u0178\u00E4\u00EB\u00EF\u00F6\u00FC\u00FF"},
    {0x30A, U"Aa", U"\u00C5\u00E5"},
    {0x30C, U"SZsz", U"\u0160\u017D\u0161\u017E"},
    {0x327, U"Cc", U"\u00C7\u00E7"},
};

static char32_t accented(char32_t letter, char32_t mark) {
  for (const Accent& accent : kAccents) {
    if (accent.mark != mark) continue;
    for (int i = 0; accent.plain[i] != 0; ++i) {
      if (accent.plain[i] == letter) return accent.accented[i];
    }
  }
  return 0;
}

// Some systems take letters with accents apart in names of files.
static std::u32string joinedLetters(const std::string& name) {
  std::u32string joined;
  for (const char32_t letter : lettersOf(name)) {
    const char32_t one = joined.empty() ? 0 : accented(joined.back(), letter);
    if (one != 0) {
      joined.back() = one;
    } else {
      joined.push_back(letter);
    }
  }
  return joined;
}

static std::u32string foldedFileName(const std::string& name) {
  std::u32string folded = joinedLetters(name);
  for (char32_t& letter : folded) {
    if (letter >= U'A' && letter <= U'Z') letter = letter - U'A' + U'a';
  }
  return folded;
}

// --- Names ----------------------------------------------------------------------------------

// Cuts between two characters of UTF-8, of which all bytes but the first begin with the bits 10.
static void copyPath(const std::string& text, char* path, int32_t bytes) {
  size_t length = text.size();
  if (length >= static_cast<size_t>(bytes)) {
    length = static_cast<size_t>(bytes) - 1;
    while (length > 0 && (static_cast<uint8_t>(text[length]) & 0xC0) == 0x80) --length;
  }
  std::memcpy(path, text.data(), length);
  path[length] = '\0';
}

void pathFromWindowsName(const char* name, char* path, int32_t bytes) {
  if (bytes <= 0) return;
  try {
    std::string text;
    for (const char* at = name; *at != '\0'; ++at) {
      appendUtf8(fromWindows(static_cast<uint8_t>(*at)), &text);
    }
    copyPath(text, path, bytes);
  } catch (...) {
    path[0] = '\0';  // out of memory
  }
}

void windowsNameFromPath(const char* path, char* name, int32_t bytes) {
  if (bytes <= 0) return;
  int32_t length = 0;
  try {
    for (const char32_t letter : joinedLetters(path)) {
      if (length == bytes - 1) break;
      name[length++] = toWindows(letter);
    }
  } catch (...) {
    length = 0;  // out of memory
  }
  name[length] = '\0';
}

void takeFileAsWritten(char* path, int32_t bytes) {
  namespace fs = std::filesystem;
  try {
    const fs::path wanted(path);
    std::error_code failed;
    if (fs::exists(wanted, failed)) return;
    const std::u32string name = lettersOf(wanted.filename().string());
    std::vector<std::string> alike;
    for (const fs::directory_entry& entry : fs::directory_iterator(wanted.parent_path(), failed)) {
      const std::string file = entry.path().filename().string();
      if (entry.is_regular_file(failed) && foldedFileName(file) == name) alike.push_back(file);
    }
    if (alike.empty()) return;
    const std::string& first = *std::min_element(alike.begin(), alike.end());
    const std::string found = (wanted.parent_path() / first).string();
    if (found.size() < static_cast<size_t>(bytes)) copyPath(found, path, bytes);
  } catch (...) {
    // out of memory: the path stays
  }
}

// The folder for what a program remembers of its last run. A relative path in the variable is to
// be ignored, as in every variable of this kind.
static std::string stateFolder() {
  const char* configured = std::getenv("XDG_STATE_HOME");
  if (configured != nullptr && configured[0] == '/') {
    return std::string(configured) + "/" + kStateFolder;
  }
  const char* home = std::getenv("HOME");
  return std::string(home == nullptr ? "/" : home) + "/.local/state/" + kStateFolder;
}

bool cachedSettingsPath(bool forWriting, char* path, int32_t bytes) {
  if (bytes <= 0 || runIsCutOff()) return false;
  try {
    const std::string folder = stateFolder();
    std::error_code failed;
    if (forWriting) {
      std::filesystem::create_directories(folder, failed);
      if (!std::filesystem::is_directory(folder, failed)) return false;
    }
    const std::string file = folder + "/" + kCachedSettingsName;
    if (file.size() >= static_cast<size_t>(bytes)) return false;
    copyPath(file, path, bytes);
    return true;
  } catch (...) {
    return false;
  }
}

// --- Reading --------------------------------------------------------------------------------

std::FILE* openUserFile(const char* path) {
  const int file = open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  struct stat about = {};
  std::FILE* opened = nullptr;
  if (file >= 0 && fstat(file, &about) == 0 && S_ISREG(about.st_mode)) opened = fdopen(file, "rb");
  if (opened == nullptr && file >= 0) close(file);
  return opened;
}

// --- Overwriting ----------------------------------------------------------------------------

static bool writeToDisk(int file, const std::string& content) {
  for (size_t done = 0; done < content.size();) {
    const ssize_t count = write(file, content.data() + done, content.size() - done);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    done += static_cast<size_t>(count);
  }
  // Some file systems know no such call.
  return fsync(file) == 0 || errno == EINVAL || errno == ENOTSUP;
}

// The rights of the file that is replaced, or those of a new one.
static mode_t rightsFor(const std::string& path) {
  struct stat status = {};
  if (stat(path.c_str(), &status) == 0) return status.st_mode & 07777;
  const mode_t mask = umask(0);
  umask(mask);
  return 0666 & ~mask;
}

// In a new file beside it, which takes its place when it is on the disk: whole or not at all.
static bool replaceFile(const std::string& path, const std::string& content) {
  std::string beside = path + ".XXXXXX";
  const mode_t rights = rightsFor(path);
  const int file = mkstemp(beside.data());
  if (file < 0) return false;
  bool written = writeToDisk(file, content) && fchmod(file, rights) == 0;
  written = close(file) == 0 && written && std::rename(beside.c_str(), path.c_str()) == 0;
  if (!written) unlink(beside.c_str());
  return written;
}

// What a file holds; nothing when it cannot be read.
static std::optional<std::string> contentOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string content((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  if (!file.is_open() || file.bad()) return std::nullopt;
  return content;
}

static bool overwrite(const char* path, const uint8_t* bytes, size_t count) {
  namespace fs = std::filesystem;
  try {
    std::string content(reinterpret_cast<const char*>(bytes), count);
    std::error_code failed;
    if (!fs::exists(path, failed)) return !failed && replaceFile(path, content);
    if (!fs::is_regular_file(path, failed)) return false;
    const std::optional<std::string> old = contentOf(path);
    if (!old) return false;
    if (old->size() > count) content += old->substr(count);
    return replaceFile(fs::canonical(path), content);  // a link stays a link
  } catch (...) {
    return false;  // out of memory
  }
}

static void (*tellOfWritten)(const char* path) = nullptr;

void watchUserFiles(void (*written)(const char* path)) {
  tellOfWritten = written;
}

bool overwriteUserFile(const char* path, const uint8_t* bytes, size_t count) {
  if (!overwrite(path, bytes, count)) return false;
  if (tellOfWritten != nullptr) tellOfWritten(path);
  return true;
}

// Seen from the program: bin/ beside share/, lib/morvalis/, and build/desktop/ in the tree.
constexpr const char* kOwnPictures[] = {"../share/morvalis/presets/environments and textures",
                                        "../../share/morvalis/presets/environments and textures",
                                        "../../presets/environments and textures"};

bool ownPicturesFolder(char* folder, int32_t bytes) {
  namespace fs = std::filesystem;
  try {
    std::error_code failed;
    const fs::path program = fs::read_symlink("/proc/self/exe", failed).parent_path();
    for (const char* each : kOwnPictures) {
      const fs::path path = (program / each).lexically_normal();
      const std::string text = path.string() + pathSeparator();
      if (!fs::is_directory(path, failed) || text.size() >= static_cast<size_t>(bytes)) continue;
      copyPath(text, folder, bytes);
      return true;
    }
  } catch (...) {
    // out of memory
  }
  return false;
}
