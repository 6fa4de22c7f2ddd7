#include "persistence/settings_codec.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "entry/handles.h"
#include "persistence/mac_roman.h"
#include "persistence/path_parts.h"
#include "services/fixed_point.h"
#include "settings/setting_fields.h"

constexpr int32_t kWindowsEncoding = 1;
constexpr int32_t kPairedItemsVersion = 25;  // first version that can name pictures

// A reference block of another system's: where the picture's file name stands in it.
constexpr int32_t kBlockNameStart = 51;
constexpr int32_t kBlockNameEnd = 84;

constexpr double kBeyondEveryRange = 1000000;  // no setting goes further

constexpr int32_t kLargestBlock = 65534;  // bytes

// Versions in which tarnish ran to twice its later strength above the middle.
constexpr int32_t kFirstStrongTarnish = 23;
constexpr int32_t kLastStrongTarnish = 28;

// --- Writing --------------------------------------------------------------------------------

struct ByteWriter {
  uint8_t* bytes;
  size_t count;
};

static void putNumber(ByteWriter* writer, int32_t number) {
  const auto bits = static_cast<uint32_t>(number);
  for (int32_t shift = 24; shift >= 0; shift -= 8) {
    writer->bytes[writer->count++] = static_cast<uint8_t>(bits >> shift);
  }
}

static void putName(ByteWriter* writer, const char* name) {
  const size_t length = std::strlen(name);
  putNumber(writer, static_cast<int32_t>(length));
  std::memcpy(writer->bytes + writer->count, name, length + 1);
  writer->count += length + 1;
}

template <typename Field>
static Field fieldOf(const EffectSettings* settings, const SettingsItem& item) {
  Field field;
  std::memcpy(&field, reinterpret_cast<const char*>(settings) + item.offset, sizeof(field));
  return field;
}

static int32_t storedNumber(const EffectSettings* settings, const SettingsItem& item) {
  switch (item.form) {
    case ItemForm::integer:
      return fieldOf<int32_t>(settings, item);
    case ItemForm::hundredths:
      return truncateToInt32(static_cast<double>(fieldOf<float>(settings, item)) * 100);
    case ItemForm::channel:
      return fieldOf<uint16_t>(settings, item);
    case ItemForm::encoding:
      return kWindowsEncoding;
    default:
      return 0;  // an empty block
  }
}

size_t encodeSettings(const EffectSettings* settings, uint8_t* bytes) {
  char environment[kPathBytes];
  char texture[kPathBytes];
  fileNameForSettings(settings->environmentPath, environment);
  fileNameForSettings(settings->texturePath, texture);
  const char* const names[kPictureNames] = {environment, texture};
  return encodeNamedSettings(settings, names, bytes);
}

size_t encodeNamedSettings(const EffectSettings* settings, const char* const names[kPictureNames],
                           uint8_t* bytes) {
  ByteWriter writer = {bytes, 0};
  int32_t named = 0;
  putNumber(&writer, kWrittenVersion);
  for (const SettingsItem& item : kSettingsItems) {
    if (item.form == ItemForm::name) {
      putName(&writer, named < kPictureNames ? names[named++] : "");
    } else {
      putNumber(&writer, storedNumber(settings, item));
    }
  }
  return writer.count;
}

// --- Reading --------------------------------------------------------------------------------

struct ByteReader {
  const uint8_t* bytes;
  size_t left;
};

static bool takeNumber(ByteReader* reader, int32_t* number) {
  if (reader->left < 4) return false;
  uint32_t bits = 0;
  for (int32_t i = 0; i < 4; ++i) bits = bits << 8 | *reader->bytes++;
  reader->left -= 4;
  *number = static_cast<int32_t>(bits);
  return true;
}

// A length and the bytes it announces, with `extra` more behind them.
static bool takeBytes(ByteReader* reader, size_t extra, const uint8_t** bytes, int32_t* length) {
  if (!takeNumber(reader, length) || *length < 0) return false;
  const size_t count = static_cast<size_t>(*length) + extra;
  if (count > reader->left) return false;
  *bytes = reader->bytes;
  reader->bytes += count;
  reader->left -= count;
  return true;
}

static void copyName(const uint8_t* bytes, int32_t length, char* name) {
  const int32_t copied = std::min(length, kPathBytes - 1);
  std::memcpy(name, bytes, static_cast<size_t>(copied));
  name[copied] = 0;
}

static bool takeName(ByteReader* reader, char* name) {
  const uint8_t* bytes = nullptr;
  int32_t length = 0;
  if (!takeBytes(reader, 1, &bytes, &length)) return false;
  copyName(bytes, length, name);
  return true;
}

template <typename Field>
static void setField(EffectSettings* settings, const SettingsItem& item, Field value) {
  std::memcpy(reinterpret_cast<char*>(settings) + item.offset, &value, sizeof(value));
}

