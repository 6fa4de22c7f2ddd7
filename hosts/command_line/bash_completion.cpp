#include "hosts/command_line/completion_scripts.h"
#include "settings/setting_ranges.h"

// Bash takes "=" for the end of a word, so the words are read from the line itself, and a value
// that is offered leaves out what stands before its "=".
constexpr char kStart[] = R"sh(# Completion of morvalis for bash.

_morvalis_offer() {  # words...
  COMPREPLY+=($(compgen -P "$start" -W "$*" -- "$current"))
}

_morvalis_files() {  # [ending]
  local IFS=$'\n'
  compopt -o filenames
  if [[ -n $1 ]]; then
    COMPREPLY+=($(compgen -P "$start" -f -X "!*$1" -- "$current")
      $(compgen -P "$start" -d -- "$current"))
  else
    COMPREPLY+=($(compgen -P "$start" -f -- "$current"))
  fi
}

_morvalis_presets() {
  local names
  names=$("${words[0]}" preset list 2>/dev/null)
  _morvalis_offer ${names// /-}
}

_morvalis_folders() {
  local IFS=$'\n'
  compopt -o filenames
  COMPREPLY+=($(compgen -P "$start" -d -- "$current"))
}

_morvalis_settings() {
  local value=${current#*=} choices=
  if [[ $current != *=* ]]; then
    compopt -o nospace
    COMPREPLY+=($(compgen -P "$start" -S = -W "@names@" -- "$current"))
    return
  fi
  case ${current%%=*} in
@choices@  esac
  local name=${current%%=*}=
  [[ $COMP_WORDBREAKS == *=* ]] && name=
  COMPREPLY+=($(compgen -P "$start$name" -W "$choices" -- "$value"))
}

_morvalis() {
  local -a words
  read -ra words <<<"${COMP_LINE:0:COMP_POINT}"
  [[ ${COMP_LINE:0:COMP_POINT} == *' ' ]] && words+=('')
  local count=${#words[@]} path=morvalis word
  local current=${words[count - 1]} previous=${words[count - 2]} start=
  COMPREPLY=()
  if [[ $current == --*=* ]]; then
    previous=${current%%=*} start=$previous= current=${current#*=}
    [[ $COMP_WORDBREAKS == *=* ]] && start=
  fi
  for word in "${words[@]:1:count - 2}"; do
    case "$path $word" in
      @paths@) path+=" $word" ;;
    esac
  done
  case "$path $previous" in
@values@  esac
  if [[ $current == -* ]]; then
    case $path in
@options@    esac
    return
  fi
  case $path in
@arguments@  esac
}

complete -F _morvalis -o bashdefault -o default morvalis
)sh";

static std::string valueActions(const std::string& value) {
  const ValueKinds kinds = valueKinds(value);
  std::vector<std::string> actions;
  if (!kinds.words.empty()) actions.push_back("_morvalis_offer " + joinedWords(kinds.words));
  if (kinds.settings) actions.emplace_back("_morvalis_settings");
  if (kinds.folders) actions.emplace_back("_morvalis_folders");
  if (kinds.presets) actions.emplace_back("_morvalis_presets");
  if (kinds.files) {
    actions.push_back("_morvalis_files" + (kinds.ending.empty() ? "" : " " + kinds.ending));
  }
  return actions.empty() ? ":" : joinedWords(actions, "; ");
}

struct BashCases {
  std::vector<std::string> paths;
  std::string values;
  std::string options;
  std::string arguments;
};

static void addCases(const CommandOutline& command, BashCases* cases) {
  const std::string path = shellQuoted(command.path);
  cases->options +=
      "      " + path + ") _morvalis_offer " + joinedWords(optionNames(command)) + " ;;\n";
  std::string arguments;
  if (!command.commands.empty())
    arguments = "_morvalis_offer " + joinedWords(commandNames(command));
  for (const OptionOutline& option : command.options) {
    if (option.positional) {
      arguments = valueActions(option.value);
    } else if (!option.value.empty()) {
      std::vector<std::string> patterns;
      for (const std::string& name : option.names) {
        patterns.push_back(shellQuoted(command.path + " " + name));
      }
      cases->values += "    " + joinedWords(patterns, " | ") + ") " + valueActions(option.value) +
                       "; return ;;\n";
    }
  }
  if (!arguments.empty()) cases->arguments += "    " + path + ") " + arguments + " ;;\n";
  for (const CommandOutline& below : command.commands) {
    cases->paths.push_back(shellQuoted(below.path));
    addCases(below, cases);
  }
}

static void replaceMark(std::string* text, const std::string& mark, const std::string& by) {
  const size_t at = text->find(mark);
  text->replace(at, mark.size(), by);
}

std::string bashCompletion(const CommandOutline& program) {
  BashCases cases;
  addCases(program, &cases);
  std::vector<std::string> names;
  std::string choices;
  for (int32_t i = 0; i < kSettingRangeCount; ++i) {
    names.emplace_back(kSettingRanges[i].name);
    const std::vector<std::string> words = choiceWords(i);
    if (words.empty()) continue;
    choices += "    " + names.back() + ") choices=" + shellQuoted(joinedWords(words)) + " ;;\n";
  }
  std::string script = kStart;
  replaceMark(&script, "@names@", joinedWords(names));
  replaceMark(&script, "@choices@", choices);
  replaceMark(&script, "@paths@", joinedWords(cases.paths, " | "));
  replaceMark(&script, "@values@", cases.values);
  replaceMark(&script, "@options@", cases.options);
  replaceMark(&script, "@arguments@", cases.arguments);
  return script;
}
