#include "resources/artwork/drawing/picture_packing.h"

#include <fstream>
#include <stdexcept>

#include "pictures/sources/packed_pictures.h"

struct BitWriter {
  BitCoder coder;  // first, so that its address is the writer's
  std::vector<uint8_t> bytes;
  uint64_t low;
  uint32_t range;
  uint8_t held;  // may still be carried into, as may bytes of 255 behind it
  uint64_t heldBytes;
};

static void shiftLow(BitWriter* writer) {
  if (writer->low < 0xFF000000U || writer->low > 0xFFFFFFFFU) {
    const auto carry = static_cast<uint8_t>(writer->low >> 32);
    uint8_t byte = writer->held;
    for (; writer->heldBytes > 0; --writer->heldBytes) {
      writer->bytes.push_back(static_cast<uint8_t>(byte + carry));
      byte = 0xFF;
    }
    writer->held = static_cast<uint8_t>(writer->low >> 24);
  }
  ++writer->heldBytes;
  writer->low = (writer->low & 0x00FFFFFFU) << 8;
}

static int32_t writeBit(BitCoder* coder, uint32_t chance, int32_t bit) {
  auto* writer = reinterpret_cast<BitWriter*>(coder);
  const uint32_t bound = (writer->range >> kChanceBits) * chance;
  if (bit == 0) {
    writer->range = bound;
  } else {
    writer->low += bound;
    writer->range -= bound;
  }
  while (writer->range < (1U << 24)) {
    writer->range <<= 8;
    shiftLow(writer);
  }
  return bit;
}

static std::vector<uint8_t> packed(Picture picture, bool isRough) {
  BitWriter writer = {{writeBit, isRough}, {}, 0, 0xFFFFFFFFU, 0, 1};
  uint8_t* coverage = picture.alpha.empty() ? nullptr : picture.alpha.data();
  if (!codePicture(&writer.coder, picture.width, picture.height, picture.rgb.data(), coverage)) {
    throw std::runtime_error("out of memory");
  }
  for (int32_t i = 0; i < 5; ++i) shiftLow(&writer);
  // Behind the end zeros are read.
  while (!writer.bytes.empty() && writer.bytes.back() == 0) writer.bytes.pop_back();
  return writer.bytes;
}

static void putNumber(std::vector<uint8_t>* bytes, size_t number) {
  for (int32_t i = 0; i < 4; ++i) bytes->push_back(static_cast<uint8_t>(number >> 8 * i));
}

void writePack(const std::filesystem::path& path, const std::vector<PackedPicture>& pictures) {
  std::vector<uint8_t> head;
  std::vector<uint8_t> body;
  putNumber(&head, pictures.size());
  const size_t bodyPlace = kPackHeaderBytes + kPackRowBytes * pictures.size();
  for (const PackedPicture& each : pictures) {
    const std::vector<uint8_t> bytes = packed(each.picture, each.isRough);
    putNumber(&head, static_cast<size_t>(each.id));
    putNumber(&head, static_cast<size_t>(each.picture.width));
    putNumber(&head, static_cast<size_t>(each.picture.height));
    putNumber(&head, each.picture.alpha.empty() ? 0 : 1);
    putNumber(&head, bodyPlace + body.size());
    putNumber(&head, bytes.size());
    body.insert(body.end(), bytes.begin(), bytes.end());
  }
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(reinterpret_cast<const char*>(head.data()), static_cast<std::streamsize>(head.size()));
  file.write(reinterpret_cast<const char*>(body.data()), static_cast<std::streamsize>(body.size()));
  file.close();
  if (!file) throw std::runtime_error(path.string() + ": the file cannot be written");
}
