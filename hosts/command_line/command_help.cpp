#include "hosts/command_line/command_help.h"

#include <CLI/CLI.hpp>

#include "hosts/command_line/command_outline.h"
#include "hosts/process/command_failure.h"
#include "hosts/process/name_matching.h"

static const CLI::App* findCommand(const CLI::App& app, const std::string& name) {
  for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
    if (command->get_name() == name) return command;
  }
  return nullptr;
}

std::string helpText(const CLI::App& app, const std::vector<std::string>& words) {
  const CLI::App* command = &app;
  std::string path = app.get_name();
  for (const std::string& word : words) {
    const CLI::App* next = findCommand(*command, word);
    if (next == nullptr) {
      failOnUsage("there is no command " + word +
                  suggestionFor(word, commandNames(outlineOf(*command))) + " (see `" + path +
                  " --help`)");
    }
    command = next;
    path += " " + word;
  }
  return app.get_formatter()->make_help(command, path, CLI::AppFormatMode::Normal);
}
