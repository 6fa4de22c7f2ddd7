#include "tests/support/written_settings.h"

void putNumber(Bytes* bytes, int32_t number) {
  for (int32_t shift : {24, 16, 8, 0}) {
    bytes->push_back(static_cast<uint8_t>(static_cast<uint32_t>(number) >> shift));
  }
}

static void putNumbers(Bytes* bytes, const std::vector<int32_t>& numbers) {
  for (int32_t number : numbers) putNumber(bytes, number);
}

static void putBlock(WrittenFile* file, const Bytes& block) {
  file->lengths.push_back(file->bytes.size());
  putNumber(&file->bytes, static_cast<int32_t>(block.size()));
  file->bytes.insert(file->bytes.end(), block.begin(), block.end());
}

static void putName(WrittenFile* file, const std::string& name) {
  file->lengths.push_back(file->bytes.size());
  putNumber(&file->bytes, static_cast<int32_t>(name.size()));
  file->bytes.insert(file->bytes.end(), name.begin(), name.end());
  file->bytes.push_back(0);
}

WrittenFile fileOf(int32_t version, const FileContent& content) {
  WrittenFile file;
  Bytes* b = &file.bytes;
  putNumbers(b, {version, 4, 33, 22, -44, 3, 66, -77, 8, 11, 12, content.textureChoice, 13, 0});
  putNumbers(b, {10, -20, 30});
  if (version >= 16) putNumber(b, 17);
  if (version >= 18) putNumbers(b, {-50, 61, 72});
  if (version >= 19) {
    for (int32_t i = 1; i <= 6; ++i) putNumber(b, content.channelBits + i * 1000);
    putNumber(b, 41);
  }
  if (version >= 20) putNumber(b, 42);
  if (version >= 21) putNumbers(b, {100, 110});
  if (version >= 22) putNumber(b, 43);
  if (version >= 23) {
    for (int32_t i = 7; i <= 9; ++i) putNumber(b, content.channelBits + i * 1000);
    putNumber(b, content.tarnish);
  }
  if (version >= 26) putNumbers(b, {120, 130});
  if (version >= 25) {
    putBlock(&file, content.environmentBlock);
    putBlock(&file, content.textureBlock);
    putNumbers(b, {3, 2});
  }
  if (version >= 27) putNumber(b, 9);
  if (version >= 28) putNumbers(b, {1, 88});
  if (version >= 29) putNumbers(b, {5, -6});
  if (version >= 31) {
    putNumber(b, content.nameEncoding);
    putName(&file, content.environmentName);
    putName(&file, content.textureName);
  }
  return file;
}

EffectSettings settingsAfter(int32_t version, const EffectSettings& before,
                             const FileContent& content) {
  EffectSettings s = before;
  s.proceduralTexture[0] = 4;
  s.proceduralTexture[2] = 33;
  s.proceduralTexture[1] = 22;
  s.texture = -44;
  s.shape = 3;
  s.reflection = 66;
  s.height = -77;
  s.constantOne = 8;
  s.gloss = 11;
  s.glare = 12;
  s.textureChoice = content.textureChoice;
  s.radius = 13;
  s.autoPreview = 0;
  s.light1Dir = {0.1F, -0.2F, 0.3F};
  if (version >= 16) s.iriColors = 17;
  if (version >= 18) s.light2Dir = {-0.5F, 0.61F, 0.72F};
  if (version >= 19) {
    s.light1Color = {1000, 2000, 3000};
    s.light2Color = {4000, 5000, 6000};
    s.glassiness = 41;
  }
  if (version >= 20) s.caustic = 42;
  if (version >= 21) s.textureWidth = version >= 26 ? 120 : 100;
  if (version >= 21) s.textureHeight = version >= 26 ? 130 : 110;
  s.iridescence = version >= 22 ? 43 : 0;
  if (version >= 23) s.tarnishColor = {7000, 8000, 9000};
  const int32_t full = content.tarnish;
  const int32_t weak = full > 50 ? 50 + (full - 50) / 4 : full;
  s.tarnish = version >= 29 ? full : version >= 23 ? weak : 0;
  s.variant = version >= 25 ? 3 : 1;
  s.environmentTurns = version >= 25 ? 2 : 0;
  s.blendMode = version >= 27 ? 9 : 1;
  s.iriTableChoice = version >= 28 ? 1 : 0;
  s.textureScale = version >= 28 ? 88 : 55;
  s.textureOffsetX = version >= 29 ? 5 : 0;
  s.textureOffsetY = version >= 29 ? -6 : 0;
  return s;
}

Bytes blockNamed(const std::string& name, size_t size) {
  Bytes block(size, 0);
  for (size_t i = 0; i < name.size() && 51 + i < size; ++i) {
    block[51 + i] = static_cast<uint8_t>(name[i]);
  }
  return block;
}
