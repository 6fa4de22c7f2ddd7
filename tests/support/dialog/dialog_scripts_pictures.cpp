// Textures, environments, colours, settings files, Randomize.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <fstream>

#include "dialog/controls/control_table.h"
#include "dialog/dialog_scale.h"
#include "hosts/substitute_host/host_state.h"
#include "services/random_numbers.h"
#include "settings/setting_fields.h"
#include "tests/support/dialog/dialog_recording.h"
#include "tests/support/dialog/dialog_runs.h"
#include "tests/support/dialog/dialog_scripts.h"
#include "tests/support/written_settings.h"

// A picture file of this size, no two lines alike.
static std::string pictureFile(const std::string& name, int32_t width, int32_t height) {
  std::vector<uint8_t> rgb;
  for (int32_t y = 0; y < height; ++y) {
    for (int32_t x = 0; x < width; ++x) {
      rgb.insert(rgb.end(), {uint8_t(x * 5 + y), uint8_t(x * 3 + y * 7), uint8_t(y * 11)});
    }
  }
  const std::string path = temporaryFile(name);
  offerPicture(path, width, height, rgb);
  return path;
}

static void textureFiles() {
  const std::string leather = pictureFile("leather.bmp", 32, 16);
  answerFiles({"", leather});
  runDialog([&](DialogUser& user) {
    chooseRow(user, kTexturePicker, 7);
    EXPECT_EQ(settingOf("textureChoice"), 7);
    hostSettings()->textureOffsetX = 9;
    chooseRow(user, kTexturePicker, 13);  // but no file is chosen
    EXPECT_EQ(settingOf("textureChoice"), 7);
    EXPECT_EQ(settingOf("textureOffsetX"), 9);
    EXPECT_EQ(shownChoosers(), std::vector<std::string>{"Open a texture picture"});
    look(user, "no file");
    chooseRow(user, kTexturePicker, 13);
    EXPECT_EQ(settingOf("textureChoice"), 13);
    EXPECT_EQ(hostSettings()->texturePath, leather);
    EXPECT_EQ(hostSettings()->textureWidth, 32);
    EXPECT_EQ(settingOf("textureOffsetX"), 0);
    look(user, "a file");
    chooseRow(user, kTexturePicker, 13);  // once more, cancelled: the file stays
    EXPECT_EQ(settingOf("textureChoice"), 13);
    hostSettings()->textureOffsetY = 3;
    chooseRow(user, kTexturePicker, 4);
    EXPECT_EQ(settingOf("textureOffsetY"), 0);
    look(user, "generated");
    user.clickButton(kOkButton);
  });
}

static void textureSample() {
  const std::string leather = pictureFile("leather.bmp", 32, 16);
  const std::string grain = pictureFile("grain.bmp", 300, 70);
  answerFiles({leather, grain});
  runDialog([&](DialogUser& user) {
    user.move(at(280, 70));
    EXPECT_TRUE(user.showsHand());
    user.click(at(280, 70));  // a click opens
    EXPECT_EQ(settingOf("textureChoice"), 13);
    EXPECT_EQ(hostSettings()->previousTextureChoice, 13);
    // Dragging shifts, by a full turn at most.
    user.press(at(280, 70));
    user.move(at(285, 68));
    EXPECT_EQ(settingOf("textureOffsetX"), 32 - scaled(5));
    EXPECT_EQ(settingOf("textureOffsetY"), scaled(2));
    look(user, "dragged");
    user.move(at(675, 68));  // 390 to the right count as 32
    EXPECT_EQ(settingOf("textureOffsetX"), 32 - scaled(5));
    user.move(at(670, 78));
    user.release(at(670, 78));
    EXPECT_EQ(settingOf("textureOffsetX"), 0);
    EXPECT_EQ(settingOf("textureOffsetY"), (scaled(2) + 16 - std::min(scaled(10), 16)) % 16);
    look(user, "released");
    // Pressed inside and let go outside, that drags; a press that does not move opens.
    user.click(at(280, 70));
    EXPECT_EQ(hostSettings()->texturePath, grain);
    EXPECT_EQ(hostSettings()->textureWidth, 256) << "as much as a surface holds";
    EXPECT_EQ(settingOf("textureOffsetX"), 0);
    look(user, "grain");
    user.click(at(280, 70));  // cancelled
    EXPECT_EQ(shownChoosers().size(), 3U);
    EXPECT_EQ(settingOf("textureChoice"), 13);
    user.clickButton(kOkButton);
  });
}

