// desktop_session: how a program with windows shows itself on the desktop.

#pragma once

// The windows of this program belong to the desktop file of this name and show its icon; the
// module's own where it is not installed. Needs the application object.
void introduceProgram(const char* name);
