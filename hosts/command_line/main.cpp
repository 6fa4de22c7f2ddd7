// The program `morvalis`: the filter for picture files, without an image editor.

#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdio>

#include "hosts/command_line/command_help.h"
#include "hosts/command_line/command_outline.h"
#include "hosts/command_line/completion_scripts.h"
#include "hosts/command_line/manual_page.h"
#include "hosts/command_line/program_options.h"
#include "hosts/command_line/usage_errors.h"
#include "hosts/command_line/window_library.h"
#include "hosts/commands/settings_command.h"
#include "hosts/process/command_failure.h"
#include "hosts/process/file_access.h"

static int printText(const std::string& text) {
  std::fputs(text.c_str(), stdout);
  return kExitDone;
}

static int runCommand(const CLI::App& app, const ProgramOptions& options, char** argv) {
  if (app.got_subcommand("help")) return printText(helpText(app, options.helpWords));
  if (app.got_subcommand("manual")) return printText(manualPage(outlineOf(app)));
  if (app.got_subcommand("completion")) {
    return printText(completionScript(options.shell, outlineOf(app)));
  }
  if (app.got_subcommand("gallery")) return runGalleryCommand(options.gallery);
  if (app.got_subcommand("about")) return openAbout(argv);
  if (app.got_subcommand("edit")) return openEdit(options.edit, argv);
  if (app.got_subcommand("settings")) return runSettingsCommand(options.settingsAsJson);
  if (app.got_subcommand("preset")) {
    const CLI::App* preset = app.get_subcommand("preset");
    if (preset->got_subcommand("list")) return runPresetList(options.presetsAsJson);
    return preset->got_subcommand("show") ? runPresetShow(options.presetShow)
                                          : runPresetSave(options.presetSave);
  }
  const auto apply = [&options] { return runApplyCommand(options.apply); };
  return options.apply.window ? runTellingInWindow(apply, argv) : apply();
}

static int runProgram(int argc, char** argv) {
  CLI::App app;
  ProgramOptions options;
  describeProgram(&app, &options);
  if (argc == 1) {
    std::fputs(helpText(app, {}).c_str(), stderr);
    return kExitUsage;
  }
  checkWords(argc, argv);
  try {
    app.parse(argc, argv);
  } catch (const CLI::Success& wanted) {  // help or version
    return app.exit(wanted);
  } catch (const CLI::ParseError& error) {
    failOnUsage(describeUsageError(app, error));
  }
  checkValues(app);
  return runCommand(app, options, argv);
}

// Before the constants of the library for options, which are in memory of their own.
[[gnu::constructor(101)]] static void startInOrder() {
  endOrderlyWithoutMemory();
}

int main(int argc, char** argv) {
  // A limit on file sizes shows as a failed write, which is reported, instead of ending the
  // program.
  std::signal(SIGXFSZ, SIG_IGN);
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGCHLD, SIG_DFL);  // who ignores it never learns how a child has ended
  fillStandardStreams();
  return runReporting([argc, argv] { return runProgram(argc, argv); });
}