// A file that is no picture is told of and changes nothing.
static void unreadablePictures() {
  const std::string text = temporaryFile("text.bmp");
  std::ofstream(text) << "no picture";
  answerFiles({text, text});
  runDialog([&](DialogUser& user) {
    const int32_t width = hostSettings()->textureWidth;
    user.clickButton(kEnvironmentButton);
    look(user, "environment");
    user.click(middleOf(kTextureSample));
    look(user, "texture");
    EXPECT_EQ(shownAlerts(), 2);
    EXPECT_STREQ(hostSettings()->environmentPath, "");
    EXPECT_STREQ(hostSettings()->texturePath, "");
    EXPECT_EQ(settingOf("reflection"), 0);
    EXPECT_EQ(settingOf("textureChoice"), 6);
    EXPECT_EQ(hostSettings()->textureWidth, width);
    user.escape();
  });
  std::remove(text.c_str());
}

static void environment() {
  const std::string sky = pictureFile("sky.bmp", 128, 96);
  answerFiles({"", sky, sky});
  runDialog([&](DialogUser& user) {
    user.clickButton(kEnvironmentButton);
    EXPECT_EQ(settingOf("reflection"), 0) << "no file was chosen";
    user.clickButton(kEnvironmentButton);
    EXPECT_EQ(settingOf("reflection"), 100);
    EXPECT_EQ(hostSettings()->environmentPath, sky);
    look(user, "sky");
    for (int32_t i = 1; i <= 5; ++i) {
      user.clickButton(kSpinButton);
      EXPECT_EQ(settingOf("environmentTurns"), i % 4);
      look(user, "turned " + std::to_string(i));
    }
    user.click(sliderPoint(kReflectionSlider, 40));
    user.clickButton(kEnvironmentButton);
    EXPECT_EQ(settingOf("reflection"), 40) << "it is seen already";
    EXPECT_EQ(settingOf("environmentTurns"), 0);
    EXPECT_EQ(shownChoosers()[2], "Open an environment picture");
    // Held, the thumbnail looks pressed.
    user.press(middleOf(kEnvironmentButton));
    look(user, "held");
    user.move(at(10, 10));
    look(user, "left");
    user.release(at(10, 10));
    user.clickButton(kOkButton);
  });
}

static ColorServicesInfo asked;

static std::string promptOf(const ColorServicesInfo& info) {
  const auto* counted = reinterpret_cast<const uint8_t*>(info.selectorParameter);
  return {reinterpret_cast<const char*>(counted) + 1, counted[0]};
}

static std::string prompt;
static int16_t answerOfHost = 0;

static int16_t MORVALIS_CALL hostChoosesColor(ColorServicesInfo* info) {
  asked = *info;
  prompt = promptOf(*info);
  info->colorComponents[0] = 201;
  info->colorComponents[2] = 5;
  return answerOfHost;
}

static void colours() {
  runDialog(
      displayingHost(), testPicture(40, 30, 3), {},
      [](DialogUser& user) {
        hostSettings()->light1Color = {0x1234, 0x5678, 0x9ABC};
        user.clickButton(kLight1Button);
        EXPECT_EQ(prompt, "Choose the light's color");
        EXPECT_EQ(asked.colorComponents[0], 0x12);
        EXPECT_EQ(asked.colorComponents[1], 0x56);
        EXPECT_EQ(hostSettings()->light1Color.red, 201 * 256);
        EXPECT_EQ(hostSettings()->light1Color.green, 0x5600);
        EXPECT_EQ(hostSettings()->light1Color.blue, 5 * 256);
        look(user, "light 1");
        answerOfHost = -128;  // what stands there is taken, whatever the user said
        user.clickButton(kLight2Button);
        EXPECT_EQ(hostSettings()->light2Color.red, 201 * 256);
        user.clickButton(kTarnishButton);
        EXPECT_EQ(prompt, "Choose the tarnish color");
        look(user, "all");
        // A host that refuses counts as one without colour services.
        answerOfHost = -30900;
        answerColors({{{{30, 20, 10}}, std::nullopt}});
        user.clickButton(kTarnishButton);
        EXPECT_EQ(hostSettings()->tarnishColor.red, 30 * 256);
        EXPECT_EQ(hostSettings()->tarnishColor.blue, 10 * 256);
        hostSettings()->light1Color = {0x1234, 0x5678, 0x9ABC};
        user.clickButton(kLight1Button);
        EXPECT_EQ(hostSettings()->light1Color.red, 0x1234) << "cancelled";
        answerOfHost = 0;
        user.press(middleOf(kTarnishButton));
        look(user, "held");
        user.release(at(10, 10));
        user.clickButton(kOkButton);
      },
      [] { host().record->colorServices = hostChoosesColor; });
}

