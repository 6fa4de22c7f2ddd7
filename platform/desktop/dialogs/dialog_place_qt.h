// dialog_place_qt: where a dialog of this back end stands.

#pragma once

class QDialog;
class QWidget;

// Moves a dialog of known size over its owner, or else over the other program's window that it
// belongs to (belongToWindow), or over the screen.
void placeDialog(QDialog* dialog, const QWidget* owner);
