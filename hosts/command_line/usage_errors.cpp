#include "hosts/command_line/usage_errors.h"

#include <CLI/CLI.hpp>

#include "hosts/command_line/command_outline.h"
#include "hosts/command_line/name_matching.h"

// An option's one letter may stand for the word that begins with it.
static std::string nearestOption(const std::string& text, const std::vector<std::string>& names) {
  if (text.size() == 2) {
    for (const std::string& name : names) {
      if (name.size() > 3 && name[2] == text[1]) return name;
    }
  }
  return nearestName(text, names);
}

// The command's own words about something it does not know; empty when it knows everything.
static std::string describeUnknown(const CLI::App& command) {
  const std::vector<std::string> unknown = command.remaining();
  if (unknown.empty()) return "";
  const CommandOutline outline = outlineOf(command);
  const std::string text = unknown[0].substr(0, unknown[0].find('='));
  if (text.size() > 1 && text[0] == '-') {
    return "there is no option " + text + "; did you mean " +
           nearestOption(text, optionNames(outline)) + "?";
  }
  if (!outline.commands.empty()) {
    return "there is no command " + text + "; did you mean " +
           nearestName(text, commandNames(outline)) + "?";
  }
  return "";
}

std::string describeUsageError(const CLI::App& app, const CLI::ParseError& error) {
  std::string path = app.get_name();
  std::string text = describeUnknown(app);
  const CLI::App* command = &app;
  // The parser complains of what is missing first, though a slip in a name may be the cause.
  while (text.empty() && !command->get_subcommands().empty()) {
    command = command->get_subcommands().front();
    path += " " + command->get_name();
    text = describeUnknown(*command);
  }
  if (text.empty()) text = error.what();
  return text + " (see `" + path + " --help`)";
}
