// window_record_qt: what this back end knows of a window, and how events reach its procedure.

#pragma once

#include <QImage>
#include <QRect>
#include <QString>
#include <deque>
#include <map>
#include <vector>

#include "platform/window.h"

class QKeyEvent;
class QMouseEvent;
class QPainter;
class QWidget;
class ItemButton;

struct Window {
  QWidget* widget;                // shows the pixels
  const WindowTemplate* content;  // null for a pop-up
  WindowProcedure procedure;
  void* context;
  QImage pixels;  // what has been presented, in client pixels
  int32_t frame;  // pixels around them
  double ratio;   // pixels to a unit of Qt's, as the screen had it when the window opened

  bool ended;
  int32_t code;  // that it ended with
  int32_t eventsInProgress;
  std::deque<WindowEvent> posted;
  bool awaitsRest;

  std::vector<ItemButton*> buttons;      // in the order of the controls
  std::map<int32_t, QWidget*> readable;  // by control
  int32_t focusedArea;                   // id, 0 when a button or nothing has the focus
  std::map<int32_t, QString> toolTips;   // by control, where they differ from the template's
  int32_t tipShown;                      // control whose tip was shown last, 0 for none
  int32_t wheelRest;                     // of a wheel that turns in less than notches
  bool showsWaitCursor;
  Window* popup;  // that it has opened
};

void prepareWindow(Window* window, QWidget* widget, int32_t width, int32_t height,
                   WindowProcedure procedure, void* context);

// Pixels of the client area in Qt's units: the smallest rectangle that holds them all, and a size.
QRect inUnits(const Window& window, const Rectangle& rect);
QSize inUnits(const Window& window, int32_t width, int32_t height);

// Hands one event over; the procedure's answer, false when the window has ended.
bool sendEvent(Window* window, const WindowEvent& event);

// The same for what the user does. What has been posted comes first, however fast the user is: a
// press and its release may both have come in before Qt takes up anything that the press has
// posted.
bool sendInput(Window* window, const WindowEvent& event);

// From a position in the widget, frame and all.
WindowEvent pointerIn(const Window& window, WindowEventKind kind, const QPointF& position);

// Each hands the Qt event over in the window's own terms; true when the procedure has used it. A
// mouse button that says nothing to windows counts as unused.
bool sendMousePress(Window* window, const QMouseEvent& event, bool isDouble);
bool sendMouseRelease(Window* window, const QMouseEvent& event);
bool sendKey(Window* window, const QKeyEvent& event);

// Paints what has been presented, pixel for pixel on the screen that the window has opened on.
void paintPixels(const Window& window, QPainter* painter);

// The button of this id, null for none; the id of the control that the keyboard acts on.
ItemButton* findButton(const Window* window, int32_t id);
int32_t focusedControl(const Window* window);
