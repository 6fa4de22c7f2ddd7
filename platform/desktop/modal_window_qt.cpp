#include <QApplication>
#include <QCursor>
#include <QDialog>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QToolTip>
#include <QWheelEvent>
#include <cmath>

#include "platform/desktop/control_access_qt.h"
#include "platform/desktop/dialogs/dialog_place_qt.h"
#include "platform/desktop/dialogs/letters_qt.h"
#include "platform/desktop/item_button_qt.h"
#include "platform/desktop/popup_qt.h"
#include "platform/desktop/session_state.h"
#include "platform/desktop/window_record_qt.h"
#include "services/scaling.h"

constexpr int kWheelUnitsPerNotch = 120;

namespace {

class ModalWindow final : public QDialog {
 public:
  ModalWindow(const WindowTemplate& content, QWidget* owner, WindowProcedure procedure,
              void* context);
  ~ModalWindow() override;

  int32_t run(const QWidget* owner);

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void reject() override;

 private:
  void addControl(const WindowControl& control);
  bool showToolTip(const QHelpEvent& event);

  Window window_ = {};
};

}  // namespace

ModalWindow::ModalWindow(const WindowTemplate& content, QWidget* owner, WindowProcedure procedure,
                         void* context)
    : QDialog(owner) {
  prepareWindow(&window_, this, content.width, content.height, procedure, context);
  window_.content = &content;
  window_.code = kDialogUnavailable;
  setObjectName(content.name);
  setWindowTitle(QString::fromUtf8(content.caption));
  setFixedSize(inUnits(window_, content.width, content.height));
  setMouseTracking(true);
  setAttribute(Qt::WA_OpaquePaintEvent);
  enlargeToolTips(this);
  for (int32_t i = 0; i < content.controlCount; ++i) addControl(content.controls[i]);
}

// The buttons use the record, which goes away before a widget's children do.
ModalWindow::~ModalWindow() {
  qDeleteAll(window_.buttons);
}

// An area is a widget only where it has a name to be read out.
void ModalWindow::addControl(const WindowControl& control) {
  if (control.kind == ControlKind::button) {
    window_.buttons.push_back(new ItemButton(&window_, control, this));
  } else if (control.name != nullptr) {
    addReadableArea(&window_, control);
  }
}

int32_t ModalWindow::run(const QWidget* owner) {
  sendEvent(&window_, eventOf(WindowEventKind::initialise));
  for (ItemButton* button : window_.buttons) button->sendDrawItem();
  placeDialog(this, owner);
  if (focusWidget() == nullptr) setFocus();  // no button has the focus before the user gives it
  if (!window_.ended) exec();
  window_.ended = true;
  return window_.code;
}

// Tab and Shift+Tab never reach keyPressEvent. A key that a button has left unused has been offered
// already when it comes up here.
bool ModalWindow::event(QEvent* event) {
  const bool own = focusWidget() == nullptr || focusWidget() == this;
  if (event->type() == QEvent::KeyPress && own &&
      sendKey(&window_, *static_cast<QKeyEvent*>(event))) {
    event->accept();
    return true;
  }
  if (event->type() == QEvent::ToolTip) return showToolTip(*static_cast<QHelpEvent*>(event));
  return QDialog::event(event);
}

static QString toolTipOf(const Window& window, const WindowControl& control) {
  const auto told = window.toolTips.find(control.id);
  return told != window.toolTips.end() ? told->second : QString::fromUtf8(control.toolTip);
}

// Text that is shown while it changes is shown anew.
static void showTip(Window* window, const WindowControl& control, const QPoint& globalPos) {
  window->tipShown = control.id;
  QToolTip::showText(globalPos, toolTipOf(*window, control), window->widget,
                     inUnits(*window, control.rect));
}

bool ModalWindow::showToolTip(const QHelpEvent& event) {
  const Point point = pointerIn(window_, WindowEventKind::mouseMove, event.pos()).point;
  for (int32_t i = 0; i < window_.content->controlCount; ++i) {
    const WindowControl& control = window_.content->controls[i];
    const Rectangle& rect = control.rect;
    if (!pointInRect(point, &rect) || toolTipOf(window_, control).isEmpty()) continue;
    showTip(&window_, control, event.globalPos());
    return true;
  }
  window_.tipShown = 0;
  QToolTip::hideText();
  return true;
}

void ModalWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    ItemButton* button = findButton(&window_, window_.content->defaultButton);
    if (button != nullptr) button->click();
    return;
  }
  QDialog::keyPressEvent(event);
}

