// counted_text: texts with a length byte in front, as hosts and dialogs exchange them, and the
// few helpers on plain texts. A counted text keeps a zero byte after its last character.

#pragma once

#include <cstdint>

constexpr int32_t kCountedTextBytes = 257;  // length byte, 255 characters, zero byte

// Appends the first `count` characters of `source`, as many as fit into 255.
void appendToCountedText(uint8_t* text, const char* source, int32_t count);

// Length of a zero-terminated text, at most 32,767; 0 for a missing text.
int32_t boundedLength(const char* text);

// Zero-terminated to counted, in place, in a buffer of 256 bytes. A text of 255 characters fills
// the buffer and has no room for the zero byte.
void textToCounted(char* buffer);

// Counted to zero-terminated, in place.
void countedToText(char* buffer);

// The decimal text of a number, counted, in a buffer of kCountedTextBytes bytes.
void numberToText(int32_t value, uint8_t* text);

// A to Z become a to z; every other byte stays.
char lowerCaseAscii(char c);
