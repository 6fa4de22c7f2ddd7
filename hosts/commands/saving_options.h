// saving_options: what the user asks of the file that is written.

#pragma once

#include <string>

#include "hosts/picture_files/picture_format.h"

// As they stand on the command line; empty: not said.
struct SavingOptions {
  std::string depth;
  std::string quality;
  std::string compression;
  std::string chroma;
  std::string format;
  bool lossless = false;
  bool strip = false;
};

struct SavingChoice {
  SaveChoices choices;
  int depth = 0;  // 8 or 16; 0: the picture's
};

// Ends the command when one of them is not what it takes.
SavingChoice parseSaving(const SavingOptions& options);

// The format of a file under these options; ends the command when there is none.
const PictureFormat& chosenFormat(const SavingOptions& options, const std::string& file);

// Tells which of the options change nothing in files of this format.
void warnOfIdleOptions(const SavingOptions& options, const PictureFormat& format);

// Gives the picture the depth that is wanted.
void setDepth(int depth, Picture* picture);
