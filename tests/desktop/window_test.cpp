// Modal windows on Qt: what the core is told, and that what it presents is what stands there.

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QTimer>
#include <QToolTip>

#include "platform/desktop/item_button_qt.h"
#include "tests/desktop/window_user.h"

constexpr int32_t kOk = 3;
constexpr int32_t kCancel = 2;
constexpr int32_t kArea = 7;
constexpr int kWidth = 120;
constexpr int kHeight = 60;

static const WindowControl kControls[] = {
    {kArea, ControlKind::area, {0, 0, 40, 40}, "Slider", "An area's line"},
    {kOk, ControlKind::button, {10, 50, 20, 80}, "OK", "A button's line"},
    {kCancel, ControlKind::button, {30, 50, 40, 80}, "Cancel", nullptr},
};
static const WindowTemplate kWindow = {"PROBE",   "Probe", kWidth, kHeight,
                                       kControls, 3,       kOk,    kCancel};
static const WindowTemplate kBare = {"BARE", "Bare", 30, 20, nullptr, 0, 0, 0};

constexpr QPoint kOnOk(60, 15);
constexpr QPoint kOnArea(5, 6);

using Events = std::vector<std::string>;

static bool endOnCommand(Window* window, const WindowEvent& event) {
  if (event.kind == WindowEventKind::command) endModalWindow(window, 100 + event.id);
  return false;
}

TEST(QtWindow, LaidOutAsTheTemplateSays) {
  WindowProbe probe;
  probe.answer = endOnCommand;
  playWindow(kWindow, &probe, [&probe](WindowUser& user) {
    QWidget* window = user.window();
    EXPECT_EQ(window->windowTitle(), "Probe");
    EXPECT_EQ(window->size(), QSize(kWidth, kHeight));
    EXPECT_EQ(window->minimumSize(), window->maximumSize());
    auto* ok = window->findChild<QAbstractButton*>("button3");
    ASSERT_NE(ok, nullptr);
    EXPECT_EQ(ok->geometry(), QRect(50, 10, 30, 10));
    EXPECT_EQ(ok->accessibleName(), "OK");
    EXPECT_EQ(ok->toolTip(), "A button's line");
    EXPECT_EQ(probe.take(), (Events{"initialise", "draw 3", "draw 2"}));

    QHelpEvent help(QEvent::ToolTip, kOnArea, window->mapToGlobal(kOnArea));
    QApplication::sendEvent(window, &help);
    EXPECT_EQ(QToolTip::text(), "An area's line");
    QToolTip::hideText();
    user.key(Qt::Key_Escape);
  });
}

static void showTipAt(QWidget* window, QPoint at) {
  QHelpEvent help(QEvent::ToolTip, at, window->mapToGlobal(at));
  QApplication::sendEvent(window, &help);
}

TEST(QtWindow, ToolTipsThatChange) {
  WindowProbe probe;
  Window* open = nullptr;
  probe.answer = [&open](Window* window, const WindowEvent& event) {
    open = window;
    return endOnCommand(window, event);
  };
  playWindow(kWindow, &probe, [&open](WindowUser& user) {
    setToolTip(open, kArea, "Gloss 7");
    setToolTip(open, kCancel, "Leave");
    showTipAt(user.window(), kOnArea);
    EXPECT_EQ(QToolTip::text(), "Gloss 7");
    setToolTip(open, kArea, "Gloss 8");
    EXPECT_EQ(QToolTip::text(), "Gloss 8") << "while it is shown";
    setToolTip(open, kCancel, "Leave it");
    EXPECT_EQ(QToolTip::text(), "Gloss 8") << "another control's";
    EXPECT_EQ(user.window()->findChild<QAbstractButton*>("button2")->toolTip(), "Leave it");
    setToolTip(open, kOk, nullptr);
    EXPECT_EQ(user.window()->findChild<QAbstractButton*>("button3")->toolTip(), "");
    QToolTip::hideText();
    user.key(Qt::Key_Escape);
  });
}

