#include "dialog/controls/typing.h"

#include "dialog/controls/dialog_controls.h"
#include "dialog/controls/small_controls.h"
#include "dialog/dialog_state.h"

static void showTyping(DialogState* dialog, int32_t slider) {
  repaintControl(dialog, findSlider(slider)->valueArea);
}

static TypedNumber* numberOf(DialogState* dialog, int32_t slider) {
  if (dialog->typed.slider != slider) {
    takeTyping(dialog);
    dialog->typed = {slider, 0, {}};
  }
  return &dialog->typed;
}

static bool isDigit(char character) {
  return character >= '0' && character <= '9';
}

bool typeCharacter(DialogState* dialog, int32_t slider, char character) {
  const bool sign = character == '-';
  if (!sign && !isDigit(character)) return false;
  TypedNumber* typed = numberOf(dialog, slider);
  const bool signedNumber = typed->length > 0 && typed->text[0] == '-';
  const int32_t most = signedNumber || sign ? kMostTyped : kMostTyped - 1;
  if (typed->length < most && (!sign || typed->length == 0)) {
    typed->text[typed->length++] = character;
  }
  showTyping(dialog, slider);
  return true;
}

bool eraseCharacter(DialogState* dialog, int32_t slider) {
  TypedNumber* typed = numberOf(dialog, slider);
  if (typed->length > 0) typed->text[--typed->length] = 0;
  showTyping(dialog, slider);
  return true;
}

bool giveUpTyping(DialogState* dialog) {
  const int32_t slider = dialog->typed.slider;
  dialog->typed = {};
  if (slider == 0) return false;
  showTyping(dialog, slider);
  return true;
}

bool takeTyping(DialogState* dialog) {
  const TypedNumber typed = dialog->typed;
  if (!giveUpTyping(dialog)) return false;
  int32_t number = 0;
  int32_t digits = 0;
  for (int32_t i = 0; i < typed.length; ++i) {
    if (!isDigit(typed.text[i])) continue;
    number = number * 10 + (typed.text[i] - '0');
    ++digits;
  }
  if (digits == 0) return true;
  if (typed.text[0] == '-') number = -number;
  setSlider(dialog, typed.slider, valueFromShown(*findSlider(typed.slider), number));
  return true;
}
