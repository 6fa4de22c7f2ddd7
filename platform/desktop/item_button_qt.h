// item_button_qt: a button that Qt handles and the core draws. It paints nothing itself: every
// change of its state goes out as a drawItem event, a press as a command.

#pragma once

#include <QAbstractButton>

#include "platform/window.h"

class ItemButton final : public QAbstractButton {
 public:
  ItemButton(Window* window, const WindowControl& control, QWidget* parent);

  int32_t id() const {
    return id_;
  }

  // Sends a drawItem event with the state that the button has.
  void sendDrawItem();

 protected:
  bool event(QEvent* event) override;
  void changeEvent(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  Window* window_;
  int32_t id_;
};
