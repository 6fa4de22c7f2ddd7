// Settings files: layout, versions, damage, round trips, and the pictures that presets name.

#include "persistence/settings_file.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <cstring>
#include <fstream>
#include <limits>

#include "entry/handles.h"
#include "persistence/mac_roman.h"
#include "persistence/settings_codec.h"
#include "pictures/picture_surface.h"
#include "pictures/run_pictures.h"
#include "platform/none/none_script.h"
#include "platform/remembered_values.h"
#include "tests/support/random_inputs.h"
#include "tests/support/session_fixture.h"

using Bytes = std::vector<uint8_t>;

// --- The tests' own writer ------------------------------------------------------------------

static void put(Bytes* bytes, int32_t number) {
  for (int32_t shift : {24, 16, 8, 0}) {
    bytes->push_back(static_cast<uint8_t>(static_cast<uint32_t>(number) >> shift));
  }
}

struct FileContent {
  Bytes environmentBlock;
  Bytes textureBlock;
  int32_t nameEncoding = 1;
  std::string environmentName;
  std::string textureName;
  int32_t tarnish = 90;
  int32_t textureChoice = 6;
};

// Where the length fields of a file stand.
struct WrittenFile {
  Bytes bytes;
  std::vector<size_t> lengths;
};

static void putBlock(WrittenFile* file, const Bytes& block) {
  file->lengths.push_back(file->bytes.size());
  put(&file->bytes, static_cast<int32_t>(block.size()));
  file->bytes.insert(file->bytes.end(), block.begin(), block.end());
}

static void putName(WrittenFile* file, const std::string& name) {
  file->lengths.push_back(file->bytes.size());
  put(&file->bytes, static_cast<int32_t>(name.size()));
  file->bytes.insert(file->bytes.end(), name.begin(), name.end());
  file->bytes.push_back(0);
}

// A file of any version; every number in it is unlike its field's default.
static WrittenFile fileOf(int32_t version, const FileContent& content = {}) {
  WrittenFile file;
  Bytes* b = &file.bytes;
  put(b, version);
  for (int32_t number : {0, 33, 22, -44, 3, 66, -77, 1, 11, 12, content.textureChoice, 13, 0}) {
    put(b, number);
  }
  for (int32_t hundredths : {10, -20, 30}) put(b, hundredths);
  if (version >= 16) put(b, 17);
  if (version >= 18) {
    for (int32_t hundredths : {-50, 60, 70}) put(b, hundredths);
  }
  if (version >= 19) {
    for (int32_t channel = 1; channel <= 6; ++channel) put(b, 0x7FFF0000 + channel * 1000);
    put(b, 41);
  }
  if (version >= 20) put(b, 42);
  if (version >= 21) {
    put(b, 100);
    put(b, 110);
  }
  if (version >= 22) put(b, 43);
  if (version >= 23) {
    for (int32_t channel = 1; channel <= 3; ++channel) put(b, channel);
    put(b, content.tarnish);
  }
  if (version >= 26) {
    put(b, 120);
    put(b, 130);
  }
  if (version >= 25) {
    putBlock(&file, content.environmentBlock);
    putBlock(&file, content.textureBlock);
    put(b, 3);
    put(b, 2);
  }
  if (version >= 27) put(b, 9);
  if (version >= 28) {
    put(b, 1);
    put(b, 88);
  }
  if (version >= 29) {
    put(b, 5);
    put(b, -6);
  }
  if (version >= 31) {
    put(b, content.nameEncoding);
    putName(&file, content.environmentName);
    putName(&file, content.textureName);
  }
  return file;
}

