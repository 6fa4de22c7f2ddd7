// The same picture, selection, settings, picture files and time of day give the same bytes on both
// kinds of Windows as here, by every instruction set, whatever the host does otherwise.
//   MORVALIS_LONG=1     2,000 renders instead of 120

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "entry/host_interface.h"
#include "persistence/settings_codec.h"
#include "platform/none/none_script.h"
#include "platform/remembered_values.h"
#include "tests/support/hosts/bitmap_files.h"
#include "tests/support/hosts/host_runs.h"
#include "tests/support/random_inputs.h"
#include "tests/windows/wine_host.h"

constexpr size_t kRenders = 120;
constexpr size_t kManyRenders = 2000;

struct PictureFile {
  int32_t width = 0;  // 0: there is none
  int32_t height = 0;
  std::vector<uint8_t> samples;
  bool isGrey = false;  // one sample a pixel, 8 bits with a palette in the file
};

struct Render {
  DirectInput input;
  std::vector<uint8_t> settingsFile;
  PictureFile environment;
  PictureFile texture;
  Rectangle area;                                           // all zero: the whole picture
  std::vector<std::pair<std::string, std::string>> habits;  // of the host, as options
};

// --- Inputs ---------------------------------------------------------------------------------

static std::vector<uint8_t> settingsFileOf(const EffectSettings& settings) {
  std::vector<uint8_t> bytes(kLongestEncodedSettings);
  bytes.resize(encodeSettings(&settings, bytes.data()));
  return bytes;
}

// Of any size: the module brings an environment to its own, and cuts a texture off.
static PictureFile randomPictureFile(TestRandom* random, int32_t largest) {
  PictureFile file;
  file.width = randomBetween(random, 1, largest);
  file.height = randomBetween(random, 1, largest);
  file.isGrey = randomBetween(random, 0, 1) != 0;
  file.samples.resize(static_cast<size_t>(file.width) * static_cast<size_t>(file.height) *
                      (file.isGrey ? 1 : 3));
  for (uint8_t& value : file.samples) value = static_cast<uint8_t>(randomBetween(random, 0, 255));
  return file;
}

// Hosts without masks have a rectangle around the selection filtered.
static Rectangle randomArea(TestRandom* random, const DirectInput& input) {
  if (!input.mask.empty() || randomBetween(random, 0, 1) == 0) return {};
  const int32_t top = randomBetween(random, 0, input.height - 1);
  const int32_t left = randomBetween(random, 0, input.width - 1);
  return {static_cast<int16_t>(top), static_cast<int16_t>(left),
          static_cast<int16_t>(randomBetween(random, top + 1, input.height)),
          static_cast<int16_t>(randomBetween(random, left + 1, input.width))};
}

static Render makeRender(TestRandom* random) {
  constexpr std::pair<const char*, const char*> kHabits[] = {
      {"--withhold", "advanceState"},  {"--withhold", "buffers"},  {"--withhold", "handles"},
      {"--withhold", "movingBuffers"}, {"--manner", "harshCalls"}, {"--manner", "skipsFinish"}};
  Render render = {};
  DirectInput& input = render.input;
  input = randomInput(random, randomBetween(random, 1, 90), randomBetween(random, 1, 70));
  input.settings.previewMode = 0;
  input.settings.previewScale = 1;
  render.settingsFile = settingsFileOf(input.settings);
  render.environment = randomPictureFile(random, 150);
  if (!input.texture.empty()) render.texture = randomPictureFile(random, 300);
  render.area = randomArea(random, input);
  for (const auto& habit : kHabits) {
    if (randomBetween(random, 0, 4) == 0) render.habits.emplace_back(habit);
  }
  return render;
}

static HostPicture pictureOf(const DirectInput& input) {
  return {input.width, input.height, input.planes, input.source};
}

// --- Here -----------------------------------------------------------------------------------

static void scriptPicture(const PictureFile& file, const char* valueName) {
  if (file.width == 0) return;
  std::vector<uint8_t> rgb;
  for (const uint8_t value : file.samples) rgb.insert(rgb.end(), file.isGrey ? 3 : 1, value);
  scriptBitmap(valueName, file.width, file.height, rgb);
  writeRememberedValue(valueName, valueName);
}

