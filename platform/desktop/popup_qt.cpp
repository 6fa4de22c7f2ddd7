#include "platform/desktop/popup_qt.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <QWidget>

#include "platform/desktop/window_record_qt.h"

constexpr QPointF kOutside(-1000, -1000);

// Both sides of the frame, and what it leaves free beside the rows and below them.
constexpr int32_t kRoomAcross = 10;  // pixels
constexpr int32_t kRoomDown = 8;

// From the outside in: left and top, right and bottom.
constexpr QRgb kFrameColors[kPopupFrame][2] = {
    {0xFFDEDEDE, 0xFF000000}, {0xFFFFFFFF, 0xFF808080}, {0xFFDEDEDE, 0xFFDEDEDE}};

namespace {

class Popup final : public QWidget {
 public:
  Popup(Window* owner, int32_t width, int32_t height, WindowProcedure procedure, void* context);

  Window* record() {
    return &window_;
  }

  // Takes no more events and goes away once those in progress are done.
  void end();

  // As when the button is let go outside.
  void letGoOutside();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  Window* owner_;
  Window window_ = {};
};

}  // namespace

Popup::Popup(Window* owner, int32_t width, int32_t height, WindowProcedure procedure, void* context)
    : QWidget(owner->widget, Qt::Popup | Qt::FramelessWindowHint), owner_(owner) {
  prepareWindow(&window_, this, width + kRoomAcross, height, procedure, context);
  window_.frame = kPopupFrame;
  setFixedSize(width + kRoomAcross, height + kRoomDown);
  setMouseTracking(true);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setCursor(Qt::ArrowCursor);
}

void Popup::end() {
  if (window_.ended) return;
  window_.ended = true;
  owner_->popup = nullptr;
  ::releaseMouse(&window_);
  hide();
  deleteLater();
}

void Popup::letGoOutside() {
  sendEvent(&window_, pointerEvent(WindowEventKind::mouseMove, kOutside));
  sendEvent(&window_, pointerEvent(WindowEventKind::buttonUp, kOutside));
  end();
}

void Popup::keyPressEvent(QKeyEvent* event) {
  sendKey(&window_, *event);
}

void Popup::mousePressEvent(QMouseEvent* event) {
  sendMousePress(&window_, *event, /*isDouble=*/false);
}

void Popup::mouseMoveEvent(QMouseEvent* event) {
  sendEvent(&window_, pointerIn(window_, WindowEventKind::mouseMove, event->position()));
}

void Popup::mouseReleaseEvent(QMouseEvent* event) {
  sendMouseRelease(&window_, *event);
}

// The system closes pop-ups too: on Escape, or when another program comes to the front.
void Popup::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  if (!window_.ended) letGoOutside();
}

// A raised frame, as around a dialog; what is presented goes on up to it in its corner's colour.
void Popup::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), window_.pixels.pixelColor(0, 0));
  paintPixels(window_, &painter);
  const int right = width() - 1;
  const int bottom = height() - 1;
  for (int i = 0; i < kPopupFrame; ++i) {
    painter.setPen(kFrameColors[i][0]);
    painter.drawLine(i, i, right - i, i);
    painter.drawLine(i, i, i, bottom - i);
    painter.setPen(kFrameColors[i][1]);
    painter.drawLine(right - i, i, right - i, bottom - i);
    painter.drawLine(i, bottom - i, right - i, bottom - i);
  }
}

Window* openPopup(Window* owner, Point screenOrigin, int32_t width, int32_t height,
                  WindowProcedure procedure, void* context) {
  if (owner->ended || owner->popup != nullptr) return nullptr;
  try {
    auto* popup = new Popup(owner, width, height, procedure, context);
    owner->popup = popup->record();
    popup->move(screenOrigin.h, screenOrigin.v);
    sendEvent(popup->record(), eventOf(WindowEventKind::initialise));
    if (popup->record()->ended) return nullptr;
    popup->show();
    captureMouse(popup->record());
    return owner->popup;
  } catch (...) {
    return nullptr;  // out of memory
  }
}

void nameRow(Window* popup, const Rectangle& row, const char* name, bool isWritten) {
  try {
    QWidget* widget = popup->widget;
    const QString text = QString::fromUtf8(name);
    widget->setAccessibleName(text);
    if (text.isEmpty() || isWritten) return QToolTip::hideText();
    const QPoint corner(row.right + popup->frame, row.top);
    QToolTip::showText(widget->mapToGlobal(corner), text, widget);
  } catch (...) {
    // Out of memory: the name stays unread.
  }
}

void closePopup(Window* popup) {
  static_cast<Popup*>(popup->widget)->end();
}

void dismissPopup(Window* owner) {
  if (owner->popup != nullptr) static_cast<Popup*>(owner->popup->widget)->letGoOutside();
}
