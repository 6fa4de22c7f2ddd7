// completion_scripts: what the shells need to complete commands, options, files, and the settings
// with their choices.

#pragma once

#include <string>
#include <vector>

#include "hosts/command_line/command_outline.h"

// For "bash", "zsh" or "fish"; ends the command for any other.
std::string completionScript(const std::string& shell, const CommandOutline& program);

std::string bashCompletion(const CommandOutline& program);
std::string zshCompletion(const CommandOutline& program);
std::string fishCompletion(const CommandOutline& program);

// What can stand for an option's value.
struct ValueKinds {
  std::vector<std::string> words;
  bool files;
  std::string ending;  // of the files, with its dot; empty for any
  bool presets;        // the names of those that come with the program, too
  bool folders;        // only folders
  bool settings;       // an assignment
};
ValueKinds valueKinds(const std::string& value);

// The choices of a setting by its place in the table, as a shell takes them unquoted.
std::vector<std::string> choiceWords(int32_t row);

std::string joinedWords(const std::vector<std::string>& words, const std::string& between = " ");

// In single quotes.
std::string shellQuoted(const std::string& text);
