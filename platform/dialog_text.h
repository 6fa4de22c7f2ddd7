// dialog_text: what a back end supplies to write: the dialogs' one font, Arial 11 pixels high in
// normal weight, or so much larger as the scale says, percent.

#pragma once

#include <cstdint>

#include "services/scaling.h"

constexpr int32_t kFontHeight = 11;  // pixels at 100 percent
constexpr int32_t kTextLineHeight = 14;

constexpr int32_t textLineHeight(int32_t scale) {
  return scaledLength(kTextLineHeight, scale);
}

// Width of a zero-terminated text, pixels.
int32_t textWidth(const char* text, int32_t scale);

// How far the text covers each pixel of a line, 0 to 255: textWidth x textLineHeight bytes, rows
// from the top.
void drawTextCoverage(const char* text, int32_t scale, uint8_t* coverage);
