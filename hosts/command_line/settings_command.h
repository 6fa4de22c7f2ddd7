// settings_command: `morvalis settings`, the list of everything that --set takes.

#pragma once

int runSettingsCommand();
