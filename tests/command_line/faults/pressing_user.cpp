// pressing_user: preloaded into the program, it presses OK in every window that opens, and gives up
// after a while.

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTimer>
#include <cstdlib>

constexpr int kLook = 5;  // milliseconds between two looks
constexpr int kPatience = 20000;

static void pressOk() {
  QWidget* window = QApplication::activeModalWidget();
  if (window == nullptr || !window->isVisible()) return;
  if (auto* message = qobject_cast<QMessageBox*>(window)) return message->accept();
  for (auto* button : window->findChildren<QAbstractButton*>()) {
    if (button->accessibleName() == "OK") return button->click();
  }
}

static void startPressing() {
  auto* timer = new QTimer(qApp);
  QObject::connect(timer, &QTimer::timeout, pressOk);
  timer->start(kLook);
  QTimer::singleShot(kPatience, qApp, [] { std::_Exit(99); });
}
Q_COREAPP_STARTUP_FUNCTION(startPressing)
