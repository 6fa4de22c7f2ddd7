#include "hosts/effect_runs/selection.h"

#include <algorithm>

#include "hosts/picture_files/picture_load.h"
#include "hosts/process/command_failure.h"
#include "hosts/process/file_names.h"

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

Selection loadSelection(const std::string& mask, const Picture& picture, const std::string& file) {
  if (mask == kMaskOfEverything) return {};
  if (mask.empty() || mask == kMaskByAlpha) {
    if (mask == kMaskByAlpha && picture.alpha.empty()) {
      failOnFile(file, "has no alpha channel to select by");
    }
    return selectionByAlpha(picture, file);
  }
  const Picture source = loadPicture(mask);
  if (source.colors.width != picture.colors.width ||
      source.colors.height != picture.colors.height) {
    failOnFile(mask, "is " + sidesOf(source) + " pixels, but " + file + " is " + sidesOf(picture));
  }
  Selection selection = {maskFromPicture(source), "", false};
  if (selectsNothing(selection.mask)) selection.emptiness = whyNothing(source, mask, file);
  return selection;
}

void warnOfEmptiness(const Selection& selection) {
  if (!selection.emptiness.empty()) reportWarning(selection.emptiness);
}
