#include "hosts/command_line/manual_page.h"

#include <sstream>

#include "dialog/help/key_help.h"
#include "hosts/effect_choices/setting_text.h"

constexpr char kPageDate[] = "2026-11-25";  // of the last change to what the page says
constexpr size_t kLineColumns = 66;         // before hyphens are escaped

constexpr char kIntroduction[] =
    "The edge of the selection grows a height field. A profile bends it into a bevel, a relief is "
    "pressed in, two lights fall on it, and it mirrors an environment picture. The result meets "
    "the source picture in one of twelve blend modes.";

constexpr char kStreams[] =
    "Nothing but what was asked for goes to standard output. Failures are one line each on "
    "standard error, warnings too. The program uses no colours, so NO_COLOR makes no difference.";

struct ManualEntry {
  const char* term;
  const char* meaning;
};

constexpr ManualEntry kExitCodes[] = {
    {"0", "Everything that was asked for has been done."},
    {"1",
     "Something failed, or the user cancelled. Of several pictures the others have been written."},
    {"2", "The command line was wrong; nothing has been done."},
    {"130", "The run was interrupted. No file is half written."},
};

constexpr ManualEntry kFiles[] = {
    {"*.q9q", "Settings files. They name their pictures without a folder."},
    {"../share/morvalis/presets/",
     "Seen from the program: the presets that come with it, which --preset takes by name, as in "
     "--preset old-copper."},
    {"environments and textures/",
     "Where a settings file's pictures are looked for: beside it, or above it when it lies in a "
     "folder of that name. Capitals in their names make no difference."},
    {"$XDG_STATE_HOME/morvalis/",
     "Keeps the settings of the last confirmed dialog; ~/.local/state/morvalis/ when the variable "
     "is not set."},
};

constexpr ManualEntry kVariables[] = {
    {"MORVALIS_SCALE",
     "The scale of the dialogs in percent, from 100 to 300: the nearest of 100, 125, 150, 175, "
     "200, "
     "250 and 300 is taken. Without it they open at the scale of the screen. Where the screen is "
     "too small for it "
     "they take the next smaller one."},
    {"MORVALIS_MORE_FORMATS",
     "With 1 the program reads what else libvips can read, by readers that have not been tested "
     "with damaged files."},
};

// Hyphens are to be copied as such, and a line must not begin like a request.
static std::string escaped(const std::string& text) {
  std::string roff;
  bool lineStart = true;
  for (const char c : text) {
    if (lineStart && (c == '.' || c == '\'')) roff += "\\&";
    lineStart = c == '\n';
    if (c == '\\') {
      roff += "\\e";
    } else if (c == '-') {
      roff += "\\-";
    } else {
      roff += c;
    }
  }
  return roff;
}

// Running text in lines of a moderate length.
static std::string filled(const std::string& text) {
  std::string lines;
  size_t column = 0;
  std::istringstream words(text);
  for (std::string word; words >> word;) {
    if (!lines.empty()) lines += column + word.size() > kLineColumns ? '\n' : ' ';
    column = lines.empty() || lines.back() == '\n' ? 0 : column + 1;
    lines += word;
    column += word.size();
  }
  return escaped(lines);
}

static std::string entry(const std::string& term, const std::string& meaning) {
  return ".TP\n" + term + "\n" + filled(meaning) + "\n";
}

static std::string optionTerm(const OptionOutline& option) {
  if (option.positional) {
    return "\\fI" + escaped(option.names[0]) + "\\fR" + (option.repeats ? "..." : "");
  }
  std::string term;
  for (const std::string& name : option.names) {
    term += (term.empty() ? "" : ", ") + ("\\fB" + escaped(name) + "\\fR");
  }
  return option.value.empty() ? term : term + " \\fI" + escaped(option.value) + "\\fR";
}

// A footer's indented lines are commands, the others text.
static std::string footerParagraphs(const std::string& footer) {
  std::string roff;
  bool verbatim = false;
  std::istringstream lines(footer);
  for (std::string line; std::getline(lines, line);) {
    const bool command = line.starts_with("  ");
    if (command != verbatim) roff += command ? ".PP\n.nf\n" : ".fi\n";
    verbatim = command;
    roff += line.empty() ? ".PP\n" : (command ? escaped(line) : filled(line)) + "\n";
  }
  return verbatim ? roff + ".fi\n" : roff;
}

static std::string sentence(std::string text) {
  if (text[0] >= 'a' && text[0] <= 'z') text[0] = static_cast<char>(text[0] - 'a' + 'A');
  return filled(text + ".");
}

static std::string commandSection(const CommandOutline& command) {
  std::string roff = ".SS " + escaped(command.path) + "\n" + sentence(command.meaning) + "\n";
  if (command.commands.empty()) roff += ".PP\n\\fB" + escaped(synopsisOf(command)) + "\\fR\n";
  for (const OptionOutline& option : command.options) {
    if (option.names[0] != "-h") roff += entry(optionTerm(option), option.meaning);
  }
  roff += ".PP\n" + footerParagraphs(command.footer);
  for (const CommandOutline& below : command.commands) roff += commandSection(below);
  return roff;
}

static std::string settingEntry(const SettingRange& row) {
  std::string meaning = row.meaning;
  meaning += ". " + formatRange(row);
  if (componentCount(row) == 3) meaning += " each, three values";
  meaning += "; default " + formatDefault(row) + ".";
  const std::string choices = formatChoices(row);
  if (!choices.empty()) meaning += " " + choices + ".";
  return entry("\\fB" + std::string(row.name) + "\\fR", meaning);
}

static std::string dialogSection() {
  std::string roff = ".SH DIALOG\n";
  for (int32_t i = 0; i < kKeyHelpCount; ++i) {
    roff += entry("\\fB" + escaped(kKeyHelp[i].term) + "\\fR", kKeyHelp[i].meaning);
  }
  return roff;
}

template <size_t count>
static std::string section(const char* title, const ManualEntry (&entries)[count]) {
  std::string roff = std::string(".SH ") + title + "\n";
  for (const ManualEntry& row : entries)
    roff += entry("\\fB" + escaped(row.term) + "\\fR", row.meaning);
  return roff;
}

std::string manualPage(const CommandOutline& program) {
  std::string roff = std::string(".TH MORVALIS 1 ") + kPageDate +
                     " \"morvalis " MORVALIS_VERSION "\" \"User Commands\"\n";
  roff += ".SH NAME\nmorvalis \\- turns a selected shape into a lit, bevelled object\n";
  roff += ".SH SYNOPSIS\n";
  for (const CommandOutline& command : program.commands) {
    if (&command != &program.commands.front()) roff += ".br\n";
    roff += "\\fB" + escaped(synopsisOf(command)) + "\\fR\n";
  }
  roff += ".SH DESCRIPTION\n" + filled(kIntroduction) + "\n.PP\n" + filled(kStreams) + "\n";
  roff += ".SH OPTIONS\n";
  for (const OptionOutline& option : program.options) {
    roff += entry(optionTerm(option), option.meaning);
  }
  roff += ".SH COMMANDS\n";
  for (const CommandOutline& command : program.commands) roff += commandSection(command);
  roff += ".SH SETTINGS\n";
  roff += escaped("What --set takes. Names of choices may be written with hyphens for blanks.\n");
  for (int32_t i = 0; i < kSettingRangeCount; ++i) roff += settingEntry(kSettingRanges[i]);
  return roff + dialogSection() + section("FILES", kFiles) + section("ENVIRONMENT", kVariables) +
         section("EXIT STATUS", kExitCodes);
}
