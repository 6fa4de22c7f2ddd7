// Settings files on disk: round trips, what happens around reading and writing, and the pictures
// that presets name.

#include "persistence/settings_file.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <cstring>
#include <fstream>

#include "entry/handles.h"
#include "persistence/settings_codec.h"
#include "pictures/picture_release.h"
#include "pictures/picture_surface.h"
#include "pictures/run_pictures.h"
#include "platform/none/none_script.h"
#include "platform/remembered_values.h"
#include "tests/support/hosts/heap_faults.h"
#include "tests/support/hosts/session_fixture.h"
#include "tests/support/random_inputs.h"
#include "tests/support/written_settings.h"

static std::string temporaryPath(const char* name) {
  return ::testing::TempDir() + "morvalis-" + std::to_string(getpid()) + "-" + name;
}

static void writeBytes(const std::string& path, const Bytes& bytes) {
  std::ofstream(path, std::ios::binary)
      .write(reinterpret_cast<const char*>(bytes.data()),
             static_cast<std::streamsize>(bytes.size()));
}

static Bytes readBytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// --- A session that reads and writes them ---------------------------------------------------

class SettingsFile : public ::testing::Test {
 protected:
  ~SettingsFile() override {
    disposeModuleHandle(settings.environmentRef);
    disposeModuleHandle(settings.textureRef);
    releasePictures(session);
    std::remove(path.c_str());
  }

  // As the dialog does: with pictures and buffers there.
  void readAsPreset(const Bytes& bytes) {
    fixture.allocate(8, 8);
    releasePictures(session);
    createBuiltInTexture(session);
    createBuiltInEnvironment(session);
    writeBytes(path, bytes);
    readSettingsFile(session, path.c_str(), /*loadPictures=*/true);
  }

  SessionFixture fixture;
  SessionRecord* session = fixture.session.get();
  EffectSettings& settings = fixture.settings;
  std::string path = temporaryPath("settings");
};

TEST_F(SettingsFile, RoundTripKeepsEveryStoredField) {
  constexpr char kPicture[] = "C:\\x\\G\xF6ld.bmp";
  TestRandom random = {99};
  for (int32_t i = 0; i < 200; ++i) {
    randomSettings(&random, &settings);
    settings.light1Dir.x = static_cast<float>(randomBetween(&random, -100, 100) / 100.0);
    std::strcpy(settings.environmentPath, kPicture);
    ASSERT_TRUE(writeSettingsFile(settingsOf(session), path.c_str()));
    const Bytes first = readBytes(path);
    const float written = settings.light1Dir.x;
    std::memset(static_cast<void*>(&settings), 0, sizeof(settings));
    readSettingsFile(session, path.c_str(), /*loadPictures=*/false);
    EXPECT_STREQ(settings.environmentPath, "") << "the names are dropped";
    // A hundredth may be lost where the product lies just below a whole number; nothing else may.
    ASSERT_NEAR(settings.light1Dir.x, written, 0.010001);
    std::strcpy(settings.environmentPath, kPicture);
    ASSERT_TRUE(writeSettingsFile(settingsOf(session), path.c_str()));
    const Bytes second = readBytes(path);
    ASSERT_EQ(second.size(), first.size());
    for (size_t at = 0; at < first.size(); ++at) {
      const bool light = at >= 56 && at < 84 && (at < 68 || at >= 72);
      ASSERT_TRUE(light || first[at] == second[at]) << at;
    }
  }
}

TEST_F(SettingsFile, LongerOldFileKeepsItsTail) {
  writeBytes(path, Bytes(500, 0xEE));
  ASSERT_TRUE(writeSettingsFile(settingsOf(session), path.c_str()));
  const Bytes after = readBytes(path);
  ASSERT_EQ(after.size(), 500U);
  EXPECT_EQ(after[3], 31);
  EXPECT_EQ(after[202], 0xEE);
  settings.radius = 77;
  readSettingsFile(session, path.c_str(), /*loadPictures=*/false);
  EXPECT_EQ(settings.radius, 10);
  EXPECT_FALSE(writeSettingsFile(settingsOf(session), "/nowhere/at/all"));
  EXPECT_FALSE(writeSettingsFile(settingsOf(session), "/dev/full")) << "a full disk is noticed";
}

