// written_settings: settings files as others write them, and what a reader has to make of them.

#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "settings/effect_settings.h"

using Bytes = std::vector<uint8_t>;

void putNumber(Bytes* bytes, int32_t number);  // most significant byte first

struct FileContent {
  Bytes environmentBlock;
  Bytes textureBlock;
  int32_t nameEncoding = 1;
  std::string environmentName;
  std::string textureName;
  int32_t tarnish = 90;
  int32_t textureChoice = 5;
  int32_t channelBits = 0x7FFF0000;  // above the low half of every colour channel
};

struct WrittenFile {
  Bytes bytes;
  std::vector<size_t> lengths;  // where the length fields stand: two of blocks, two of names
};

// A file of any version. Every number in it is unlike its field's default, and unlike its
// neighbours'.
WrittenFile fileOf(int32_t version, const FileContent& content = {});

// What those settings are once such a file with empty blocks has been read into them.
EffectSettings settingsAfter(int32_t version, const EffectSettings& before,
                             const FileContent& content = {});

// A picture reference block with a file name in its place.
Bytes blockNamed(const std::string& name, size_t size = 84);