// Escape and the window's own closing come here.
void ModalWindow::reject() {
  if (window_.ended) return;
  const int32_t cancel = window_.content->cancelButton;
  if (cancel == 0) return endModalWindow(&window_, kDialogUnavailable);
  sendInput(&window_, commandEvent(cancel));
}

void ModalWindow::mousePressEvent(QMouseEvent* event) {
  sendMousePress(&window_, *event, /*isDouble=*/false);
}

void ModalWindow::mouseDoubleClickEvent(QMouseEvent* event) {
  sendMousePress(&window_, *event, /*isDouble=*/true);
}

void ModalWindow::mouseMoveEvent(QMouseEvent* event) {
  sendInput(&window_, pointerIn(window_, WindowEventKind::mouseMove, event->position()));
}

void ModalWindow::mouseReleaseEvent(QMouseEvent* event) {
  sendMouseRelease(&window_, *event);
}

void ModalWindow::wheelEvent(QWheelEvent* event) {
  window_.wheelRest += event->angleDelta().y();
  const int32_t notches = window_.wheelRest / kWheelUnitsPerNotch;
  window_.wheelRest -= notches * kWheelUnitsPerNotch;
  event->accept();
  if (notches == 0) return;
  WindowEvent told = pointerIn(window_, WindowEventKind::wheel, event->position());
  told.amount = notches;
  told.shift = event->modifiers().testFlag(Qt::ShiftModifier);
  sendInput(&window_, told);
}

void ModalWindow::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  // Whole units of Qt's may reach a little beyond the last pixel.
  if (window_.ratio != 1) {
    const QImage& shown = window_.pixels;
    painter.fillRect(rect(), shown.pixelColor(shown.width() - 1, shown.height() - 1));
  }
  paintPixels(window_, &painter);
}

// Hosts hand over what they call their window; only a widget of this program can own one.
static QWidget* ownerAmongWindows(void* ownerWindow) {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window == ownerWindow) return window;
  }
  return nullptr;
}

// What the window's frame takes of the screen, about; no system tells before it has drawn one.
constexpr double kFrameWidth = 16;  // Qt's units
constexpr double kFrameHeight = 48;

ScreenRoom screenRoom(void* ownerWindow) {
  if (!programHasWindows()) return {kPlainScale, 0, 0, 0};
  const QWidget* owner = ownerAmongWindows(ownerWindow);
  const QScreen* screen = owner != nullptr ? owner->screen() : QApplication::primaryScreen();
  if (screen == nullptr) return {kPlainScale, 0, 0, 0};
  const double ratio = screen->devicePixelRatio();
  const QSizeF room = screen->availableGeometry().size();
  return {static_cast<int32_t>(std::lround(kPlainScale * ratio)),
          static_cast<int32_t>((room.width() - kFrameWidth) * ratio),
          static_cast<int32_t>((room.height() - kFrameHeight) * ratio),
          static_cast<int32_t>(screen->geometry().height() * ratio)};
}

int32_t runModalWindow(const WindowTemplate& content, void* ownerWindow, WindowProcedure procedure,
                       void* context) {
  if (!programHasWindows()) return kDialogUnavailable;
  try {
    QWidget* owner = ownerAmongWindows(ownerWindow);
    ModalWindow window(content, owner, procedure, context);
    return window.run(owner);
  } catch (...) {
    return kDialogUnavailable;  // out of memory
  }
}

void endModalWindow(Window* window, int32_t code) {
  if (window->ended) return;
  dismissPopup(window);
  releaseMouse(window);
  setCursor(window, CursorShape::arrow);
  window->ended = true;
  window->code = code;
  static_cast<QDialog*>(window->widget)->done(0);
}

void redrawItem(Window* window, int32_t id) {
  ItemButton* button = findButton(window, id);
  if (button != nullptr) button->sendDrawItem();
}

// An area has no widget of its own: the window takes the keyboard for it.
void setFocusedControl(Window* window, int32_t id) {
  ItemButton* button = findButton(window, id);
  window->focusedArea = button == nullptr ? id : 0;
  if (button != nullptr) {
    button->setFocus();
  } else {
    window->widget->setFocus();
    tellFocus(window, id);
  }
}

void setToolTip(Window* window, int32_t id, const char* text) {
  try {
    window->toolTips[id] = QString::fromUtf8(text);
    ItemButton* button = findButton(window, id);
    if (button != nullptr) button->setToolTip(window->toolTips[id]);
    if (window->tipShown != id || !QToolTip::isVisible()) return;
    for (int32_t i = 0; i < window->content->controlCount; ++i) {
      const WindowControl& control = window->content->controls[i];
      if (control.id == id) showTip(window, control, QCursor::pos());
    }
  } catch (...) {
    // Out of memory: the tip stays.
  }
}
