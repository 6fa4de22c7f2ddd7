#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTimer>
#include <QWidget>
#include <algorithm>
#include <cmath>

#include "platform/desktop/item_button_qt.h"
#include "platform/desktop/window_record_qt.h"
#include "services/fixed_point.h"

void prepareWindow(Window* window, QWidget* widget, int32_t width, int32_t height,
                   WindowProcedure procedure, void* context) {
  window->widget = widget;
  window->procedure = procedure;
  window->context = context;
  window->pixels = QImage(width, height, QImage::Format_RGB888);
  if (window->pixels.isNull()) throw std::bad_alloc();
  window->pixels.fill(Qt::white);
  window->ratio = widget->devicePixelRatioF();
}

QSize inUnits(const Window& window, int32_t width, int32_t height) {
  return QSize(static_cast<int>(std::ceil(width / window.ratio)),
               static_cast<int>(std::ceil(height / window.ratio)));
}

QRect inUnits(const Window& window, const Rectangle& rect) {
  const auto first = [&](int32_t pixels) {
    return static_cast<int>(std::floor((pixels + window.frame) / window.ratio));
  };
  const auto behind = [&](int32_t pixels) {
    return static_cast<int>(std::ceil((pixels + window.frame) / window.ratio));
  };
  return QRect(QPoint(first(rect.left), first(rect.top)),
               QPoint(behind(rect.right) - 1, behind(rect.bottom) - 1));
}

// --- Delivery -------------------------------------------------------------------------------

// One event at a time: what it posts itself goes to the end. An event in progress, which may have
// opened another modal window, is waited for.
static void deliverPosted(Window* window) {
  for (size_t left = window->posted.size(); left > 0; --left) {
    if (window->eventsInProgress != 0 || window->ended || window->posted.empty()) return;
    const WindowEvent next = window->posted.front();
    window->posted.pop_front();
    sendEvent(window, next);
  }
}

// The widget takes the call with it when it goes away.
static void scheduleDelivery(Window* window) {
  QMetaObject::invokeMethod(
      window->widget, [window] { deliverPosted(window); }, Qt::QueuedConnection);
}

// A timer without time comes after everything that is queued. An event in progress, which may have
// opened another modal window, is waited for.
static void scheduleRest(Window* window) {
  QTimer::singleShot(0, window->widget, [window] {
    if (!window->awaitsRest || window->eventsInProgress != 0) return;
    window->awaitsRest = false;
    sendInput(window, eventOf(WindowEventKind::rest));
  });
}

bool sendEvent(Window* window, const WindowEvent& event) {
  if (window->ended) return false;
  ++window->eventsInProgress;
  const bool used = window->procedure(window, event, window->context);
  --window->eventsInProgress;
  if (window->eventsInProgress != 0) return used;
  if (!window->posted.empty()) scheduleDelivery(window);
  if (window->awaitsRest) scheduleRest(window);
  return used;
}

bool sendInput(Window* window, const WindowEvent& event) {
  deliverPosted(window);
  return sendEvent(window, event);
}

// Running out of memory loses the event.
static void postEvent(Window* window, const WindowEvent& event) {
  try {
    window->posted.push_back(event);
    if (window->eventsInProgress == 0) scheduleDelivery(window);
  } catch (...) {
  }
}

void postMouseMove(Window* window, Point point) {
  WindowEvent event = eventOf(WindowEventKind::mouseMove);
  event.point = point;
  postEvent(window, event);
}

void postCommand(Window* window, int32_t id) {
  postEvent(window, commandEvent(id));
}

void awaitRest(Window* window) {
  window->awaitsRest = true;
  if (window->eventsInProgress == 0) scheduleRest(window);
}

// --- Records --------------------------------------------------------------------------------

// Whole pixels come in divided by the ratio, and not quite whole when multiplied by it again.
static int16_t coordinateOf(double position) {
  constexpr double kRounding = 1.0 / 64;
  const double pixel = std::clamp(position + kRounding, -1e6, 1e6);
  return saturateToInt16(static_cast<int32_t>(std::floor(pixel)));
}

