// The back end without a screen as the dialogs' tests rely on it: events, focus, order, pop-up.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/choosers.h"
#include "platform/none/none_script.h"
#include "platform/window.h"
#include "tests/support/window_probe.h"

constexpr int32_t kOk = 3;
constexpr int32_t kCancel = 2;
constexpr int32_t kArea = 7;

static const WindowControl kControls[] = {
    {kArea, ControlKind::area, {0, 0, 40, 40}, nullptr, "An area"},
    {kOk, ControlKind::button, {10, 50, 20, 80}, "OK", nullptr},
    {kCancel, ControlKind::button, {30, 50, 40, 80}, "Cancel", nullptr},
};
static const WindowTemplate kWindow = {"PROBE", "Probe", 100, 50, kControls, 3, kOk, kCancel};

static bool endOnCommand(Window* window, const WindowEvent& event) {
  if (event.kind == WindowEventKind::command) endModalWindow(window, event.id);
  return false;
}

class NoneWindowTest : public ::testing::Test {
 protected:
  void SetUp() override {
    resetNone();
  }
  void TearDown() override {
    resetNone();
  }
  int32_t run(std::function<void(NoneWindow&)> play) {
    noneScript().modalWindow = std::move(play);
    return runModalWindow(kWindow, nullptr, probeProcedure, &probe_);
  }

  WindowProbe probe_;
};

using Events = std::vector<std::string>;

TEST_F(NoneWindowTest, HowAWindowEnds) {
  EXPECT_EQ(runModalWindow(kWindow, nullptr, probeProcedure, &probe_), kDialogUnavailable);
  EXPECT_TRUE(probe_.take().empty()) << "no script, no window";

  EXPECT_EQ(run([](NoneWindow&) {}), kDialogUnavailable) << "a procedure that never ends it";
  EXPECT_EQ(probe_.take(), (Events{"initialise", "draw 3", "draw 2", "command 2"}));

  probe_.answer = endOnCommand;
  EXPECT_EQ(run([](NoneWindow&) {}), kCancel) << "a script that leaves it open";
  EXPECT_EQ(run([this](NoneWindow& user) {
              user.key(WindowKey::enter);
              EXPECT_FALSE(user.isOpen());
              probe_.take();
              user.clickButton(kCancel);
              user.press({5, 5});
              user.command(9);
            }),
            kOk);
  EXPECT_TRUE(probe_.take().empty()) << "a window that has ended";

  noneScript().modalWindows["PROBE"] = [](NoneWindow& user) { user.command(44, 0); };
  EXPECT_EQ(run([](NoneWindow&) { ADD_FAILURE() << "the script by name comes first"; }), 44);
  ASSERT_EQ(noneRecord().windows.size(), 5U);
  EXPECT_EQ(noneRecord().windows[0].caption, "Probe");
  EXPECT_EQ(noneRecord().windows[0].width, 100);
}

TEST_F(NoneWindowTest, ButtonsFollowPointerAndFocus) {
  run([this](NoneWindow& user) {
    probe_.take();
    user.move({15, 60});
    EXPECT_TRUE(probe_.take().empty()) << "a button's own";
    user.press({15, 60});
    user.move({5, 5});
    user.move({16, 61});
    user.release({16, 61});
    EXPECT_EQ(probe_.take(), (Events{"draw 3 focused", "draw 3 pressed focused", "draw 3 focused",
                                     "draw 3 pressed focused", "draw 3 focused", "command 3"}));
    user.press({15, 60});
    user.release({5, 5});
    EXPECT_EQ(probe_.take(), (Events{"draw 3 pressed focused", "draw 3 focused"}));
    user.key(WindowKey::tab);
    EXPECT_EQ(user.focusedControl(), kCancel);
    user.key(WindowKey::tab);
    EXPECT_EQ(user.focusedControl(), kOk);
    user.key(WindowKey::tab, /*shift=*/true);
    probe_.take();
    user.type(" ");
    EXPECT_EQ(probe_.take().back(), "command 2");
    probe_.answer = [](Window*, const WindowEvent&) { return true; };
    user.type(" ");
    user.key(WindowKey::tab);
    EXPECT_EQ(probe_.take().size(), 2U) << "used keys go no further";
  });
}

TEST_F(NoneWindowTest, PointerOutsideButtons) {
  run([this](NoneWindow& user) {
    probe_.take();
    user.doubleClick({5, 6});
    user.otherDown({1, 2});
    user.otherUp({1, 3});
    user.wheel({3, 4}, -2);
    EXPECT_EQ(probe_.take(), (Events{"down 6,5", "up 6,5", "double 6,5", "up 6,5", "other down 2,1",
                                     "other up 3,1", "wheel -2 at 4,3"}));
    probe_.answer = [](Window* window, const WindowEvent& event) {
      if (event.kind == WindowEventKind::buttonDown) captureMouse(window);
      if (event.kind == WindowEventKind::buttonUp) releaseMouse(window);
      return true;
    };
    user.press({5, 6});
    EXPECT_TRUE(user.captured());
    user.move({15, 60});
    user.release({15, 60});
    EXPECT_FALSE(user.captured());
    EXPECT_EQ(probe_.take(), (Events{"down 6,5", "move 60,15", "up 60,15"}));
  });
}