static bool takeBlock(ByteReader* reader, const SettingsItem& item, EffectSettings* settings,
                      DecodedSettings* decoded) {
  const uint8_t* bytes = nullptr;
  int32_t length = 0;
  if (!takeBytes(reader, 0, &bytes, &length) || length > kLargestBlock) return false;
  if (length == 0) return true;
  disposeModuleHandle(fieldOf<Handle>(settings, item));
  Handle block = newModuleHandle(length);
  setField(settings, item, block);
  decoded->outOfMemory = block == nullptr;
  if (decoded->outOfMemory) return false;
  std::memcpy(*block, bytes, static_cast<size_t>(length));
  return true;
}

static bool takeField(ByteReader* reader, EffectSettings* settings, const SettingsItem& item) {
  int32_t number = 0;
  if (!takeNumber(reader, &number)) return false;
  if (item.form == ItemForm::integer) {
    setField(settings, item, number);
  } else if (item.form == ItemForm::hundredths) {
    setField(settings, item, static_cast<float>(number / 100.0));
  } else {
    setField(settings, item, static_cast<uint16_t>(number));
  }
  return true;
}

// The name in a reference block, for files that do not spell it out themselves.
static void nameFromBlock(Handle block, char* name) {
  name[0] = 0;
  if (moduleHandleSize(block) < kBlockNameEnd) return;
  copyName(static_cast<const uint8_t*>(*block) + kBlockNameStart, kBlockNameEnd - kBlockNameStart,
           name);
}

static void weakenTarnish(EffectSettings* settings) {
  if (settings->tarnish > 50) settings->tarnish = 50 + (settings->tarnish - 50) / 4;
}

// One item of the file; false where the reading ends.
static bool takeItem(ByteReader* reader, const SettingsItem& item, EffectSettings* settings,
                     DecodedSettings* decoded, int32_t* encoding, int32_t* names) {
  switch (item.form) {
    case ItemForm::block:
      return takeBlock(reader, item, settings, decoded);
    case ItemForm::encoding:
      return takeNumber(reader, encoding);
    case ItemForm::name:
      return takeName(reader, decoded->names[(*names)++]);
    default:
      return takeField(reader, settings, item);
  }
}

static bool takeItems(ByteReader* reader, EffectSettings* settings, DecodedSettings* decoded) {
  int32_t encoding = 0;
  int32_t names = 0;
  for (const SettingsItem& item : kSettingsItems) {
    if (item.firstVersion > decoded->version) {
      if (item.hasAbsentValue) setField(settings, item, item.absentValue);
    } else if (!takeItem(reader, item, settings, decoded, &encoding, &names)) {
      return false;
    }
    const bool isTarnish =
        item.offset == offsetof(EffectSettings, tarnish) && item.form == ItemForm::integer;
    if (isTarnish && decoded->version >= kFirstStrongTarnish &&
        decoded->version <= kLastStrongTarnish) {
      weakenTarnish(settings);
    }
  }
  if (names == 0 && decoded->hasNames) {
    nameFromBlock(settings->environmentRef, decoded->names[kEnvironmentName]);
    nameFromBlock(settings->textureRef, decoded->names[kTextureName]);
  }
  if (encoding != kWindowsEncoding) {
    for (char* name : decoded->names) windowsFromMacRoman(name);
  }
  return true;
}

void decodeSettings(const uint8_t* bytes, size_t count, EffectSettings* settings,
                    DecodedSettings* decoded) {
  *decoded = {};
  ByteReader reader = {bytes, count};
  if (takeNumber(&reader, &decoded->version)) {
    decoded->hasNames = decoded->version >= kPairedItemsVersion;
    decoded->complete = takeItems(&reader, settings, decoded);
  }
}

// --- Judging --------------------------------------------------------------------------------

SettingsCheck checkSettings(const EffectSettings& settings, const DecodedSettings& decoded) {
  // Too short for a version, it may have been any.
  const bool known = decoded.version >= 0 && decoded.version <= kWrittenVersion;
  if (!decoded.complete) return known ? SettingsCheck::damaged : SettingsCheck::notSettings;
  SettingsCheck check = SettingsCheck::sound;
  for (int32_t i = 0; i < kSettingRangeCount; ++i) {
    const SettingRange& range = kSettingRanges[i];
    double values[3];
    readSetting(settings, range, values);
    for (int32_t k = 0; k < settingComponents(range.form); ++k) {
      if (!(std::fabs(values[k]) <= kBeyondEveryRange)) return SettingsCheck::notSettings;
      const bool within = values[k] >= range.minimum && values[k] <= range.maximum;
      if (!within) check = SettingsCheck::outOfRange;
    }
  }
  return check;
}
