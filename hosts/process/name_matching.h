// name_matching: names as users type them, and which one they may have meant.

#pragma once

#include <string>
#include <vector>

// Small ASCII letters, with blanks for "-" and "_": names of choices have blanks, which a shell
// makes awkward to type.
std::string foldedName(const std::string& text);

// The name that takes the fewest changes of letters, or that begins with the text; empty when none
// is near enough to have been meant.
std::string nearestName(const std::string& text, const std::vector<std::string>& names);

// "; did you mean NAME?", or nothing.
std::string suggestionFor(const std::string& text, const std::vector<std::string>& names);
