// dialog_actions: what a user does in the dialog, as a list that is played here, without a screen,
// and written down for the Windows host's script.

#pragma once

#include <map>
#include <string>
#include <vector>

#include "tests/support/dialog/dialog_user.h"

struct DialogAction {
  std::string name;  // of the host's script
  std::vector<int32_t> numbers;
  std::string text;  // a file, without folder
};

using DialogActions = std::vector<DialogAction>;

std::string scriptOf(const DialogActions& actions);

// The answers to what opens meanwhile come from the list as well; files lie in the folder. Pictures
// of the dialog by the names of their files.
using DialogShots = std::map<std::string, WindowPicture>;
DialogPlay playOf(const DialogActions& actions, const std::string& folder, DialogShots* shots);

// A drag, a choice in the pop-up of a picker (with a picture of it before), a press on a button
// that asks for a file.
void drag(DialogActions* actions, Point from, Point to);
void chooseInMenu(DialogActions* actions, int32_t picker, int32_t row, const char* shot = nullptr);
void pressForFile(DialogActions* actions, int32_t button, const std::string& file);
