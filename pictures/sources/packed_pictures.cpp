#include "pictures/sources/packed_pictures.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <cstring>

#include "services/memory_blocks.h"

// --- The model ------------------------------------------------------------------------------

constexpr int32_t kNeighbourhoods = 16;
constexpr int32_t kActivities = 6;
constexpr int32_t kSizes = 9;     // of a number up to 255: its bits
constexpr int32_t kChannels = 4;  // green, red, blue, coverage

struct Model {
  BitChance sameAsLeft[kNeighbourhoods];
  BitChance sameAsAbove[kNeighbourhoods];
  BitChance size[kChannels][kActivities][kActivities][kSizes];
  BitChance digits[kChannels][kSizes][256];
};

static void resetModel(Model* model) {
  auto* chances = reinterpret_cast<BitChance*>(model);
  for (size_t i = 0; i < sizeof(Model) / sizeof(BitChance); ++i) chances[i] = {32768, 32768};
}

static int32_t codeBit(BitCoder* coder, BitChance* chance, int32_t bit) {
  constexpr int32_t kQuick = 4;
  constexpr int32_t kSlow = 7;
  const uint32_t both = (uint32_t{chance->quick} + chance->slow) >> (17 - kChanceBits);
  bit = coder->code(coder, std::clamp<uint32_t>(both, 1, (1U << kChanceBits) - 1), bit);
  const int32_t aim = bit == 0 ? 65535 : 0;
  chance->quick = static_cast<uint16_t>(chance->quick + (aim - chance->quick) / (1 << kQuick));
  chance->slow = static_cast<uint16_t>(chance->slow + (aim - chance->slow) / (1 << kSlow));
  return bit;
}

// A number up to 255: how many bits it has, then those behind the first.
static int32_t codeNumber(BitCoder* coder, BitChance* size, BitChance (*digits)[256],
                          int32_t number) {
  const int32_t bits = std::bit_width(static_cast<uint32_t>(number));
  int32_t told = 0;
  while (told < kSizes - 1 && codeBit(coder, &size[told], bits > told ? 1 : 0) != 0) ++told;
  if (told < 2) return told;
  int32_t value = 1;
  for (int32_t i = told - 2; i >= 0; --i) {
    value = 2 * value + codeBit(coder, &digits[told][value], (number >> i) & 1);
  }
  return value;
}

static int32_t activityOf(int32_t difference) {
  constexpr int32_t kSteps[kActivities - 1] = {0, 2, 6, 14, 36};
  int32_t activity = 0;
  while (activity < kActivities - 1 && difference > kSteps[activity]) ++activity;
  return activity;
}

// What stands around a value.
struct Around {
  int32_t left;
  int32_t above;
  int32_t aboveLeft;
  int32_t aboveRight;
};

static int32_t foretold(const Around& a) {
  const int32_t low = std::min(a.left, a.above);
  const int32_t high = std::max(a.left, a.above);
  return std::clamp(a.left + a.above - a.aboveLeft, low, high);
}

static int32_t activityAround(const Around& a) {
  return activityOf(std::abs(a.left - a.aboveLeft) + std::abs(a.above - a.aboveLeft) +
                    std::abs(a.above - a.aboveRight));
}

// To the nearest third number, where that is still a value.
static int32_t roughly(int32_t difference, int32_t expected) {
  const int32_t rough = 3 * ((difference + (difference < 0 ? -1 : 1)) / 3);
  return expected + rough < 0 || expected + rough > 255 ? difference : rough;
}

// The value, from how far it is from what was foretold; `news` is what another channel had.
static uint8_t codeValue(BitCoder* coder, Model* model, int32_t channel, const Around& around,
                         int32_t expected, int32_t news, uint8_t value) {
  const auto difference = static_cast<int8_t>(static_cast<uint8_t>(
      coder->isRough ? roughly(value - expected, expected) : value - expected));
  const int32_t folded = difference >= 0 ? 2 * difference : -2 * difference - 1;
  const int32_t told =
      codeNumber(coder, model->size[channel][activityAround(around)][activityOf(std::abs(news))],
                 model->digits[channel], folded);
  const int32_t away = (told & 1) == 0 ? told / 2 : -(told + 1) / 2;
  return static_cast<uint8_t>(expected + away);
}

// --- Pixels ---------------------------------------------------------------------------------

// Beyond the edges stands what is nearest; above the first row and before its first pixel, black.
struct Neighbours {
  const uint8_t* left;
  const uint8_t* above;
  const uint8_t* aboveLeft;
  const uint8_t* aboveRight;
};

static constexpr uint8_t kNothing[3] = {0, 0, 0};

static Neighbours neighboursOf(const uint8_t* at, int32_t x, int32_t y, int32_t width,
                               int32_t bytes) {
  const int64_t row = int64_t{bytes} * width;
  const uint8_t* left = x > 0 ? at - bytes : y > 0 ? at - row : kNothing;
  if (y == 0) return {left, left, left, left};
  const uint8_t* above = at - row;
  return {left, above, x > 0 ? above - bytes : above, x + 1 < width ? above + bytes : above};
}

static bool same(const uint8_t* a, const uint8_t* b) {
  return a[0] == b[0] && a[1] == b[1] && a[2] == b[2];
}

static Around aroundOf(const Neighbours& n, int32_t channel) {
  return {n.left[channel], n.above[channel], n.aboveLeft[channel], n.aboveRight[channel]};
}

