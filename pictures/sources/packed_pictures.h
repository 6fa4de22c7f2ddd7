// packed_pictures: many pictures in few bytes: each pixel is foretold from those above and to the
// left of it, and only what is news is kept, through an arithmetic coder that learns.

#pragma once

#include <cstdint>

// A row of the list that a pack begins with: a number of 32 bits (the count), then rows of this
// layout, all numbers with the lowest byte first. Places count from the pack's beginning.
constexpr int32_t kPackHeaderBytes = 4;
constexpr int32_t kPackRowBytes = 24;
struct PackRow {
  int32_t id;
  int32_t width;
  int32_t height;
  int32_t hasCoverage;  // 1 or 0
  int32_t place;
  int32_t length;  // bytes
};

// Looks a picture up; false when the pack has none of this number, or is no pack.
bool findPackRow(const uint8_t* pack, int32_t length, int32_t id, PackRow* row);

// width x height x 3 bytes, and width x height bytes of coverage where the row has it. False
// without memory.
bool unpackPicture(const uint8_t* pack, const PackRow& row, uint8_t* rgb, uint8_t* coverage);

// --- What packing and unpacking share -------------------------------------------------------

// How likely a bit is 0, of 65536, by what was seen lately and by what was seen for long.
struct BitChance {
  uint16_t quick;
  uint16_t slow;
};

// Codes one bit in either direction; the bit.
struct BitCoder {
  int32_t (*code)(BitCoder* coder, uint32_t chance, int32_t bit);
  bool isRough;  // packs values that may come back one higher or lower, in a third less room
};

// Of 4096.
constexpr int32_t kChanceBits = 12;

// Goes through the pixels, which are read when the coder packs and written in any case, as they
// will be unpacked. False without memory.
bool codePicture(BitCoder* coder, int32_t width, int32_t height, uint8_t* rgb, uint8_t* coverage);
