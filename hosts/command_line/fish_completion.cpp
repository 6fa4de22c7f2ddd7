#include "hosts/command_line/completion_scripts.h"
#include "settings/setting_ranges.h"

// Fish escapes within single quotes by backslashes.
static std::string fishQuoted(const std::string& text) {
  std::string quoted = "'";
  for (const char c : text) {
    if (c == '\'' || c == '\\') quoted += '\\';
    quoted += c;
  }
  return quoted + "'";
}

static std::string settingFunction() {
  std::string names;
  std::string cases;
  for (int32_t i = 0; i < kSettingRangeCount; ++i) {
    const SettingRange& row = kSettingRanges[i];
    names += "            printf '%s=\\t%s\\n' " + std::string(row.name) + " " +
             fishQuoted(row.meaning) + "\n";
    const std::vector<std::string> words = choiceWords(i);
    if (words.empty()) continue;
    // Without a description each choice would show that of the whole option.
    cases += "        case '" + std::string(row.name) + "=*'\n            printf '" + row.name +
             "=%s\\tchoice\\n' " + joinedWords(words) + "\n";
  }
  return "function __morvalis_settings\n    switch (commandline -ct)\n" + cases +
         "        case '*=*'\n        case '*'\n" + names + "    end\nend\n\n";
}

static std::string valueArguments(const std::string& value) {
  const ValueKinds kinds = valueKinds(value);
  std::string offered = joinedWords(kinds.words);
  if (kinds.settings) offered = "(__morvalis_settings)";
  if (kinds.folders) offered = "(__fish_complete_directories)";
  if (!kinds.ending.empty()) offered = "(__fish_complete_suffix " + kinds.ending + ")";
  if (kinds.presets) {
    offered = "(morvalis preset list 2>/dev/null | string replace -a ' ' -) " + offered;
  }
  const bool anyFile = kinds.files && kinds.ending.empty();
  const bool ordered = !kinds.ending.empty();  // files with the ending first
  return std::string(anyFile ? " -F" : " -f") + (ordered ? " -k" : "") +
         (offered.empty() ? "" : " -a " + fishQuoted(offered));
}

static std::string optionLine(const std::string& start, const OptionOutline& option) {
  if (option.positional) return start + valueArguments(option.value) + "\n";
  std::string line = start;
  for (const std::string& name : option.names) {
    const bool isLong = name.starts_with("--");
    line += (isLong ? " -l " : " -s ") + name.substr(isLong ? 2 : 1);
  }
  if (!option.value.empty()) line += " -r" + valueArguments(option.value);
  return line + " -d " + fishQuoted(option.meaning) + "\n";
}

static std::string lines(const CommandOutline& command, const std::string& condition) {
  std::string here = condition;
  if (!command.commands.empty()) {
    here += "; and not __fish_seen_subcommand_from " + joinedWords(commandNames(command));
  }
  const std::string start = "complete -c morvalis -n " + fishQuoted(here);
  std::string script;
  for (const CommandOutline& below : command.commands) {
    script += start + " -a " + below.name + " -d " + fishQuoted(below.meaning) + "\n";
  }
  for (const OptionOutline& option : command.options) script += optionLine(start, option);
  for (const CommandOutline& below : command.commands) {
    script += lines(below, condition + "; and __fish_seen_subcommand_from " + below.name);
  }
  return script;
}

std::string fishCompletion(const CommandOutline& program) {
  return "# Completion of morvalis for fish.\n\n" + settingFunction() +
         "complete -c morvalis -f\n" + lines(program, "true");
}
