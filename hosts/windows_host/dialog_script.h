// dialog_script: plays the user of the module's dialog from a second thread, by window messages. A
// script is a text, one action a line; points are client pixels of the dialog, or of the pop-up:
//
//   press X Y | move X Y | release X Y | double X Y     left button
//   otherpress X Y | otherrelease X Y                    right button
//   wheel X Y NOTCHES
//   popupmove X Y | popuprelease X Y
//   button ID          a press and release on a button
//   command ID [CODE]  a command as a control or a menu sends it
//   key CODE           a key by its virtual code
//   file PATH          waits for a file chooser and takes this file, named in UTF-8
//   answer ID          waits for any other dialog above ours and presses its button
//   boxfocus ID        waits for such a dialog and looks whether this button has the keyboard
//   boxkey CODE | boxclose  ends it by a key, or as with the window's own button
//   shot FILE.bmp      what the dialog shows; popupshot FILE.bmp the pop-up
//   controls FILE      every control's id and rectangle, "ID LEFT TOP RIGHT BOTTOM" a line
//   readings FILE      what a screen reader finds (see dialog_readings.h)
//   setreading VALUE NAME | usereading NAME              what it does there
//   close              as with the window's own button
//
// An action that waits in vain ends the program, and so does a script that leaves the dialog open.

#pragma once

#include <string>

// Waits for the dialog with this caption in the thread that calls, and plays. The dialog has to
// belong to the owner (null: any) and keep the user from it. `finishDialogScript` waits for the
// script's end.
void startDialogScript(const std::string& path, const std::string& caption, void* owner);
void finishDialogScript();
