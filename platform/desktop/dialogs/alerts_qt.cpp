#include "platform/alerts.h"

#include <QApplication>
#include <QMessageBox>

#include "platform/desktop/dialogs/alert_dialog_qt.h"
#include "platform/desktop/dialogs/letters_qt.h"
#include "platform/desktop/session_state.h"
#include "platform/unix/text_alerts.h"

bool programHasWindows() {
  return qobject_cast<QApplication*>(QCoreApplication::instance()) != nullptr;
}

void showPlatformMessage(const char* caption, const char* text) {
  countAlert();
  if (!programHasWindows()) return printMessage(caption, text);
  try {
    QMessageBox box(QMessageBox::Critical, QString::fromUtf8(caption), QString::fromUtf8(text));
    enlargeLetters(&box);
    box.exec();
  } catch (...) {
    printMessage(caption, text);  // out of memory
  }
}

// A program without windows reports on standard error and goes on as if Cancel had been pressed.
int32_t showPlatformAlert(const AlertContent& content) {
  countAlert();
  if (!programHasWindows()) {
    printAlert(content);
    return kAlertCancelButton;
  }
  try {
    return runAlertDialog(content);
  } catch (...) {
    printAlert(content);  // out of memory
    return kAlertCancelButton;
  }
}

void showPlatformSheet(const char* caption, const SheetRow* rows, int32_t count) {
  if (!programHasWindows()) return;
  try {
    QString text = "<table cellspacing=4>";
    for (int32_t i = 0; i < count; ++i) {
      text += "<tr><td><b>" + QString::fromUtf8(rows[i].term).toHtmlEscaped() + "</b></td><td>" +
              QString::fromUtf8(rows[i].meaning).toHtmlEscaped() + "</td></tr>";
    }
    QMessageBox box(QMessageBox::NoIcon, QString::fromUtf8(caption), text + "</table>",
                    QMessageBox::Close, QApplication::activeModalWidget());
    box.setObjectName("sheet");
    enlargeLetters(&box);
    box.setTextFormat(Qt::RichText);
    box.exec();
  } catch (...) {
    // Out of memory: nothing is shown.
  }
}