TEST_F(NoneWindowTest, PostedEventsWaitForTheEventInProgress) {
  probe_.answer = [this](Window* window, const WindowEvent& event) {
    if (event.kind != WindowEventKind::buttonDown) return false;
    postMouseMove(window, {8, 9});
    postCommand(window, 70);
    redrawItem(window, kOk);
    setFocusedControl(window, kArea);
    probe_.events.push_back("done");
    return true;
  };
  run([this](NoneWindow& user) {
    probe_.take();
    user.press({1, 1});
    EXPECT_EQ(probe_.take(), (Events{"down 1,1", "draw 3", "done", "move 9,8", "command 70"}));
    user.key(WindowKey::left);
    EXPECT_EQ(probe_.take(), (Events{"key left on 7"}));
  });
}

TEST_F(NoneWindowTest, PixelsCursorClipboard) {
  std::vector<uint8_t> drawn(100 * 50 * 3, 7);
  PixelTarget target = {100, 50, drawn.data()};
  probe_.answer = [&target](Window* window, const WindowEvent& event) {
    if (event.kind != WindowEventKind::buttonDown) return false;
    EXPECT_EQ(beginHostDrawing(window, &target), &target);
    presentPixels(window, target, {-5, 98, 2, 200});
    setCursor(window, CursorShape::openHand);
    copyTextToClipboard("morvalis apply");
    EXPECT_EQ(clientToScreen(window, {1, 2}).h, 82);
    EXPECT_EQ(clientToScreen(window, {1, 2}).v, 101);
    return true;
  };
  run([](NoneWindow& user) {
    user.press({1, 1});
    const NonePicture shown = user.pixels();
    int32_t presented = 0;
    for (size_t i = 0; i < shown.rgb.size(); i += 3) presented += shown.rgb[i] == 7 ? 1 : 0;
    EXPECT_EQ(presented, 4) << "two rows of two pixels";
    EXPECT_EQ(shown.rgb[3 * (100 + 99)], 7);
    EXPECT_EQ(user.cursor(), CursorShape::openHand);
  });
  EXPECT_EQ(noneRecord().clipboard, "morvalis apply");
}

TEST_F(NoneWindowTest, PopupHoldsTheMouseAndPostsToItsOwner) {
  Window* main = nullptr;
  const auto popupProcedure = [](Window* popup, const WindowEvent& event, void* context) {
    if (event.kind == WindowEventKind::buttonUp) {
      closePopup(popup);
      if (event.point.v >= 0) postCommand(*static_cast<Window**>(context), 2000 + event.point.v);
    }
    return true;
  };
  probe_.answer = [&](Window* window, const WindowEvent& event) {
    main = window;
    if (event.kind == WindowEventKind::buttonDown) {
      openPopup(window, {30, 40}, 20, 90, popupProcedure, &main);
    }
    return true;
  };
  run([this](NoneWindow& user) {
    user.press({1, 1});
    ASSERT_TRUE(user.hasPopup());
    EXPECT_EQ(user.popup().pixels().height, 90);
    probe_.take();
    user.move({2, 2});
    user.release({2, 2});
    EXPECT_TRUE(probe_.take().empty()) << "the pop-up has the mouse";
    user.popup().move({40, 5});
    user.popup().release({40, 5});
    EXPECT_FALSE(user.hasPopup());
    EXPECT_EQ(probe_.take(), (Events{"command 2040"}));

    user.press({1, 1});
    probe_.take();
    user.escape();
    EXPECT_FALSE(user.hasPopup());
    EXPECT_TRUE(probe_.take().empty());
    noneScript().refusesPopups = true;
    user.press({1, 1});
    EXPECT_FALSE(user.hasPopup());
  });
  ASSERT_EQ(noneRecord().popups.size(), 3U);
  EXPECT_EQ(noneRecord().popups[0].screenOrigin.h, 40);
}

TEST_F(NoneWindowTest, ColoursAreChosenInTurn) {
  noneScript().chosenColors = {NoneColor{1, 2, 3}, std::nullopt};
  uint8_t color[3] = {9, 8, 7};
  uint8_t custom[kCustomColors][3] = {};
  EXPECT_TRUE(choosePlatformColor(color, custom));
  EXPECT_EQ(color[2], 3);
  EXPECT_FALSE(choosePlatformColor(color, custom));
  EXPECT_FALSE(choosePlatformColor(color, custom));
  EXPECT_EQ(color[0], 1);
  EXPECT_EQ(noneRecord().colorChoosers.size(), 3U);
  EXPECT_EQ(noneRecord().colorChoosers[0], (NoneColor{9, 8, 7}));
}
