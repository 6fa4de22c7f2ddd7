#include "hosts/picture_files/picture_warnings.h"

#include <algorithm>
#include <vector>

#include "hosts/process/command_failure.h"

static const char* whyOneAlone(Sequence sequence) {
  switch (sequence) {
    case Sequence::animation:
      return " (.gif and .webp hold them all)";
    case Sequence::pages:
      return " (.tif holds them all)";
    case Sequence::unlike:
      return ", since they are not alike";
    default:
      return "";
  }
}

void warnOfLoss(const Picture& picture, const PictureFormat& format, bool stripped,
                const std::string& file) {
  std::vector<std::string> losses;
  if (!picture.converted.empty()) {
    losses.push_back("its " + picture.converted + " colours become RGB");
  }
  const int32_t most = format.depth && !picture.deep.colors.empty() ? 16 : 8;
  if (picture.sampleBits > most) {
    losses.push_back("its samples of " + std::to_string(picture.sampleBits) + " bits become " +
                     std::to_string(most));
  }
  const bool partly = std::any_of(picture.alpha.begin(), picture.alpha.end(),
                                  [](uint8_t alpha) { return alpha != 0 && alpha != 255; });
  if (format.kind == FormatKind::gif && partly) {
    losses.emplace_back("what is partly transparent in it becomes wholly so or not at all");
  }
  if (picture.pictureCount > 1) {
    losses.push_back("only the first of its " + std::to_string(picture.pictureCount) +
                     " pictures is taken" + whyOneAlone(picture.sequence));
  }
  if (picture.metadata.profileTooLarge && !stripped) {
    losses.emplace_back("its colour profile, which is damaged or larger than 16 MB, is left out");
  }
  const std::string words = stripped ? "" : lossesIn(format, picture);
  if (!words.empty()) losses.push_back("the result cannot hold its " + words);
  std::string text;
  for (const std::string& loss : losses) text += (text.empty() ? "" : ", and ") + loss;
  if (!text.empty()) reportWarning(file + ": " + text);
}
