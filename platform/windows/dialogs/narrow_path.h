// narrow_path: paths come from the system in wide characters and are kept in its code page, as in
// settings files. Names that the code page cannot hold go by their short names.

#pragma once

#include <cstdint>

enum class NarrowAnswer { done, tooLong, noName };

// The path of something that is there. Otherwise than `done`, `path` is empty.
NarrowAnswer narrowPath(const wchar_t* wide, char* path, int32_t bytes);

// The same for a file that may have to be made to get a short name; it is empty then, and has to go
// when nothing comes into it.
NarrowAnswer narrowPathToWrite(const wchar_t* wide, char* path, int32_t bytes);

// Whether the path is that of the file that was made last; asking forgets it.
bool takeMadeFile(const char* path);
