// command_outline: the commands and options as plain records, for everything that is made from
// them besides the parsing.

#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

struct OptionOutline {
  std::vector<std::string> names;  // with their hyphens; of a positional argument its one name
  std::string value;               // what it takes; empty for a flag
  std::string meaning;             // one line
  bool positional;
  bool required;
  bool repeats;
};

struct CommandOutline {
  std::string name;
  std::string path;  // with the commands above it: "morvalis preset show"
  std::string meaning;
  std::string footer;
  std::vector<OptionOutline> options;  // positional arguments first
  std::vector<CommandOutline> commands;
};

CommandOutline outlineOf(const CLI::App& app);

// Every name of the options.
std::vector<std::string> optionNames(const CommandOutline& command);
std::vector<std::string> commandNames(const CommandOutline& command);

// How the command is written, with everything it takes.
std::string synopsisOf(const CommandOutline& command);
