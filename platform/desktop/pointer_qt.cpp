#include <QApplication>
#include <QClipboard>
#include <QCursor>
#include <QPalette>
#include <QPixmap>
#include <QScreen>
#include <QStyle>
#include <QWidget>
#include <algorithm>
#include <cmath>

#include "dialog/dialog_scale.h"
#include "pictures/sources/scaled_pictures.h"
#include "platform/desktop/resource_image_qt.h"
#include "platform/desktop/window_record_qt.h"
#include "platform/resource_table.h"
#include "services/fixed_point.h"

constexpr int32_t kClosedHandCursor = 107;
constexpr int32_t kOpenHandCursor = 108;

// A menu's names begin 52 pixels in and end 36 and this before its edge: they want some air there.
constexpr int kNarrowestCheckMark = 20;

// --- Cursor ---------------------------------------------------------------------------------

// The hot spot in Qt's units, as it has it.
static QCursor cursorOf(int32_t id, Qt::CursorShape substitute, double ratio) {
  const EmbeddedPicture* plain = findResourceCursor(id);
  if (plain == nullptr) return QCursor(substitute);
  ResourcePicture picture = {plain->width, plain->height, plain->rgb, plain->coverage};
  if (dialogScale() != kPlainScale) {
    findScaledPicture(kCursorNumbers + id, dialogScale(), &picture);
  }
  QImage image = coveredImage(picture.width, picture.height, picture.rgb, picture.coverage);
  image.setDevicePixelRatio(ratio);
  const auto spot = [&](int32_t place) {
    return static_cast<int>(place * picture.width / plain->width / ratio);
  };
  return QCursor(QPixmap::fromImage(image), spot(plain->hotX), spot(plain->hotY));
}

static QCursor cursorFor(CursorShape shape, double ratio) {
  switch (shape) {
    case CursorShape::closedHand:
      return cursorOf(kClosedHandCursor, Qt::ClosedHandCursor, ratio);
    case CursorShape::openHand:
      return cursorOf(kOpenHandCursor, Qt::OpenHandCursor, ratio);
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
    if (shape != CursorShape::wait) window->widget->setCursor(cursorFor(shape, window->ratio));
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
  const QPointF inside(point.h + window->frame, point.v + window->frame);
  const QPointF screen = window->widget->mapToGlobal(inside / window->ratio) * window->ratio;
  return {saturateToInt16(static_cast<int32_t>(std::lround(screen.y()))),
          saturateToInt16(static_cast<int32_t>(std::lround(screen.x())))};
}

// Down to the lower edge of the screen that the dialog is on.
int32_t screenHeight() {
  const QWidget* active = QApplication::activeModalWidget();
  const QScreen* screen = active != nullptr ? active->screen() : QApplication::primaryScreen();
  if (screen == nullptr) return 0;
  const double lower = (screen->geometry().bottom() + 1) * screen->devicePixelRatio();
  return static_cast<int32_t>(lower);
}

static void takeColor(const QPalette& palette, QPalette::ColorRole role, uint8_t rgb[3]) {
  const QColor color = palette.color(role);
  rgb[0] = static_cast<uint8_t>(color.red());
  rgb[1] = static_cast<uint8_t>(color.green());
  rgb[2] = static_cast<uint8_t>(color.blue());
}

MenuLook menuLook() {
  MenuLook look = {};
  // In Qt's units, of which a pixel is one at 100 percent.
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
