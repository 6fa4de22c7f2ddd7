#include "platform/desktop/item_button_qt.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include "platform/desktop/control_access_qt.h"
#include "platform/desktop/window_record_qt.h"

ItemButton::ItemButton(Window* window, const WindowControl& control, QWidget* parent)
    : QAbstractButton(parent), window_(window), id_(control.id) {
  introduceControl(window, control.id, this);  // before anything tells of it
  setGeometry(inUnits(*window, control.rect));
  setObjectName("button" + QString::number(control.id));
  if (control.name != nullptr) setAccessibleName(QString::fromUtf8(control.name));
  if (control.toolTip != nullptr) setToolTip(QString::fromUtf8(control.toolTip));
  setFocusPolicy(Qt::StrongFocus);
  setCursor(Qt::ArrowCursor);  // not the one that the area around has set
  connect(this, &QAbstractButton::pressed, this, &ItemButton::sendDrawItem);
  connect(this, &QAbstractButton::released, this, &ItemButton::sendDrawItem);
  connect(this, &QAbstractButton::clicked, this, [this] { sendInput(window_, commandEvent(id_)); });
}

void ItemButton::sendDrawItem() {
  WindowEvent event = eventOf(WindowEventKind::drawItem);
  event.id = id_;
  event.state = {isDown(), hasFocus(), !isEnabled()};
  sendEvent(window_, event);
}

// The window's procedure sees a key before the button does.
bool ItemButton::event(QEvent* event) {
  if (event->type() == QEvent::KeyPress && sendKey(window_, *static_cast<QKeyEvent*>(event))) {
    event->accept();
    return true;
  }
  return QAbstractButton::event(event);
}

void ItemButton::changeEvent(QEvent* event) {
  QAbstractButton::changeEvent(event);
  if (event->type() == QEvent::EnabledChange) sendDrawItem();
}

void ItemButton::focusInEvent(QFocusEvent* event) {
  QAbstractButton::focusInEvent(event);
  window_->focusedArea = 0;
  sendDrawItem();
}

void ItemButton::focusOutEvent(QFocusEvent* event) {
  QAbstractButton::focusOutEvent(event);
  sendDrawItem();
}

// A move over a button is none over the window, nor is the end of a press that left the button.
void ItemButton::mouseMoveEvent(QMouseEvent* event) {
  QAbstractButton::mouseMoveEvent(event);
  event->accept();
}

void ItemButton::mouseReleaseEvent(QMouseEvent* event) {
  QAbstractButton::mouseReleaseEvent(event);
  if (event->button() == Qt::LeftButton) event->accept();
}

void ItemButton::paintEvent(QPaintEvent*) {
}
