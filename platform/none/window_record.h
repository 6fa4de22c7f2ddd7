// window_record: a window of this back end, and how events reach it.

#pragma once

#include <deque>
#include <map>
#include <memory>
#include <string>

#include "platform/none/none_window.h"
#include "platform/window.h"

struct Window {
  const WindowTemplate* content;  // null for a pop-up
  WindowProcedure procedure;
  void* context;
  NonePicture shown;

  bool open;
  int32_t code;              // that it ended with
  int32_t eventsInProgress;  // a pop-up counts in its owner
  std::deque<WindowEvent> posted;
  bool awaitsRest;

  CursorShape cursor;
  bool captured;
  std::map<int32_t, std::string> toolTips;  // by control, where they differ from the template's
  std::map<int32_t, int32_t> toldReadings;  // how often, by control
  std::string rowName;                      // of a pop-up, where the user is
  int32_t focused;                          // control id, 0 for none
  int32_t pressedButton;                    // held by the left button, 0 for none
  bool pressedInside;

  Window* owner;  // of a pop-up
  Point origin;   // of a pop-up, on the screen
  std::unique_ptr<Window> popup;
  std::vector<std::unique_ptr<Window>> closedPopups;  // whose procedures may still be running
};

std::unique_ptr<Window> newWindow(int32_t width, int32_t height, WindowProcedure procedure,
                                  void* context);

// Hands one event over, then what has been posted meanwhile once the outermost event is done. The
// procedure's answer; false when the window has ended.
bool sendEvent(Window* window, const WindowEvent& event);

WindowEvent pointerEvent(WindowEventKind kind, Point point);

// The control that has this id, or the button under a point; null for none.
const WindowControl* findControl(const Window* window, int32_t id);
const WindowControl* buttonUnder(const Window* window, Point point);

// The state a button has now.
ItemState stateOf(const Window* window, int32_t id);

// Moves the focus; the buttons that lose and get it are drawn.
void moveFocus(Window* window, int32_t id);

// Presses the cancel button; a window without one ends as unavailable.
void cancelWindow(Window* window);

// A pop-up that is open is let go outside its rows, so that whoever opened it frees what it holds.
void dismissPopup(Window* owner);
