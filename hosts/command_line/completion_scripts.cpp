#include "hosts/command_line/completion_scripts.h"

#include <algorithm>
#include <sstream>

#include "hosts/effect_choices/setting_text.h"
#include "hosts/picture_files/picture_format.h"
#include "hosts/process/command_failure.h"
#include "hosts/process/name_matching.h"

std::string completionScript(const std::string& shell, const CommandOutline& program) {
  if (shell == "bash") return bashCompletion(program);
  if (shell == "zsh") return zshCompletion(program);
  if (shell == "fish") return fishCompletion(program);
  failOnUsage("there is no completion for " + shell +
              suggestionFor(shell, {"bash", "zsh", "fish"}) +
              " (see `morvalis completion --help`)");
}

// "1-100", "PIXELS": what kind of thing it is, and not the thing.
static bool isWord(const std::string& part) {
  const bool range = part.find('-') != std::string::npos;
  return !range &&
         std::none_of(part.begin(), part.end(), [](char c) { return c >= 'A' && c <= 'Z'; });
}

ValueKinds valueKinds(const std::string& value) {
  ValueKinds kinds = {};
  std::istringstream parts(value);
  for (std::string part; std::getline(parts, part, '|');) {
    if (part == "NAME=VALUE") {
      kinds.settings = true;
    } else if (part == "FOLDER") {
      kinds.folders = true;
    } else if (part == "FILE" || part == "OUT") {
      kinds.files = true;
    } else if (part.starts_with("FILE.") || part.starts_with("OUT.")) {
      kinds.files = true;
      kinds.ending = part.substr(part.find('.'));
      kinds.presets = part == "FILE.q9q";
    } else if (part == "EXT") {
      std::istringstream endings(writableExtensions());
      for (std::string ending; std::getline(endings, ending, ',');) {
        kinds.words.push_back(ending.substr(ending.find('.') + 1));
      }
    } else if (isWord(part)) {
      kinds.words.push_back(part);
    }
  }
  return kinds;
}

std::vector<std::string> choiceWords(int32_t row) {
  std::vector<std::string> words = choicesOf(kSettingRanges[row]);
  for (std::string& word : words) std::replace(word.begin(), word.end(), ' ', '-');
  return words;
}

std::string joinedWords(const std::vector<std::string>& words, const std::string& between) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : between) + word;
  return text;
}

std::string shellQuoted(const std::string& text) {
  std::string quoted = "'";
  for (const char c : text) {
    if (c == '\'') {
      quoted += "'\\''";
    } else {
      quoted += c;
    }
  }
  return quoted + "'";
}