TEST(QtWindow, ButtonsTellTheirStates) {
  WindowProbe probe;
  const int32_t code = playWindow(kWindow, &probe, [&probe](WindowUser& user) {
    probe.take();
    user.move(kOnOk);
    EXPECT_TRUE(probe.take().empty()) << "a button's own";
    user.press(kOnOk);
    EXPECT_EQ(probe.take(), (Events{"draw 3 focused", "draw 3 pressed focused"}));
    user.move(kOnArea);
    user.move(kOnOk);
    EXPECT_EQ(probe.take(), (Events{"draw 3 focused", "draw 3 pressed focused"}));
    user.release(kOnOk);
    EXPECT_EQ(probe.take(), (Events{"draw 3 focused", "command 3"}));
    user.press(kOnOk);
    user.move(kOnArea);
    user.release(kOnArea);
    EXPECT_EQ(probe.take(), (Events{"draw 3 pressed focused", "draw 3 focused"}));
    user.window()->findChild<QAbstractButton*>("button2")->setEnabled(false);
    EXPECT_EQ(probe.take(), (Events{"draw 2 disabled"}));
    probe.answer = endOnCommand;
    user.click(kOnOk);
  });
  EXPECT_EQ(code, 103);
}

TEST(QtWindow, TabGoesThroughTheButtonsInOrder) {
  WindowProbe probe;
  playWindow(kWindow, &probe, [&probe](WindowUser& user) {
    probe.take();
    user.key(Qt::Key_Tab);
    EXPECT_EQ(probe.take(), (Events{"key tab on 0", "draw 3 focused"}));
    user.key(Qt::Key_Tab);
    EXPECT_EQ(probe.take(), (Events{"key tab on 3", "draw 3", "draw 2 focused"}));
    user.key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(probe.take(), (Events{"key tab shift on 2", "draw 2", "draw 3 focused"}));
    user.key(Qt::Key_Space, {}, " ");
    EXPECT_EQ(probe.take(),
              (Events{"key ' ' on 3", "draw 3 pressed focused", "draw 3 focused", "command 3"}));
    user.key(Qt::Key_Backspace);
    EXPECT_EQ(probe.take(), (Events{"key backspace on 3"})) << "offered once";
    probe.answer = [](Window*, const WindowEvent& event) {
      return event.kind == WindowEventKind::key;
    };
    user.key(Qt::Key_Tab);
    user.key(Qt::Key_Space, {}, " ");
    user.key(Qt::Key_Return);
    EXPECT_EQ(probe.take(), (Events{"key tab on 3", "key ' ' on 3", "key enter on 3"}))
        << "used keys go no further";
    probe.answer = endOnCommand;
    user.key(Qt::Key_Escape);
  });
}

TEST(QtWindow, EnterEscapeAndClosing) {
  WindowProbe probe;
  probe.answer = endOnCommand;
  EXPECT_EQ(playWindow(kWindow, &probe, [](WindowUser& user) { user.key(Qt::Key_Return); }), 103);
  EXPECT_EQ(playWindow(kWindow, &probe,
                       [](WindowUser& user) {
                         user.key(Qt::Key_Tab);
                         user.key(Qt::Key_Tab);
                         user.key(Qt::Key_Enter);
                       }),
            103)
      << "the default button, whatever has the focus";
  EXPECT_EQ(playWindow(kWindow, &probe, [](WindowUser& user) { user.key(Qt::Key_Escape); }), 102);
  EXPECT_EQ(playWindow(kWindow, &probe, [](WindowUser& user) { user.window()->close(); }), 102);
  EXPECT_EQ(playWindow(kBare, &probe, [](WindowUser& user) { user.key(Qt::Key_Escape); }),
            kDialogUnavailable);
  EXPECT_EQ(playWindow(kBare, &probe, [](WindowUser& user) { user.window()->close(); }),
            kDialogUnavailable);
  // Cancel can be refused.
  probe.answer = [](Window*, const WindowEvent&) { return false; };
  EXPECT_EQ(playWindow(kWindow, &probe,
                       [&probe](WindowUser& user) {
                         user.window()->close();
                         EXPECT_TRUE(user.window()->isVisible());
                         probe.answer = endOnCommand;
                         user.window()->close();
                       }),
            102);
}

