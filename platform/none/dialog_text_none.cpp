#include "platform/dialog_text.h"

#include <cstring>

constexpr int32_t kCharacterWidth = 6;  // pixels at 100 percent

int32_t textWidth(const char* text, int32_t scale) {
  return scaledLength(kCharacterWidth * static_cast<int32_t>(std::strlen(text)), scale);
}

// Nothing is covered: pictures of windows do not depend on any system's font.
void drawTextCoverage(const char* text, int32_t scale, uint8_t* coverage) {
  std::memset(coverage, 0, static_cast<size_t>(textWidth(text, scale) * textLineHeight(scale)));
}