WindowEvent pointerIn(const Window& window, WindowEventKind kind, const QPointF& position) {
  WindowEvent event = eventOf(kind);
  event.point = {coordinateOf(position.y() * window.ratio - window.frame),
                 coordinateOf(position.x() * window.ratio - window.frame)};
  event.shift = QGuiApplication::keyboardModifiers().testFlag(Qt::ShiftModifier);
  return event;
}

bool sendMousePress(Window* window, const QMouseEvent& event, bool isDouble) {
  if (event.button() == Qt::RightButton) {
    return sendInput(window, pointerIn(*window, WindowEventKind::otherDown, event.position()));
  }
  if (event.button() != Qt::LeftButton) return false;
  const WindowEventKind kind =
      isDouble ? WindowEventKind::doubleClick : WindowEventKind::buttonDown;
  return sendInput(window, pointerIn(*window, kind, event.position()));
}

bool sendMouseRelease(Window* window, const QMouseEvent& event) {
  if (event.button() == Qt::RightButton) {
    return sendInput(window, pointerIn(*window, WindowEventKind::otherUp, event.position()));
  }
  if (event.button() != Qt::LeftButton) return false;
  return sendInput(window, pointerIn(*window, WindowEventKind::buttonUp, event.position()));
}

// --- Keys -----------------------------------------------------------------------------------

// The system's own keys for redoing differ; both usual ones work everywhere.
static bool isRedo(const QKeyEvent& event) {
  const Qt::KeyboardModifiers modifiers = event.modifiers();
  const bool control = modifiers == Qt::ControlModifier;
  const bool both = modifiers == (Qt::ControlModifier | Qt::ShiftModifier);
  return event.matches(QKeySequence::Redo) || (control && event.key() == Qt::Key_Y) ||
         (both && event.key() == Qt::Key_Z);
}

static WindowKey plainKey(int key) {
  switch (key) {
    case Qt::Key_Left:
      return WindowKey::left;
    case Qt::Key_Right:
      return WindowKey::right;
    case Qt::Key_Up:
      return WindowKey::up;
    case Qt::Key_Down:
      return WindowKey::down;
    case Qt::Key_PageUp:
      return WindowKey::pageUp;
    case Qt::Key_PageDown:
      return WindowKey::pageDown;
    case Qt::Key_Home:
      return WindowKey::home;
    case Qt::Key_End:
      return WindowKey::end;
    case Qt::Key_Escape:
      return WindowKey::escape;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return WindowKey::enter;
    case Qt::Key_Backspace:
      return WindowKey::backspace;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
      return WindowKey::tab;
    case Qt::Key_F1:
      return WindowKey::help;
    default:
      return WindowKey::none;
  }
}

static char characterOf(const QKeyEvent& event) {
  const Qt::KeyboardModifiers commands = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
  const QString text = event.text();
  if (event.modifiers() & commands || text.size() != 1) return 0;
  const char16_t character = text.at(0).unicode();
  return character >= ' ' && character <= '~' ? static_cast<char>(character) : char{0};
}

static WindowKey keyOf(const QKeyEvent& event) {
  if (isRedo(event)) return WindowKey::redo;
  if (event.matches(QKeySequence::Undo)) return WindowKey::undo;
  if (event.matches(QKeySequence::Copy)) return WindowKey::copy;
  const WindowKey plain = plainKey(event.key());
  if (plain != WindowKey::none) return plain;
  return characterOf(event) != 0 ? WindowKey::character : WindowKey::none;
}

bool sendKey(Window* window, const QKeyEvent& key) {
  deliverPosted(window);  // which may move the focus
  WindowEvent event = eventOf(WindowEventKind::key);
  event.key = keyOf(key);
  if (event.key == WindowKey::none) return false;
  event.id = focusedControl(window);
  event.character = event.key == WindowKey::character ? characterOf(key) : char{0};
  event.shift = key.modifiers().testFlag(Qt::ShiftModifier);
  return sendInput(window, event);
}

// --- Controls -------------------------------------------------------------------------------

ItemButton* findButton(const Window* window, int32_t id) {
  for (ItemButton* button : window->buttons) {
    if (button->id() == id) return button;
  }
  return nullptr;
}

int32_t focusedControl(const Window* window) {
  for (const ItemButton* button : window->buttons) {
    if (button->hasFocus()) return button->id();
  }
  return window->focusedArea;
}
