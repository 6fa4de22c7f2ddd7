#include "settings/setting_ranges.h"

#include <cstring>

// The default light directions: the unit diagonal, moved in to three fifths.
constexpr double kDefaultLightXY = static_cast<float>(-0.70710677F * 0.6);
constexpr double kDefaultLightZ = static_cast<float>(0.8);

// One name per value, in order from 1.
constexpr const char* kShapeNames[kShapeCount] = {
    "chisel", "ridge",  "sine",       "round",     "hollow",      "step",  "double ridge",
    "crown",  "collar", "twin ridge", "twin dome", "soft groove", "groove"};

constexpr const char* kTextureNames[kTextureChoiceFile] = {
    "none",  "leather", "scales",  "flakes", "pebbles", "marble", "cobbles",
    "cells", "clouds",  "brushed", "fibres", "strata",  "file"};

constexpr const char* kBlendModeNames[kBlendModeCaustic] = {
    "normal", "procedural +", "procedural -", "difference", "lighten", "darken",
    "add",    "subtract",     "multiply",     "screen",     "tarnish", "caustic"};

// Far beyond any picture, and still exact in the texel arithmetic.
constexpr int32_t kLargestTextureOffset = 1000000;

#define NUMBER(field, low, high, standard, choices, meaning)                 \
  {                                                                          \
#field, SettingForm::number, offsetof(EffectSettings, field), low, high, \
        {standard, 0, 0 }, choices, meaning                                  \
  }
#define TOGGLE(field, standard, meaning)                                \
  {                                                                     \
#field, SettingForm::toggle, offsetof(EffectSettings, field), 0, 1, \
        {standard, 0, 0 }, nullptr, meaning                             \
  }
#define DIRECTION(field, x, y, z, meaning)                                  \
  {                                                                         \
#field, SettingForm::direction, offsetof(EffectSettings, field), -1, 1, \
        {x, y, z }, nullptr, meaning                                        \
  }
#define COLOR(field, red, green, blue, meaning)                            \
  {                                                                        \
#field, SettingForm::color, offsetof(EffectSettings, field), 0, 65535, \
        {red, green, blue }, nullptr, meaning                              \
  }

constexpr SettingRange kSettingRanges[] = {
    NUMBER(shape, 1, kShapeCount, 4, kShapeNames, "cross-section of the bevel"),
    NUMBER(radius, 2, 100, 10, nullptr,
           "width of the bevel in pixels; above 50 it grows twice as fast, to 150"),
    NUMBER(height, -100, 100, 60, nullptr, "height of the bevel; negative presses it in"),
    NUMBER(textureChoice, 1, kTextureChoiceFile, 6, kTextureNames,
           "relief pressed into the surface"),
    NUMBER(texture, -100, 100, 50, nullptr, "depth of the relief; negative turns it inside out"),
    NUMBER(textureScale, 0, 100, 55, nullptr, "size of the relief on the object"),
    NUMBER(textureOffsetX, -kLargestTextureOffset, kLargestTextureOffset, 0, nullptr,
           "shift of the relief to the left, in texels"),
    NUMBER(textureOffsetY, -kLargestTextureOffset, kLargestTextureOffset, 0, nullptr,
           "shift of the relief upward, in texels"),
    NUMBER(gloss, 0, 100, 50, nullptr, "strength of the highlights"),
    NUMBER(glare, 0, 100, 50, nullptr, "breadth of the highlights"),
    NUMBER(reflection, 0, 100, 0, nullptr, "how much of the environment picture is mirrored"),
    NUMBER(environmentTurns, 0, 3, 0, nullptr, "quarter turns of the environment picture"),
    NUMBER(glassiness, 0, 100, 0, nullptr, "how much light passes through the object"),
    NUMBER(caustic, 0, 100, 50, nullptr, "light gathered behind glass; needs glassiness"),
    TOGGLE(iriTableChoice, 0, "1: the gathered light is grey instead of coloured"),
    NUMBER(iridescence, 0, 100, 100, nullptr, "strength of the colours of a thin film"),
    NUMBER(iriColors, 0, 100, 0, nullptr, "thickness of the film; 0 shows no colours"),
    NUMBER(tarnish, 0, 100, 0, nullptr, "how much tarnish gathers in hollows"),
    COLOR(tarnishColor, 18944, 41984, 35072, "colour of the tarnish"),
    DIRECTION(light1Dir, kDefaultLightXY, kDefaultLightXY, kDefaultLightZ,
              "direction of light 1: right, down, toward the viewer"),
    COLOR(light1Color, 65535, 65535, 65535, "colour of light 1"),
    DIRECTION(light2Dir, -kDefaultLightXY, -kDefaultLightXY, kDefaultLightZ,
              "direction of light 2"),
    COLOR(light2Color, 0, 0, 0, "colour of light 2; black switches it off"),
    NUMBER(blendMode, 1, kBlendModeCaustic, 1, kBlendModeNames,
           "how the effect meets the source picture"),
    NUMBER(variant, 1, 3, 1, nullptr, "kept with presets; changes nothing in the picture"),
    TOGGLE(autoPreview, 1, "dialog: render the preview after every change"),
};

const int32_t kSettingRangeCount = sizeof(kSettingRanges) / sizeof(kSettingRanges[0]);

const SettingRange* findSetting(const char* name) {
  for (const SettingRange& row : kSettingRanges) {
    if (std::strcmp(row.name, name) == 0) return &row;
  }
  return nullptr;
}
