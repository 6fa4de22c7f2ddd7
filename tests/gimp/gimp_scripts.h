// gimp_scripts: what scripts call differently in the versions of GIMP, and where its parts are.

#pragma once

// Procedures for the tests' scripts; those that differ come first.
extern const char* const kVersionProcedures;
extern const char* const kProcedures;

extern const char* const kGimpConsole;
extern const char* const kGimpFolder;  // the variable that names the user's folder

// The file of keys in that folder, and what it holds for F9 to open the filter.
extern const char* const kKeysFile;
extern const char* const kKeys;
