// Any words behind the program's name, up to where a command would begin its work.

#include <CLI/CLI.hpp>

#include "fuzz/fuzz_input.h"
#include "hosts/command_line/program_options.h"
#include "hosts/command_line/usage_errors.h"
#include "hosts/effect_choices/setting_text.h"
#include "hosts/process/command_failure.h"

constexpr const char* kWords[] = {"apply",   "edit",     "preset",        "show",
                                  "save",    "gallery",  "settings",      "completion",
                                  "in.png",  "-o",       "out.png",       "--set",
                                  "--mask",  "--seed",   "--supersample", "--frame",
                                  "--depth", "--json",   "--quality",     "--format",
                                  "-",       "--preset", "radius=50",     "light1Dir=0,0,1"};

constexpr size_t kMostWords = 16;

// A word of ours, or one of the fuzzer's.
static std::string takeWord(FuzzInput* input) {
  const auto kind = take<uint8_t>(input);
  if (kind < 2 * std::size(kWords)) return kWords[kind / 2];
  std::string word;
  for (int32_t letters = kind & 31; letters > 0; --letters) {
    word += static_cast<char>(takeBetween(input, 1, 255));
  }
  return word;
}

static void parseSetting(const std::string& word) {
  EffectSettings settings = {};
  try {
    const SettingAssignment assignment = parseAssignment(word);
    applyAssignment(assignment, &settings);
    formatValue(*assignment.row, settings);
  } catch (const CommandFailure&) {
  }
  isSettingAssignment(word);
  describeStraySetting(word);
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t count) {
  FuzzInput input = {bytes, count};
  std::vector<std::string> words;
  while (input.left > 0 && words.size() < kMostWords) words.push_back(takeWord(&input));
  for (const std::string& word : words) parseSetting(word);

  std::vector<char*> argv = {const_cast<char*>("morvalis")};
  for (std::string& word : words) argv.push_back(word.data());
  CLI::App app;
  ProgramOptions options;
  describeProgram(&app, &options);
  try {
    app.parse(static_cast<int>(argv.size()), argv.data());
  } catch (const CLI::ParseError&) {
  } catch (const CommandFailure&) {
  }
  return 0;
}