TEST_F(SettingsFile, WithoutAFileOnlyTheFolderIsRead) {
  writeRememberedValue("EnviroPath", "D:\\Art\\");
  std::strcpy(settings.pictureFolder, "C:\\old\\");
  EffectSettings expected = settings;
  std::strcpy(expected.pictureFolder, "D:\\Art\\");
  for (const char* missing : {"/nowhere/at/all", ""}) {
    readSettingsFile(session, missing, /*loadPictures=*/true);
    EXPECT_EQ(std::memcmp(&settings, &expected, sizeof(settings)), 0);
  }
  settings.pictureFolder[0] = 0;
  loadCachedSettings(session);  // there is no place for one
  EXPECT_EQ(std::memcmp(&settings, &expected, sizeof(settings)), 0);
  EXPECT_TRUE(noneRecord().alerts.empty());
}

// What was read so far stays, and nothing more is done.
TEST_F(SettingsFile, ReadingStopsWithoutMemoryForABlock) {
  FileContent content;
  content.environmentBlock = blockNamed("gold");
  for (int32_t refused : {2, 3}) {  // after the file's own: the handle's master, its data
    readAsPreset(fileOf(31).bytes);
    noneRecord() = {};
    const Handle old = settings.environmentRef = newModuleHandle(84);
    settings.radius = settings.variant = 1;
    settings.textureWidth = 1;
    writeBytes(path, fileOf(31, content).bytes);
    refuseModuleBlock(refused);
    readSettingsFile(session, path.c_str(), /*loadPictures=*/true);
    refuseModuleBlock(0);
    EXPECT_EQ(settings.environmentRef, nullptr);
    EXPECT_FALSE(isModuleHandle(old));
    EXPECT_EQ(settings.radius, 13);
    EXPECT_EQ(settings.variant, 1);
    EXPECT_EQ(settings.textureWidth, 120) << "the texture is not made again";
    EXPECT_TRUE(noneRecord().alerts.empty()) << "no picture is looked for";
  }
}

// --- Pictures that presets name -------------------------------------------------------------

static const char kFolder[] = "D:\\Art\\environments and textures\\";

// Red, with a green corner at the upper left.
static Bytes redPicture() {
  Bytes rgb;
  for (int32_t i = 0; i < 64 * 64; ++i) rgb.insert(rgb.end(), {200, 0, 0});
  rgb[1] = 250;
  return rgb;
}

TEST_F(SettingsFile, NamedPicturesComeFromTheFolder) {
  scriptBitmap(std::string(kFolder) + "gold.bmp", 64, 64, redPicture());
  std::strcpy(settings.pictureFolder, kFolder);
  writeRememberedValue("EnviroPath", kFolder);
  FileContent content;
  content.environmentName = "Gold.BMP";
  content.textureName = "never.bmp";
  readAsPreset(fileOf(31, content).bytes);
  EXPECT_EQ(settings.environmentPath, std::string(kFolder) + "gold.bmp");
  EXPECT_STREQ(settings.texturePath, "") << "only choice 13 reads a texture file";
  EXPECT_TRUE(noneRecord().alerts.empty());
  const PictureSurface* environment = settings.environmentPicture;
  EXPECT_EQ(surfacePixel(environment, 0, 0)[0], 200);
  EXPECT_EQ(surfacePixel(environment, 63, 63)[1], 250) << "two quarter turns, as the file says";
  EXPECT_EQ(settings.proceduralTexture[1], 5U) << "the texture is the choice's, not the file's";
  EXPECT_EQ(settings.textureWidth, 256);

  content.textureChoice = kTextureChoiceFile;
  content.textureName = "gold";
  readAsPreset(fileOf(31, content).bytes);
  EXPECT_EQ(settings.texturePath, std::string(kFolder) + "gold.bmp");
  EXPECT_EQ(settings.textureWidth, 64);

  // Versions that can name no pictures look for none.
  std::strcpy(settings.texturePath, "kept");
  readAsPreset(fileOf(24, content).bytes);
  EXPECT_TRUE(noneRecord().alerts.empty());
  EXPECT_STREQ(settings.texturePath, "kept");
}

