#include "hosts/effect_runs/color_use.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "hosts/process/command_failure.h"
#include "platform/bitmap_decoder.h"

constexpr int kChannelBits = 8;  // of 16, what the effect looks at

// --- Grey pictures --------------------------------------------------------------------------

template <typename Sample>
static std::vector<Sample> threefold(const std::vector<Sample>& greys) {
  std::vector<Sample> colors;
  colors.reserve(3 * greys.size());
  for (const Sample grey : greys) colors.insert(colors.end(), 3, grey);
  return colors;
}

void makeColorful(Picture* picture) {
  if (picture->colors.planes != 1) return;
  picture->colors.planes = 3;
  picture->colors.samples = threefold(picture->colors.samples);
  picture->deep.colors = threefold(picture->deep.colors);
}

// --- Colours of the effect ------------------------------------------------------------------

static bool hasHue(const Color16& color) {
  const int red = color.red >> kChannelBits;
  const int green = color.green >> kChannelBits;
  const int blue = color.blue >> kChannelBits;
  return red != green || green != blue;
}

// The environment that comes with the filter is golden.
static bool mirrorsColors(const std::string& file) {
  DecodedBitmap bitmap;
  if (file.empty() || !decodeBitmapFile(file.c_str(), &bitmap)) return true;
  const size_t pixels = static_cast<size_t>(bitmap.width) * static_cast<size_t>(bitmap.height);
  bool found = false;
  for (const uint8_t* at = bitmap.rgb; at != bitmap.rgb + 3 * pixels && !found; at += 3) {
    found = at[0] != at[1] || at[1] != at[2];
  }
  std::free(bitmap.rgb);
  return found;
}

// The blend mode "tarnish" shows how much there is, in grey, and "caustic" the gathered light
// alone.
std::string colorsShown(const EffectSettings& settings, const FoundPictures& found) {
  if (settings.blendMode == kBlendModeTarnish) return "";
  const bool surface = settings.blendMode != kBlendModeCaustic;
  std::vector<std::string> names;
  if (hasHue(settings.light1Color)) names.emplace_back("light1Color");
  if (hasHue(settings.light2Color)) names.emplace_back("light2Color");
  if (surface && settings.reflection > 0 && mirrorsColors(found.pictures[kEnvironmentName].path)) {
    names.emplace_back("reflection");
  }
  if (surface && settings.tarnish > 0 && hasHue(settings.tarnishColor)) {
    names.emplace_back("tarnishColor");
  }
  if (surface && settings.iriColors > 0 && settings.iridescence > 0) {
    names.emplace_back("iriColors");
  }
  const bool gathers = settings.glassiness > 0 && settings.caustic > 0;
  if (gathers && settings.iriTableChoice != 1) names.emplace_back("caustic");
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : ", ") + name;
  return text;
}

void warnOfLostColors(const EffectSettings& settings, const FoundPictures& found,
                      const Picture& picture, const std::string& file) {
  if (picture.colors.planes != 1) return;
  const std::string names = colorsShown(settings, found);
  if (names.empty()) return;
  reportWarning(file + ": is grey, and so is the result; --color lets it take the colours of " +
                names);
}

// --- Lights ---------------------------------------------------------------------------------

static void warnOfDarkLight(const char* name, const Color16& color) {
  const int brightest = std::max({color.red, color.green, color.blue});
  if (brightest == 0 || brightest >> kChannelBits != 0) return;
  char code[8];
  std::snprintf(code, sizeof(code), "#%02x%02x%02x", color.red & 255U, color.green & 255U,
                color.blue & 255U);
  reportWarning(std::string(name) + "=" + std::to_string(color.red) + "," +
                std::to_string(color.green) + "," + std::to_string(color.blue) +
                " is as good as black, since channels go to 65535; " + name + "=" + code +
                " is this colour in numbers to 255");
}

void warnOfDarkLights(const EffectSettings& settings) {
  warnOfDarkLight("light1Color", settings.light1Color);
  warnOfDarkLight("light2Color", settings.light2Color);
}
