// undo: settings and pictures before and after each completed change, as long as the dialog is
// open.

#pragma once

#include <cstdint>

#include "settings/effect_settings.h"

struct DialogState;

// A surface's pixels; neighbouring steps share those of a picture that has not changed.
struct UndoStep {
  EffectSettings settings;
  uint8_t* environment;  // null: there was no picture, or no memory for it
  uint8_t* texture;
};

// How a change comes about. One that continues another of its kind on the same control is no step
// of its own: the second click of a double one, or a single step within kStepPause of the last.
enum class ChangeKind { other, click, steps };

struct Change {
  ChangeKind kind = ChangeKind::other;
  int32_t control = 0;
  bool continues = false;
};

constexpr int32_t kUndoSteps = 100;
constexpr uint32_t kStepPause = 700;  // milliseconds
struct UndoHistory {
  UndoStep steps[kUndoSteps];
  int32_t count;
  int32_t position;  // step that the settings stand at
  Change last;       // what has led to it, as long as it can be continued
  uint32_t lastTime;
};

// Starts the history with the present settings, and frees what it holds.
void startUndo(DialogState* dialog);
void endUndo(DialogState* dialog);

// Notes settings, those that the controls show, as a step, unless they are those of the last one.
void noteChange(DialogState* dialog, const EffectSettings& shown, const Change& change);

// What comes next is a step of its own.
void endChange(DialogState* dialog);

// Goes a step back or forward; true when there was one. Pictures come back as they were, generated
// textures and files that are gone since included.
bool undoChange(DialogState* dialog);
bool redoChange(DialogState* dialog);
