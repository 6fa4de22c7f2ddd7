#include "platform/desktop/popup_qt.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <QWidget>

#include "dialog/dialog_scale.h"
#include "platform/desktop/window_record_qt.h"

constexpr Point kOutside = {-1000, -1000};

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
  const int32_t whole = width + scaled(kPopupRoomAcross);
  prepareWindow(&window_, this, whole, height, procedure, context);
  window_.ratio = owner->ratio;
  window_.frame = kPopupFrame * pen();
  setFixedSize(inUnits(window_, whole, height + scaled(kPopupRoomDown)));
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
  for (const WindowEventKind kind : {WindowEventKind::mouseMove, WindowEventKind::buttonUp}) {
    WindowEvent event = eventOf(kind);
    event.point = kOutside;
    sendEvent(&window_, event);
  }
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
  painter.scale(1 / window_.ratio, 1 / window_.ratio);
  const int line = pen();
  const int across = static_cast<int>(width() * window_.ratio);
  const int down = static_cast<int>(height() * window_.ratio);
  for (int i = 0; i < kPopupFrame; ++i) {
    const QRect ring = QRect(0, 0, across, down).adjusted(i * line, i * line, -i * line, -i * line);
    painter.fillRect(ring.left(), ring.top(), ring.width(), line, QColor(kFrameColors[i][0]));
    painter.fillRect(ring.left(), ring.top(), line, ring.height(), QColor(kFrameColors[i][0]));
    painter.fillRect(ring.right() + 1 - line, ring.top(), line, ring.height(),
                     QColor(kFrameColors[i][1]));
    painter.fillRect(ring.left(), ring.bottom() + 1 - line, ring.width(), line,
                     QColor(kFrameColors[i][1]));
  }
}

Window* openPopup(Window* owner, Point screenOrigin, int32_t width, int32_t height,
                  WindowProcedure procedure, void* context) {
  if (owner->ended || owner->popup != nullptr) return nullptr;
  try {
    auto* popup = new Popup(owner, width, height, procedure, context);
    owner->popup = popup->record();
    popup->move((QPointF(screenOrigin.h, screenOrigin.v) / owner->ratio).toPoint());
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
    const QRect place = inUnits(*popup, row);
    QToolTip::showText(widget->mapToGlobal(QPoint(place.right() + 1, place.top())), text, widget);
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
