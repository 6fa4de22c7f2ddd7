// gimp_scripts: what scripts call differently in the versions of GIMP, and where its parts are.

#pragma once

// Procedures for the tests' scripts; those that differ come first.
extern const char* const kVersionProcedures;
extern const char* const kProcedures;

extern const char* const kGimpConsole;
extern const char* const kGimpFolder;  // the variable that names the user's folder