TEST_F(SettingsFile, NotFoundFlow) {
  FileContent content;
  content.environmentName = "Gold";
  // Find folder (cancelled), find folder (shown), loaded.
  scriptBitmap("C:\\Pics\\gold.bmp", 64, 64, redPicture());
  noneScript().alertAnswers = {2, 2};
  noneScript().chosenPaths = {"", "C:\\Pics\\any.bmp"};
  readAsPreset(fileOf(31, content).bytes);
  EXPECT_STREQ(settings.environmentPath, "C:\\Pics\\gold.bmp");
  EXPECT_EQ(rememberedValue("EnviroPath"), "C:\\Pics\\");
  ASSERT_EQ(noneRecord().alerts.size(), 2U);
  const ShownAlert& alert = noneRecord().alerts[0];
  EXPECT_EQ(alert.name, "FILE_NOT_FOUND");
  EXPECT_EQ(alert.title, "Can't open file");
  EXPECT_EQ(alert.texts[0], "Can't open the environment file \"gold.bmp\".");
  EXPECT_EQ(alert.texts[1],
            "Try putting this file in your \"environments and textures\" folder.\n\n"
            "Or, help Morvalis find the \"environments and textures\" folder.");
  EXPECT_EQ(alert.buttons, (std::vector<int32_t>{2, 1}));
  EXPECT_EQ(noneRecord().choosers[1].title,
            "Choose any file in the 'environments and textures' directory");
  EXPECT_EQ(noneRecord().choosers[1].pattern, "*.bmp");

  // Cancelled: path, picture and the settings read so far stay.
  content.environmentName = "none";
  const EffectSettings before = settings;
  noneRecord() = {};
  noneScript() = {};
  writeBytes(path, fileOf(31, content).bytes);
  readSettingsFile(session, path.c_str(), true);
  ASSERT_EQ(noneRecord().alerts.size(), 1U);
  EXPECT_EQ(noneRecord().alerts[0].texts[0], "Can't open the environment file \"none.bmp\".");
  EXPECT_STREQ(settings.environmentPath, before.environmentPath);
  EXPECT_EQ(settings.radius, 13);

  // An alert that cannot be shown counts as cancelled.
  noneRecord() = {};
  noneScript().alertAnswers = {-1};
  readSettingsFile(session, path.c_str(), true);
  EXPECT_TRUE(noneRecord().choosers.empty());

  // A file that ends before its names asks for none.
  noneRecord() = {};
  Bytes cut = fileOf(31, content).bytes;
  cut.resize(cut.size() - 10);
  writeBytes(path, cut);
  readSettingsFile(session, path.c_str(), true);
  EXPECT_TRUE(noneRecord().alerts.empty());
  writeBytes(path, fileOf(31, content).bytes);

  // A folder so long that nothing fits behind it.
  noneRecord() = {};
  writeRememberedValue("EnviroPath", std::string(258, 'f').c_str());
  readSettingsFile(session, path.c_str(), true);
  EXPECT_EQ(noneRecord().alerts.size(), 1U);
}

TEST_F(SettingsFile, FolderIsLearntFromPaths) {
  noneScript().chosenPaths = {"D:\\Art\\Environments and Textures\\gold.q9q",
                              "D:\\Art\\environments and textures\\presets\\gold.q9q",
                              "E:\\environments and textures\\other.q9q"};
  // To this system they are names of files in the present folder.
  for (const std::string& file : noneScript().chosenPaths) writeBytes(file, fileOf(24).bytes);
  const std::vector<std::string> files = noneScript().chosenPaths;
  openPreset(session);
  EXPECT_STREQ(settings.pictureFolder, "");
  openPreset(session);
  EXPECT_STREQ(settings.pictureFolder, "D:\\Art\\environments and textures\\");
  openPreset(session);
  EXPECT_STREQ(settings.pictureFolder, "D:\\Art\\environments and textures\\");
  EXPECT_EQ(rememberedValue("EnviroPath"), "D:\\Art\\environments and textures\\");
  for (const std::string& file : files) std::remove(file.c_str());
  noneScript().chosenPaths.push_back("F:\\environments and textures\\missing.q9q");
  EXPECT_FALSE(openPreset(session)) << "not there";
  EXPECT_FALSE(openPreset(session)) << "cancelled";
  EXPECT_EQ(noneRecord().choosers[0].title, "Open a settings file");
  EXPECT_EQ(noneRecord().choosers[0].pattern, "*.q9q");
}

