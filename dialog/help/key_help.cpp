#include "dialog/help/key_help.h"

#include <iterator>

const SheetRow kKeyHelp[] = {
    {"Tab, Shift+Tab", "To the next control, and back."},
    {"Arrows, Page Up, Page Down, Home, End",
     "Move what has the focus, with Shift by 10; without a focus the slider under the pointer."},
    {"Digits", "A number for the slider. Enter, Tab or a click elsewhere takes it."},
    {"Space",
     "Presses a button, switches a box, opens a menu. In a menu arrows, letters and Enter choose."},
    {"Enter", "Presses the button that has the focus, otherwise OK."},
    {"Escape", "Gives up a number, a drag or a menu; otherwise it is Cancel."},
    {"Ctrl+Z, Ctrl+Shift+Z, Ctrl+Y", "Undo and redo."},
    {"Ctrl+C", "Copies the morvalis apply command that does the same, with the seed."},
    {"F1, ?", "Shows these lines."},
    {"Click", "On a slider's name or number: digits go there."},
    {"Double-click", "Puts a slider's default back."},
    {"Wheel", "Changes the slider under the pointer, with Shift by 10."},
    {"Drag", "On the preview shows another part; on the texture sample shifts the texture."},
    {"Right button", "On the preview: the untouched picture, while it is held."},
};
const int32_t kKeyHelpCount = static_cast<int32_t>(std::size(kKeyHelp));

void showKeyHelp() {
  showPlatformSheet("Keys and mouse", kKeyHelp, kKeyHelpCount);
}
