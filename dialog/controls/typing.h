// typing: a number that the user types over a slider: shown in the place of the slider's own with a
// caret behind it, until it is taken or given up.

#pragma once

#include <cstdint>

struct DialogState;

constexpr int32_t kMostTyped = 5;  // a sign and four digits
struct TypedNumber {
  int32_t slider;  // id, 0 while nothing is typed
  int32_t length;
  char text[kMostTyped + 1];
};

// Each answers whether the key belongs to a number.
bool typeCharacter(DialogState* dialog, int32_t slider, char character);
bool eraseCharacter(DialogState* dialog, int32_t slider);

// The slider takes the number, limited to its range; nothing changes when none was typed. True when
// something was being typed.
bool takeTyping(DialogState* dialog);

// The slider's own number comes back. True when something was being typed.
bool giveUpTyping(DialogState* dialog);
