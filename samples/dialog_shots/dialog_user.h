// dialog_user: what a user does with the windows that are photographed, and the photographs.

#pragma once

#include <QImage>
#include <QPoint>
#include <QWidget>
#include <functional>

// Runs `open`, which shows a window modally; `visit` gets the window once it stands there and has
// to close it.
void visitWindow(const std::function<void()>& open, const std::function<void(QWidget*)>& visit);

void pressAt(QWidget* window, QPoint at);
void moveTo(QWidget* window, QPoint at);
void releaseAt(QWidget* window, QPoint at);

// The window with a pop-up that it has opened on top.
QImage photograph(QWidget* window);
