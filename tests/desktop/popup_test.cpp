// The pop-up of the picture menus on Qt: it has the mouse, and goes away whatever happens.

#include <gtest/gtest.h>

#include <QApplication>
#include <QWidget>

#include "platform/desktop/popup_qt.h"
#include "tests/desktop/window_user.h"

static const WindowTemplate kWindow = {"PROBE", "Probe", 120, 60, nullptr, 0, 0, 0};
constexpr QPoint kPlace(20, 30);
constexpr int32_t kSide = 40;

using Events = std::vector<std::string>;

// Opens a pop-up on a press; a release over it posts the row as a command.
struct PopupProbe {
  WindowProbe main;
  WindowProbe popup;
  Window* window = nullptr;
  Window* open = nullptr;
  std::vector<uint8_t> pixels = std::vector<uint8_t>(3 * kSide * kSide, 77);

  PopupProbe() {
    main.answer = [this](Window* told, const WindowEvent& event) {
      window = told;
      if (event.kind == WindowEventKind::buttonDown) {
        const Point at = clientToScreen(told, {kPlace.y(), kPlace.x()});
        open = openPopup(told, at, kSide, kSide, probeProcedure, &popup);
      }
      return event.kind == WindowEventKind::buttonDown;
    };
    popup.answer = [this](Window* told, const WindowEvent& event) {
      if (event.kind == WindowEventKind::initialise) {
        presentPixels(told, {kSide, kSide, pixels.data()}, {0, 0, kSide, kSide});
      }
      if (event.kind == WindowEventKind::buttonUp) {
        closePopup(told);
        open = nullptr;
        if (event.point.v >= 0) postCommand(window, 2000 + event.point.v);
      }
      return true;
    };
  }
};

TEST(QtPopup, PressDragReleaseChooses) {
  PopupProbe probe;
  playWindow(kWindow, &probe.main, [&probe](WindowUser& user) {
    probe.main.take();
    user.press({10, 10});
    ASSERT_NE(probe.open, nullptr);
    QWidget* popup = QApplication::activePopupWidget();
    ASSERT_NE(popup, nullptr);
    EXPECT_EQ(popup->size(), QSize(kSide + 10, kSide + 8)) << "with its frame";
    EXPECT_EQ(popup->pos(), user.window()->mapToGlobal(kPlace));
    EXPECT_EQ(qGreen(popup->grab().toImage().pixel(39 + kPopupFrame, 39 + kPopupFrame)), 77);
    EXPECT_EQ(probe.popup.take(), (Events{"initialise"}));
    // The events still come in at the window that the button was pressed in.
    const QPoint inside = kPlace + QPoint(kPopupFrame, kPopupFrame);
    user.move(inside + QPoint(5, 6));
    user.move(inside + QPoint(-3, 90));
    user.release(inside + QPoint(7, 9));
    EXPECT_EQ(probe.popup.take(), (Events{"move 5,6", "move -3,90", "move 7,9", "up 7,9"}));
    EXPECT_EQ(probe.main.take(), (Events{"move 10,10", "down 10,10", "command 2009"}));
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    user.move({11, 11});
    EXPECT_EQ(probe.main.take(), (Events{"move 11,11"})) << "the window has the mouse again";
    user.key(Qt::Key_Escape);
  });
}

TEST(QtPopup, GoesAwayUnchosen) {
  PopupProbe probe;
  playWindow(kWindow, &probe.main, [&probe](WindowUser& user) {
    user.press({10, 10});
    probe.main.take();
    probe.popup.take();
    QApplication::activePopupWidget()->hide();  // as the system does on Escape
    settle();
    EXPECT_EQ(probe.popup.take(), (Events{"move -1000,-1000", "up -1000,-1000"}));
    EXPECT_TRUE(probe.main.take().empty()) << "no choice";
    user.release({10, 10});

    user.press({10, 10});
    ASSERT_NE(probe.open, nullptr) << "it opens again";
    EXPECT_EQ(openPopup(probe.window, {0, 0}, 5, 5, probeProcedure, &probe.popup), nullptr)
        << "one at a time";
    endModalWindow(probe.window, 9);
    EXPECT_EQ(probe.open, nullptr) << "it does not outlive its window";
  });
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}
