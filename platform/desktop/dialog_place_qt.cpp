#include "platform/desktop/dialog_place_qt.h"

#include <QApplication>
#include <QDialog>
#include <QScreen>

#include "services/dialog_placement.h"

constexpr int kCaptionButtonWidth = 18;  // where the system does not tell

static QRect surroundingsOf(const QWidget* owner, const QRect& screen) {
  if (owner == nullptr) return screen;
  return QRect(owner->mapToGlobal(QPoint(0, 0)), owner->size());
}

void placeDialog(QDialog* dialog, const QWidget* owner) {
  const QRect screen = QApplication::primaryScreen()->geometry();
  const QRect around = surroundingsOf(owner, screen);
  const DialogOrigin origin =
      centreDialog({around.left(), around.top(), around.width(), around.height(), dialog->width(),
                    dialog->height(), kCaptionButtonWidth,
                    /*hasSystemMenu=*/true, screen.width(), screen.height()});
  dialog->move(origin.x, origin.y);
}
