// gimp_run: one call of the plug-in, whichever GIMP it comes from.

#pragma once

#include <cstdint>
#include <string>

#include "hosts/gimp/gimp_types.h"

enum class CallManner {
  byDialog,
  byLastValues,  // of the last dialog that was confirmed
  byArguments,
};

struct GimpCall {
  CallManner manner = CallManner::byDialog;
  GimpDrawableName drawable = {};
  std::string preset;    // empty: none
  std::string settings;  // "name=value" words as a shell has them
  int64_t seed = -1;     // below 0: the clock's
  uint64_t window = 0;   // of GIMP, which the dialog belongs to; 0: not known
};

enum class CallEnd { done, cancelled, wrongCall, failed };

struct GimpAnswer {
  CallEnd end = CallEnd::done;
  std::string text;  // what went wrong
};

// Changes the layer as one step of undo, or leaves it alone.
GimpAnswer runInGimp(const GimpCall& call);

// The same end in GIMP's words.
GimpPDBStatusType statusOf(CallEnd end);

// What both versions say of the plug-in.
constexpr char kProcedure[] = "plug-in-morvalis";
constexpr char kMenuLabel[] = "_Morvalis...";
constexpr char kMenuPath[] = "<Image>/Filters/Light and Shadow/Light";
constexpr char kImageTypes[] = "RGB*, GRAY*";
constexpr char kIconName[] = "morvalis";
constexpr char kBlurb[] = "Turns the selected shape into a lit, bevelled object";
constexpr char kHelp[] =
    "Grows a bevel from the edge of the selection, or of the layer's transparency where nothing is "
    "selected, and lights it. \"preset\" is a file or the name of a preset that comes with the "
    "program, \"\" for none; \"settings\" are words like \"radius=8 shape=ridge\", of which "
    "`morvalis settings` lists all, besides environment=FILE, texture=FILE and pictures=FOLDER; "
    "\"seed\" is that of the textures, -1 for one by the clock.";
constexpr char kPresetHelp[] = "File or name of a preset, or \"\"";
constexpr char kSettingsHelp[] = "\"name=value\" words, or \"\"";
constexpr char kSeedHelp[] = "Seed of the textures; -1: the clock's";
