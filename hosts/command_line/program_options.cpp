#include "hosts/command_line/program_options.h"

#include <CLI/CLI.hpp>

static void describeSettings(CLI::App* command, EffectOptions* effect) {
  command
      ->add_option("--set", effect->assignments,
                   "a setting, see `morvalis settings`; may be repeated, the last one counts")
      ->type_name("NAME=VALUE")
      ->allow_extra_args(false);
  command->add_option("--environment", effect->environment, "the picture that is mirrored")
      ->type_name("FILE");
  command->add_option("--texture", effect->texture, "the picture that is pressed into the surface")
      ->type_name("FILE");
}

static void describeLimit(CLI::App* command, bool* limit) {
  command->add_flag("--limit", *limit,
                    "bring values of a settings file that are out of range into it,\n"
                    "instead of refusing the file");
}

static void describeColor(CLI::App* command, bool* color) {
  command->add_flag("--color", *color,
                    "make a grey picture one of colours first, so that the effect's show");
}

static void describeMask(CLI::App* command, MaskOptions* options) {
  command
      ->add_option("--mask", options->mask,
                   "the selection: a grey picture (white is selected), \"alpha\" for the\n"
                   "picture's own alpha channel, \"none\" for everything; without it the\n"
                   "alpha channel if there is one; {name} in it stands for the\npicture's name, "
                   "{folder} for its folder")
      ->type_name("FILE|alpha|none");
  command->add_flag("--mask-invert", options->invert, "select what the mask does not");
  command
      ->add_option("--mask-feather", options->feather, "pixels over which the selection runs out")
      ->type_name("PIXELS");
  command->add_flag("--mask-fit", options->fit, "scale a mask of another size to the picture's");
  command
      ->add_option("--mask-channel", options->channel,
                   "take this channel of the mask's file, 1 to 4, instead of its brightness")
      ->type_name("N");
}

static void describePictures(CLI::App* command, std::string* pictures, const char* whose) {
  command
      ->add_option("--pictures", *pictures,
                   std::string("the folder of the pictures that ") + whose +
                       " names; without it the\n"
                       "folder \"environments and textures\" beside it or around it")
      ->type_name("FOLDER");
}

static void describeSeed(CLI::App* command, std::string* seed) {
  command->add_option("--seed", *seed, "makes a picture with random parts again")->type_name("N");
}

static void describeRun(CLI::App* command, std::string* seed, std::string* jobs, bool* quiet) {
  describeSeed(command, seed);
  command
      ->add_option("-j,--jobs", *jobs, "how many pictures are worked on at a time; 1 if not said")
      ->type_name("N");
  command->add_flag("--quiet", *quiet,
                    "no progress bar, no seed, no word on what the\nresult loses");
}

static void describeSaving(CLI::App* command, SavingOptions* saving) {
  command
      ->add_option("--depth", saving->depth,
                   "bits of the result's samples; without it those of the picture,\n"
                   "where the format holds them")
      ->type_name("8|16");
  command
      ->add_option("--quality", saving->quality,
                   "of JPEG (95 if not said), AVIF, HEIC, and of WebP and JPEG XL,\n"
                   "which are without loss if not said")
      ->type_name("1-100");
  command->add_flag("--lossless", saving->lossless,
                    "without loss: WebP, JPEG XL; AVIF and HEIC to within one step");
  command
      ->add_option("--compression", saving->compression,
                   "how closely PNG is packed; quickly if not said, 9 is smallest")
      ->type_name("0-9");
  command
      ->add_option("--chroma", saving->chroma,
                   "whether JPEG, AVIF and HEIC keep every pixel's colour (444, the usual\n"
                   "from quality 90 on) or every fourth's")
      ->type_name("444|420");
  command->add_flag("--strip", saving->strip, "nothing but pixels: no profile, no EXIF, no texts");
  command
      ->add_option("--format", saving->format, "the format of -o -, as an ending; png if not said")
      ->type_name("EXT");
}

static void describeFrame(CLI::App* command, std::string* frame, const char* usual) {
  command
      ->add_option(
          "--frame", *frame,
          std::string("of an animation or of pages, take this one alone, from 1 on;\n") + usual)
      ->type_name("N");
}

