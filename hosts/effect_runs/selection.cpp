#include "hosts/effect_runs/selection.h"

#include <algorithm>

#include "hosts/effect_runs/mask_softening.h"
#include "hosts/picture_files/formats_library.h"
#include "hosts/picture_files/picture_load.h"
#include "hosts/process/command_failure.h"
#include "hosts/process/file_names.h"
#include "hosts/process/libraries/library_guard.h"

static std::string sidesOf(const Picture& picture) {
  const HostPicture& colors = picture.colors;
  return std::to_string(colors.width) + " x " + std::to_string(colors.height) +
         (picture.sidesSwapped ? " (turned as its orientation says)" : "");
}

// Brightness with weights 11, 16 and 5 of 32; equal channels stay what they are.
static int32_t brightness(const uint8_t* sample, int32_t planes) {
  if (planes == 1) return sample[0];
  return (sample[0] * 11 + sample[1] * 16 + sample[2] * 5) / 32;
}

// What is transparent in a mask's file is not selected.
static HostMask maskFromPicture(const Picture& source) {
  const HostPicture& colors = source.colors;
  HostMask mask(colors.samples.size() / static_cast<size_t>(colors.planes));
  for (size_t i = 0; i < mask.size(); ++i) {
    const uint8_t* sample = &colors.samples[i * static_cast<size_t>(colors.planes)];
    const int32_t alpha = source.alpha.empty() ? 255 : source.alpha[i];
    mask[i] = static_cast<uint8_t>((brightness(sample, colors.planes) * alpha + 127) / 255);
  }
  return mask;
}

// From 1 on; alpha is the last.
static HostMask channelOf(const Picture& source, const std::string& channel,
                          const std::string& file) {
  const size_t planes = static_cast<size_t>(source.colors.planes);
  const size_t number = static_cast<size_t>(channel[0] - '0');
  if (number == planes + 1 && !source.alpha.empty()) return source.alpha;
  if (number > planes) {
    const size_t count = planes + (source.alpha.empty() ? 0 : 1);
    failOnFile(file, "has no channel " + channel + ", but " + std::to_string(count));
  }
  HostMask mask(source.colors.samples.size() / planes);
  for (size_t i = 0; i < mask.size(); ++i) mask[i] = source.colors.samples[i * planes + number - 1];
  return mask;
}

static bool selectsNothing(const HostMask& mask) {
  return !mask.empty() && std::all_of(mask.begin(), mask.end(), [](uint8_t m) { return m == 0; });
}

// Masks come as the shape drawn in black, and with transparency for what it leaves out.
static std::string whyNothing(const Picture& source, const std::string& mask,
                              const std::string& file) {
  std::string text = mask + ": selects nothing (white is selected, and this picture ";
  if (source.alpha.empty()) return text + "is all black)";
  const auto shows = [](uint8_t alpha) { return alpha != 0; };
  if (std::none_of(source.alpha.begin(), source.alpha.end(), shows)) {
    return text + "is transparent everywhere)";
  }
  text += "is black where it is not transparent";
  const bool ofItself = placeOf(mask) == placeOf(file);
  return text +
         (ofItself ? "); --mask alpha selects by its transparency" : "); paint the shape white");
}

static Selection selectionByAlpha(const Picture& picture, const std::string& file) {
  Selection selection = {picture.alpha, "", true};
  if (!selectsNothing(selection.mask)) return selection;
  selection.emptiness = file +
                        ": nothing is selected, since it is transparent everywhere; --mask " +
                        kMaskOfEverything + " selects everything";
  return selection;
}

static HostMask fitted(const HostMask& mask, const Picture& from, const Picture& to,
                       const std::string& file) {
  const HostPicture& size = from.colors;
  HostPicture resized;
  const LibraryGuard guard;
  const std::string reason = formatsLibrary().resize({size.width, size.height, 1, mask},
                                                     to.colors.width, to.colors.height, &resized);
  if (!reason.empty()) failOnFile(file, "cannot be scaled: " + reason);
  return resized.samples;
}

static Selection selectionByFile(const MaskOptions& options, const std::string& mask,
                                 const Picture& picture, const std::string& file) {
  const Picture source = loadPicture(mask);
  const int32_t times = options.enlarged;
  const bool sameSize = source.colors.width == picture.colors.width * times &&
                        source.colors.height == picture.colors.height * times;
  if (!sameSize && times > 1) {
    failOnFile(mask, "is " + sidesOf(source) + " pixels; for --supersample " +
                         std::to_string(times) + " it has to be " + std::to_string(times) +
                         " times as large as " + file + ", which is " + sidesOf(picture));
  }
  if (!sameSize && !options.fit) {
    failOnFile(mask, "is " + sidesOf(source) + " pixels, but " + file + " is " + sidesOf(picture) +
                         "; --mask-fit scales it");
  }
  Selection selection = {
      options.channel.empty() ? maskFromPicture(source) : channelOf(source, options.channel, mask),
      "", false};
  if (selectsNothing(selection.mask)) selection.emptiness = whyNothing(source, mask, file);
  if (!sameSize) selection.mask = fitted(selection.mask, source, picture, mask);
  return selection;
}

Selection loadSelection(const MaskOptions& options, const Picture& picture,
                        const std::string& file) {
  const std::string mask = withName(options.mask, file);
  if (mask == kMaskOfEverything) return {};
  if (mask == kMaskByAlpha && picture.alpha.empty()) {
    failOnFile(file, "has no alpha channel to select by");
  }
  const bool byAlpha = mask.empty() || mask == kMaskByAlpha;
  Selection selection =
      byAlpha ? selectionByAlpha(picture, file) : selectionByFile(options, mask, picture, file);
  if (options.invert && !selection.mask.empty()) {
    for (uint8_t& weight : selection.mask) weight = static_cast<uint8_t>(255 - weight);
    selection.coversAgain = false;
    selection.emptiness.clear();
    if (selectsNothing(selection.mask)) selection.emptiness = file + ": nothing is selected";
  }
  const int feather = options.feather.empty() ? 0 : std::stoi(options.feather);
  if (feather > 0 && !selection.mask.empty()) {
    const int32_t times = options.enlarged;
    softenMask(picture.colors.width * times, picture.colors.height * times, feather * times,
               &selection.mask);
    selection.coversAgain = false;
  }
  return selection;
}

void checkMaskOptions(const MaskOptions& options) {
  if (!options.feather.empty())
    wholeNumberOf("--mask-feather", options.feather, 1, kLargestFeather);
  if (!options.channel.empty()) wholeNumberOf("--mask-channel", options.channel, 1, 4);
  const bool ofFile =
      !options.mask.empty() && options.mask != kMaskByAlpha && options.mask != kMaskOfEverything;
  if (!ofFile && (options.fit || !options.channel.empty())) {
    failOnUsage("--mask-fit and --mask-channel are about a mask's file; add --mask FILE");
  }
  if (options.mask == kMaskOfEverything && (options.invert || !options.feather.empty())) {
    failOnUsage("--mask-invert and --mask-feather need a selection; --mask none has none");
  }
  if (options.enlarged > 1 && (!ofFile || options.fit)) {
    failOnUsage(
        "--supersample takes a mask that was drawn as many times larger than the picture: "
        "add --mask FILE" +
        std::string(options.fit ? ", without --mask-fit" : ""));
  }
}

void warnOfEmptiness(const Selection& selection) {
  if (!selection.emptiness.empty()) reportWarning(selection.emptiness);
}