TEST(QtWindow, EndsWhileItInitialises) {
  WindowProbe probe;
  probe.answer = [](Window* window, const WindowEvent& event) {
    if (event.kind == WindowEventKind::initialise) endModalWindow(window, 55);
    return true;
  };
  EXPECT_EQ(runModalWindow(kWindow, nullptr, probeProcedure, &probe), 55);
  EXPECT_EQ(probe.take(), (Events{"initialise"}));
}

TEST(QtWindow, KeysInTheCoresWords) {
  WindowProbe probe;
  playWindow(kWindow, &probe, [&probe](WindowUser& user) {
    probe.answer = [](Window* window, const WindowEvent& event) {
      if (event.kind == WindowEventKind::buttonDown) setFocusedControl(window, kArea);
      return true;
    };
    user.key(Qt::Key_Tab);
    user.press(kOnArea);
    user.release(kOnArea);
    probe.take();
    user.key(Qt::Key_Left);
    user.key(Qt::Key_Up, Qt::ShiftModifier);
    user.key(Qt::Key_7, {}, "7");
    user.key(Qt::Key_Minus, {}, "-");
    user.key(Qt::Key_Backspace, {}, "\b");
    user.key(Qt::Key_Enter, Qt::KeypadModifier, "\r");
    EXPECT_EQ(probe.take(), (Events{"key left on 7", "key up shift on 7", "key '7' on 7",
                                    "key '-' on 7", "key backspace on 7", "key enter on 7"}));
    user.key(Qt::Key_Z, Qt::ControlModifier, "\x1a");
    user.key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier, "\x1a");
    user.key(Qt::Key_Y, Qt::ControlModifier, "\x19");
    user.key(Qt::Key_C, Qt::ControlModifier, "\x03");
    EXPECT_EQ(probe.take(),
              (Events{"key undo on 7", "key redo shift on 7", "key redo on 7", "key copy on 7"}));
    user.key(Qt::Key_S, Qt::ControlModifier, "\x13");
    user.key(Qt::Key_F5);
    EXPECT_TRUE(probe.take().empty());
    probe.answer = endOnCommand;
    user.key(Qt::Key_Escape);
  });
}

TEST(QtWindow, PointerWheelAndCapture) {
  WindowProbe probe;
  playWindow(kWindow, &probe, [&probe](WindowUser& user) {
    probe.take();
    user.move({41, 7});
    user.doubleClick(kOnArea);
    EXPECT_EQ(probe.take(),
              (Events{"move 41,7", "move 5,6", "down 5,6", "up 5,6", "double 5,6", "up 5,6"}));
    user.press(kOnArea, Qt::RightButton);
    user.release(kOnArea, Qt::RightButton);
    EXPECT_EQ(probe.take(), (Events{"other down 5,6", "other up 5,6"}));
    user.wheel(kOnArea, 240);
    user.wheel(kOnArea, -120);
    user.wheel(kOnArea, 80);
    user.wheel(kOnArea, 80);
    EXPECT_EQ(probe.take(), (Events{"wheel 2 at 5,6", "wheel -1 at 5,6", "wheel 1 at 5,6"}));

    probe.answer = [](Window* window, const WindowEvent& event) {
      if (event.kind == WindowEventKind::buttonDown) captureMouse(window);
      if (event.kind == WindowEventKind::buttonUp) releaseMouse(window);
      return true;
    };
    user.press(kOnArea);
    user.move(kOnOk);
    user.move({-30, 400});
    user.release(kOnOk);
    EXPECT_EQ(probe.take(),
              (Events{"down 5,6", "move 60,15", "move -30,400", "move 60,15", "up 60,15"}));
    EXPECT_EQ(QWidget::mouseGrabber(), nullptr);
    probe.answer = endOnCommand;
    user.key(Qt::Key_Escape);
  });
}

