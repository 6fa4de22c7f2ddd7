#include "platform/screenless/remembered_file.h"

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

constexpr char kFile[] = "/Quorrelin/Morvalis.conf";

static std::string fileName() {
  const char* configured = std::getenv("XDG_CONFIG_HOME");
  if (configured != nullptr && configured[0] == '/') return std::string(configured) + kFile;
  const char* home = std::getenv("HOME");
  return std::string(home == nullptr ? "" : home) + "/.config" + kFile;
}

static void appendLetter(unsigned letter, std::string* text) {
  if (letter < 0x80) {
    text->push_back(static_cast<char>(letter));
  } else if (letter < 0x800) {
    text->push_back(static_cast<char>(0xC0 | letter >> 6));
    text->push_back(static_cast<char>(0x80 | (letter & 0x3F)));
  } else if (letter < 0x10000) {
    text->push_back(static_cast<char>(0xE0 | letter >> 12));
    text->push_back(static_cast<char>(0x80 | (letter >> 6 & 0x3F)));
    text->push_back(static_cast<char>(0x80 | (letter & 0x3F)));
  } else {
    text->push_back(static_cast<char>(0xF0 | (letter >> 18 & 7)));
    text->push_back(static_cast<char>(0x80 | (letter >> 12 & 0x3F)));
    text->push_back(static_cast<char>(0x80 | (letter >> 6 & 0x3F)));
    text->push_back(static_cast<char>(0x80 | (letter & 0x3F)));
  }
}

// Quotes are left out; a backslash stands before a letter's number, or before a letter with a
// meaning of its own. Letters beyond 16 bits are written as two numbers.
static std::string valueOf(const std::string& written) {
  constexpr char kNames[] = "abfnrtv";
  constexpr char kMeanings[] = "\a\b\f\n\r\t\v";
  std::string value;
  unsigned firstHalf = 0;
  for (size_t i = 0; i < written.size(); ++i) {
    if (written[i] == '"') continue;
    if (written[i] != '\\' || i + 1 == written.size()) {
      value.push_back(written[i]);
      continue;
    }
    const char kind = written[++i];
    if (kind == 'x') {
      char* end = nullptr;
      const unsigned number = static_cast<unsigned>(std::strtoul(&written[i + 1], &end, 16));
      i = static_cast<size_t>(end - written.data()) - 1;
      if (number >= 0xD800 && number < 0xDC00) {
        firstHalf = number;
      } else if (number >= 0xDC00 && number < 0xE000) {
        appendLetter(0x10000 + ((firstHalf & 0x3FF) << 10) + (number & 0x3FF), &value);
      } else {
        appendLetter(number, &value);
      }
    } else {
      const char* found = std::strchr(kNames, kind);
      value.push_back(found == nullptr ? kind : kMeanings[found - kNames]);
    }
  }
  return value;
}

std::optional<std::string> readRememberedFile(const std::string& name) {
  const std::string path = fileName();
  std::error_code failed;
  if (!std::filesystem::is_regular_file(path, failed)) return std::nullopt;  // a pipe would wait
  std::ifstream file(path);
  bool general = false;
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with('[')) general = line == "[General]";
    if (general && line.starts_with(name + "=")) return valueOf(line.substr(name.size() + 1));
  }
  return std::nullopt;
}
