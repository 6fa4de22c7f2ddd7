#include "tests/desktop/window_pointer.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QPixmap>
#include <QProcess>
#include <QScreen>
#include <QThread>

#include "tests/desktop/window_user.h"

constexpr int kArrivalTime = 12;  // milliseconds

bool hasRealScreen() {
  return QGuiApplication::platformName() == "xcb";
}

void runXdotool(const QStringList& arguments) {
  QProcess xdotool;
  xdotool.start("xdotool", arguments);
  QElapsedTimer timer;
  timer.start();
  // What it does may end it while events are handled, so there is no waiting for its end.
  while (xdotool.state() != QProcess::NotRunning && timer.elapsed() < 10000) {
    settle();
    QThread::usleep(200);
  }
  ASSERT_EQ(xdotool.exitCode(), 0) << arguments.join(' ').toStdString();
  // The server has done all of it by now, and an answer from it comes after the events.
  for (timer.start(); timer.elapsed() < kArrivalTime; QThread::msleep(1)) {
    QGuiApplication::primaryScreen()->grabWindow(0, 0, 0, 1, 1);
    settle();
  }
}

QStringList moveTo(const QPoint& global) {
  return {"mousemove", QString::number(global.x()), QString::number(global.y())};
}

struct KeyName {
  int key;
  const char* name;
};

static const KeyName kNames[] = {
    {Qt::Key_Left, "Left"},     {Qt::Key_Right, "Right"},   {Qt::Key_Up, "Up"},
    {Qt::Key_Down, "Down"},     {Qt::Key_Return, "Return"}, {Qt::Key_Backspace, "BackSpace"},
    {Qt::Key_Tab, "Tab"},       {Qt::Key_Backtab, "Tab"},   {Qt::Key_Escape, "Escape"},
    {Qt::Key_Space, "space"},   {Qt::Key_Minus, "minus"},   {Qt::Key_PageUp, "Prior"},
    {Qt::Key_PageDown, "Next"}, {Qt::Key_Home, "Home"},     {Qt::Key_End, "End"}};

QString xdotoolKey(int key, Qt::KeyboardModifiers modifiers) {
  QString name = QString(QChar(key)).toLower();
  for (const KeyName& each : kNames) {
    if (each.key == key) name = each.name;
  }
  if (modifiers & Qt::ShiftModifier) name = "shift+" + name;
  if (modifiers & Qt::ControlModifier) name = "ctrl+" + name;
  return name;
}
