// loaded_module: the filter module as a host finds and loads it.

#pragma once

#include <cstdint>
#include <string>

#include "entry/entry_point.h"

using ModuleEntry = decltype(&ENTRYPOINT);

// Finds the module's description, takes the entry for this program's own kind of process, and loads
// the module. The reason when it cannot be used; "" when it can.
std::string loadModule(const std::string& path);
void unloadModule();

// The same, and the next load comes to lie somewhere else, as in another process.
void unloadModuleForGood();

// Of the loaded module.
ModuleEntry moduleEntry();

// What the loaded module takes for the time of day, in seconds: from it come its random numbers.
void fixModuleClock(uint32_t seconds);

// From now on nothing that the module writes into files arrives.
void fillModuleDisk();

// From now on the module may write neither the machine's part of the registry nor the system's
// folder, like the programs of ordinary users.
void refuseWhatIsTheMachines();
