#include <QApplication>
#include <QClipboard>
#include <QCursor>
#include <QPalette>
#include <QPixmap>
#include <QScreen>
#include <QStyle>
#include <QWidget>
#include <algorithm>

#include "platform/desktop/resource_image_qt.h"
#include "platform/desktop/window_record_qt.h"
#include "platform/resource_table.h"
#include "services/fixed_point.h"

constexpr int32_t kClosedHandCursor = 107;
constexpr int32_t kOpenHandCursor = 108;

// A menu's names begin 52 pixels in and end 36 and this before its edge: they want some air there.
constexpr int kNarrowestCheckMark = 20;

// --- Cursor ---------------------------------------------------------------------------------

static QCursor cursorOf(int32_t id, Qt::CursorShape substitute) {
  const EmbeddedPicture* picture = findResourceCursor(id);
  if (picture == nullptr) return QCursor(substitute);
  const QImage image =
      coveredImage(picture->width, picture->height, picture->rgb, picture->coverage);
  return QCursor(QPixmap::fromImage(image), picture->hotX, picture->hotY);
}

static QCursor cursorFor(CursorShape shape) {
  switch (shape) {
    case CursorShape::closedHand:
      return cursorOf(kClosedHandCursor, Qt::ClosedHandCursor);
    case CursorShape::openHand:
      return cursorOf(kOpenHandCursor, Qt::OpenHandCursor);
    default:
      return QCursor(Qt::ArrowCursor);
  }
}

// Waiting shows over the whole program. What has been drawn until then is shown first, as the
// program will not come to it while it works.
static void showWaiting(Window* window, bool waits) {
  if (window->showsWaitCursor == waits) return;
  window->showsWaitCursor = waits;
  if (waits) {
    window->widget->repaint();
    QApplication::setOverrideCursor(QCursor(Qt::WaitCursor));
  } else {
    QApplication::restoreOverrideCursor();
  }
}

void setCursor(Window* window, CursorShape shape) {
  try {
    showWaiting(window, shape == CursorShape::wait);
    if (shape != CursorShape::wait) window->widget->setCursor(cursorFor(shape));
  } catch (...) {
    // Out of memory: the cursor stays.
  }
}

// --- Mouse ----------------------------------------------------------------------------------

// While a button is held every event goes to the window that it was pressed in anyway, and not
// every system lets programs grab the mouse.
void captureMouse(Window* window) {
  if (QApplication::mouseButtons() == Qt::NoButton) window->widget->grabMouse();
}

void releaseMouse(Window* window) {
  if (QWidget::mouseGrabber() == window->widget) window->widget->releaseMouse();
}

// --- Screen ---------------------------------------------------------------------------------

Point clientToScreen(Window* window, Point point) {
  const QPoint inside(point.h + window->frame, point.v + window->frame);
  const QPoint screen = window->widget->mapToGlobal(inside);
  return {saturateToInt16(screen.y()), saturateToInt16(screen.x())};
}

// Down to the lower edge of the screen that the dialog is on.
int32_t screenHeight() {
  const QWidget* active = QApplication::activeModalWidget();
  const QScreen* screen = active != nullptr ? active->screen() : QApplication::primaryScreen();
  return screen == nullptr ? 0 : screen->geometry().bottom() + 1;
}

static void takeColor(const QPalette& palette, QPalette::ColorRole role, uint8_t rgb[3]) {
  const QColor color = palette.color(role);
  rgb[0] = static_cast<uint8_t>(color.red());
  rgb[1] = static_cast<uint8_t>(color.green());
  rgb[2] = static_cast<uint8_t>(color.blue());
}

MenuLook menuLook() {
  MenuLook look = {};
  look.checkMarkWidth =
      std::max(QApplication::style()->pixelMetric(QStyle::PM_IndicatorWidth), kNarrowestCheckMark);
  const QPalette palette = QApplication::palette();
  takeColor(palette, QPalette::Highlight, look.highlight);
  takeColor(palette, QPalette::HighlightedText, look.highlightText);
  return look;
}

void copyTextToClipboard(const char* text) {
  try {
    QGuiApplication::clipboard()->setText(QString::fromUtf8(text));
  } catch (...) {
    // Out of memory: the clipboard keeps what it has.
  }
}
