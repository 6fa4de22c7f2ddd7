// window_pointer: a real pointer and keyboard, moved by xdotool, for tests in a real window.

#pragma once

#include <QPoint>
#include <QString>
#include <QStringList>

// Whether the program has a real screen (an X server) in place of one of Qt's own making.
bool hasRealScreen();

// One xdotool command; what it causes has arrived when the call returns.
void runXdotool(const QStringList& arguments);

QStringList moveTo(const QPoint& global);

// Name of a key for xdotool, with its modifiers.
QString xdotoolKey(int key, Qt::KeyboardModifiers modifiers);
