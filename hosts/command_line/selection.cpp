#include "hosts/command_line/selection.h"

#include "hosts/command_line/command_failure.h"
#include "hosts/command_line/picture_load.h"

static std::string sidesOf(const HostPicture& picture) {
  return std::to_string(picture.width) + " x " + std::to_string(picture.height);
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

HostMask loadSelection(const std::string& mask, const Picture& picture, const std::string& file) {
  if (mask == kMaskOfEverything) return HostMask();
  if (mask.empty() || mask == kMaskByAlpha) {
    if (mask == kMaskByAlpha && picture.alpha.empty()) {
      failOnFile(file, "has no alpha channel to select by");
    }
    return picture.alpha;
  }
  const Picture source = loadPicture(mask);
  if (source.colors.width != picture.colors.width ||
      source.colors.height != picture.colors.height) {
    failOnFile(mask, "is " + sidesOf(source.colors) + " pixels, but " + file + " is " +
                         sidesOf(picture.colors));
  }
  return maskFromPicture(source);
}
