// The dialog's user on the back end without a screen.

#include <cstdio>

#include "platform/none/none_script.h"
#include "tests/support/dialog/dialog_runs.h"
#include "tests/support/dialog/dialog_user.h"

struct DialogWindow {
  NoneWindow window;
};

// As on a real screen, a press or release elsewhere brings a move along.
void DialogUser::press(Point point) {
  window_->window.move(point);
  window_->window.press(point);
}

void DialogUser::move(Point point) {
  window_->window.move(point);
}

void DialogUser::release(Point point) {
  window_->window.move(point);
  window_->window.release(point);
}

void DialogUser::click(Point point) {
  press(point);
  release(point);
}

void DialogUser::doubleClick(Point point) {
  window_->window.move(point);
  window_->window.doubleClick(point);
}

void DialogUser::otherDown(Point point) {
  window_->window.move(point);
  window_->window.otherDown(point);
}

void DialogUser::otherUp(Point point) {
  window_->window.move(point);
  window_->window.otherUp(point);
}

void DialogUser::wheel(Point point, int32_t notches, bool shift) {
  window_->window.wheel(point, notches, shift);
}

void DialogUser::clickButton(int32_t id) {
  window_->window.clickButton(id);
}

void DialogUser::key(WindowKey key, bool shift) {
  window_->window.key(key, shift);
}

void DialogUser::type(const char* characters) {
  window_->window.type(characters);
}

void DialogUser::escape() {
  window_->window.escape();
}

void DialogUser::close() {
  window_->window.close();
}

void DialogUser::wait(int32_t time) {
  noneScript().milliseconds += static_cast<uint32_t>(time);
}

bool DialogUser::hasPopup() {
  return window_->window.hasPopup();
}

void DialogUser::popupMove(Point point) {
  window_->window.popup().move(point);
}

void DialogUser::popupPress(Point point) {
  window_->window.popup().press(point);
}

// The button may be let go over what is under a pop-up that its press has closed.
void DialogUser::popupRelease(Point point) {
  if (hasPopup()) window_->window.popup().release(point);
}

void DialogUser::releaseOverPopup(Point point) {
  window_->window.popup().release(window_->window.placeInPopup(point));
}

static WindowPicture pictureOf(const NonePicture& shown) {
  return {shown.width, shown.height, shown.rgb};
}

WindowPicture DialogUser::popupPixels() {
  return pictureOf(window_->window.popup().pixels());
}

bool DialogUser::isOpen() {
  return window_->window.isOpen();
}

WindowPicture DialogUser::pixels() {
  return pictureOf(window_->window.pixels());
}

bool DialogUser::showsHand() {
  const CursorShape shape = window_->window.cursor();
  return shape == CursorShape::openHand || shape == CursorShape::closedHand;
}

std::string DialogUser::toolTip(int32_t id) {
  return window_->window.toolTip(id);
}

std::string DialogUser::reading(int32_t id) {
  constexpr const char* kRoles[] = {"button", "slider", "toggle", "menu", "dial", "image"};
  ControlReading reading = {};
  if (!window_->window.read(id, &reading)) return "";
  std::string text = kRoles[static_cast<int32_t>(reading.role)];
  text += std::string(", ") + reading.name + ", " + reading.value;
  if (reading.hasRange) {
    text += ", " + std::to_string(reading.amount) + " of " + std::to_string(reading.minimum) +
            " to " + std::to_string(reading.maximum);
  }
  if (reading.role == ControlRole::toggle) text += reading.on ? ", checked" : ", not checked";
  if (window_->window.focusedControl() == id) text += ", focused";
  if (reading.disabled) text += ", disabled";
  return text + ", " + reading.meaning;
}

std::string DialogUser::rowName() {
  return window_->window.popup().rowName();
}

int32_t DialogUser::shownSheets() {
  return static_cast<int32_t>(noneRecord().sheets.size());
}

std::string DialogUser::clipboard() {
  return noneRecord().clipboard;
}

void resetDialogUser() {
  resetNone();
  noneScript().separator = '/';
  noneScript().cachedSettingsPath = temporaryFile("cached");
  std::remove(noneScript().cachedSettingsPath.c_str());
}

int16_t playDialog(const DialogPlay& play, const std::function<int16_t()>& run) {
  noneScript().modalWindow = [&play](NoneWindow& window) {
    DialogWindow shown = {window};
    DialogUser user(&shown);
    play(user);
  };
  return run();
}

void answerFiles(const std::vector<std::string>& paths) {
  auto& answers = noneScript().chosenPaths;
  answers.insert(answers.end(), paths.begin(), paths.end());
}

void answerColors(const std::vector<std::optional<std::array<uint8_t, 3>>>& colors) {
  auto& answers = noneScript().chosenColors;
  answers.insert(answers.end(), colors.begin(), colors.end());
}

std::vector<std::string> shownChoosers() {
  std::vector<std::string> titles;
  for (const ShownChooser& chooser : noneRecord().choosers) titles.push_back(chooser.title);
  return titles;
}

int32_t shownAlerts() {
  return static_cast<int32_t>(noneRecord().alerts.size());
}

void offerPicture(const std::string& path, int32_t width, int32_t height,
                  const std::vector<uint8_t>& rgb) {
  scriptBitmap(path, width, height, rgb);
}