static std::vector<uint8_t> renderHere(const Render& render) {
  const DirectInput& input = render.input;
  const auto prepare = [&render, &input] {
    DecodedSettings decoded;
    decodeSettings(render.settingsFile.data(), render.settingsFile.size(), hostSettings(),
                   &decoded);
    noneScript().seconds = input.seed;
    scriptPicture(render.environment, "ChromeFile");
    scriptPicture(render.texture, "TextureFile");
    if (render.area.bottom != 0) setFilterRect(render.area);
  };
  const HostRun run = runHost({}, pictureOf(input), input.mask, prepare);
  EXPECT_EQ(run.result, 0);
  return run.effect.samples;
}

// --- There ----------------------------------------------------------------------------------

static void writePictureFile(const PictureFile& file, const std::string& path) {
  const auto write = file.isGrey ? writeGreyBitmap : writeColourBitmap;
  write(path, file.width, file.height, file.samples);
}

// The words of one job, with its files in the folder.
static std::string jobFor(const Render& render, size_t index, const std::string& folder) {
  const DirectInput& input = render.input;
  std::string words = "--seed\t" + std::to_string(input.seed);
  const auto add = [&words](const std::string& option, const std::string& value) {
    words += "\t" + option + "\t" + value;
  };
  const auto addFile = [&](const std::string& kind, const char* ending) {
    add("--" + kind, kind + std::to_string(index) + ending);
    return folder + "/" + kind + std::to_string(index) + ending;
  };
  writePicture(addFile("picture", ".pam"), pictureOf(input));
  if (!input.mask.empty()) {
    writePicture(addFile("mask", ".pgm"), {input.width, input.height, 1, input.mask});
  }
  writeBytes(addFile("settings", ".q9q"), render.settingsFile);
  writePictureFile(render.environment, addFile("environment", ".bmp"));
  if (render.texture.width != 0) writePictureFile(render.texture, addFile("texture", ".bmp"));
  if (render.area.bottom != 0) {
    add("--area", std::to_string(render.area.top) + "," + std::to_string(render.area.left) + "," +
                      std::to_string(render.area.bottom) + "," + std::to_string(render.area.right));
  }
  for (const auto& habit : render.habits) add(habit.first, habit.second);
  addFile("output", ".pam");
  return words + "\n";
}

class WindowsRenders : public ::testing::TestWithParam<int> {};

TEST_P(WindowsRenders, SameBytesAsHere) {
  const std::string folder = wineFolder(GetParam(), "renders");
  if (folder.empty()) return;
  TestRandom random = {20061};
  const size_t count = std::getenv("MORVALIS_LONG") != nullptr ? kManyRenders : kRenders;
  std::vector<std::vector<uint8_t>> expected;
  std::string jobs;
  size_t changed = 0;
  for (size_t i = 0; i < count; ++i) {
    const Render render = makeRender(&random);
    jobs += jobFor(render, i, folder);
    expected.push_back(renderHere(render));
    changed += expected.back() != render.input.source ? 1 : 0;
  }
  EXPECT_GT(changed, count * 3 / 4);
  writeText(folder + "/jobs.txt", jobs);
  const auto outputOf = [&folder](size_t i) {
    return folder + "/output" + std::to_string(i) + ".pam";
  };
  // A set that this processor lacks gives way to the next lesser one.
  for (const char* set : {"plain", "baseline", "sse4.1", "avx2"}) {
    SCOPED_TRACE(set);
    for (size_t i = 0; i < count; ++i) std::filesystem::remove(outputOf(i));
    setenv("MORVALIS_INSTRUCTIONS", set, 1);
    runWindowsHost(GetParam(), folder, {"--batch", "jobs.txt"});
    unsetenv("MORVALIS_INSTRUCTIONS");
    for (size_t i = 0; i < count; ++i) {
      ASSERT_EQ(readSamples(outputOf(i), expected[i].size()), expected[i]) << "render " << i;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Bits, WindowsRenders, ::testing::Values(64, 32), kindName);
