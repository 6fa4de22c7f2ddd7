// scripting: the three values that the module exchanges with the host's scripting. They have no
// effect on the picture.

#pragma once

#include "entry/host_interface.h"

struct SessionRecord;

// The block and both suites present in the versions and counts we trust, every procedure there.
bool hostDescriptorsUsable(const PIDescriptorParameters* parameters);

// Start: takes over the values that the host has, and its answer to whether to show the dialog.
// A read error other than a missing key becomes the result word.
void readScriptParameters(SessionRecord* session);

// Finish: records the values with the host. Errors are not reported: the picture is done.
void writeScriptParameters(SessionRecord* session);