static Bytes blockNamed(const std::string& name, size_t size = 84) {
  Bytes block(size, 0);
  for (size_t i = 0; i < name.size() && 51 + i < size; ++i) {
    block[51 + i] = static_cast<uint8_t>(name[i]);
  }
  return block;
}

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
    std::remove(path.c_str());
  }

  DecodedSettings decode(const Bytes& bytes) {
    DecodedSettings decoded;
    decodeSettings(bytes.data(), bytes.size(), &settings, &decoded);
    return decoded;
  }

  // As the dialog does: with pictures and buffers there.
  void readAsPreset(const Bytes& bytes) {
    fixture.allocate(8, 8);
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

TEST_F(SettingsFile, LayoutOfTheWrittenVersion) {
  std::strcpy(settings.environmentPath, "D:\\Art\\Gold room.bmp");
  std::strcpy(settings.texturePath, "no folder.bmp");
  uint8_t bytes[kLongestEncodedSettings];
  const size_t count = encodeSettings(&settings, bytes);
  const std::string name = "Gold room.bmp";
  ASSERT_EQ(count, 202 + name.size());
  const auto number = [&bytes](size_t at) {
    return static_cast<int32_t>(static_cast<uint32_t>(bytes[at]) << 24 | bytes[at + 1] << 16 |
                                bytes[at + 2] << 8 | bytes[at + 3]);
  };
  struct Placed {
    size_t at;
    int32_t number;
  };
  // Version, generator parameters in their crossed order, then one field of every kind.
  const Placed placed[] = {
      {0, 31},      {4, 1},      {8, 1},    {12, 5},      {16, 50},   {20, 4},    {28, 60},
      {32, 1},      {44, 6},     {48, 10},  {56, -42},    {60, -42},  {64, 80},   {72, 42},
      {80, 80},     {84, 65535}, {104, 0},  {112, 50},    {116, 256}, {124, 100}, {128, 18944},
      {136, 35072}, {144, 256},  {152, 0},  {156, 0},     {160, 1},   {168, 1},   {176, 55},
      {184, 0},     {188, 1},    {192, 13}, {197 + 13, 0}};
  for (const Placed& expected : placed)
    EXPECT_EQ(number(expected.at), expected.number) << expected.at;
  EXPECT_EQ(std::string(reinterpret_cast<char*>(bytes) + 196), name);
  EXPECT_EQ(bytes[count - 1], 0);
  settings.environmentPath[0] = 0;
  EXPECT_EQ(encodeSettings(&settings, bytes), 202U);
}

TEST_F(SettingsFile, EveryVersionIsRead) {
  for (int32_t version = 0; version <= 40; ++version) {
    SCOPED_TRACE(version);
    settings = {};
    settings.iriColors = settings.caustic = settings.glassiness = -1;
    settings.iridescence = settings.tarnish = settings.variant = settings.environmentTurns = -1;
    settings.blendMode = settings.textureScale = settings.textureOffsetX = -1;
    settings.iriTableChoice = 1;
    settings.light1Color.red = 7;
    settings.light2Dir.x = 7;
    settings.textureWidth = -1;
    const DecodedSettings decoded = decode(fileOf(version).bytes);
    EXPECT_TRUE(decoded.complete);
    EXPECT_EQ(decoded.hasNames, version >= 25);
    EXPECT_EQ(settings.proceduralTexture[0], 0U);
    EXPECT_EQ(settings.proceduralTexture[2], 33U);
    EXPECT_EQ(settings.proceduralTexture[1], 22U);
    EXPECT_EQ(settings.height, -77);
    EXPECT_FLOAT_EQ(settings.light1Dir.y, -0.2F);
    EXPECT_EQ(settings.iriColors, version >= 16 ? 17 : -1);
    EXPECT_FLOAT_EQ(settings.light2Dir.x, version >= 18 ? -0.5F : 7);
    EXPECT_EQ(settings.light1Color.red, version >= 19 ? 1000 : 7);
    EXPECT_EQ(settings.glassiness, version >= 19 ? 41 : -1);
    EXPECT_EQ(settings.caustic, version >= 20 ? 42 : -1);
    EXPECT_EQ(settings.textureWidth, version >= 26 ? 120 : version >= 21 ? 100 : -1);
    EXPECT_EQ(settings.iridescence, version >= 22 ? 43 : 0);
    EXPECT_EQ(settings.tarnish, version >= 29 ? 90 : version >= 23 ? 60 : 0);
    EXPECT_EQ(settings.variant, version >= 25 ? 3 : 1);
    EXPECT_EQ(settings.environmentTurns, version >= 25 ? 2 : 0);
    EXPECT_EQ(settings.blendMode, version >= 27 ? 9 : 1);
    EXPECT_EQ(settings.iriTableChoice, version >= 28 ? 1U : 0U);
    EXPECT_EQ(settings.textureScale, version >= 28 ? 88 : 55);
    EXPECT_EQ(settings.textureOffsetX, version >= 29 ? 5 : 0);
    EXPECT_EQ(settings.light1Angle, -64) << "angles follow the directions";
  }
  FileContent strongest;
  strongest.tarnish = 100;
  decode(fileOf(28, strongest).bytes);
  EXPECT_EQ(settings.tarnish, 62);
}

TEST_F(SettingsFile, NamesFromBlocksAndMacintoshes) {
  FileContent content;
  content.environmentBlock = blockNamed("Caf\x8E, noir");
  content.textureBlock = blockNamed("too short", 83);
  DecodedSettings decoded = decode(fileOf(27, content).bytes);
  EXPECT_STREQ(decoded.names[kEnvironmentName], "Caf\xE9, noir");
  EXPECT_STREQ(decoded.names[kTextureName], "");
  EXPECT_EQ(moduleHandleSize(settings.environmentRef), 84);
  const Handle kept = settings.environmentRef;
  decode(fileOf(31).bytes);
  EXPECT_EQ(settings.environmentRef, kept) << "an empty block replaces nothing";

  content.environmentBlock = blockNamed("a name of more than thirty-three characters", 120);
  content.environmentName = "b\xE4r.bmp";
  decoded = decode(fileOf(31, content).bytes);
  EXPECT_STREQ(decoded.names[kEnvironmentName], "b\xE4r.bmp");
  decoded = decode(fileOf(30, content).bytes);
  EXPECT_STREQ(decoded.names[kEnvironmentName], "a name of more than thirty-three ");
  content.nameEncoding = 0;
  content.environmentName = "\xA0\xA5\xFF";
  decoded = decode(fileOf(31, content).bytes);
  EXPECT_STREQ(decoded.names[kEnvironmentName], "\x87\xB7\xFF") << "the higher code wins";
}

// Every cut and every absurd length leaves whole fields and reads nothing outside.
TEST_F(SettingsFile, DamagedFiles) {
  for (int32_t version = 0; version <= 40; ++version) {
    FileContent content;
    content.environmentBlock = blockNamed("old", 90);
    content.environmentName = "gold.bmp";
    const WrittenFile whole = fileOf(version, content);
    for (size_t length = 0; length < whole.bytes.size(); ++length) {
      const Bytes cut(whole.bytes.begin(), whole.bytes.begin() + static_cast<int64_t>(length));
      settings.radius = 10;
      settings.shape = 4;
      const DecodedSettings decoded = decode(cut);
      ASSERT_FALSE(decoded.complete) << version << " cut at " << length;
      ASSERT_TRUE(settings.radius == 10 || settings.radius == 13);
      ASSERT_TRUE(settings.shape == 4 || settings.shape == 3);
    }
    for (size_t at : whole.lengths) {
      for (int32_t length : {0, 83, 84, 259, 260, 65534, 65535, INT32_MAX, -1, INT32_MIN}) {
        Bytes bytes = whole.bytes;
        Bytes number;
        put(&number, length);
        std::copy(number.begin(), number.end(), bytes.begin() + static_cast<int64_t>(at));
        const DecodedSettings decoded = decode(bytes);
        for (const char* name : decoded.names) ASSERT_LT(std::strlen(name), 260U);
      }
    }
  }
  FileContent longest;
  longest.environmentName = std::string(1000, 'n');
  longest.textureName = "after";
  const DecodedSettings decoded = decode(fileOf(31, longest).bytes);
  EXPECT_TRUE(decoded.complete);
  EXPECT_EQ(std::strlen(decoded.names[kEnvironmentName]), 259U);
  EXPECT_STREQ(decoded.names[kTextureName], "after");
}

TEST_F(SettingsFile, RoundTripKeepsEveryStoredField) {
  TestRandom random = {99};
  for (int32_t i = 0; i < 200; ++i) {
    randomSettings(&random, &settings);
    for (Direction* direction : {&settings.light1Dir, &settings.light2Dir}) {
      direction->x = static_cast<float>(randomBetween(&random, -100, 100) / 100.0);
      direction->y = 0.25F;
      direction->z = -0.5F;
    }
    std::strcpy(settings.environmentPath, "C:\\x\\G\xF6ld.bmp");
    ASSERT_TRUE(writeSettingsFile(session, path.c_str()));
    const Bytes first = readBytes(path);
    EffectSettings before = settings;
    settings.radius = settings.shape = settings.blendMode = 1;
    settings.light1Color = settings.tarnishColor = {};
    readSettingsFile(session, path.c_str(), /*loadPictures=*/false);
    ASSERT_EQ(settings.radius, before.radius);
    ASSERT_EQ(settings.tarnishColor.green, before.tarnishColor.green);
    ASSERT_TRUE(writeSettingsFile(session, path.c_str()));
    // A hundredth may be lost where the product lies just below a whole number; nothing else may.
    const Bytes second = readBytes(path);
    ASSERT_EQ(second.size(), first.size());
    for (size_t at = 0; at < first.size(); ++at) {
      if (at >= 56 && at < 84) continue;
      ASSERT_EQ(first[at], second[at]) << at;
    }
  }
  settings.light1Dir.x = 0.29F;
  uint8_t bytes[kLongestEncodedSettings];
  encodeSettings(&settings, bytes);
  EXPECT_EQ(bytes[59], 28);
}

TEST_F(SettingsFile, LongerOldFileKeepsItsTail) {
  writeBytes(path, Bytes(500, 0xEE));
  ASSERT_TRUE(writeSettingsFile(session, path.c_str()));
  const Bytes after = readBytes(path);
  ASSERT_EQ(after.size(), 500U);
  EXPECT_EQ(after[3], 31);
  EXPECT_EQ(after[202], 0xEE);
  settings.radius = 77;
  readSettingsFile(session, path.c_str(), false);
  EXPECT_EQ(settings.radius, 10);
  EXPECT_FALSE(writeSettingsFile(session, "/nowhere/at/all"));
  EXPECT_FALSE(writeSettingsFile(session, "/dev/full")) << "a full disk is noticed";
}

// --- Pictures that presets name -------------------------------------------------------------

static const char kFolder[] = "D:\\Art\\environments and textures\\";

static Bytes redPicture() {
  Bytes rgb;
  for (int32_t i = 0; i < 64 * 64; ++i) rgb.insert(rgb.end(), {200, 0, 0});
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
  EXPECT_EQ(settings.environmentPicture->rgb[0], 200);

  content.textureChoice = kTextureChoiceFile;
  content.textureName = "gold";
  readAsPreset(fileOf(31, content).bytes);
  EXPECT_EQ(settings.texturePath, std::string(kFolder) + "gold.bmp");
  EXPECT_EQ(settings.textureWidth, 64);
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
  content.environmentName = "";
  const EffectSettings before = settings;
  noneRecord() = {};
  noneScript() = {};
  writeBytes(path, fileOf(31, content).bytes);
  readSettingsFile(session, path.c_str(), true);
  ASSERT_EQ(noneRecord().alerts.size(), 1U);
  EXPECT_EQ(noneRecord().alerts[0].texts[0], "Can't open the environment file \".bmp\".");
  EXPECT_STREQ(settings.environmentPath, before.environmentPath);
  EXPECT_EQ(settings.radius, 13);

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
  openPreset(session);
  EXPECT_STREQ(settings.pictureFolder, "");
  openPreset(session);
  EXPECT_STREQ(settings.pictureFolder, "D:\\Art\\environments and textures\\");
  openPreset(session);
  EXPECT_STREQ(settings.pictureFolder, "D:\\Art\\environments and textures\\");
  EXPECT_EQ(rememberedValue("EnviroPath"), "D:\\Art\\environments and textures\\");
  EXPECT_FALSE(openPreset(session));
  EXPECT_EQ(noneRecord().choosers[0].title, "Open a settings file");
  EXPECT_EQ(noneRecord().choosers[0].pattern, "*.q9q");
}

TEST_F(SettingsFile, CachedSettingsComeBack) {
  loadCachedSettings(session);  // none: nothing changes
  noneScript().cachedSettingsPath = path;
  settings.gloss = 91;
  saveCachedSettings(session);
  settings.gloss = 1;
  loadCachedSettings(session);
  EXPECT_EQ(settings.gloss, 91);
  noneScript().chosenPaths = {path};
  settings.gloss = 17;
  EXPECT_TRUE(savePreset(session));
  EXPECT_TRUE(noneRecord().choosers[0].forSaving);
  settings.gloss = 1;
  loadCachedSettings(session);
  EXPECT_EQ(settings.gloss, 17);
}