static void describeApply(CLI::App* apply, ApplyOptions* options) {
  apply
      ->add_option("IMAGE", options->images,
                   "the pictures; - for one that comes from standard input")
      ->type_name("FILE")
      ->required();
  apply
      ->add_option("-o,--output", options->output,
                   "the result; its extension tells the format, {name} in it stands for\n"
                   "the picture's name, {folder} for its folder; - for a PNG file on\n"
                   "standard output")
      ->type_name("OUT")
      ->required();
  apply->add_flag("--keep", options->keep,
                  "replace nothing: a name that is taken gets a number, as lit-2.png");
  describeMask(apply, &options->mask);
  CLI::Option* preset = apply
                            ->add_option("--preset", options->effect.preset,
                                         "a settings file to start from, instead of the defaults,\n"
                                         "or the name of one that comes with the program")
                            ->type_name("FILE.q9q");
  describePictures(apply, &options->effect.pictures, "the preset");
  apply
      ->add_flag("--last", options->effect.last,
                 "start from the settings and pictures of the last confirmed dialog")
      ->excludes(preset);
  describeSettings(apply, &options->effect);
  apply
      ->add_option("--supersample", options->supersample,
                   "render 2 or 4 times as large and reduce: for a --mask that was drawn so many\n"
                   "times larger than the picture, thin slanted type for one")
      ->type_name("2|4");
  describeFrame(apply, &options->frame,
                "without it all, where the result's format holds them, or the first");
  describeLimit(apply, &options->effect.limit);
  describeColor(apply, &options->color);
  describeSaving(apply, &options->saving);
  describeRun(apply, &options->seed, &options->jobs, &options->quiet);
  apply
      ->add_flag("--verbose", options->verbose,
                 "tell what was read, kept and dropped, and how long each part took")
      ->excludes(apply->get_option("--quiet"));
  apply->add_flag("--window", options->window,
                  "show failures in a window, too, for whoever starts this from a file manager");
  apply->footer(
      "Examples:\n"
      "  morvalis apply badge.png -o badge-lit.png\n"
      "  morvalis apply photo.jpg --mask heart.png --set shape=round --set radius=30 -o heart.jpg\n"
      "  morvalis apply logo.png --set light1Dir=-0.6,0.4,0.7 --set blendMode=screen -o lit.webp\n"
      "  morvalis apply logo.png --environment sky.jpg --set reflection=80 -o chrome.png\n"
      "  morvalis apply logo.png --preset gold --set radius=20 -o gold.png\n"
      "  morvalis apply -j 2 icons/*.png --preset gold --set radius=8 -o 'out/{name}-gold.png'\n"
      "  morvalis apply 2025/*.jpg 2026/*.jpg --mask '{folder}/{name}-mask.png' "
      "-o '{folder}/{name}-lit.png'\n"
      "  convert in.svg png:- | morvalis apply - --preset gold -o - > out.png\n"
      "  morvalis apply logo.png --last -o again.png    (after a first `morvalis edit`)\n");
}

static void describeEdit(CLI::App* edit, EditOptions* options) {
  edit->add_option("IMAGE", options->image,
                   "the picture; - for standard input; without it a window asks for one")
      ->type_name("FILE");
  edit->add_option("-o,--output", options->output,
                   "the result; its extension tells the format; {name} and {folder} as in\n"
                   "`apply`; - for a PNG file on standard output; without it\n"
                   "IMAGE-morvalis.EXT beside the picture, which is named on standard output,\n"
                   "and an earlier one is replaced")
      ->type_name("OUT");
  edit->add_flag("--keep", options->keep,
                 "replace nothing: a name that is taken gets a number, as IMAGE-morvalis-2.EXT");
  describeMask(edit, &options->mask);
  edit->add_option("--preset", options->effect.preset,
                   "a settings file to start from, instead of what was confirmed last")
      ->type_name("FILE.q9q");
  describePictures(edit, &options->effect.pictures, "the preset");
  describeSettings(edit, &options->effect);
  describeFrame(edit, &options->frame, "the first if not said");
  describeLimit(edit, &options->effect.limit);
  describeColor(edit, &options->color);
  describeSeed(edit, &options->seed);
  edit->footer(
      "Cancel writes nothing, and the exit code is 1. OK remembers the settings for the next\n"
      "time and for `morvalis apply --last`.\n\n"
      "Examples:\n"
      "  morvalis edit photo.jpg --mask heart.png\n"
      "  morvalis edit badge.png --preset old-copper -o badge-copper.png\n");
}

