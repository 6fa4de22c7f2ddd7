// none_window: a modal window without a screen, as a test plays its user. Mouse and keyboard act as
// on a real system: a press on a button presses it, an unused key goes its usual way, posted events
// come after the event in progress. A window that has ended takes no more events.

#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/window.h"

// What has been presented: rows from the top, three bytes (red, green, blue) a pixel; black where
// nothing has been.
struct NonePicture {
  int32_t width = 0;
  int32_t height = 0;
  std::vector<uint8_t> rgb;
};

class NoneWindow {
 public:
  explicit NoneWindow(Window* window) : window_(window) {
  }

  // Left button. While a pop-up is open the window under it sees none of these.
  void press(Point point);
  void move(Point point);
  void release(Point point);
  void click(Point point);        // press and release
  void doubleClick(Point point);  // two clicks, the second press told as a double click
  void otherDown(Point point);
  void otherUp(Point point);
  void wheel(Point point, int32_t notches, bool shift = false);

  // Presses a button and lets go of it, wherever it lies.
  void clickButton(int32_t id);

  // A command as it would come from a control or a menu.
  void command(int32_t id, int32_t notification = 0);

  void key(WindowKey key, bool shift = false);
  void type(const char* characters);  // one key each; space presses the button that has the focus
  void escape();
  void close();  // by its frame

  // What somebody does who cannot see it: uses an area, or sets a control within its range.
  void use(int32_t id);
  void set(int32_t id, int32_t amount);

  // The drawItem event of a button in a state of the script's choosing.
  void drawButton(int32_t id, const ItemState& state);

  bool isOpen() const;
  NonePicture pixels() const;
  CursorShape cursor() const;
  bool captured() const;
  int32_t focusedControl() const;         // 0 for none
  std::string toolTip(int32_t id) const;  // "" for none
  bool read(int32_t id, ControlReading* reading) const;
  int32_t toldReadings(int32_t id) const;  // how often a change has been told
  std::string rowName() const;             // of a pop-up
  bool hasPopup() const;
  NoneWindow popup() const;  // only while hasPopup()
  Point placeInPopup(Point point) const;

 private:
  Window* window_;
};
