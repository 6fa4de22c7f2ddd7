#include "hosts/command_line/completion_scripts.h"
#include "settings/setting_ranges.h"

// The words that describe an argument have marks of their own.
static std::string descriptionText(const std::string& text) {
  std::string escaped;
  for (const char c : text) {
    if (c == ':' || c == '[' || c == ']' || c == '\\') escaped += '\\';
    escaped += c;
  }
  return escaped;
}

static std::string settingFunction() {
  std::string names;
  std::string cases;
  for (int32_t i = 0; i < kSettingRangeCount; ++i) {
    const SettingRange& row = kSettingRanges[i];
    names +=
        "    " + shellQuoted(std::string(row.name) + ":" + descriptionText(row.meaning)) + "\n";
    const std::vector<std::string> words = choiceWords(i);
    if (words.empty()) continue;
    cases += "    " + std::string(row.name) + "=*) compset -P '*='; compadd -- " +
             joinedWords(words) + " ;;\n";
  }
  return "_morvalis_setting() {\n  local -a names=(\n" + names + "  )\n  case $PREFIX in\n" +
         cases + "    *=*) ;;\n    *) _describe -t settings setting names -S = ;;\n  esac\n}\n\n";
}

constexpr char kPresetFunction[] = R"sh(_morvalis_preset() {
  local -a names=(${(f)"$(_call_program presets morvalis preset list)"})
  compadd -- ${names// /-}
  _files -g "*.q9q(-.)"
}

)sh";

static std::string valueAction(const std::string& value) {
  const ValueKinds kinds = valueKinds(value);
  if (kinds.settings) return "_morvalis_setting";
  if (kinds.folders) return "_files -/";
  if (kinds.presets) return "_morvalis_preset";
  const std::string files =
      kinds.ending.empty() ? "_files" : "_files -g \"*" + kinds.ending + "(-.)\"";
  if (!kinds.words.empty() && kinds.files) {
    return " _alternative \"words\\:word\\:(" + joinedWords(kinds.words) +
           ")\" \"files\\:file\\:_files\"";
  }
  if (!kinds.words.empty()) return std::string("(").append(joinedWords(kinds.words)).append(")");
  return kinds.files ? files : " ";
}

static std::string argumentLine(const OptionOutline& option) {
  std::string value = ":" + descriptionText(option.value) + ":" + valueAction(option.value);
  if (option.positional) return shellQuoted((option.repeats ? "*" : "1") + value);
  if (option.value.empty()) value.clear();
  const std::string rest = "[" + descriptionText(option.meaning) + "]" + value;
  // "=" lets a value stand behind it as well as in the next word.
  std::vector<std::string> names = option.names;
  for (std::string& name : names) {
    if (!value.empty() && name.starts_with("--")) name += '=';
  }
  if (option.repeats) return shellQuoted("*" + names.back() + rest);
  if (names.size() == 1) return shellQuoted(names[0] + rest);
  return "'(" + joinedWords(option.names) + ")'{" + joinedWords(names, ",") + "}" +
         shellQuoted(rest);
}

static std::string functionName(const CommandOutline& command) {
  std::string name = "_";
  for (const char c : command.path) name += c == ' ' ? '_' : c;
  return name;
}

static std::string commandFunctions(const CommandOutline& command) {
  std::string specs;
  for (const OptionOutline& option : command.options) {
    specs += " \\\n    " + argumentLine(option);
  }
  if (command.commands.empty()) {
    return functionName(command) + "() {\n  _arguments -s" + specs + "\n}\n\n";
  }
  std::string script;
  std::string names;
  std::string cases;
  for (const CommandOutline& below : command.commands) {
    script += commandFunctions(below);
    names += " " + shellQuoted(below.name + ":" + descriptionText(below.meaning));
    cases += "        " + below.name + ") " + functionName(below) + " ;;\n";
  }
  return script + functionName(command) +
         "() {\n  local curcontext=$curcontext state state_descr line\n"
         "  typeset -A opt_args\n  _arguments -C" +
         specs +
         " \\\n    '1: :->command' \\\n    '*:: :->rest'\n  case $state in\n    command)\n" +
         "      local -a commands=(" + names.substr(1) + ")\n" +
         "      _describe -t commands command commands\n      ;;\n    rest)\n" +
         "      case $words[1] in\n" + cases + "      esac\n      ;;\n  esac\n}\n\n";
}

// The script works from a folder of functions as well as read by the shell itself.
std::string zshCompletion(const CommandOutline& program) {
  return "#compdef morvalis\n# Completion of morvalis for zsh.\n\n" + settingFunction() +
         kPresetFunction + commandFunctions(program) +
         "if [[ $funcstack[1] == _morvalis ]]; then\n  _morvalis \"$@\"\nelse\n"
         "  compdef _morvalis morvalis\nfi\n";
}