static void settingsFiles() {
  const std::string path = temporaryFile("look.q9q");
  answerFiles({path, path, ""});
  runDialog([&](DialogUser& user) {
    user.click(sliderPoint(28, 77));
    chooseRow(user, kShapePicker, 3);
    user.click(middleOf(kAutoPreviewToggle));
    user.clickButton(kSaveButton);
    user.click(middleOf(kAutoPreviewToggle));
    user.click(sliderPoint(28, 11));
    chooseRow(user, kShapePicker, 8);
    user.clickButton(kLoadButton);
    EXPECT_EQ(settingOf("gloss"), 77);
    EXPECT_EQ(settingOf("shape"), 3);
    EXPECT_EQ(hostSettings()->autoPreview, 0U);
    look(user, "loaded");
    user.clickButton(kLoadButton);
    EXPECT_EQ(settingOf("gloss"), 77) << "cancelled";
    EXPECT_EQ(shownChoosers().size(), 3U);
    user.clickButton(kOkButton);
  });
  std::remove(path.c_str());
}

static void writeFile(const std::string& path, const Bytes& bytes) {
  std::ofstream file(path, std::ios::binary);
  file.write(reinterpret_cast<const char*>(bytes.data()),
             static_cast<std::streamsize>(bytes.size()));
}

// Every failure is told and changes nothing, also what the controls show and "Auto preview" has not
// yet taken.
static void settingsFilesThatFail() {
  const std::string path = temporaryFile("odd.q9q");
  const Bytes whole = fileOf(31).bytes;
  const Bytes cut(whole.begin(), whole.begin() + 60);
  Bytes huge;
  for (int32_t i = 0; i < 200; ++i) putNumber(&huge, 0x4D414C00 + i);
  Bytes strangers(whole);
  for (size_t i = 4; i < 60; ++i) strangers[i] = 0x41;
  runDialog([&](DialogUser& user) {
    user.click(middleOf(kAutoPreviewToggle));
    user.click(sliderPoint(28, 90));
    answerFiles({""});
    user.clickButton(kLoadButton);
    EXPECT_EQ(shownAlerts(), 0) << "cancelled";
    int32_t alerts = 0;
    for (const Bytes& bytes : {cut, huge, strangers, Bytes{}, Bytes{'P', 'N', 'G'}}) {
      writeFile(path, bytes);
      answerFiles({path});
      user.clickButton(kLoadButton);
      EXPECT_EQ(shownAlerts(), ++alerts);
    }
    answerFiles({"/proc/nowhere.q9q"});
    user.clickButton(kSaveButton);
    EXPECT_EQ(shownAlerts(), ++alerts);
    look(user, "nothing has changed");
    EXPECT_EQ(settingOf("gloss"), 50);
    user.clickButton(kOkButton);
  });
  EXPECT_EQ(settingOf("gloss"), 90) << "what was shown is what is confirmed";
  EXPECT_EQ(settingOf("radius"), 10);
  std::remove(path.c_str());
}

static void shownIsSaved() {
  const std::string path = temporaryFile("shown.q9q");
  answerFiles({path, path});
  runDialog([&](DialogUser& user) {
    user.click(middleOf(kAutoPreviewToggle));
    user.click(sliderPoint(28, 90));
    user.clickButton(kSaveButton);
    user.click(sliderPoint(28, 20));
    user.clickButton(kLoadButton);
    EXPECT_EQ(settingOf("gloss"), 90);
    EXPECT_EQ(shownAlerts(), 0);
    user.escape();
  });
  std::remove(path.c_str());
}

