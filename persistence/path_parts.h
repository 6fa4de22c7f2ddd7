// path_parts: folders and file names of paths, in the system's own form, and the names that stand
// in settings files.

#pragma once

#include <cstdint>

// The character after the last separator; the text's start when there is none.
const char* fileNameOf(const char* path);

// The file name of a path in the Windows character set, as settings files name pictures; empty for
// a path without any folder. `name` holds kPathBytes bytes.
void fileNameForSettings(const char* path, char* name);

// Small ASCII letters, and ".bmp" exactly once at the end, in place in kPathBytes bytes.
void normalisePictureName(char* name);
