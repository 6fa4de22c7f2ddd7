// The bytes of settings files: layout, versions, names, damage.

#include "persistence/settings_codec.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "entry/handles.h"
#include "settings/settings_defaults.h"
#include "tests/support/written_settings.h"

class SettingsCodec : public ::testing::Test {
 protected:
  SettingsCodec() {
    fillDefaultSettings(&settings);
  }
  ~SettingsCodec() override {
    disposeModuleHandle(settings.environmentRef);
    disposeModuleHandle(settings.textureRef);
  }

  DecodedSettings decode(const Bytes& bytes) {
    DecodedSettings decoded;
    decodeSettings(bytes.data(), bytes.size(), &settings, &decoded);
    return decoded;
  }

  Bytes encode() const {
    uint8_t bytes[kLongestEncodedSettings];
    return Bytes(bytes, bytes + encodeSettings(&settings, bytes));
  }

  EffectSettings settings;
};

TEST_F(SettingsCodec, WritesEveryItemInItsPlace) {
  FileContent content;
  content.environmentName = "Gold room.bmp";
  content.channelBits = 0;
  settings = settingsAfter(31, settings);
  std::strcpy(settings.environmentPath, "D:\\Art\\Gold room.bmp");
  std::strcpy(settings.texturePath, "no folder.bmp");
  const Bytes bytes = encode();
  Bytes expected = fileOf(31, content).bytes;
  std::copy_n(&expected[144], 8, &expected[116]);  // one texture size, in both places
  EXPECT_EQ(bytes, expected);
  EXPECT_EQ(bytes.size(), 202 + content.environmentName.size());

  fillDefaultSettings(&settings);
  const Bytes plain = encode();
  EXPECT_EQ(plain.size(), 202U);
  const auto fourAt = [&plain](size_t at) {
    return Bytes(plain.data() + at, plain.data() + at + 4);
  };
  EXPECT_EQ(fourAt(56), (Bytes{0xFF, 0xFF, 0xFF, 0xD6})) << "-0.4242641 is cut off to -0.42";
  EXPECT_EQ(fourAt(64), (Bytes{0, 0, 0, 80}));
  settings.light1Dir.z = 0.29F;
  EXPECT_EQ(encode()[67], 28) << "a hundredfold just below a whole number";
}

// Whatever a version does not hold stays as it was, to the last byte of the record.
TEST_F(SettingsCodec, ReadsEveryVersion) {
  std::vector<int32_t> versions = {INT32_MIN, -1, INT32_MAX};
  for (int32_t version = 0; version <= 40; ++version) versions.push_back(version);
  for (int32_t version : versions) {
    SCOPED_TRACE(version);
    std::memset(static_cast<void*>(&settings), 0x5A, sizeof(settings));
    settings.environmentRef = settings.textureRef = nullptr;
    const EffectSettings expected = settingsAfter(version, settings);
    const DecodedSettings decoded = decode(fileOf(version).bytes);
    EXPECT_TRUE(decoded.complete);
    EXPECT_EQ(decoded.hasNames, version >= 25);
    const auto* read = reinterpret_cast<const uint8_t*>(&settings);
    const auto* wanted = reinterpret_cast<const uint8_t*>(&expected);
    for (size_t at = 0; at < sizeof(settings); ++at) ASSERT_EQ(read[at], wanted[at]) << at;
  }
  FileContent content;
  for (const auto& [stored, read] : {std::pair{100, 62}, {51, 50}, {50, 50}, {-90, -90}}) {
    content.tarnish = stored;
    for (int32_t version : {23, 28}) {
      decode(fileOf(version, content).bytes);
      EXPECT_EQ(settings.tarnish, read);
    }
  }
}

