// loaded_module: the filter module as a host finds and loads it.

#pragma once

#include <cstdint>
#include <string>

// Finds the module's description, takes the entry for this program's own kind of process, and loads
// the module. The reason when it cannot be used; "" when it can. Until unloadModule, ENTRYPOINT is
// the module's.
std::string loadModule(const std::string& path);
void unloadModule();

// What the loaded module takes for the time of day, in seconds: from it come its random numbers.
void fixModuleClock(uint32_t seconds);
