#include "platform/desktop/popup_qt.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWidget>

#include "platform/desktop/window_record_qt.h"

constexpr QPointF kOutside(-1000, -1000);

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
  prepareWindow(&window_, this, width, height, procedure, context);
  setFixedSize(width, height);
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

// The button is down while a pop-up is open, so a press means that its release went elsewhere.
void Popup::mousePressEvent(QMouseEvent* event) {
  if (!rect().contains(event->position().toPoint())) letGoOutside();
}

void Popup::mouseMoveEvent(QMouseEvent* event) {
  sendEvent(&window_, pointerEvent(WindowEventKind::mouseMove, event->position()));
}

void Popup::mouseReleaseEvent(QMouseEvent* event) {
  sendMouseRelease(&window_, *event);
}

// The system closes pop-ups too: on Escape, or when another program comes to the front.
void Popup::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  if (!window_.ended) letGoOutside();
}

void Popup::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  paintPixels(window_, &painter);
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

void closePopup(Window* popup) {
  static_cast<Popup*>(popup->widget)->end();
}

void dismissPopup(Window* owner) {
  if (owner->popup != nullptr) static_cast<Popup*>(owner->popup->widget)->letGoOutside();
}
