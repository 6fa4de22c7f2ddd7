// letters_qt: letters of Qt's own windows where MORVALIS_SCALE asks for another scale than the
// screen's; without it Qt has the right size itself.

#pragma once

class QWidget;

// How much larger they are to be.
double largerLetters(const QWidget* window);

// A window that is not yet laid out, and the tool tips.
void enlargeLetters(QWidget* window);
void enlargeToolTips(const QWidget* window);
