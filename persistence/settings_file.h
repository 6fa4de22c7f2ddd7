// settings_file: settings files on disk: presets that the user saves and opens, and the one file
// that keeps the last confirmed settings. Failures of Save and Load are told in an alert; what
// nobody has asked for fails silently, and the user goes on with the settings there are.

#pragma once

struct EffectSettings;
struct SessionRecord;

// Writes the settings over what the file holds, from its first byte. A longer old file keeps its
// tail, which readers never look at. False when anything could not be written.
bool writeSettingsFile(const EffectSettings* settings, const char* path);

// Reads a file of any version into the settings. With `loadPictures` also loads the pictures it
// names from the pictures folder, asking the user where that is when one is missing.
void readSettingsFile(SessionRecord* session, const char* path, bool loadPictures);

// The dialog's Save and Load: the user chooses the file. False, with nothing changed, when none was
// chosen or it failed. Values out of range come in limited.
bool savePreset(const EffectSettings* settings);
bool openPreset(SessionRecord* session);

// The settings of the last confirmed dialog.
void saveCachedSettings(SessionRecord* session);
void loadCachedSettings(SessionRecord* session);
