// name_matching: names as users type them, and which one they may have meant.

#pragma once

#include <string>
#include <vector>

// Small ASCII letters, with blanks for "-" and "_": names of choices have blanks, which a shell
// makes awkward to type.
std::string foldedName(const std::string& text);

// The name that takes the fewest changes of letters; empty when there are no names.
std::string nearestName(const std::string& text, const std::vector<std::string>& names);
