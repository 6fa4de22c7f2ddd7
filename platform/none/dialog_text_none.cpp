#include "platform/dialog_text.h"

#include <cstring>

constexpr int32_t kCharacterWidth = 6;  // pixels

int32_t textWidth(const char* text) {
  return kCharacterWidth * static_cast<int32_t>(std::strlen(text));
}

// Nothing is covered: pictures of windows do not depend on any system's font.
void drawTextCoverage(const char* text, uint8_t* coverage) {
  std::memset(coverage, 0, static_cast<size_t>(textWidth(text)) * kTextLineHeight);
}
