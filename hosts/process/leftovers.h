// leftovers: drafts and folders of a run that has to end at once, in a signal's handler, where
// nothing may be looked up or taken apart.

#pragma once

#include <string>

// From here on removeLeftovers takes care of it. A place that finds no room in the list is only
// removed by its owner.
void noteLeftover(const std::string& path);
void forgetLeftover(const std::string& path);

// Files, and folders with the files in them. Async-signal-safe.
void removeLeftovers();

// In a child process: what the parent keeps is the parent's.
void forgetLeftovers();
