// The same picture, selection, settings, picture files and time of day give the same bytes on both
// kinds of Windows as here.

#include <gtest/gtest.h>

#include "entry/host_interface.h"
#include "persistence/settings_codec.h"
#include "platform/none/none_script.h"
#include "platform/remembered_values.h"
#include "tests/support/host_runs.h"
#include "tests/support/random_inputs.h"
#include "tests/windows/wine_host.h"

constexpr int32_t kRenders = 240;

struct Render {
  DirectInput input;
  std::vector<uint8_t> settingsFile;
  std::string withheld;  // a service that the host does not offer, "" for none
};

static std::vector<uint8_t> settingsFileOf(const EffectSettings& settings) {
  std::vector<uint8_t> bytes(kLongestEncodedSettings);
  bytes.resize(encodeSettings(&settings, bytes.data()));
  return bytes;
}

// One plane or three, as there are files of.
static void keepColourPlanes(DirectInput* input) {
  const int32_t kept = input->planes < 3 ? 1 : 3;
  std::vector<uint8_t> samples;
  for (size_t i = 0; i < input->source.size(); ++i) {
    if (static_cast<int32_t>(i % static_cast<size_t>(input->planes)) < kept) {
      samples.push_back(input->source[i]);
    }
  }
  input->source = samples;
  input->planes = kept;
}

static Render makeRender(TestRandom* random) {
  constexpr const char* kWithheld[] = {
      "", "", "", "advanceState", "buffers", "handles", "movingBuffers"};
  Render render;
  render.input = randomInput(random, randomBetween(random, 1, 90), randomBetween(random, 1, 70));
  keepColourPlanes(&render.input);
  render.input.settings.previewMode = 0;
  render.input.settings.previewScale = 1;
  render.settingsFile = settingsFileOf(render.input.settings);
  render.withheld = kWithheld[randomBetween(random, 0, 6)];
  return render;
}

static HostPicture pictureOf(const DirectInput& input) {
  return {input.width, input.height, input.planes, input.source};
}

static std::string name(const char* kind, size_t index, const char* ending) {
  return kind + std::to_string(index) + ending;
}

// A texture file of 8 bits half of the time.
static bool isPaletteFile(size_t index) {
  return index % 2 == 0;
}

static std::vector<uint8_t> threefold(const std::vector<uint8_t>& grey) {
  std::vector<uint8_t> rgb;
  for (const uint8_t value : grey) rgb.insert(rgb.end(), 3, value);
  return rgb;
}

static std::vector<uint8_t> renderHere(const Render& render) {
  const DirectInput& input = render.input;
  const HostRun run = runHost({}, pictureOf(input), input.mask, [&render, &input] {
    DecodedSettings decoded;
    decodeSettings(render.settingsFile.data(), render.settingsFile.size(), hostSettings(),
                   &decoded);
    noneScript().seconds = input.seed;
    scriptBitmap("environment", 64, 64, input.environment);
    writeRememberedValue("ChromeFile", "environment");
    if (input.texture.empty()) return;
    scriptBitmap("texture", input.textureWidth, input.textureHeight, threefold(input.texture));
    writeRememberedValue("TextureFile", "texture");
  });
  EXPECT_EQ(run.result, 0);
  return run.effect.samples;
}

// The words of one job, with its files in the folder.
static std::string jobFor(const Render& render, size_t index, const std::string& folder) {
  const DirectInput& input = render.input;
  std::string words;
  const auto add = [&words](const std::string& option, const std::string& value) {
    words += (words.empty() ? "" : "\t") + option + "\t" + value;
  };
  add("--picture", name("picture", index, ".ppm"));
  writePicture(folder + "/" + name("picture", index, ".ppm"), pictureOf(input));
  if (!input.mask.empty()) {
    add("--mask", name("mask", index, ".pgm"));
    writePicture(folder + "/" + name("mask", index, ".pgm"),
                 {input.width, input.height, 1, input.mask});
  }
  add("--settings", name("settings", index, ".q9q"));
  writeBytes(folder + "/" + name("settings", index, ".q9q"), render.settingsFile);
  add("--environment", name("environment", index, ".bmp"));
  writeColourBitmap(folder + "/" + name("environment", index, ".bmp"), 64, 64, input.environment);
  if (!input.texture.empty()) {
    const std::string file = name("texture", index, ".bmp");
    add("--texture", file);
    if (isPaletteFile(index)) {
      writeGreyBitmap(folder + "/" + file, input.textureWidth, input.textureHeight, input.texture);
    } else {
      writeColourBitmap(folder + "/" + file, input.textureWidth, input.textureHeight,
                        threefold(input.texture));
    }
  }
  add("--seed", std::to_string(input.seed));
  if (!render.withheld.empty()) add("--withhold", render.withheld);
  add("--output", name("result", index, ".ppm"));
  return words + "\n";
}

class WindowsRenders : public ::testing::TestWithParam<int> {};

TEST_P(WindowsRenders, SameBytesAsHere) {
  const std::string folder = wineFolder(GetParam(), "renders");
  if (folder.empty()) return;
  TestRandom random = {20061};
  std::vector<Render> renders;
  std::string jobs;
  for (size_t i = 0; i < kRenders; ++i) {
    renders.push_back(makeRender(&random));
    jobs += jobFor(renders[i], i, folder);
  }
  writeText(folder + "/jobs.txt", jobs);
  runWindowsHost(GetParam(), folder, {"--batch", "jobs.txt"});
  int32_t changed = 0;
  for (size_t i = 0; i < renders.size(); ++i) {
    const std::vector<uint8_t> expected = renderHere(renders[i]);
    ASSERT_EQ(readPicture(folder + "/" + name("result", i, ".ppm")).samples, expected)
        << "render " << i;
    changed += expected != renders[i].input.source;
  }
  EXPECT_GT(changed, kRenders * 3 / 4);
}

INSTANTIATE_TEST_SUITE_P(Bits, WindowsRenders, ::testing::Values(64, 32), kindName);
