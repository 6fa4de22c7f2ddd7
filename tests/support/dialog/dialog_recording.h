// dialog_recording: what a script saw, as lines of text, so that two back ends can be compared:
// every setting as it is, and of the window one number for each control's pixels. Places of text
// are left out, as each back end writes with its own font.

#pragma once

#include <string>
#include <vector>

#include "tests/support/dialog/dialog_user.h"

// Begins a recording, and gives what has been recorded since.
void beginRecording();
std::vector<std::string> recordedLines();

// Records settings and pixels, under a name.
void look(DialogUser& user, const std::string& name);

// Records the rows of an open pop-up but for their texts and the ground of the one under the
// pointer (1-based, 0 for none).
void lookAtPopup(DialogUser& user, const std::string& name, int32_t hotRow);

// Records one value.
void note(const std::string& name, const std::string& value);

// The window's pixels with the places of text blackened.
WindowPicture withoutTexts(WindowPicture picture);