static void describePreset(CLI::App* preset, ProgramOptions* options) {
  preset->require_subcommand(1);
  preset->footer("`morvalis preset COMMAND --help` says more about a command.");
  CLI::App* list = preset->add_subcommand("list", "list the presets that come with the program");
  list->add_flag("--json", options->presetsAsJson, "as an array of names");
  list->footer("Examples:\n  morvalis preset list\n");
  CLI::App* show = preset->add_subcommand("show", "show what a settings file holds");
  show->add_option("FILE", options->presetShow.file, "the settings file")
      ->type_name("FILE.q9q")
      ->required();
  show->add_flag("--json", options->presetShow.json, "as one JSON object");
  show->footer(
      "Examples:\n"
      "  morvalis preset show gold.q9q\n"
      "  morvalis preset show gold.q9q --json | jq .reflection\n");

  CLI::App* save = preset->add_subcommand("save", "save settings as a settings file");
  save->add_option("OUT", options->presetSave.output, "the settings file to be written")
      ->type_name("OUT.q9q")
      ->required();
  save->add_option("--preset", options->presetSave.effect.preset,
                   "a settings file to start from, instead of the defaults")
      ->type_name("FILE.q9q");
  describePictures(save, &options->presetSave.effect.pictures, "the preset");
  describeSettings(save, &options->presetSave.effect);
  save->add_flag("--with-pictures", options->presetSave.withPictures,
                 "copy the pictures that it names into a folder beside it");
  describeLimit(save, &options->presetSave.effect.limit);
  save->footer(
      "The file names its pictures without their folder: keep them in a folder\n"
      "\"environments and textures\" beside it. Of a picture that is no Windows bitmap a copy "
      "that\n"
      "is one goes there.\n\n"
      "Examples:\n"
      "  morvalis preset save chrome.q9q --set reflection=90 --environment sky.bmp\n"
      "  morvalis preset save small.q9q --preset chrome.q9q --set radius=6\n"
      "  morvalis preset save for-a-friend.q9q --preset chrome.q9q --with-pictures\n");
}

static void describeGallery(CLI::App* gallery, GalleryOptions* options) {
  gallery->add_option("IMAGE", options->image, "the picture; - for standard input")
      ->type_name("FILE")
      ->required();
  gallery->add_option("-o,--output", options->output, "the sheet; its extension tells the format")
      ->type_name("OUT")
      ->required();
  gallery
      ->add_option("--presets", options->presets,
                   "the folder of the settings files (.q9q); those that come with the\n"
                   "program if not said")
      ->type_name("FOLDER");
  gallery
      ->add_option("--set", options->assignments,
                   "a setting on top of every preset, see `morvalis settings`; may be repeated")
      ->type_name("NAME=VALUE")
      ->allow_extra_args(false);
  describePictures(gallery, &options->pictures, "a preset");
  describeLimit(gallery, &options->limit);
  describeColor(gallery, &options->color);
  describeMask(gallery, &options->mask);
  describeFrame(gallery, &options->frame, "the first if not said");
  describeRun(gallery, &options->seed, &options->jobs, &options->quiet);
  gallery->footer(
      "Examples:\n"
      "  morvalis gallery logo.png --presets presets -o sheet.png\n"
      "  morvalis gallery photo.jpg --mask heart.png --presets presets -j 2 -o sheet.jpg\n");
}

// The commands there are so far, as a type's name.
static std::string joinedNames(const CLI::App& app) {
  std::string text;
  for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
    text += (text.empty() ? "" : "|") + command->get_name();
  }
  return text;
}

void describeProgram(CLI::App* app, ProgramOptions* options) {
  app->name("morvalis");
  app->description("Turns a selected shape into a lit, bevelled object.");
  app->set_version_flag("--version", "morvalis " MORVALIS_VERSION, "print the version and exit");
  app->set_help_flag("-h,--help", "print this help and exit");
  app->require_subcommand(1);
  app->footer("`morvalis COMMAND --help` says more about a command.");
  describeApply(app->add_subcommand("apply", "apply the effect to picture files"), &options->apply);
  describeEdit(app->add_subcommand("edit", "open the dialog on a picture file"), &options->edit);
  describeGallery(app->add_subcommand("gallery", "show a picture under every preset of a folder"),
                  &options->gallery);
  describePreset(app->add_subcommand("preset", "show and save settings files"), options);
  CLI::App* settings = app->add_subcommand("settings", "list the settings that --set takes");
  settings->add_flag("--json", options->settingsAsJson, "as an array of JSON objects");
  settings->footer("Examples:\n  morvalis settings\n  morvalis settings | grep light\n");
  CLI::App* about = app->add_subcommand("about", "show the about box");
  about->footer("Examples:\n  morvalis about\n");
  CLI::App* manual = app->add_subcommand("manual", "print the manual page");
  manual->footer("Examples:\n  morvalis manual | man -l -\n");
  CLI::App* completion =
      app->add_subcommand("completion", "print the completion script for a shell");
  completion->add_option("SHELL", options->shell, "the shell")
      ->type_name("bash|zsh|fish")
      ->required();
  completion->footer(
      "Examples:\n"
      "  source <(morvalis completion bash)\n"
      "  morvalis completion fish > ~/.config/fish/completions/morvalis.fish\n");
  const std::string commands = joinedNames(*app);
  CLI::App* help = app->add_subcommand("help", "print the help of a command");
  help->add_option("COMMAND", options->helpWords, "the command; without it the program's own help")
      ->type_name(commands);
  help->footer("Examples:\n  morvalis help apply\n  morvalis help preset save\n");
}
