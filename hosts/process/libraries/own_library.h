// own_library: the parts of the program that are libraries of their own, because they need a lot
// that most runs do not.

#pragma once

#include <string>

// A procedure of one of them, which is loaded; null with the reason when it is not to be had.
void* ownProcedure(const std::string& library, const std::string& procedure, std::string* reason);
