#include "platform/alerts.h"

#include <QApplication>
#include <QMessageBox>
#include <cstdio>

#include "platform/desktop/dialogs/alert_dialog_qt.h"
#include "platform/desktop/dialogs/letters_qt.h"
#include "platform/desktop/session_state.h"
#include "platform/unix/program_session.h"

constexpr int32_t kCancelButton = 1;  // the number of every alert's Cancel

static int32_t alertCount = 0;

int32_t reportedAlerts() {
  return alertCount;
}

// A text of several lines becomes one.
static void printText(const char* text) {
  for (const char* at = text; *at != '\0'; ++at) {
    std::fputc(*at == '\n' || *at == '\r' ? ' ' : *at, stderr);
  }
}

bool programHasWindows() {
  return qobject_cast<QApplication*>(QCoreApplication::instance()) != nullptr;
}

static void reportMessage(const char* caption, const char* text) {
  printText(caption);
  std::fputs(": ", stderr);
  printText(text);
  std::fputc('\n', stderr);
}

static void reportAlert(const AlertContent& content) {
  printText(content.title);
  for (int32_t i = 0; i < content.textCount; ++i) {
    std::fputs(i == 0 ? ": " : " ", stderr);
    printText(content.texts[i].text);
  }
  std::fputc('\n', stderr);
}

void showPlatformMessage(const char* caption, const char* text) {
  ++alertCount;
  if (!programHasWindows()) return reportMessage(caption, text);
  try {
    QMessageBox box(QMessageBox::Critical, QString::fromUtf8(caption), QString::fromUtf8(text));
    enlargeLetters(&box);
    box.exec();
  } catch (...) {
    reportMessage(caption, text);  // out of memory
  }
}

// A program without windows reports on standard error and goes on as if Cancel had been pressed.
int32_t showPlatformAlert(const AlertContent& content) {
  ++alertCount;
  if (!programHasWindows()) {
    reportAlert(content);
    return kCancelButton;
  }
  try {
    return runAlertDialog(content);
  } catch (...) {
    reportAlert(content);  // out of memory
    return kCancelButton;
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
