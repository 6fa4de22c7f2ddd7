// window_program: what the commands that open windows have in common.

#pragma once

#include <QApplication>
#include <memory>
#include <string>

// The application with its name and icon. Where no window can be opened the program ends here,
// with one line that says why: the library offers no way back. `argc` is 1 and must stay.
std::unique_ptr<QApplication> startWindows(int* argc, char** argv);

// A window with lines of any text, until it is closed.
void showFailure(const std::string& text);
