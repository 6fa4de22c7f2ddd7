#include "hosts/window_commands/window_program.h"

#include <QMessageBox>
#include <cstdlib>

#include "hosts/process/command_failure.h"
#include "platform/desktop/desktop_session.h"

constexpr qsizetype kMostLines = 20;
constexpr char kProgramName[] = "morvalis";  // of the desktop file and its icons

static std::string reasonForNoWindow() {
  const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
  const QByteArray display = qgetenv("DISPLAY");
  const QByteArray wayland = qgetenv("WAYLAND_DISPLAY");
  if (!platform.isEmpty()) {
    return "QT_QPA_PLATFORM is \"" + platform.toStdString() + "\", which opens none here";
  }
  if (display.isEmpty() && wayland.isEmpty()) {
    return "there is no display (neither DISPLAY nor WAYLAND_DISPLAY is set)";
  }
  return "the display \"" + (display.isEmpty() ? wayland : display).toStdString() +
         "\" cannot be reached";
}

static void endWithoutWindows(QtMsgType type, const QMessageLogContext&, const QString&) {
  if (type != QtFatalMsg) return;
  std::_Exit(reportFailure({kExitFailed, "no window can be opened: " + reasonForNoWindow()}));
}

std::unique_ptr<QApplication> startWindows(int* argc, char** argv) {
  qInstallMessageHandler(endWithoutWindows);
  auto application = std::make_unique<QApplication>(*argc, argv);
  // The library's remarks are not for the user; its failures come back as values.
  qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
  introduceProgram(kProgramName);
  return application;
}

void showFailure(const std::string& text) {
  QStringList lines = QString::fromStdString(text).trimmed().split('\n');
  for (QString& line : lines) {
    if (line.startsWith("morvalis: ")) line.remove(0, sizeof("morvalis: ") - 1);
  }
  // Of many failures the last line tells how many.
  if (lines.size() > kMostLines) {
    lines = lines.mid(0, kMostLines - 2) + QStringList{"...", lines.last()};
  }
  QMessageBox box(QMessageBox::Warning, "Morvalis", lines.join('\n'));
  box.setTextFormat(Qt::PlainText);
  box.exec();
}