TEST(QtWindow, PostedEventsWaitForTheEventInProgress) {
  WindowProbe probe;
  playWindow(kWindow, &probe, [&probe](WindowUser& user) {
    probe.take();
    Window* open = nullptr;
    QMouseEvent press(QEvent::MouseButtonPress, kOnArea, user.window()->mapToGlobal(kOnArea),
                      Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QMouseEvent release(QEvent::MouseButtonRelease, kOnArea, user.window()->mapToGlobal(kOnArea),
                        Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    probe.answer = [&probe, &open](Window* window, const WindowEvent& event) {
      open = window;
      if (event.kind != WindowEventKind::buttonDown) return false;
      postMouseMove(window, {8, 9});
      postCommand(window, 70);
      redrawItem(window, kOk);
      settle();  // as a nested modal window would
      probe.events.push_back("done");
      return true;
    };
    user.press(kOnArea);
    user.release(kOnArea);
    EXPECT_EQ(probe.take(), (Events{"move 5,6", "down 5,6", "draw 3", "done", "move 9,8",
                                    "command 70", "up 5,6"}));
    // Nothing that the user does comes before what has been posted, however fast it is.
    postCommand(open, 71);
    QApplication::sendEvent(user.window(), &press);
    QApplication::sendEvent(user.window(), &release);
    EXPECT_EQ(probe.take(), (Events{"command 71", "down 5,6", "draw 3", "done", "move 9,8",
                                    "command 70", "up 5,6"}));
    // Nothing that was posted outlives the window.
    probe.answer = [](Window* window, const WindowEvent& event) {
      if (event.kind != WindowEventKind::command) return false;
      postCommand(window, 71);
      endModalWindow(window, 0);
      return true;
    };
    user.key(Qt::Key_Escape);
  });
  settle();
  EXPECT_EQ(probe.take().back(), "command 2");
}

// --- Pixels ---------------------------------------------------------------------------------

// Every pixel its own colour.
static std::vector<uint8_t> manyColours() {
  std::vector<uint8_t> rgb;
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      rgb.insert(rgb.end(), {uint8_t(2 * x), uint8_t(4 * y), uint8_t(x ^ y)});
    }
  }
  return rgb;
}

static QRgb colourAt(const std::vector<uint8_t>& rgb, int x, int y) {
  const uint8_t* pixel = &rgb[3 * (static_cast<size_t>(y) * kWidth + x)];
  return qRgb(pixel[0], pixel[1], pixel[2]);
}

static QImage renderAt(QWidget* window, double scale) {
  QImage image(QSize(qRound(kWidth * scale), qRound(kHeight * scale)), QImage::Format_RGB32);
  image.setDevicePixelRatio(scale);
  window->render(&image);
  return image;
}

TEST(QtWindow, ShowsWhatIsPresentedAtEveryScale) {
  std::vector<uint8_t> drawn = manyColours();
  PixelTarget target = {kWidth, kHeight, drawn.data()};
  WindowProbe probe;
  probe.answer = [&target](Window* window, const WindowEvent& event) {
    if (event.kind == WindowEventKind::initialise) {
      presentPixels(window, target, {-3, -3, 500, 500});
    }
    return endOnCommand(window, event);
  };
  playWindow(kWindow, &probe, [&](WindowUser& user) {
    const QImage shown = user.window()->grab().toImage();
    ASSERT_EQ(shown.size(), QSize(kWidth, kHeight));
    const QImage doubled = renderAt(user.window(), 2);
    for (int y = 0; y < kHeight; ++y) {
      for (int x = 0; x < kWidth; ++x) {
        const QRgb wanted = colourAt(drawn, x, y);
        ASSERT_EQ(shown.pixel(x, y) | 0xFF000000U, wanted) << x << "," << y;
        for (int part = 0; part < 4; ++part) {
          ASSERT_EQ(doubled.pixel(2 * x + part % 2, 2 * y + part / 2), wanted) << x << "," << y;
        }
      }
    }
    // At a broken factor colours mix: some pixel is none of those next to it.
    const QImage smooth = renderAt(user.window(), 1.5);
    const QRgb mixed = smooth.pixel(0, 1);
    EXPECT_NE(mixed, colourAt(drawn, 0, 0));
    EXPECT_NE(mixed, colourAt(drawn, 0, 1));
    user.key(Qt::Key_Escape);
  });
}

