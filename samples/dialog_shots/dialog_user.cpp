#include "samples/dialog_shots/dialog_user.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QTimer>

constexpr int kLook = 10;  // milliseconds between two looks at the windows

void visitWindow(const std::function<void()>& open, const std::function<void(QWidget*)>& visit) {
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, [&timer, &visit] {
    QWidget* window = QApplication::activeModalWidget();
    if (window == nullptr || !window->isVisible()) return;
    timer.stop();
    visit(window);
  });
  timer.start(kLook);
  open();
}

static void sendMouse(QWidget* window, QEvent::Type type, QPoint at, Qt::MouseButton button,
                      Qt::MouseButtons held) {
  const QPointF place(at);
  QMouseEvent event(type, place, window->mapToGlobal(place), button, held, Qt::NoModifier);
  QApplication::sendEvent(window, &event);
  QApplication::processEvents();
}

void pressAt(QWidget* window, QPoint at) {
  sendMouse(window, QEvent::MouseButtonPress, at, Qt::LeftButton, Qt::LeftButton);
}

void moveTo(QWidget* window, QPoint at) {
  sendMouse(window, QEvent::MouseMove, at, Qt::NoButton, Qt::LeftButton);
}

void releaseAt(QWidget* window, QPoint at) {
  sendMouse(window, QEvent::MouseButtonRelease, at, Qt::LeftButton, Qt::NoButton);
}

QImage photograph(QWidget* window) {
  const QImage below = window->grab().toImage();
  const QWidget* popup = QApplication::activePopupWidget();
  QRect whole(QPoint(0, 0), window->size());
  QPoint at;
  if (popup != nullptr) {
    at = window->mapFromGlobal(popup->pos());
    whole |= QRect(at, popup->size());
  }
  const double ratio = window->devicePixelRatioF();
  QImage picture((QSizeF(whole.size()) * ratio).toSize(), QImage::Format_RGB888);
  picture.setDevicePixelRatio(ratio);
  picture.fill(Qt::white);
  QPainter painter(&picture);
  painter.drawImage(-whole.topLeft(), below);
  if (popup != nullptr) {
    painter.drawPixmap(at - whole.topLeft(), QApplication::activePopupWidget()->grab());
  }
  return picture;
}