// Where nothing can be remembered, a folder lasts until the next file is read; the file lies in it.
TEST_F(SettingsFile, FolderIsFoundWhereItCannotBeKept) {
  const std::string folder = temporaryPath("environments and textures\\");
  const std::string preset = folder + "gold.q9q";
  FileContent content;
  content.environmentName = "gold";
  writeBytes(preset, fileOf(31, content).bytes);
  for (bool forgets : {false, true}) {
    resetNone();
    readAsPreset(fileOf(24).bytes);
    scriptBitmap(folder + "gold.bmp", 64, 64, redPicture());
    noneScript().forgetsValues = forgets;
    noneScript().chosenPaths = {preset};
    EXPECT_TRUE(openPreset(session));
    EXPECT_TRUE(noneRecord().alerts.empty());
    EXPECT_EQ(settings.environmentPath, folder + "gold.bmp");
  }
  std::remove(preset.c_str());
}

// At the start of a run: the remembered environment is loaded and turned, also when it is gone;
// without one nothing is.
TEST_F(SettingsFile, RememberedEnvironmentIsTurned) {
  std::strcpy(settings.environmentPath, "kept");
  const auto made = [this](int32_t turns) {
    settings.environmentTurns = turns;
    releasePictures(session);
    createBuiltInEnvironment(session);
    return Bytes(settings.environmentPicture->rgb,
                 settings.environmentPicture->rgb + 64 * settings.environmentPicture->width);
  };
  const Bytes plain = made(0);
  EXPECT_EQ(made(1), plain);
  EXPECT_STREQ(settings.environmentPath, "kept");
  writeRememberedValue("ChromeFile", "gone.bmp");
  EXPECT_NE(made(1), plain);
  EXPECT_STREQ(settings.environmentPath, "gone.bmp");
  scriptBitmap("gone.bmp", 64, 64, redPicture());
  made(1);
  EXPECT_EQ(surfacePixel(settings.environmentPicture, 63, 0)[1], 250);
}

TEST_F(SettingsFile, CachedSettingsComeBack) {
  loadCachedSettings(session);  // none: nothing changes
  noneScript().cachedSettingsPath = path;
  settings.gloss = 91;
  std::strcpy(settings.environmentPath, "C:\\sky.bmp");
  saveCachedSettings(session);
  settings.gloss = 1;
  loadCachedSettings(session);
  EXPECT_EQ(settings.gloss, 91);
  EXPECT_TRUE(noneRecord().alerts.empty()) << "their pictures are not looked for";
  noneScript().chosenPaths = {path};
  settings.gloss = 17;
  EXPECT_TRUE(savePreset(settingsOf(session)));
  EXPECT_TRUE(noneRecord().choosers[0].forSaving);
  EXPECT_EQ(noneRecord().choosers[0].title, "Save a settings file");
  settings.gloss = 1;
  loadCachedSettings(session);
  EXPECT_EQ(settings.gloss, 17);
}

// Around the settings file, then where the module's own pictures are; the first one counts.
TEST_F(SettingsFile, PicturesAreLookedForInManyPlaces) {
  const std::string usual = "environments and textures/";
  noneScript().separator = '/';
  noneScript().ownPictures = "/own/";
  writeRememberedValue("EnviroPath", "/known/");
  FileContent content;
  content.environmentName = "sky.bmp";
  const Bytes bytes = fileOf(31, content).bytes;
  const std::string beside = path.substr(0, path.rfind('/') + 1);
  const std::string above = beside.substr(0, beside.rfind('/', beside.size() - 2) + 1);
  const std::string places[] = {"/own/", above + usual, beside + usual, beside, "/known/"};
  for (const std::string& place : places) {
    scriptBitmap(place + "sky.bmp", 64, 64, redPicture());
    readAsPreset(bytes);
    EXPECT_EQ(settings.environmentPath, place + "sky.bmp");
  }
  EXPECT_TRUE(noneRecord().alerts.empty());
  // A file without the name of an environment asks for none.
  content.environmentName = "";
  readAsPreset(fileOf(31, content).bytes);
  EXPECT_TRUE(noneRecord().alerts.empty());
}
