// The program `morvalis`: the filter for picture files, without an image editor.

#include <CLI/CLI.hpp>
#include <QCoreApplication>
#include <csignal>
#include <cstdio>
#include <new>

#include "hosts/command_line/apply_command.h"
#include "hosts/command_line/command_failure.h"
#include "hosts/command_line/settings_command.h"

static void describeApply(CLI::App* apply, ApplyOptions* options) {
  apply->add_option("IMAGE", options->image, "the picture")->required();
  apply->add_option("-o,--output", options->output, "the result; its extension tells the format")
      ->type_name("OUT")
      ->required();
  apply
      ->add_option("--mask", options->mask,
                   "the selection: a grey picture (white is selected), \"alpha\" for the\n"
                   "picture's own alpha channel, \"none\" for everything; without it the\n"
                   "alpha channel if there is one")
      ->type_name("FILE|alpha|none");
  apply
      ->add_option("--set", options->assignments,
                   "a setting, see `morvalis settings`; may be repeated, the last one counts")
      ->type_name("NAME=VALUE")
      ->allow_extra_args(false);
  apply->add_option("--environment", options->environment, "the picture that is mirrored")
      ->type_name("FILE.bmp");
  apply->add_option("--texture", options->texture, "the picture that is pressed into the surface")
      ->type_name("FILE.bmp");
  apply->add_option("--seed", options->seed, "makes a picture with random parts again")
      ->type_name("N");
  apply->add_flag("--quiet", options->quiet, "no progress bar and no seed");
  apply->footer(
      "Examples:\n"
      "  morvalis apply badge.png -o badge-lit.png\n"
      "  morvalis apply photo.jpg --mask heart.png --set shape=round --set radius=30 -o heart.jpg\n"
      "  morvalis apply logo.png --set light1Dir=-0.6,0.4,0.7 --set blendMode=screen -o lit.webp\n"
      "  morvalis apply logo.png --environment sky.bmp --set reflection=80 -o chrome.png\n");
}

// A closed pipe or a full disk under standard output is a failure too.
static int flushOutput(int exitCode) {
  if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return exitCode;
  std::fputs("morvalis: standard output: cannot be written\n", stderr);
  return kExitFailed;
}

// One line, whatever the names in it hold.
static int reportFailure(const CommandFailure& failure) {
  if (failure.text.empty()) return failure.exitCode;
  std::string line = "morvalis: " + failure.text;
  for (char& c : line) {
    if (static_cast<unsigned char>(c) < ' ' || c == 127) c = '?';
  }
  std::fprintf(stderr, "%s\n", line.c_str());
  return failure.exitCode;
}

static int runProgram(int argc, char** argv) {
  CLI::App app("Turns a selected shape into a lit, bevelled object.", "morvalis");
  app.set_version_flag("--version", "morvalis " MORVALIS_VERSION);
  app.require_subcommand(1);
  app.footer("`morvalis COMMAND --help` says more about a command.");
  ApplyOptions options;
  CLI::App* apply = app.add_subcommand("apply", "apply the effect to a picture file");
  describeApply(apply, &options);
  CLI::App* settings = app.add_subcommand("settings", "list the settings that --set takes");
  settings->footer("Examples:\n  morvalis settings\n  morvalis settings | grep light\n");
  try {
    app.parse(argc, argv);
  } catch (const CLI::Success& wanted) {  // help or version
    return app.exit(wanted);
  } catch (const CLI::ParseError& error) {
    const std::string command = apply->parsed() ? "morvalis apply" : "morvalis";
    throw CommandFailure{kExitUsage, std::string(error.what()) + " (see `" + command + " --help`)"};
  }
  return settings->parsed() ? runSettingsCommand() : runApplyCommand(options);
}

int main(int argc, char** argv) {
  // A limit on file sizes shows as a failed write, which is reported, instead of ending the
  // program.
  std::signal(SIGXFSZ, SIG_IGN);
  std::signal(SIGPIPE, SIG_IGN);
  // The libraries' remarks are not for the user; their failures come back as values.
  qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
  try {
    // The picture formats are plug-ins, which an application object finds. The options are ours.
    int oneArgument = 1;
    const QCoreApplication application(oneArgument, argv);
    return flushOutput(runProgram(argc, argv));
  } catch (const CommandFailure& failure) {
    return reportFailure(failure);
  } catch (const std::bad_alloc&) {
    return reportFailure({kExitFailed, "there is not enough memory"});
  } catch (const std::exception& error) {
    return reportFailure({kExitFailed, error.what()});
  }
}
