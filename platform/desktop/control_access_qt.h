// control_access_qt: the controls of a window in the accessibility tree, with role, value, range
// and what can be done with them.

#pragma once

#include <cstdint>

class QWidget;
struct Window;
struct WindowControl;

// The widget stands for a control of the window. To be said before anything else of it is, since an
// interface that has been asked for once stays what it is.
void introduceControl(Window* window, int32_t id, QWidget* widget);

// An area, which has no widget else, that people are told of; the pointer goes through it.
void addReadableArea(Window* window, const WindowControl& control);

// The area, null for none, that has the keyboard now.
void tellFocus(Window* window, int32_t id);
