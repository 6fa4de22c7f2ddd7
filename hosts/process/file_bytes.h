// file_bytes: a file in memory, and numbers in it.

#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

using FileBytes = std::vector<uint8_t>;

// A part of a file; whoever has one keeps the file.
struct BytesView {
  const uint8_t* data = nullptr;
  size_t size = 0;

  BytesView() = default;
  BytesView(const uint8_t* bytes, size_t count) : data(bytes), size(count) {
  }
  BytesView(const FileBytes& bytes) : data(bytes.data()), size(bytes.size()) {
  }  // NOLINT

  // From `offset` on, at most `count` bytes, and no more than there are.
  BytesView part(size_t offset, size_t count = SIZE_MAX) const {
    if (offset >= size) return {};
    return {data + offset, count < size - offset ? count : size - offset};
  }
  FileBytes copy() const {
    return {data, data + size};
  }
};

inline bool beginsWith(BytesView bytes, std::string_view start) {
  return bytes.size >= start.size() && std::memcmp(bytes.data, start.data(), start.size()) == 0;
}

inline uint32_t bigEndianAt(BytesView bytes, size_t offset, size_t count) {
  uint32_t number = 0;
  for (size_t i = 0; i < count; ++i) {
    number = number << 8 | (offset + i < bytes.size ? bytes.data[offset + i] : 0U);
  }
  return number;
}

inline uint32_t littleEndianAt(BytesView bytes, size_t offset, size_t count) {
  uint32_t number = 0;
  for (size_t i = 0; i < count; ++i) {
    const uint32_t byte = offset + i < bytes.size ? bytes.data[offset + i] : 0U;
    number |= byte << (8 * i);
  }
  return number;
}
