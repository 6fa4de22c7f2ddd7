#include "hosts/commands/saving_options.h"

#include "hosts/process/command_failure.h"
#include "hosts/process/file_access.h"

static int numberOrUsual(const std::string& option, const std::string& text, int least, int most) {
  return text.empty() ? -1 : wholeNumberOf(option, text, least, most);
}

SavingChoice parseSaving(const SavingOptions& options) {
  SavingChoice choice;
  choice.choices.quality = numberOrUsual("--quality", options.quality, 1, 100);
  choice.choices.compression = numberOrUsual("--compression", options.compression, 0, 9);
  choice.choices.lossless = options.lossless;
  choice.choices.strip = options.strip;
  choice.choices.chroma = options.chroma;
  if (!options.chroma.empty() && options.chroma != "444" && options.chroma != "420") {
    failOnUsage("--chroma " + options.chroma + ": takes 444 or 420");
  }
  if (!options.depth.empty() && options.depth != "8" && options.depth != "16") {
    failOnUsage("--depth " + options.depth + ": takes 8 or 16");
  }
  if (!options.depth.empty()) choice.depth = options.depth == "8" ? 8 : 16;
  return choice;
}

const PictureFormat& chosenFormat(const SavingOptions& options, const std::string& file) {
  if (options.format.empty()) return pictureFormatOf(file);
  if (file != kStandardStream) {
    failOnUsage("--format is for -o -; the ending of " + file + " tells the format of a file");
  }
  return pictureFormatOf("." + options.format);
}

void warnOfIdleOptions(const SavingOptions& options, const PictureFormat& format) {
  const FormatKind kind = format.kind;
  const bool heif = kind == FormatKind::avif || kind == FormatKind::heic;
  const bool choosesLoss = heif || kind == FormatKind::webp || kind == FormatKind::jxl;
  const bool loses = kind == FormatKind::jpeg;
  const struct {
    const char* option;
    bool idle;
  } rows[] = {
      {"--quality", !options.quality.empty() && !loses && !choosesLoss},
      {"--lossless", options.lossless && loses},
      {"--compression", !options.compression.empty() && kind != FormatKind::png},
      {"--chroma", !options.chroma.empty() && !loses && !heif},
      {"--depth 16", options.depth == "16" && !format.depth},
  };
  for (const auto& row : rows) {
    if (row.idle) {
      reportWarning(std::string(row.option) + " changes nothing in ." + format.extension +
                    " files");
    }
  }
  if (options.lossless && choosesLoss && !options.quality.empty()) {
    reportWarning("--quality changes nothing beside --lossless");
  }
}

static std::vector<uint16_t> widened(const std::vector<uint8_t>& samples) {
  std::vector<uint16_t> deep;
  deep.reserve(samples.size());
  for (const uint8_t sample : samples) deep.push_back(static_cast<uint16_t>(sample * 257));
  return deep;
}

void setDepth(int depth, Picture* picture) {
  if (depth == 8) {
    picture->deep = {};
    picture->sampleBits = 8;
  } else if (depth == 16 && picture->deep.colors.empty()) {
    picture->deep.colors = widened(picture->colors.samples);
    picture->deep.alpha = widened(picture->alpha);
  }
}
