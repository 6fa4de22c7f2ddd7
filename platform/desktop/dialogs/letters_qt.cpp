#include "platform/desktop/dialogs/letters_qt.h"

#include <QFont>
#include <QToolTip>
#include <QWidget>
#include <cmath>

#include "dialog/dialog_scale.h"

double largerLetters(const QWidget* window) {
  if (wantedScale() == 0) return 1;
  const int32_t scale = chooseScale(nullptr, kDialogWidth, kDialogHeight);
  return scale / (kPlainScale * window->devicePixelRatioF());
}

static QFont enlarged(QFont font, double larger) {
  if (font.pixelSize() > 0) {
    font.setPixelSize(static_cast<int>(std::lround(font.pixelSize() * larger)));
  } else {
    font.setPointSizeF(font.pointSizeF() * larger);
  }
  return font;
}

void enlargeLetters(QWidget* window) {
  const double larger = largerLetters(window);
  if (larger != 1) window->setFont(enlarged(window->font(), larger));
}

void enlargeToolTips(const QWidget* window) {
  static const QFont plain = QToolTip::font();
  QToolTip::setFont(enlarged(plain, largerLetters(window)));
}
