#include "hosts/command_line/usage_errors.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "hosts/command_line/command_outline.h"
#include "hosts/effect_choices/setting_text.h"
#include "hosts/process/command_failure.h"
#include "hosts/process/name_matching.h"

constexpr char kEndOfOptions[] = "--";

static bool looksLikeOption(const std::string& text) {
  return text.size() > 1 && text[0] == '-';
}

// An option's one letter may stand for the word that begins with it; no two letters are near.
static std::string suggestedOption(const std::string& text, const CommandOutline& command) {
  const std::vector<std::string> names = optionNames(command);
  if (text.size() > 2) return suggestionFor(text, names);
  for (const std::string& name : names) {
    if (name.size() > 3 && foldedName(name)[2] == foldedName(text)[1]) {
      return "; did you mean " + name + "?";
    }
  }
  return "";
}

// What the parser found no place for, but for the mark, which always has one.
static std::vector<std::string> unknownWords(const CLI::App& command) {
  std::vector<std::string> words = command.remaining();
  std::erase(words, kEndOfOptions);
  return words;
}

// The command's own words about something it does not know; empty when it knows everything.
static std::string describeUnknown(const CLI::App& command) {
  const std::vector<std::string> unknown = unknownWords(command);
  if (unknown.empty()) return "";
  const CommandOutline outline = outlineOf(command);
  const std::string& text = unknown[0];
  if (looksLikeOption(text)) {
    const std::string name = text.substr(0, text.find('='));
    return "there is no option " + name + suggestedOption(name, outline);
  }
  if (!outline.commands.empty()) {
    return "there is no command " + text + suggestionFor(text, commandNames(outline));
  }
  if (isSettingAssignment(text)) return describeStraySetting(text);
  return "\"" + text + "\" is one argument too many";
}

// Options that stand behind the mark have been taken for names of files.
static std::string describeMarked(const CLI::App& command) {
  const std::vector<std::string> words = command.remaining();
  if (std::find(words.begin(), words.end(), kEndOfOptions) == words.end()) return "";
  for (const CLI::Option* option : command.get_options()) {
    if (!option->get_positional()) continue;
    for (const std::string& word : option->results()) {
      if (looksLikeOption(word)) {
        return "behind -- everything is the name of a file, " + word + " too; put " + word +
               " before it";
      }
    }
  }
  return "";
}

static std::string nameOf(const CLI::Option& option) {
  return option.get_name();
}

static std::string describeExclusion(const CLI::Option& option) {
  for (const CLI::Option* other : option.get_excludes()) {
    if (option.count() > 0 && other->count() > 0) {
      return nameOf(option) + " and " + nameOf(*other) + " exclude each other";
    }
  }
  return "";
}

// What is wrong with one option; `complaint` is the parser's, which begins with its name.
static std::string describeOption(const CLI::Option& option, const std::string& complaint) {
  const bool takesValue = option.get_expected_max() > 0;
  const bool repeats = option.get_expected_max() > 1;
  if (!takesValue) {
    const bool meant = complaint.find(nameOf(option) + " = ") != std::string::npos;
    return meant ? nameOf(option) + " takes no value" : describeExclusion(option);
  }
  if (!repeats && option.count() > 1) return nameOf(option) + " is given more than once";
  if (complaint.starts_with(nameOf(option) + ": ")) {
    return nameOf(option) + " needs a value: " + option.get_type_name();
  }
  if (option.get_required() && option.count() == 0) {
    return option.get_positional() ? nameOf(option) + " is missing"
                                   : nameOf(option) + " " + option.get_type_name() + " is missing";
  }
  return describeExclusion(option);
}

static std::string describeMisuse(const CLI::App& command, const CLI::ParseError& error) {
  const std::string marked = describeMarked(command);
  if (!marked.empty()) return marked;
  for (const CLI::Option* option : command.get_options()) {
    const std::string text = describeOption(*option, error.what());
    if (!text.empty()) return text;
  }
  const std::vector<std::string> below = commandNames(outlineOf(command));
  if (below.empty()) return error.what();
  std::string text = "a command is missing: ";
  for (const std::string& name : below) {
    text += (name == below.front() ? "" : name == below.back() ? " or " : ", ") + name;
  }
  return text;
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
  if (text.empty()) text = describeMisuse(*command, error);
  return text + " (see `" + path + " --help`)";
}

void checkWords(int argc, char** argv) {
  for (int i = 1; i < argc && std::string(argv[i]) != "--"; ++i) {
    const std::string word = argv[i];
    if (word.starts_with("--") && word.find('=') == word.size() - 1) {
      failOnUsage(word.substr(0, word.size() - 1) + " has been given an empty value");
    }
  }
}

void checkValues(const CLI::App& app) {
  for (const CLI::Option* option : app.get_options()) {
    if (option->get_positional() || option->get_expected_max() == 0) continue;
    for (const std::string& value : option->results()) {
      if (value.empty()) failOnUsage(option->get_name() + " has been given an empty value");
    }
  }
  for (const CLI::App* command : app.get_subcommands()) checkValues(*command);
}
