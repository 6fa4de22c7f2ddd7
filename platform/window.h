// window: what a back end supplies of windows: modal dialogs whose surface the core draws itself,
// and the pop-up of the picture menus. The core keeps every pixel of a window in memory of its own
// and hands over what has changed; events come back as plain records.

#pragma once

#include <cstdint>

#include "platform/control_reading.h"
#include "services/rectangle.h"

struct Window;  // the back end's

// Every place and length here counts pixels of the screen, whatever the system counts in.

// At how many percent the system shows other windows where one of this owner (null: none) would
// open, how large its client area may be there, and how high a menu, which has no frame and lies
// over the system's bars; pixels; 0: nobody knows.
struct ScreenRoom {
  int32_t scale;
  int32_t width;
  int32_t height;
  int32_t menuHeight;
};
ScreenRoom screenRoom(void* ownerWindow);

// --- What a window consists of --------------------------------------------------------------

enum class ControlKind {
  area,    // a place that the core draws and hit-tests; the back end need not know more of it
  button,  // pressed by pointer or keyboard; drawn by the core, in a state the back end tells
};

struct WindowControl {
  int32_t id;
  ControlKind kind;
  Rectangle rect;       // client pixels
  const char* name;     // for people who cannot see it; null when it needs none
  const char* toolTip;  // one line; null for none
};

struct WindowTemplate {
  const char* name;  // resource name
  const char* caption;
  int32_t width;  // client area, pixels
  int32_t height;
  const WindowControl* controls;
  int32_t controlCount;
  int32_t defaultButton;  // Enter presses it, 0 for none
  int32_t cancelButton;   // Escape, unless used, and the window's closing press it, 0 for none
  ControlReader reader = nullptr;  // gets the procedure's context; null: names say it all
};

// --- Events ---------------------------------------------------------------------------------

enum class WindowEventKind {
  initialise,   // once, before the window is shown
  drawItem,     // draw button `id` in `state`
  command,      // button or posted command `id`
  mouseMove,    // `point`
  buttonDown,   // left button, outside every button control
  buttonUp,     // left button
  doubleClick,  // left button, instead of the second buttonDown
  otherDown,    // right button
  otherUp,
  wheel,  // `amount` notches, positive away from the user, at `point`
  key,    // `key` with the modifiers
  rest,   // asked for with awaitRest
  use,    // area `id`, as the Space key does: by somebody who cannot see it
  set,    // control `id` to `amount`, likewise
};

enum class WindowKey {
  none,
  left,
  right,
  up,
  down,
  pageUp,
  pageDown,
  home,
  end,
  enter,
  escape,
  backspace,
  undo,  // the system's usual keys for these
  redo,
  copy,
  tab,
  help,
  character,  // `character`
};

struct ItemState {
  bool pressed;
  bool focused;
  bool disabled;
};

struct WindowEvent {
  WindowEventKind kind;
  int32_t id;
  int32_t notification;  // of a command: 0 for a plain press
  ItemState state;
  Point point;  // client pixels
  int32_t amount;
  WindowKey key;
  char character;
  bool shift;
};

inline WindowEvent eventOf(WindowEventKind kind) {
  WindowEvent event = {};
  event.kind = kind;
  return event;
}

inline WindowEvent commandEvent(int32_t id, int32_t notification = 0) {
  WindowEvent event = eventOf(WindowEventKind::command);
  event.id = id;
  event.notification = notification;
  return event;
}

// Handles one event; true when it made use of it (an unused key goes its usual way).
using WindowProcedure = bool (*)(Window* window, const WindowEvent& event, void* context);

// Runs a window modally, owned by another (null: no owner), placed by centreDialog; the code that
// endModalWindow gave, or kDialogUnavailable when it cannot be shown.
constexpr int32_t kDialogUnavailable = -1;
int32_t runModalWindow(const WindowTemplate& content, void* ownerWindow, WindowProcedure procedure,
                       void* context);
void endModalWindow(Window* window, int32_t code);

// --- Pixels ---------------------------------------------------------------------------------

// The core's memory of a window: rows from the top, three bytes (red, green, blue) a pixel.
struct PixelTarget {
  int32_t width;
  int32_t height;
  uint8_t* rgb;
};

// Shows a part of the target in the window.
void presentPixels(Window* window, const PixelTarget& target, const Rectangle& part);

// Asks for a drawItem event of a button, with the state it has; it comes before the call returns.
void redrawItem(Window* window, int32_t id);

// Another tool tip for a control than its template says; the text is copied, null takes the tip
// away.
void setToolTip(Window* window, int32_t id, const char* text);

// A control's reading says something else now.
void tellReading(Window* window, int32_t id);

// What the host's displayPixels gets as its platform context so that it draws into the target.
// Where the host draws elsewhere, endHostDrawing brings the pixels over.
void* beginHostDrawing(Window* window, PixelTarget* target);
void endHostDrawing(Window* window, PixelTarget* target, void* hostContext);

// --- Pointer and cursor ---------------------------------------------------------------------

enum class CursorShape { arrow, wait, closedHand, openHand };

void setCursor(Window* window, CursorShape shape);
void captureMouse(Window* window);
void releaseMouse(Window* window);

// Queues an event for the window itself.
void postMouseMove(Window* window, Point point);
void postCommand(Window* window, int32_t id);

// Sends one `rest` event when nothing else is waiting any more.
void awaitRest(Window* window);

// The control that the keyboard acts on; 0 for none. Areas can have the focus when asked for.
void setFocusedControl(Window* window, int32_t id);

// Text to the system's clipboard.
void copyTextToClipboard(const char* text);

// --- Pop-up ---------------------------------------------------------------------------------

// Opens a pop-up of this client size at a place on the screen (see clientToScreen), owned by the
// window, with the mouse captured. Its procedure gets initialise, mouseMove, buttonDown and
// buttonUp, wherever they happen, and every key. Null when it cannot be opened. closePopup may be
// called from its own procedure.
Window* openPopup(Window* owner, Point screenOrigin, int32_t width, int32_t height,
                  WindowProcedure procedure, void* context);
void closePopup(Window* popup);

// Names the row that the user is at, in client pixels of the pop-up; null when they are at none.
// One whose name is not written in it shows it beside.
void nameRow(Window* popup, const Rectangle& row, const char* name, bool isWritten);

Point clientToScreen(Window* window, Point point);
int32_t screenHeight();

// Width of the system's menu check mark at 100 percent, and the colours of a selected menu item.
struct MenuLook {
  int32_t checkMarkWidth;
  uint8_t highlight[3];
  uint8_t highlightText[3];
};
MenuLook menuLook();
