// dialog_readings: what a screen reader finds in a window: a line
// "ROLE|NAME|VALUE|STATE|DESCRIPTION" for the window and for each of its elements, roles and states
// as the system numbers them.

#pragma once

#include <string>

// In the thread of the window.
void writeReadings(void* window, const std::string& path);

// The element of this name gets a value, or what it does is done.
void setReading(void* window, const std::string& name, const std::string& value);
void useReading(void* window, const std::string& name);
