// dialog_readings: what a screen reader finds in a window: a line
// "ROLE|NAME|VALUE|STATE|DESCRIPTION" for the window and for each of its elements, roles and states
// as the system numbers them.

#pragma once

#include <cstdint>
#include <string>

// An element as its numbers and texts tell it.
struct ElementReading {
  int32_t role;
  int32_t state;
  std::string name;
  std::string value;
  std::string description;
};

// In the thread of the window.
void writeReadings(void* window, const std::string& path);

// The element of this name gets a value, or what it does is done.
void setReading(void* window, const std::string& name, const std::string& value);
void useReading(void* window, const std::string& name);

// The element at this place of the window (left, top, width, height); false when there is none.
bool readElementAt(void* window, const int32_t place[4], ElementReading* reading);
