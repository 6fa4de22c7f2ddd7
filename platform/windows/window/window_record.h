// window_record: what this back end knows of a window, and how events reach its procedure.

#pragma once

#include "platform/window.h"
#include "platform/windows/window/surface.h"
#include "platform/windows/windows_api.h"

struct IAccessible;

inline constexpr char kPopupTitle[] = "zowie";  // while no row has another name

struct Window {
  HWND handle;
  const WindowTemplate* content;  // null for a pop-up
  WindowProcedure procedure;
  void* context;
  Surface surface;      // what has been presented
  Surface hostSurface;  // what the host draws on; made when it first does

  bool ended;
  int32_t code;              // that it ended with
  int32_t eventsInProgress;  // a pop-up's count in its owner
  CursorShape cursor;
  bool awaitsRest;
  bool movePosted;      // by the window itself, and not arrived yet
  Point postedMove;     // client pixels
  bool captured;        // has asked for the mouse and not let go of it
  int32_t focusedArea;  // id; what counts while no button has the focus
  HWND focusKept;       // what had the keyboard when another window took it
  int32_t wheelRest;    // of a wheel that turns in less than notches
  HWND toolTips;
  HFONT tipLetters;     // where they are not the system's, null
  IAccessible* access;  // null until a screen reader asks
  bool opensAccess;     // the thread is open to others for its sake
  Window* owner;        // of a pop-up
  Window* popup;        // that it has opened
  Window* below;        // the modal window that was open before this one
};

// The modal window that was opened last; null when there is none.
Window* topWindow();

// Keeps the user from that window, and its tool tips from what comes above it, while something
// without an owner is open; and gives it back.
HWND shutTopWindow();
void openTopWindow(HWND shut);

// Hands one event over; the procedure's answer, false when the window has ended. What the user does
// while an event is in progress (another modal window has its own loop then) is dropped.
bool sendEvent(Window* window, const WindowEvent& event);

// The same for what has to arrive whatever is in progress.
bool deliverEvent(Window* window, const WindowEvent& event);

// Does with a control what a click on it does, as soon as no message is in progress.
constexpr UINT kUseMessage = WM_APP + 1;  // the control's id

// Turns a mouse message of a window into an event and hands it over; false for other messages.
bool sendMouseMessage(Window* window, UINT message, WPARAM wParam, LPARAM lParam);

// Offers a key to the window's procedure before the system acts on it; true when it was used.
bool offerKey(Window* window, const MSG& message);

// The control that the keyboard acts on; 0 for none.
int32_t focusedControl(const Window* window);

const WindowControl* findControl(const Window* window, int32_t id);

// Shows a part of what has been presented on a device context whose origin is the window's client
// area moved by `origin`.
void showSurface(const Window* window, HDC context, const RECT& part, POINT origin);

// Asks for the drawing of a button in a state.
void sendDrawItem(Window* window, int32_t id, const ItemState& state);

// A picture of the template, which shows itself.
bool showsBitmap(HWND item);

// Lets an open pop-up go outside its rows, so that whoever opened it frees what it holds.
void dismissPopup(Window* owner);

// The class of the pop-ups belongs to the module and has to go before it does.
void registerPopupClass();
void unregisterPopupClass();

// One tool tip window for all controls of a window.
void addToolTips(Window* window);

// A tip that stands beside a row of a pop-up without the pointer's doing; null takes it away.
void showTipBeside(Window* popup, const Rectangle& row, const char* text);
