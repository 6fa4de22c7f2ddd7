#include "tests/desktop/window_user.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QTimer>
#include <QWheelEvent>
#include <QWindow>
#include <utility>

// What Qt's own tests send the system's events through.
Q_GUI_EXPORT void qt_handleMouseEvent(QWindow* window, const QPointF& local, const QPointF& global,
                                      Qt::MouseButtons state, Qt::MouseButton button,
                                      QEvent::Type type, Qt::KeyboardModifiers modifiers,
                                      int timestamp);
Q_GUI_EXPORT void qt_handleKeyEvent(QWindow* window, QEvent::Type type, int key,
                                    Qt::KeyboardModifiers modifiers, const QString& text,
                                    bool repeated, ushort count);

constexpr int kBetweenEvents = 10;    // milliseconds
constexpr int kBetweenClicks = 5000;  // too far apart for a double click
static int now = 1;

// --- The probe ------------------------------------------------------------------------------

static std::string describeKey(const WindowEvent& event) {
  static const char* const kNames[] = {"none",      "left", "right", "up",   "down", "enter",
                                       "backspace", "undo", "redo",  "copy", "tab"};
  std::string text = event.key == WindowKey::character ? std::string("'") + event.character + "'"
                                                       : kNames[static_cast<int>(event.key)];
  if (event.shift) text += " shift";
  return text + " on " + std::to_string(event.id);
}

static std::string describe(const WindowEvent& event) {
  const std::string at = std::to_string(event.point.h) + "," + std::to_string(event.point.v);
  const std::string id = std::to_string(event.id);
  switch (event.kind) {
    case WindowEventKind::initialise:
      return "initialise";
    case WindowEventKind::drawItem:
      return "draw " + id + (event.state.pressed ? " pressed" : "") +
             (event.state.focused ? " focused" : "") + (event.state.disabled ? " disabled" : "");
    case WindowEventKind::command:
      return "command " + id;
    case WindowEventKind::mouseMove:
      return "move " + at;
    case WindowEventKind::buttonDown:
      return "down " + at;
    case WindowEventKind::buttonUp:
      return "up " + at;
    case WindowEventKind::doubleClick:
      return "double " + at;
    case WindowEventKind::otherDown:
      return "other down " + at;
    case WindowEventKind::otherUp:
      return "other up " + at;
    case WindowEventKind::wheel:
      return "wheel " + std::to_string(event.amount) + " at " + at;
    case WindowEventKind::key:
      return "key " + describeKey(event);
  }
  return "?";
}

std::vector<std::string> WindowProbe::take() {
  return std::exchange(events, {});
}

bool probeProcedure(Window* window, const WindowEvent& event, void* probe) {
  auto* told = static_cast<WindowProbe*>(probe);
  told->events.push_back(describe(event));
  return told->answer(window, event);
}

// --- The user -------------------------------------------------------------------------------

void settle() {
  QApplication::processEvents();
  QApplication::sendPostedEvents();
  QApplication::processEvents();
}

void WindowUser::sendMouse(QPoint at, Qt::MouseButton button, int type) {
  now += kBetweenEvents;
  qt_handleMouseEvent(window_->windowHandle(), at, window_->mapToGlobal(at), held_, button,
                      static_cast<QEvent::Type>(type), {}, now);
  settle();
}

void WindowUser::press(QPoint at, Qt::MouseButton button) {
  now += kBetweenClicks;
  held_.setFlag(button, true);
  sendMouse(at, button, QEvent::MouseButtonPress);
}

void WindowUser::move(QPoint at) {
  sendMouse(at, Qt::NoButton, QEvent::MouseMove);
}

void WindowUser::release(QPoint at, Qt::MouseButton button) {
  held_.setFlag(button, false);
  sendMouse(at, button, QEvent::MouseButtonRelease);
}

void WindowUser::click(QPoint at) {
  press(at);
  release(at);
}

void WindowUser::doubleClick(QPoint at) {
  click(at);
  held_.setFlag(Qt::LeftButton, true);
  sendMouse(at, Qt::LeftButton, QEvent::MouseButtonPress);
  release(at);
}

void WindowUser::wheel(QPoint at, int units) {
  QWidget* under = window_->childAt(at);
  if (under == nullptr) under = window_;
  QWheelEvent event(under->mapFrom(window_, at), window_->mapToGlobal(at), {}, {0, units}, held_,
                    {}, Qt::NoScrollPhase, false);
  QApplication::sendEvent(under, &event);
}

void WindowUser::key(Qt::Key key, Qt::KeyboardModifiers modifiers, const QString& text) {
  for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
    qt_handleKeyEvent(window_->windowHandle(), type, key, modifiers, text, false, 1);
    settle();
  }
}

int32_t playWindow(const WindowTemplate& content, WindowProbe* probe,
                   const std::function<void(WindowUser&)>& play) {
  QTimer timer;
  bool played = false;
  QObject::connect(&timer, &QTimer::timeout, [&] {
    auto* window = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (window == nullptr || played || !window->isActiveWindow()) return;
    played = true;
    WindowUser user(window);
    play(user);
    if (!window->isVisible()) return;
    ADD_FAILURE() << "the window is still open";
    window->done(0);
  });
  timer.start(5);
  const int32_t code = runModalWindow(content, nullptr, probeProcedure, probe);
  EXPECT_TRUE(played);
  return code;
}
