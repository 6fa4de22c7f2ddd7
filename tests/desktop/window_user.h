// window_user: plays the user of a modal window: mouse and keyboard come in where the system's own
// events do, so that Qt finds out itself which widget they are for.

#pragma once

#include <QPointF>
#include <QString>
#include <functional>

#include "tests/support/window_probe.h"

class QWidget;

class WindowUser {
 public:
  explicit WindowUser(QWidget* window) : window_(window) {
  }

  QWidget* window() const {
    return window_;
  }

  // Where the pointer was elsewhere before, a press or release brings a move along.
  void press(QPointF at, Qt::MouseButton button = Qt::LeftButton);
  void move(QPointF at);
  void release(QPointF at, Qt::MouseButton button = Qt::LeftButton);
  void click(QPointF at);
  void doubleClick(QPointF at);
  void wheel(QPointF at, int units, Qt::KeyboardModifiers modifiers = {});
  void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}, const QString& text = {});

 private:
  void sendMouse(QPointF at, Qt::MouseButton button, int type);

  QWidget* window_;
  Qt::MouseButtons held_;
};

// Runs a window; `play` is called once it is shown and has the keyboard. A window that `play`
// leaves open fails the test and is closed. The code that the window ended with.
int32_t playWindow(const WindowTemplate& content, WindowProbe* probe,
                   const std::function<void(WindowUser&)>& play);

// Lets everything that is queued happen.
void settle();
