#include <algorithm>

#include "hosts/small_formats/small_formats.h"

// "P1" to "P6": bits, greys, colours as digits; the same as bytes.
bool isPortableMap(BytesView file, const std::string&) {
  return file.size > 3 && file.data[0] == 'P' && file.data[1] >= '1' && file.data[1] <= '6' &&
         (file.data[2] <= ' ' || file.data[2] == '#');
}

// The next number; false at the end, or where something else stands. Words behind "#" are left out.
static bool takeNumber(BytesView file, size_t* at, uint32_t* number) {
  while (*at < file.size && (file.data[*at] <= ' ' || file.data[*at] == '#')) {
    if (file.data[*at] == '#') {
      while (*at < file.size && file.data[*at] != '\n') ++*at;
    } else {
      ++*at;
    }
  }
  const size_t start = *at;
  *number = 0;
  while (*at < file.size && file.data[*at] >= '0' && file.data[*at] <= '9') {
    if (*at - start > 8) return false;
    *number = *number * 10 + (file.data[(*at)++] - '0');
  }
  return *at > start;
}

// A digit of its own, of a picture of bits.
static bool takeBit(BytesView file, size_t* at, uint32_t* number) {
  while (*at < file.size && file.data[*at] <= ' ') ++*at;
  if (*at == file.size) return false;
  *number = file.data[(*at)++] - uint32_t{'0'};
  return *number <= 1;
}

struct Map {
  int kind;
  uint32_t width;
  uint32_t height;
  uint32_t most;  // the number of full brightness
  size_t rows;
  bool bits;
  bool digits;
};

static bool readHeader(BytesView file, Map* map) {
  map->kind = file.data[1] - '0';
  map->bits = map->kind == 1 || map->kind == 4;
  map->digits = map->kind <= 3;
  map->most = 1;
  size_t at = 2;
  if (!takeNumber(file, &at, &map->width) || !takeNumber(file, &at, &map->height)) return false;
  if (!map->bits && !takeNumber(file, &at, &map->most)) return false;
  map->rows = at + 1;
  return map->width > 0 && map->height > 0 && map->most > 0 && map->most <= 65535;
}

static void putSample(const Map& map, uint32_t sample, Picture* picture) {
  const uint32_t number = std::min(sample, map.most);
  if (map.most > 255) {
    picture->deep.colors.push_back(
        static_cast<uint16_t>((uint64_t{number} * 65535 + map.most / 2) / map.most));
  }
  picture->colors.samples.push_back(
      static_cast<uint8_t>((number * 255U + map.most / 2) / map.most));
}

static bool readDigits(BytesView file, const Map& map, size_t samples, Picture* picture) {
  size_t at = map.rows - 1;
  for (size_t i = 0; i < samples; ++i) {
    uint32_t number = 0;
    if (!(map.bits ? takeBit(file, &at, &number) : takeNumber(file, &at, &number))) return false;
    putSample(map, map.bits ? 1 - number : number, picture);
  }
  return true;
}

static bool readBytes(BytesView file, const Map& map, size_t samples, Picture* picture) {
  const size_t rowBits = map.width;
  for (size_t i = 0; i < samples; ++i) {
    uint32_t number = 0;
    if (map.bits) {
      const size_t column = i % rowBits;
      const size_t at = map.rows + i / rowBits * ((rowBits + 7) / 8) + column / 8;
      if (at >= file.size) return false;
      number = 1 - (file.data[at] >> (7 - column % 8) & 1U);
    } else {
      const size_t bytes = map.most > 255 ? 2 : 1;
      const size_t at = map.rows + i * bytes;
      if (at + bytes > file.size) return false;
      number = bigEndianAt(file, at, bytes);
    }
    putSample(map, number, picture);
  }
  return true;
}

std::string readPortableMap(BytesView file, RefuseSides refuse, Picture* picture) {
  Map map = {};
  if (!readHeader(file, &map)) return kCutOff;
  const std::string reason = refuse(map.width, map.height);
  if (!reason.empty()) return reason;
  const int32_t planes = map.kind == 3 || map.kind == 6 ? 3 : 1;
  const size_t samples = size_t{map.width} * map.height * static_cast<size_t>(planes);
  if (samples / 8 > file.size) return kCutOff;
  picture->colors = {static_cast<int32_t>(map.width), static_cast<int32_t>(map.height), planes, {}};
  picture->sampleBits = map.most > 255 ? 16 : 8;
  picture->colors.samples.reserve(samples);
  const bool whole =
      map.digits ? readDigits(file, map, samples, picture) : readBytes(file, map, samples, picture);
  return whole ? "" : kCutOff;
}

void writePortableMap(const Picture& picture, OutputFile* output) {
  const HostPicture& colors = picture.colors;
  const bool deep = !picture.deep.colors.empty();
  const std::string header = std::string(colors.planes == 3 ? "P6\n" : "P5\n") +
                             std::to_string(colors.width) + " " + std::to_string(colors.height) +
                             (deep ? "\n65535\n" : "\n255\n");
  appendOutput({reinterpret_cast<const uint8_t*>(header.data()), header.size()}, output);
  if (!deep) return appendOutput(colors.samples, output);
  FileBytes bytes;
  bytes.reserve(2 * picture.deep.colors.size());
  for (const uint16_t sample : picture.deep.colors) {
    bytes.push_back(static_cast<uint8_t>(sample >> 8));
    bytes.push_back(static_cast<uint8_t>(sample & 255));
  }
  appendOutput(bytes, output);
}
