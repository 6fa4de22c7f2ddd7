// json_text: texts as they stand in JSON. Objects and arrays are written in the order in which
// people read them.

#pragma once

#include <string>
#include <vector>

// In quotes, with everything escaped that has to be; `text` is UTF-8.
std::string jsonString(const std::string& text);

// The parts in brackets.
std::string jsonArray(const std::vector<std::string>& parts);
