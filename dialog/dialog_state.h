// dialog_state: what the open main dialog knows. One record per dialog, in memory of its own.

#pragma once

#include <cstdint>

#include "dialog/controls/canvas.h"
#include "dialog/controls/control_table.h"
#include "dialog/controls/typing.h"
#include "dialog/preview/drag.h"
#include "dialog/undo.h"
#include "entry/session_record.h"

// The fields that Cancel puts back.
struct SettingsSnapshot {
  EffectSettings settings;
};

struct DialogState {
  SessionRecord* session;
  Window* window;
  Canvas canvas;
  WindowControl controls[kControlIds];  // as they stand at the scale
  bool shown;                           // initialised; from then on drawing is presented

  // By control id.
  int32_t controlValue[kControlIds];
  int32_t controlMin[kControlIds];
  int32_t controlMax[kControlIds];
  int32_t toldValue[kControlIds];  // of a slider or picker, in its tool tip
  bool tipTold[kControlIds];
  int32_t toldReading[kControlIds];  // what it was when its reading was told last
  bool readingTold[kControlIds];

  int32_t fitScale;      // reduction at which the whole filter rectangle fits the preview
  int32_t wheelControl;  // slider under the pointer
  bool showsSource;      // the untouched picture stands in the preview
  uint8_t* keptPreview;  // the render that it stands in for; null: none could be kept
  size_t keptRowLength;  // bytes
  int32_t keptHeight;    // rows
  SettingsSnapshot snapshot;
  UndoHistory undo;
  TypedNumber typed;

  int32_t focusedArea;   // that the keyboard acts on, 0 when it is a button or nothing
  bool focusByKeyboard;  // the pointer has not given it
  int32_t tabbedTo;      // where the Tab key was last, 0 once the pointer has gone elsewhere

  DragStart dragStart;
  bool previewStale;     // behind the control that is dragged or moved by steps
  bool previewFollowed;  // has been rendered in this drag

  Window* popup;
  Canvas popupCanvas;
  int32_t popupPicker;  // control id of the open picture menu
  int32_t popupHot;     // 1-based row, 0 for none
  int32_t popupWidth;   // of an item, pixels
  bool popupStays;      // without a button held: until a click, Enter or Escape
  Point popupPress;     // on the screen, and when
  uint32_t popupTime;
};

inline EffectSettings* settingsOf(const DialogState* dialog) {
  return settingsOf(dialog->session);
}

// Erases and paints a part of the dialog anew, buttons included, and shows it.
void repaintArea(DialogState* dialog, const Rectangle& area);
void repaintControl(DialogState* dialog, int32_t id);

// Shows what has been drawn in a part of the dialog.
void presentArea(DialogState* dialog, const Rectangle& area);
