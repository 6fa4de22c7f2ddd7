// dialog_text: what a back end supplies to write: the dialogs' one font, Arial 11 pixels high in
// normal weight.

#pragma once

#include <cstdint>

constexpr int32_t kTextLineHeight = 14;  // pixels

// Width of a zero-terminated text, pixels.
int32_t textWidth(const char* text);

// How far the text covers each pixel of a line, 0 to 255: textWidth(text) x kTextLineHeight bytes,
// rows from the top.
void drawTextCoverage(const char* text, uint8_t* coverage);
