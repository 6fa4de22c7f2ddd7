#include "platform/desktop/dialog_place_qt.h"

#include <QApplication>
#include <QDialog>
#include <QScreen>
#include <QWindow>
#include <memory>

#include "platform/desktop/desktop_session.h"
#include "services/dialog_placement.h"

constexpr int kCaptionButtonWidth = 18;  // where the system does not tell

static std::unique_ptr<QWindow> foreignOwner;

// Not every system lets windows of two programs belong together.
void belongToWindow(uint64_t number) {
  foreignOwner.reset(number == 0 ? nullptr : QWindow::fromWinId(static_cast<WId>(number)));
}

static QRect surroundingsOf(const QWidget* owner, const QRect& screen) {
  if (owner != nullptr) return QRect(owner->mapToGlobal(QPoint(0, 0)), owner->size());
  if (foreignOwner == nullptr) return screen;
  return QRect(foreignOwner->mapToGlobal(QPoint(0, 0)), foreignOwner->size());
}

void placeDialog(QDialog* dialog, const QWidget* owner) {
  const QRect screen = QApplication::primaryScreen()->geometry();
  if (owner == nullptr && foreignOwner != nullptr) {
    dialog->winId();  // makes its window
    dialog->windowHandle()->setTransientParent(foreignOwner.get());
  }
  const QRect around = surroundingsOf(owner, screen);
  const DialogOrigin origin =
      centreDialog({around.left(), around.top(), around.width(), around.height(), dialog->width(),
                    dialog->height(), kCaptionButtonWidth,
                    /*hasSystemMenu=*/true, screen.width(), screen.height()});
  dialog->move(origin.x, origin.y);
}