// Red and blue go with green.
static void codeColour(BitCoder* coder, Model* model, const Neighbours& n, uint8_t* rgb) {
  const Around green = aroundOf(n, 1);
  const int32_t greenExpected = foretold(green);
  rgb[1] = codeValue(coder, model, 0, green, greenExpected, 0, rgb[1]);
  const int32_t greenNews = rgb[1] - greenExpected;
  const Around red = aroundOf(n, 0);
  const int32_t redExpected = std::clamp(foretold(red) + greenNews, 0, 255);
  rgb[0] = codeValue(coder, model, 1, red, redExpected, greenNews, rgb[0]);
  const Around blue = aroundOf(n, 2);
  const int32_t blueExpected = std::clamp(foretold(blue) + greenNews, 0, 255);
  rgb[2] = codeValue(coder, model, 2, blue, blueExpected, rgb[0] - redExpected, rgb[2]);
}

// True when the pixel is one of those beside it.
static bool codePixel(BitCoder* coder, Model* model, const Neighbours& n, bool wasSame,
                      uint8_t* rgb) {
  const bool leftIsAbove = same(n.left, n.above);
  const int32_t around = (leftIsAbove ? 1 : 0) + (same(n.above, n.aboveLeft) ? 2 : 0) +
                         (same(n.above, n.aboveRight) ? 4 : 0) + (wasSame ? 8 : 0);
  if (codeBit(coder, &model->sameAsLeft[around], same(rgb, n.left) ? 1 : 0) != 0) {
    std::memcpy(rgb, n.left, 3);
    return true;
  }
  if (!leftIsAbove &&
      codeBit(coder, &model->sameAsAbove[around], same(rgb, n.above) ? 1 : 0) != 0) {
    std::memcpy(rgb, n.above, 3);
    return true;
  }
  codeColour(coder, model, n, rgb);
  return false;
}

static void codeCoverage(BitCoder* coder, Model* model, int32_t width, int32_t height,
                         uint8_t* coverage) {
  for (int32_t y = 0; y < height; ++y) {
    for (int32_t x = 0; x < width; ++x, ++coverage) {
      const Around around = aroundOf(neighboursOf(coverage, x, y, width, 1), 0);
      *coverage = codeValue(coder, model, 3, around, foretold(around), 0, *coverage);
    }
  }
}

bool codePicture(BitCoder* coder, int32_t width, int32_t height, uint8_t* rgb, uint8_t* coverage) {
  auto* model = static_cast<Model*>(newModuleBlock(sizeof(Model)));
  if (model == nullptr) return false;
  resetModel(model);
  if (coverage != nullptr) codeCoverage(coder, model, width, height, coverage);
  const bool isRough = coder->isRough;
  bool wasSame = true;
  for (int32_t y = 0; y < height; ++y) {
    for (int32_t x = 0; x < width; ++x, rgb += 3) {
      coder->isRough = isRough && (x > 0 || y > 0);  // a ground goes on from its first pixel
      wasSame = codePixel(coder, model, neighboursOf(rgb, x, y, width, 3), wasSame, rgb);
    }
  }
  coder->isRough = isRough;
  freeModuleBlock(model);
  return true;
}

// --- Unpacking ------------------------------------------------------------------------------

struct BitReader {
  BitCoder coder;  // first, so that its address is the reader's
  const uint8_t* next;
  const uint8_t* end;
  uint32_t range;
  uint32_t code;
};

// Behind the end come zeros.
static uint32_t nextByte(BitReader* reader) {
  return reader->next < reader->end ? *reader->next++ : 0;
}

static int32_t readBit(BitCoder* coder, uint32_t chance, int32_t) {
  auto* reader = reinterpret_cast<BitReader*>(coder);
  const uint32_t bound = (reader->range >> kChanceBits) * chance;
  const int32_t bit = reader->code < bound ? 0 : 1;
  if (bit == 0) {
    reader->range = bound;
  } else {
    reader->code -= bound;
    reader->range -= bound;
  }
  while (reader->range < (1U << 24)) {
    reader->range <<= 8;
    reader->code = (reader->code << 8) | nextByte(reader);
  }
  return bit;
}

bool unpackPicture(const uint8_t* pack, const PackRow& row, uint8_t* rgb, uint8_t* coverage) {
  const uint8_t* begin = pack + row.place;
  BitReader reader = {{readBit, false}, begin, begin + row.length, 0xFFFFFFFFU, 0};
  for (int32_t i = 0; i < 5; ++i) reader.code = (reader.code << 8) | nextByte(&reader);
  return codePicture(&reader.coder, row.width, row.height, rgb, coverage);
}

static int32_t numberAt(const uint8_t* bytes) {
  return static_cast<int32_t>(bytes[0] | uint32_t{bytes[1]} << 8 | uint32_t{bytes[2]} << 16 |
                              uint32_t{bytes[3]} << 24);
}

constexpr int32_t kLargestPackedSide = 4096;  // pixels; no dialog has larger pictures

bool findPackRow(const uint8_t* pack, int32_t length, int32_t id, PackRow* row) {
  if (pack == nullptr || length < kPackHeaderBytes) return false;
  const int32_t count = std::min(numberAt(pack), (length - kPackHeaderBytes) / kPackRowBytes);
  for (int32_t i = 0; i < count; ++i) {
    const uint8_t* at = pack + kPackHeaderBytes + i * kPackRowBytes;
    if (numberAt(at) != id) continue;
    *row = {id,
            numberAt(at + 4),
            numberAt(at + 8),
            numberAt(at + 12),
            numberAt(at + 16),
            numberAt(at + 20)};
    const bool fits = row->place >= 0 && row->length >= 0 && row->length <= length - row->place;
    return fits && row->width > 0 && row->width <= kLargestPackedSide && row->height > 0 &&
           row->height <= kLargestPackedSide;
  }
  return false;
}
