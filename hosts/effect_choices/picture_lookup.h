// picture_lookup: pictures that a settings file knows by name only.

#pragma once

#include <string>
#include <vector>

// The folder that holds a preset's pictures when none is given: the one of the usual name that the
// preset's path leads through, else one of that name beside the preset.
std::string usualPictureFolder(const std::string& presetFile);

// The picture's path, by its name in the Windows character set; empty when the folder does not hold
// it. A file whose name differs in the case of ASCII letters is taken when there is no exact one.
std::string findPictureByName(const std::string& folder, const char* windowsName);

// The same for a preset's own folder, behind which stands that of the presets that come with the
// program: a preset of one's own may have begun as one of them.
std::string findPictureOfPreset(const std::string& folder, const char* windowsName);
