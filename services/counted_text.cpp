#include "services/counted_text.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

constexpr int32_t kLongestText = 255;
constexpr int32_t kLongestMeasured = 32767;

void appendToCountedText(uint8_t* text, const char* source, int32_t count) {
  const int32_t length = text[0];
  const int32_t added = std::clamp(count, 0, kLongestText - length);
  if (source != nullptr && added > 0) std::memcpy(text + 1 + length, source, added);
  const int32_t total = source == nullptr ? length : length + added;
  text[0] = static_cast<uint8_t>(total);
  text[1 + total] = 0;
}

int32_t boundedLength(const char* text) {
  if (text == nullptr) return 0;
  return static_cast<int32_t>(strnlen(text, kLongestMeasured));
}

void textToCounted(char* buffer) {
  const int32_t length = std::min(boundedLength(buffer), kLongestText);
  std::memmove(buffer + 1, buffer, length);
  buffer[0] = static_cast<char>(length);
  if (length < kLongestText) buffer[1 + length] = 0;
}

void countedToText(char* buffer) {
  const int32_t length = static_cast<uint8_t>(buffer[0]);
  std::memmove(buffer, buffer + 1, length);
  buffer[length] = 0;
}

void numberToText(int32_t value, uint8_t* text) {
  char digits[16];
  const int32_t length = std::snprintf(digits, sizeof(digits), "%d", value);
  text[0] = 0;
  appendToCountedText(text, digits, length);
}

char lowerCaseAscii(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}
