// output_names: where the result of each picture goes.

#pragma once

#include <string>
#include <vector>

// One file per picture. In `pattern` {name} stands for the picture's file name without folder and
// ending, {folder} for its folder. Ends the command when two results would meet in one file, or a
// result with a mark in it would replace a picture of the command, one of the `others` that it
// reads included. With `keep` names that are taken get a number instead.
std::vector<std::string> outputNames(const std::vector<std::string>& images,
                                     const std::vector<std::string>& others,
                                     const std::string& pattern, bool keep);
