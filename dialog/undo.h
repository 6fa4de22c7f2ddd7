// undo: settings before and after each completed change, as long as the dialog is open.

#pragma once

struct DialogState;

// Starts the history with the present settings.
void startUndo(DialogState* dialog);

// Notes the present settings as a step, unless they are those of the last one.
void noteChange(DialogState* dialog);

// Goes a step back or forward; true when there was one. The pictures follow the settings.
bool undoChange(DialogState* dialog);
bool redoChange(DialogState* dialog);

// Sets every user setting of `target` from `source`.
struct EffectSettings;
void copyUserSettings(EffectSettings* target, const EffectSettings& source);
