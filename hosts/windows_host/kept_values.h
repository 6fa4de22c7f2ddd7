// kept_values: what the module keeps between runs, as tests want to set and see it.

#pragma once

#include <string>

// From now on this is about what the module keeps where it may not write the machine's places.
void keepValuesForUser();

// Writes a text under one of the module's names in the registry; "-" takes the value away, ""
// leaves it.
void setKeptValue(const char* name, const std::string& text);

// Takes away all three values and the file of the last confirmed settings.
void forgetKeptValues();

// Writes "NAME TYPE BYTES TEXT" for each value that there is, a line each.
void saveKeptValues(const std::string& path);

// Copies the file of the last confirmed settings; an empty file when there is none.
void saveKeptSettings(const std::string& path);
