// settings_items: the items of a settings file, one row each: field, first version, form. Reader,
// writer and listings walk the same table.
//
// A file is a flat stream of big-endian 32-bit numbers: the format version, then the items whose
// first version is at most that, in the table's order. Blocks are a length and bytes, names a
// length, bytes and a zero byte.

#pragma once

#include <cstddef>
#include <cstdint>

constexpr int32_t kWrittenVersion = 31;
constexpr int32_t kEveryVersion = INT32_MIN;  // versions are signed

enum class ItemForm {
  integer,     // a 32-bit field
  hundredths,  // a single, stored as its truncated hundredfold
  channel,     // a 16-bit field in the low half of the number
  block,       // a picture reference block; always written empty
  encoding,    // character set of the names; no field
  name,        // file name of a picture; no field of its own
};

struct SettingsItem {
  const char* field;  // of EffectSettings; for names what they name
  ItemForm form;
  int32_t firstVersion;  // kEveryVersion: in every file
  size_t offset;         // bytes into EffectSettings, of the field or its component
  bool hasAbsentValue;   // files without the item set the field to absentValue, else they leave it
  int32_t absentValue;
};

constexpr int32_t kSettingsItemCount = 49;
extern const SettingsItem kSettingsItems[kSettingsItemCount];

// Which picture a block or name belongs to, by the row's place among its kind.
constexpr int32_t kEnvironmentName = 0;
constexpr int32_t kTextureName = 1;
constexpr int32_t kPictureNames = 2;
