// settings_command: `morvalis settings`, the list of everything that --set takes.

#pragma once

// With `json` as one array of objects.
int runSettingsCommand(bool json);
