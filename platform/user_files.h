// user_files: what a back end supplies about files, their names and how they are opened and
// overwritten. Reading is the standard library's.

#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>

// Between the folders of a path.
char pathSeparator();

// Picture names stand in settings files in the Windows (ANSI) character set, whatever the system.
// Each converts a zero-terminated text, cut to what the target holds; a character that the other
// side lacks becomes "_".
void pathFromWindowsName(const char* name, char* path, int32_t bytes);
void windowsNameFromPath(const char* path, char* name, int32_t bytes);

// Names in settings files are looked for in small ASCII letters. Where the system tells capitals
// from small letters and there is no file of this path, but one that differs in nothing else, the
// path becomes that file's if it fits.
void takeFileAsWritten(char* path, int32_t bytes);

// Folder of the pictures that came with the program or the module, with a separator at its end.
// False when there is none to be had.
bool ownPicturesFolder(char* folder, int32_t bytes);

// Path of the one file that keeps the settings of the user's last confirmed dialog. False when
// there is none to be had, or when the run is cut off from the user. With `forWriting`, makes the
// folder it lies in.
bool cachedSettingsPath(bool forWriting, char* path, int32_t bytes);

// An ordinary file for reading; null when there is none, and for what only looks like one and would
// keep its reader waiting, as a pipe does.
std::FILE* openUserFile(const char* path);

// Puts these bytes over the beginning of a file, whose end stays where it is longer, or makes the
// file. False when that failed: the file then is what it was, at least where it could not be opened
// or nothing could be written; what was there is never emptied first.
bool overwriteUserFile(const char* path, const uint8_t* bytes, size_t count);
