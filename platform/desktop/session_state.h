// session_state: what the parts of this back end share about the run.

#pragma once

constexpr char kOrganisation[] = "Quorrelin";
constexpr char kApplication[] = "Morvalis";

// Whether keepRememberedValuesInMemory has cut the run off from the user.
bool runIsCutOff();