TEST(QtWindow, PresentsOnlyThePartAsked) {
  std::vector<uint8_t> drawn(3 * kWidth * kHeight, 0);
  PixelTarget target = {kWidth, kHeight, drawn.data()};
  WindowProbe probe;
  playWindow(kWindow, &probe, [&](WindowUser& user) {
    probe.answer = [&target](Window* window, const WindowEvent& event) {
      if (event.kind != WindowEventKind::buttonDown) return endOnCommand(window, event);
      PixelTarget* host = static_cast<PixelTarget*>(beginHostDrawing(window, &target));
      std::fill_n(host->rgb, 3 * kWidth * kHeight, 50);
      endHostDrawing(window, &target, host);
      presentPixels(window, target, {10, 20, 12, 23});
      return true;
    };
    user.click(kOnArea);
    const QImage shown = user.window()->grab().toImage();
    int changed = 0;
    for (int y = 0; y < kHeight; ++y) {
      for (int x = 0; x < kWidth; ++x) {
        const bool inside = x >= 20 && x < 23 && y >= 10 && y < 12;
        const bool dark = qRed(shown.pixel(x, y)) == 50;
        EXPECT_EQ(dark, inside) << x << "," << y;
        changed += dark ? 1 : 0;
      }
    }
    EXPECT_EQ(changed, 6);
    user.key(Qt::Key_Escape);
  });
}

TEST(QtWindow, CursorsAndClipboard) {
  WindowProbe probe;
  CursorShape wanted = CursorShape::openHand;
  probe.answer = [&wanted](Window* window, const WindowEvent& event) {
    if (event.kind == WindowEventKind::buttonDown) {
      setCursor(window, wanted);
      copyTextToClipboard("morvalis apply --height 3");
    }
    return endOnCommand(window, event);
  };
  playWindow(kWindow, &probe, [&wanted](WindowUser& user) {
    user.click(kOnArea);
    EXPECT_NE(user.window()->cursor().shape(), Qt::ArrowCursor);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "morvalis apply --height 3");
    wanted = CursorShape::arrow;
    user.click(kOnArea);
    EXPECT_EQ(user.window()->cursor().shape(), Qt::ArrowCursor);
    wanted = CursorShape::wait;
    user.click(kOnArea);
    user.click(kOnArea);
    ASSERT_NE(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    user.key(Qt::Key_Escape);
  });
  EXPECT_EQ(QApplication::overrideCursor(), nullptr) << "a window takes its wait cursor along";
}

TEST(QtWindow, OwnersAreWidgetsOfThisProgram) {
  QWidget owner;
  owner.setGeometry(300, 200, 400, 300);
  owner.show();
  WindowProbe probe;
  probe.answer = endOnCommand;
  for (void* given : {static_cast<void*>(&owner), static_cast<void*>(&probe)}) {
    QWidget* parent = nullptr;
    QPoint place;
    bool seen = false;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
      auto* window = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (window == nullptr || seen) return;
      seen = true;
      parent = window->parentWidget();
      place = window->pos();
      window->close();
    });
    timer.start(5);
    EXPECT_EQ(runModalWindow(kWindow, given, probeProcedure, &probe), 102);
    EXPECT_EQ(parent, given == &owner ? &owner : nullptr);
    if (given == &owner) {
      EXPECT_TRUE(owner.geometry().contains(place));
    }
  }
}
