#include "hosts/command_line/command_outline.h"

#include <CLI/CLI.hpp>
#include <algorithm>

static std::string onOneLine(std::string text) {
  std::replace(text.begin(), text.end(), '\n', ' ');
  return text;
}

static OptionOutline outlineOf(const CLI::Option& option) {
  OptionOutline outline;
  outline.positional = option.get_positional();
  if (outline.positional) {
    outline.names = {option.get_name()};
  } else {
    for (const std::string& name : option.get_snames()) outline.names.push_back("-" + name);
    for (const std::string& name : option.get_lnames()) outline.names.push_back("--" + name);
  }
  outline.value = option.get_expected_max() == 0 ? "" : option.get_type_name();
  outline.meaning = onOneLine(option.get_description());
  outline.required = option.get_required();
  outline.repeats = option.get_expected_max() > 1;
  return outline;
}

static CommandOutline outlineBelow(const CLI::App& app, const std::string& above) {
  CommandOutline outline;
  outline.name = app.get_name();
  outline.path = above + app.get_name();
  outline.meaning = app.get_description();
  outline.footer = app.get_footer();
  for (const CLI::Option* option : app.get_options()) {
    outline.options.push_back(outlineOf(*option));
  }
  std::stable_partition(outline.options.begin(), outline.options.end(),
                        [](const OptionOutline& option) { return option.positional; });
  for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
    outline.commands.push_back(outlineBelow(*command, outline.path + " "));
  }
  return outline;
}

CommandOutline outlineOf(const CLI::App& app) {
  return outlineBelow(app, "");
}

std::vector<std::string> optionNames(const CommandOutline& command) {
  std::vector<std::string> names;
  for (const OptionOutline& option : command.options) {
    if (option.positional) continue;
    names.insert(names.end(), option.names.begin(), option.names.end());
  }
  return names;
}

std::vector<std::string> commandNames(const CommandOutline& command) {
  std::vector<std::string> names;
  for (const CommandOutline& below : command.commands) names.push_back(below.name);
  return names;
}

std::string synopsisOf(const CommandOutline& command) {
  std::string text = command.path;
  for (const OptionOutline& option : command.options) {
    std::string part = option.names[0];
    if (part == "-h") continue;
    if (!option.positional && !option.value.empty()) part += " " + option.value;
    if (!option.required) part.insert(0, "[").append("]");
    if (option.repeats) part += "...";
    text += " " + part;
  }
  if (!command.commands.empty()) text += " COMMAND";
  return text;
}
