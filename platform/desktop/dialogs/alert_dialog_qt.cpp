#include "platform/desktop/dialogs/alert_dialog_qt.h"

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <algorithm>
#include <cmath>

#include "platform/alerts.h"
#include "platform/desktop/dialogs/dialog_place_qt.h"
#include "platform/desktop/dialogs/letters_qt.h"
#include "platform/desktop/resource_image_qt.h"

// Pixels of one dialog unit across and down, times 4 and 8, for the alerts' font.
constexpr int32_t kBaseWidth = 7;
constexpr int32_t kBaseHeight = 15;

constexpr int32_t kAlertIcon = 148;

static QRect placeOf(const DialogPlace& place, double larger) {
  const auto scaled = [larger](int units) { return static_cast<int>(units * larger); };
  return QRect(scaled(place.x * kBaseWidth / 4), scaled(place.y * kBaseHeight / 8),
               scaled(place.width * kBaseWidth / 4), scaled(place.height * kBaseHeight / 8));
}

static void addIcon(QDialog* dialog, const DialogPlace& place, double larger) {
  const double ratio = dialog->devicePixelRatioF();
  QImage icon = resourceIcon(kAlertIcon, static_cast<int32_t>(std::lround(100 * larger * ratio)));
  icon.setDevicePixelRatio(ratio);
  auto* label = new QLabel(dialog);
  label->setPixmap(QPixmap::fromImage(icon));
  label->move(placeOf(place, larger).topLeft());
}

static void addText(QDialog* dialog, const AlertText& text, double larger) {
  auto* label = new QLabel(QString::fromUtf8(text.text), dialog);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  label->setObjectName("text" + QString::number(text.number));
  label->setGeometry(placeOf(text.place, larger));
}

// Every button ends the dialog with its own number.
static void addButton(QDialog* dialog, const AlertButton& button, double larger) {
  auto* push = new QPushButton(QString::fromUtf8(button.text), dialog);
  push->setObjectName("button" + QString::number(button.number));
  push->setAutoDefault(button.isDefault);
  push->setDefault(button.isDefault);
  QRect place = placeOf(button.place, larger);
  // A longer text widens its button to the left, away from the frame.
  place.setLeft(std::min(place.left(), place.right() - push->sizeHint().width()));
  push->setGeometry(place);
  const int32_t number = button.number;
  QObject::connect(push, &QPushButton::clicked, dialog, [dialog, number] { dialog->done(number); });
}

int32_t runAlertDialog(const AlertContent& content) {
  QDialog dialog;
  dialog.setObjectName(content.name);
  dialog.setWindowTitle(QString::fromUtf8(content.title));
  enlargeLetters(&dialog);
  const double larger = largerLetters(&dialog);
  dialog.setFixedSize(placeOf({0, 0, content.width, content.height}, larger).size());
  addIcon(&dialog, content.icon, larger);
  for (int32_t i = 0; i < content.textCount; ++i) addText(&dialog, content.texts[i], larger);
  for (int32_t i = 0; i < content.buttonCount; ++i) addButton(&dialog, content.buttons[i], larger);
  placeDialog(&dialog, dialog.parentWidget());
  dialog.setFocus();
  // Closing the window answers 0, which is no button's number.
  const int32_t answer = dialog.exec();
  return answer == 0 ? kAlertClosed : answer;
}
