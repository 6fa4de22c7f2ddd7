// dialog_place_qt: where a dialog of this back end stands.

#pragma once

class QDialog;
class QWidget;

// Moves a dialog of known size over its owner, or over the screen when there is none.
void placeDialog(QDialog* dialog, const QWidget* owner);
