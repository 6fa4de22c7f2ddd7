#include "tests/desktop/window_user.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QStyleHints>
#include <QTimer>
#include <QWheelEvent>
#include <QWindow>

#include "tests/desktop/window_pointer.h"

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

void settle() {
  QApplication::processEvents();
  QApplication::sendPostedEvents();
  QApplication::processEvents();
}

static QString buttonNumber(Qt::MouseButton button) {
  return button == Qt::RightButton ? "3" : "1";
}

void WindowUser::sendMouse(QPointF at, Qt::MouseButton button, int type) {
  if (hasRealScreen()) {
    QStringList command = moveTo(window_->mapToGlobal(at).toPoint());
    if (type == QEvent::MouseButtonPress) command << "mousedown" << buttonNumber(button);
    if (type == QEvent::MouseButtonRelease) command << "mouseup" << buttonNumber(button);
    return runXdotool(command);
  }
  now += kBetweenEvents;
  qt_handleMouseEvent(window_->windowHandle(), at, window_->mapToGlobal(at), held_, button,
                      static_cast<QEvent::Type>(type), {}, now);
  settle();
}

void WindowUser::press(QPointF at, Qt::MouseButton button) {
  now += kBetweenClicks;
  held_.setFlag(button, true);
  sendMouse(at, button, QEvent::MouseButtonPress);
}

void WindowUser::move(QPointF at) {
  sendMouse(at, Qt::NoButton, QEvent::MouseMove);
}

void WindowUser::release(QPointF at, Qt::MouseButton button) {
  held_.setFlag(button, false);
  sendMouse(at, button, QEvent::MouseButtonRelease);
}

void WindowUser::click(QPointF at) {
  press(at);
  release(at);
}

void WindowUser::doubleClick(QPointF at) {
  if (hasRealScreen()) {
    // Single clicks come so fast that none of them must make a double one.
    QStyleHints* hints = QGuiApplication::styleHints();
    const int interval = hints->mouseDoubleClickInterval();
    hints->setMouseDoubleClickInterval(2000);
    runXdotool(moveTo(window_->mapToGlobal(at).toPoint()) +
               QStringList{"click", "--repeat", "2", "1"});
    hints->setMouseDoubleClickInterval(interval);
    return;
  }
  click(at);
  held_.setFlag(Qt::LeftButton, true);
  sendMouse(at, Qt::LeftButton, QEvent::MouseButtonPress);
  release(at);
}

void WindowUser::wheel(QPointF at, int units, Qt::KeyboardModifiers modifiers) {
  if (hasRealScreen()) {
    QStringList command = moveTo(window_->mapToGlobal(at).toPoint());
    const bool shift = modifiers.testFlag(Qt::ShiftModifier);
    if (shift) command << QStringList{"keydown", "shift"};
    for (int turned = 0; turned < qAbs(units); turned += 120) {
      command << QStringList{"click", units > 0 ? "4" : "5"};
    }
    if (shift) command << QStringList{"keyup", "shift"};
    return runXdotool(command);
  }
  QWidget* under = window_->childAt(at.toPoint());
  if (under == nullptr) under = window_;
  QWheelEvent event(under->mapFrom(window_, at), window_->mapToGlobal(at), {}, {0, units}, held_,
                    modifiers, Qt::NoScrollPhase, false);
  QApplication::sendEvent(under, &event);
  settle();
}

void WindowUser::key(Qt::Key key, Qt::KeyboardModifiers modifiers, const QString& text) {
  if (hasRealScreen()) return runXdotool({"key", xdotoolKey(key, modifiers)});
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
