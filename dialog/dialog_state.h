// dialog_state: what the open main dialog knows. One record per dialog, in memory of its own.

#pragma once

#include <cstdint>

#include "dialog/canvas.h"
#include "dialog/control_table.h"
#include "dialog/undo.h"
#include "entry/session_record.h"

// The fields that Cancel puts back.
struct SettingsSnapshot {
  EffectSettings settings;
};

// A number being typed over a slider.
struct TypedNumber {
  int32_t slider;
  int32_t value;
  bool negative;
  int32_t digits;
};

struct DialogState {
  SessionRecord* session;
  Window* window;
  Canvas canvas;
  bool shown;  // initialised; from then on drawing is presented

  // By control id.
  int32_t controlValue[kControlIds];
  int32_t controlMin[kControlIds];
  int32_t controlMax[kControlIds];
  int32_t toldValue[kControlIds];  // of a slider, in its tool tip
  bool tipTold[kControlIds];

  int32_t fitScale;      // reduction at which the whole filter rectangle fits the preview
  int32_t wheelControl;  // slider under the pointer
  bool showsSource;      // the untouched picture stands in the preview
  uint8_t* keptPreview;  // the render that it stands in for; null: none could be kept
  SettingsSnapshot snapshot;
  UndoHistory undo;
  TypedNumber typed;

  Window* popup;
  Canvas popupCanvas;
  int32_t popupPicker;  // control id of the open picture menu
  int32_t popupHot;     // 1-based row, 0 for none
  int32_t popupWidth;   // of an item, pixels
};

inline EffectSettings* settingsOf(const DialogState* dialog) {
  return settingsOf(dialog->session);
}

// Erases and paints a part of the dialog anew, buttons included, and shows it.
void repaintArea(DialogState* dialog, const Rectangle& area);
void repaintControl(DialogState* dialog, int32_t id);

// Shows what has been drawn in a part of the dialog.
void presentArea(DialogState* dialog, const Rectangle& area);
