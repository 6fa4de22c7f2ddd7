// dialog_keys: what the keyboard does in the dialog, whatever has the focus.

#pragma once

struct DialogState;
struct WindowEvent;

// True when the key was used; any other goes its usual way.
bool handleKey(DialogState* dialog, const WindowEvent& event);
