// preset_lookup: presets by their bare names.

#pragma once

#include <string>
#include <vector>

// The files of the presets that come with the program, by name: installed, or in the tree that it
// was built in.
std::vector<std::string> ownPresets();

// The preset itself when there is such a file, or the name is a path. Otherwise the one of this
// name, written with or without ".q9q", hyphens for blanks and in any capitals, among those that
// come with the program. Ends the command when there is none.
std::string findPreset(const std::string& name);
