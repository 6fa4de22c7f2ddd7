// session_state: what the parts of this back end share about the run.

#pragma once

constexpr char kOrganisation[] = "Quorrelin";
constexpr char kApplication[] = "Morvalis";

// Whether the program has windows: it then shows its alerts and choosers, and reports on standard
// error otherwise.
bool programHasWindows();