// Values out of range come in as the nearest there is, and the user is told.
static void settingsOutOfRange() {
  const std::string path = temporaryFile("wide.q9q");
  FileContent content;
  content.tarnish = 900;
  writeFile(path, fileOf(31, content).bytes);
  answerFiles({path});
  runDialog([&](DialogUser& user) {
    user.clickButton(kLoadButton);
    EXPECT_GE(shownAlerts(), 1);
    EXPECT_EQ(settingOf("tarnish"), 100);
    for (int32_t i = 0; i < kSettingRangeCount; ++i) {
      double values[3];
      readSetting(*hostSettings(), kSettingRanges[i], values);
      for (const double value : values) {
        EXPECT_GE(value, kSettingRanges[i].minimum < 0 ? kSettingRanges[i].minimum : 0);
        EXPECT_LE(value, kSettingRanges[i].maximum) << kSettingRanges[i].name;
      }
    }
    look(user, "limited");
    user.clickButton(kOkButton);
  });
  std::remove(path.c_str());
}

// The draws in the order that old presets were made in, by the rule for each: written down here
// once more, apart from the dialog.
static int32_t drawn(int32_t low, int32_t high) {
  for (;;) {
    const int32_t value = low + (randomNumber() >> 4 & 255);
    if (value <= high) return value;
  }
}

static void expectDrawnColor(const Color16& color) {
  for (uint16_t channel : {color.red, color.green, color.blue}) {
    EXPECT_EQ(channel, (randomNumber() & 255) * 256);
  }
}

static void expectDrawn(const EffectSettings& settings) {
  EXPECT_EQ(settings.texture, drawn(-100, 100));
  EXPECT_EQ(settings.reflection, drawn(0, 100));
  EXPECT_EQ(settings.height, drawn(-70, 70));
  EXPECT_EQ(settings.radius, drawn(0, 50));
  EXPECT_EQ(settings.blendMode, (randomNumber() & 3) == 0 ? drawn(1, 10) : 1);
  EXPECT_EQ(settings.variant, drawn(1, 3));
  EXPECT_EQ(settings.shape, drawn(1, 13));
  EXPECT_EQ(settings.gloss, drawn(0, 100));
  EXPECT_EQ(settings.glare, drawn(0, 100));
  EXPECT_EQ(settings.iriColors, drawn(0, 100));
  EXPECT_EQ(settings.iridescence, drawn(0, 100));
  EXPECT_EQ(settings.tarnish, drawn(0, 60));
  expectDrawnColor(settings.light1Color);
  expectDrawnColor(settings.light2Color);
  expectDrawnColor(settings.tarnishColor);
  EXPECT_EQ(settings.glassiness, drawn(0, 100));
  EXPECT_EQ(settings.caustic, drawn(0, 100));
  EXPECT_EQ(settings.textureScale, drawn(30, 75));
}

static void randomizing() {
  runDialog([](DialogUser& user) {
    const EffectSettings before = *hostSettings();
    bool otherBlend = false;
    for (uint32_t seed = 1; seed <= 12; ++seed) {
      seedRandomNumbers(seed);
      user.clickButton(kRandomizeButton);
      const EffectSettings drawnSettings = *hostSettings();
      seedRandomNumbers(seed);
      expectDrawn(drawnSettings);
      otherBlend |= drawnSettings.blendMode != 1;
      look(user, "seed " + std::to_string(seed));
    }
    EXPECT_TRUE(otherBlend);
    const EffectSettings& after = *hostSettings();
    EXPECT_EQ(after.textureChoice, before.textureChoice);
    EXPECT_EQ(after.light1Dir.x, before.light1Dir.x);
    EXPECT_EQ(after.textureOffsetX, before.textureOffsetX);
    EXPECT_EQ(after.environmentTurns, before.environmentTurns);
    EXPECT_EQ(after.iriTableChoice, before.iriTableChoice);
    EXPECT_EQ(after.autoPreview, before.autoPreview);
    user.clickButton(kOkButton);
  });
}

const std::vector<DialogScript>& pictureScripts() {
  static const std::vector<DialogScript> scripts = {
      {"TextureFiles", textureFiles},
      {"TextureSample", textureSample, ScriptScales::whole},
      {"UnreadablePictures", unreadablePictures},
      {"Environment", environment},
      {"Colours", colours},
      {"SettingsFiles", settingsFiles},
      {"SettingsFilesThatFail", settingsFilesThatFail},
      {"ShownIsSaved", shownIsSaved},
      {"SettingsOutOfRange", settingsOutOfRange},
      {"Randomizing", randomizing}};
  return scripts;
}
