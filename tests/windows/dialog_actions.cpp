#include "tests/windows/dialog_actions.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "dialog/dialog_scale.h"
#include "platform/none/none_script.h"
#include "tests/support/dialog/dialog_runs.h"

std::string scriptOf(const DialogActions& actions) {
  std::string script;
  for (const DialogAction& action : actions) {
    script += action.name;
    for (const int32_t number : action.numbers) script += " " + std::to_string(number);
    if (!action.text.empty()) script += " " + action.text;
    script += "\n";
  }
  return script;
}

// Keys by the system's codes.
static WindowKey keyOf(int32_t code) {
  switch (code) {
    case 0x09:
      return WindowKey::tab;
    case 0x0D:
      return WindowKey::enter;
    case 0x25:
      return WindowKey::left;
    case 0x26:
      return WindowKey::up;
    case 0x27:
      return WindowKey::right;
    case 0x28:
      return WindowKey::down;
    default:
      return WindowKey::none;
  }
}

static void playAction(DialogUser& user, const DialogAction& action, DialogShots* shots) {
  const std::vector<int32_t>& n = action.numbers;
  const std::string& name = action.name;
  const Point pixel =
      n.size() < 2 ? Point{} : Point{static_cast<int16_t>(n[1]), static_cast<int16_t>(n[0])};
  if (name == "press") return user.press(pixel);
  if (name == "move") return user.move(pixel);
  if (name == "release") return user.release(pixel);
  if (name == "double") return user.doubleClick(pixel);
  if (name == "otherpress") return user.otherDown(pixel);
  if (name == "otherrelease") return user.otherUp(pixel);
  if (name == "popupmove") return user.popupMove(pixel);
  if (name == "popuprelease") return user.popupRelease(pixel);
  if (name == "wheel") return user.wheel(pixel, n[2]);
  if (name == "button") return user.clickButton(n[0]);
  if (name == "key" && n[0] == 0x1B) return user.escape();
  if (name == "key" && n[0] >= '0' && n[0] <= '9') {
    const char digit[] = {static_cast<char>(n[0]), 0};
    return user.type(digit);
  }
  if (name == "key") return user.key(keyOf(n[0]));
  if (name == "shot") {
    (*shots)[action.text] = user.pixels();
    return;
  }
  if (name == "popupshot") {
    (*shots)[action.text] = user.popupPixels();
    return;
  }
  ASSERT_TRUE(name == "file" || name == "answer") << name;  // given beforehand
}

static std::string pathHere(const std::string& folder, std::string file) {
  std::replace(file.begin(), file.end(), '\\', '/');
  return folder + "/" + file;
}

DialogPlay playOf(const DialogActions& actions, const std::string& folder, DialogShots* shots) {
  return [actions, folder, shots](DialogUser& user) {
    for (const DialogAction& action : actions) {
      if (action.name == "file") answerFiles({pathHere(folder, action.text)});
      if (action.name == "answer") noneScript().alertAnswers.push_back(action.numbers[0]);
    }
    for (const DialogAction& action : actions) playAction(user, action, shots);
  };
}

void drag(DialogActions* actions, Point from, Point to) {
  actions->push_back({"press", {from.h, from.v}, ""});
  actions->push_back({"move", {to.h, to.v}, ""});
  actions->push_back({"release", {to.h, to.v}, ""});
}

void chooseInMenu(DialogActions* actions, int32_t picker, int32_t row, const char* shot) {
  constexpr int32_t kRowHeight = 36;
  const Point middle = middleOf(picker);
  const Point place = {static_cast<int16_t>(scaled(kRowHeight) * row - scaled(kRowHeight / 2)),
                       static_cast<int16_t>(scaled(20))};
  actions->push_back({"press", {middle.h, middle.v}, ""});
  if (shot != nullptr) actions->push_back({"popupshot", {}, shot});
  actions->push_back({"popupmove", {place.h, place.v}, ""});
  actions->push_back({"popuprelease", {place.h, place.v}, ""});
}

void pressForFile(DialogActions* actions, int32_t button, const std::string& file) {
  actions->push_back({"button", {button}, ""});
  actions->push_back({"file", {}, file});
}
