// dialog_user: plays the user of the main dialog and the about box, whichever back end shows them.
// The tests of each back end supply these procedures with its own means.

#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/window.h"

// Pixels of a window: rows from the top, three bytes (red, green, blue) a pixel.
struct WindowPicture {
  int32_t width = 0;
  int32_t height = 0;
  std::vector<uint8_t> rgb;
};

struct DialogWindow;  // the back end's

class DialogUser {
 public:
  explicit DialogUser(DialogWindow* window) : window_(window) {
  }

  // Left button, in client pixels. A press or release elsewhere brings a move along.
  void press(Point point);
  void move(Point point);
  void release(Point point);
  void click(Point point);
  void doubleClick(Point point);
  void otherDown(Point point);  // right button
  void otherUp(Point point);
  void wheel(Point point, int32_t notches, bool shift = false);

  void clickButton(int32_t id);  // in its middle

  void key(WindowKey key, bool shift = false);
  void type(const char* characters);
  void escape();
  void close();             // by the window's frame
  void wait(int32_t time);  // milliseconds

  // An open pop-up has the pointer; points are its own client pixels.
  bool hasPopup();
  void popupMove(Point point);
  void popupPress(Point point);  // once it stays open without a button
  void popupRelease(Point point);
  void releaseOverPopup(Point point);  // a place of the window, from which the pop-up was opened
  WindowPicture popupPixels();

  bool isOpen();
  WindowPicture pixels();
  bool showsHand();  // one of the two hand cursors
  std::string toolTip(int32_t id);
  // What somebody hears who cannot see a control: "role, name, value, [amount of minimum to
  // maximum,] [focused,] [disabled,] meaning".
  std::string reading(int32_t id);
  std::string rowName();  // of the row that an open pop-up is at
  int32_t shownSheets();
  std::string clipboard();

 private:
  DialogWindow* window_;
};

using DialogPlay = std::function<void(DialogUser& user)>;

// Forgets all that was remembered, answered and shown, and sets the clock to a fixed time.
void resetDialogUser();

// Calls `run`, and plays once in each window that it shows. A window that is left open is
// cancelled.
int16_t playDialog(const DialogPlay& play, const std::function<int16_t()>& run);

// What the user answers, one after the other, then cancels: files by their paths ("" cancels), and
// colours.
void answerFiles(const std::vector<std::string>& paths);
void answerColors(const std::vector<std::optional<std::array<uint8_t, 3>>>& colors);

// Titles of the file choosers so far, and how many alerts and messages there were; each is closed.
std::vector<std::string> shownChoosers();
int32_t shownAlerts();

// A picture file with these pixels at a path.
void offerPicture(const std::string& path, int32_t width, int32_t height,
                  const std::vector<uint8_t>& rgb);