TEST_F(SettingsCodec, NamesFromBlocksAndMacintoshes) {
  FileContent content;
  content.environmentBlock = blockNamed("Caf\x8E, noir");
  content.textureBlock = blockNamed("too short", 83);
  DecodedSettings decoded = decode(fileOf(27, content).bytes);
  EXPECT_STREQ(decoded.names[kEnvironmentName], "Caf\xE9, noir");
  EXPECT_STREQ(decoded.names[kTextureName], "");
  EXPECT_EQ(moduleHandleSize(settings.environmentRef), 84);
  EXPECT_EQ(moduleHandleSize(settings.textureRef), 83);
  const Handle kept = settings.environmentRef;
  EXPECT_STREQ(decode(fileOf(25).bytes).names[kEnvironmentName], "Caf\xE9, noir");
  EXPECT_EQ(settings.environmentRef, kept) << "an empty block replaces nothing";

  content.environmentBlock = blockNamed("a name of more than thirty-three characters", 120);
  content.environmentName = "b\xE4r.bmp";
  decoded = decode(fileOf(31, content).bytes);
  EXPECT_EQ(moduleHandleSize(settings.environmentRef), 120);
  EXPECT_STREQ(decoded.names[kEnvironmentName], "b\xE4r.bmp");
  decoded = decode(fileOf(30, content).bytes);
  EXPECT_STREQ(decoded.names[kEnvironmentName], "a name of more than thirty-three ");
  for (int32_t encoding : {0, 2, -1}) {
    content.nameEncoding = encoding;
    content.environmentName = "\xA0\xA5\xFF";
    content.textureName = "\x80,\x81";
    decoded = decode(fileOf(31, content).bytes);
    EXPECT_STREQ(decoded.names[kEnvironmentName], "\x87\xB7\xFF") << "the higher code wins";
    EXPECT_STREQ(decoded.names[kTextureName], "\xC4,\xC5");
  }
}

static Bytes withNumber(const Bytes& bytes, size_t at, int32_t number) {
  Bytes digits;
  putNumber(&digits, number);
  Bytes changed = bytes;
  std::copy(digits.begin(), digits.end(), changed.begin() + static_cast<int64_t>(at));
  return changed;
}

// Every cut and every absurd length leaves whole fields and reads nothing outside.
TEST_F(SettingsCodec, DamagedFiles) {
  FileContent content;
  content.environmentBlock = blockNamed("old", 90);
  content.environmentName = "gold.bmp";
  for (int32_t version = 0; version <= 40; ++version) {
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
    for (size_t i = 0; i < whole.lengths.size(); ++i) {
      for (int32_t length : {0, 83, 84, 259, 260, 65534, 65535, INT32_MAX, -1, INT32_MIN}) {
        const size_t at = whole.lengths[i];
        settings.environmentTurns = -1;
        const DecodedSettings decoded = decode(withNumber(whole.bytes, at, length));
        for (const char* name : decoded.names) ASSERT_LT(std::strlen(name), 260U);
        if (length >= 0 && at + 4 + static_cast<size_t>(length) <= whole.bytes.size()) continue;
        // A length that the file cannot hold ends the reading there.
        ASSERT_FALSE(decoded.complete);
        ASSERT_EQ(settings.environmentTurns, i < kPictureNames ? -1 : 2);
      }
    }
  }
  content.environmentName = std::string(1000, 'n');
  content.textureName = "after";
  const DecodedSettings decoded = decode(fileOf(31, content).bytes);
  EXPECT_TRUE(decoded.complete);
  EXPECT_EQ(std::strlen(decoded.names[kEnvironmentName]), 259U);
  EXPECT_STREQ(decoded.names[kTextureName], "after");
}

// Blocks that a file does hold are taken up to a size; a larger one ends the reading.
TEST_F(SettingsCodec, LargeBlocks) {
  FileContent content;
  for (const auto& [size, taken] : {std::pair{65534, true}, {65535, false}}) {
    content.environmentBlock = content.textureBlock = Bytes(static_cast<size_t>(size), 'b');
    const Bytes bytes = fileOf(31, content).bytes;
    EXPECT_LE(bytes.size(), kLargestSettingsFile);
    EXPECT_EQ(decode(bytes).complete, taken);
  }
}
