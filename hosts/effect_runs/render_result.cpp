#include "hosts/effect_runs/render_result.h"

InPlace placeFor(const Picture& picture, const Selection& selection) {
  if (!picture.deep.colors.empty()) return InPlace::off;
  return selection.coversAgain ? InPlace::whole : InPlace::mixed;
}

void mixResult(const Selection& selection, Picture* picture) {
  if (!picture->deep.colors.empty()) {
    return takeResult(selection.mask, selection.coversAgain, picture);
  }
  HostMask mask = selection.mask;
  if (selection.coversAgain) {
    for (uint8_t& weight : mask) weight = weight != 0 ? 255 : 0;
  }
  picture->colors = mixByMask(picture->colors, filteredPicture(), mask);
}

// In 16 bits, so that what is not selected keeps its last bit.
void takeResult(const HostMask& mask, bool whole, Picture* picture) {
  picture->colors = takeFilteredPicture();
  std::vector<uint16_t>& deep = picture->deep.colors;
  if (deep.empty()) return;
  std::vector<uint8_t>& samples = picture->colors.samples;
  const size_t planes = static_cast<size_t>(picture->colors.planes);
  for (size_t i = 0; i < deep.size(); ++i) {
    const uint32_t weight = mask.empty() ? 255 : mask[i / planes];
    const uint32_t used = whole && weight > 0 ? 255 : weight;
    const uint32_t effect = samples[i] * 257U;
    deep[i] = static_cast<uint16_t>((deep[i] * (255 - used) + effect * used + 127) / 255);
    samples[i] = shallow(deep[i]);
  }
}
