#include "platform/desktop/alert_dialog_qt.h"

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <algorithm>

#include "platform/alerts.h"
#include "platform/desktop/dialog_place_qt.h"
#include "platform/desktop/resource_image_qt.h"

// Pixels of one dialog unit across and down, times 4 and 8, for the alerts' font.
constexpr int32_t kBaseWidth = 7;
constexpr int32_t kBaseHeight = 15;

constexpr int32_t kAlertIcon = 148;

static QRect placeOf(const DialogPlace& place) {
  return QRect(place.x * kBaseWidth / 4, place.y * kBaseHeight / 8, place.width * kBaseWidth / 4,
               place.height * kBaseHeight / 8);
}

static void addIcon(QDialog* dialog, const DialogPlace& place) {
  auto* label = new QLabel(dialog);
  label->setPixmap(QPixmap::fromImage(resourceIcon(kAlertIcon)));
  label->move(placeOf(place).topLeft());
}

static void addText(QDialog* dialog, const AlertText& text) {
  auto* label = new QLabel(QString::fromUtf8(text.text), dialog);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  label->setObjectName("text" + QString::number(text.number));
  label->setGeometry(placeOf(text.place));
}

// Every button ends the dialog with its own number.
static void addButton(QDialog* dialog, const AlertButton& button) {
  auto* push = new QPushButton(QString::fromUtf8(button.text), dialog);
  push->setObjectName("button" + QString::number(button.number));
  push->setAutoDefault(button.isDefault);
  push->setDefault(button.isDefault);
  QRect place = placeOf(button.place);
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
  dialog.setFixedSize(content.width * kBaseWidth / 4, content.height * kBaseHeight / 8);
  addIcon(&dialog, content.icon);
  for (int32_t i = 0; i < content.textCount; ++i) addText(&dialog, content.texts[i]);
  for (int32_t i = 0; i < content.buttonCount; ++i) addButton(&dialog, content.buttons[i]);
  placeDialog(&dialog, dialog.parentWidget());
  dialog.setFocus();
  // Closing the window answers 0, which is no button's number.
  const int32_t answer = dialog.exec();
  return answer == 0 ? kAlertClosed : answer;
}
