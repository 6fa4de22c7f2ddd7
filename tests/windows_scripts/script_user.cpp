// The dialog's user on Windows, by messages as the system sends them.

#include <cwchar>
#include <map>

#include "dialog/controls/control_table.h"
#include "hosts/windows_host/dialog_readings.h"
#include "platform/windows/window/window_record.h"
#include "tests/support/dialog/dialog_user.h"
#include "tests/windows_scripts/script_window.h"
// The common controls' header wants the other one first.
#include <commctrl.h>

static WPARAM heldButtons = 0;

// --- The pointer ----------------------------------------------------------------------------

struct Target {
  HWND window;
  LPARAM place;
};

// Buttons of the dialog are windows of their own; what has the mouse gets everything.
static Target targetAt(HWND dialog, Point point) {
  Target target = {};
  doInUserThread([&] {
    POINT place = {point.h, point.v};
    HWND window = GetCapture();
    if (window == nullptr) {
      window = ChildWindowFromPointEx(dialog, place, CWP_SKIPINVISIBLE | CWP_SKIPDISABLED);
      POINT screen = place;
      ClientToScreen(dialog, &screen);
      const bool solid =
          window != nullptr &&
          SendMessageA(window, WM_NCHITTEST, 0, MAKELPARAM(screen.x, screen.y)) != HTTRANSPARENT;
      if (!solid) window = dialog;
    }
    MapWindowPoints(dialog, window, &place, 1);
    target = {window, MAKELPARAM(place.x, place.y)};
  });
  return target;
}

static void point(HWND dialog, UINT message, Point place) {
  const Target target = targetAt(dialog, place);
  PostMessageA(target.window, message, heldButtons | (message == WM_MOUSEMOVE ? kPlayedMove : 0),
               target.place);
  settleAll();
}

void DialogUser::press(Point place) {
  move(place);
  heldButtons |= MK_LBUTTON;
  point(window_->handle, WM_LBUTTONDOWN, place);
}

void DialogUser::move(Point place) {
  point(window_->handle, WM_MOUSEMOVE, place);
}

void DialogUser::release(Point place) {
  move(place);
  heldButtons &= ~WPARAM{MK_LBUTTON};
  point(window_->handle, WM_LBUTTONUP, place);
}

void DialogUser::click(Point place) {
  press(place);
  release(place);
}

void DialogUser::doubleClick(Point place) {
  click(place);
  heldButtons |= MK_LBUTTON;
  point(window_->handle, WM_LBUTTONDBLCLK, place);
  release(place);
}

void DialogUser::otherDown(Point place) {
  move(place);
  heldButtons |= MK_RBUTTON;
  point(window_->handle, WM_RBUTTONDOWN, place);
}

void DialogUser::otherUp(Point place) {
  move(place);
  heldButtons &= ~WPARAM{MK_RBUTTON};
  point(window_->handle, WM_RBUTTONUP, place);
}

void DialogUser::wheel(Point place, int32_t notches, bool shift) {
  POINT screen = {place.h, place.v};
  ClientToScreen(window_->handle, &screen);
  PostMessageA(window_->handle, WM_MOUSEWHEEL,
               MAKEWPARAM(shift ? MK_SHIFT : 0, notches * WHEEL_DELTA),
               MAKELPARAM(screen.x, screen.y));
  settleAll();
}

void DialogUser::clickButton(int32_t id) {
  const Rectangle rect = controlRect(id);
  click({static_cast<int16_t>((rect.top + rect.bottom) / 2),
         static_cast<int16_t>((rect.left + rect.right) / 2)});
}

// --- Keys -----------------------------------------------------------------------------------

// In the thread that takes them.
static void holdKeys(bool shift, bool control) {
  BYTE keys[256] = {};
  GetKeyboardState(keys);
  keys[VK_SHIFT] = keys[VK_LSHIFT] = shift ? 0x80 : 0;
  keys[VK_CONTROL] = keys[VK_LCONTROL] = control ? 0x80 : 0;
  SetKeyboardState(keys);
}

static void pressKey(HWND dialog, UINT code, bool shift, bool control) {
  HWND focused = dialog;
  doInUserThread([&] {
    HWND window = GetFocus();
    if (window != nullptr && IsChild(dialog, window)) focused = window;
    if (shift || control) holdKeys(shift, control);
  });
  const LPARAM scanCode = static_cast<LPARAM>(MapVirtualKeyA(code, 0)) << 16;
  PostMessageA(focused, WM_KEYDOWN, code, scanCode | 1);
  settleAll();
  PostMessageA(focused, WM_KEYUP, code, scanCode | static_cast<LPARAM>(0xC0000001));
  settleAll();
  if (shift || control) doInUserThread([] { holdKeys(false, false); });
}

struct SystemKey {
  UINT code;
  bool control;
  bool shift;
};

static const std::map<WindowKey, SystemKey> kKeys = {
    {WindowKey::left, {VK_LEFT, false, false}},
    {WindowKey::right, {VK_RIGHT, false, false}},
    {WindowKey::up, {VK_UP, false, false}},
    {WindowKey::down, {VK_DOWN, false, false}},
    {WindowKey::pageUp, {VK_PRIOR, false, false}},
    {WindowKey::pageDown, {VK_NEXT, false, false}},
    {WindowKey::home, {VK_HOME, false, false}},
    {WindowKey::end, {VK_END, false, false}},
    {WindowKey::enter, {VK_RETURN, false, false}},
    {WindowKey::escape, {VK_ESCAPE, false, false}},
    {WindowKey::backspace, {VK_BACK, false, false}},
    {WindowKey::undo, {'Z', true, false}},
    {WindowKey::redo, {'Z', true, true}},
    {WindowKey::copy, {'C', true, false}},
    {WindowKey::tab, {VK_TAB, false, false}},
    {WindowKey::help, {VK_F1, false, false}}};

void DialogUser::key(WindowKey key, bool shift) {
  const SystemKey& system = kKeys.at(key);
  pressKey(window_->handle, system.code, shift || system.shift, system.control);
}

void DialogUser::type(const char* characters) {
  for (; *characters != 0; ++characters) {
    const SHORT code = VkKeyScanA(*characters);
    pressKey(window_->handle, LOBYTE(code), (HIBYTE(code) & 1) != 0, /*control=*/false);
  }
}

void DialogUser::escape() {
  key(WindowKey::escape);
}

void DialogUser::close() {
  PostMessageA(window_->handle, WM_CLOSE, 0, 0);
  settleAll();
}

void DialogUser::wait(int32_t time) {
  passMilliseconds(static_cast<unsigned>(time));
}

// --- The pop-up -----------------------------------------------------------------------------

bool DialogUser::hasPopup() {
  return findWindow(isPopup) != nullptr;
}

// One that its press has closed gets no release.
static void pointInPopup(UINT message, LPARAM place) {
  PostMessageA(findWindow(isPopup), message,
               heldButtons | (message == WM_MOUSEMOVE ? kPlayedMove : 0), place);
  settleAll();
}

void DialogUser::popupPress(Point place) {
  heldButtons |= MK_LBUTTON;
  pointInPopup(WM_LBUTTONDOWN, MAKELPARAM(place.h, place.v));
}

void DialogUser::popupMove(Point place) {
  pointInPopup(WM_MOUSEMOVE, MAKELPARAM(place.h, place.v));
}

void DialogUser::popupRelease(Point place) {
  heldButtons &= ~WPARAM{MK_LBUTTON};
  if (hasPopup()) pointInPopup(WM_LBUTTONUP, MAKELPARAM(place.h, place.v));
}

void DialogUser::releaseOverPopup(Point place) {
  heldButtons &= ~WPARAM{MK_LBUTTON};
  POINT inPopup = {place.h, place.v};
  MapWindowPoints(window_->handle, findWindow(isPopup), &inPopup, 1);
  pointInPopup(WM_LBUTTONUP, MAKELPARAM(inPopup.x, inPopup.y));
}

static WindowPicture pictureOf(HWND window) {
  const WindowShot shot = shotOf(window);
  WindowPicture picture = {shot.width, shot.height, {}};
  for (const uint32_t pixel : shot.pixels) {
    for (const int shift : {16, 8, 0}) picture.rgb.push_back(static_cast<uint8_t>(pixel >> shift));
  }
  return picture;
}

WindowPicture DialogUser::popupPixels() {
  return pictureOf(findWindow(isPopup));
}

std::string DialogUser::rowName() {
  wchar_t text[128] = {};
  GetWindowTextW(findWindow(isPopup), text, 127);
  std::string name;
  for (const wchar_t* at = text; *at != 0; ++at) name += static_cast<char>(*at);
  return name == kPopupTitle ? "" : name;
}

// --- The window -----------------------------------------------------------------------------

bool DialogUser::isOpen() {
  return IsWindow(window_->handle) && IsWindowVisible(window_->handle);
}

WindowPicture DialogUser::pixels() {
  return pictureOf(window_->handle);
}

bool DialogUser::showsHand() {
  bool hand = false;
  doInUserThread([&] {
    HCURSOR shown = GetCursor();
    hand = shown != LoadCursorA(nullptr, MAKEINTRESOURCEA(32512)) &&
           shown != LoadCursorA(nullptr, MAKEINTRESOURCEA(32514));
  });
  return hand;
}

std::string DialogUser::toolTip(int32_t id) {
  wchar_t text[512] = {};
  doInUserThread([&] {
    TOOLINFOW tool = {};
    tool.cbSize = TTTOOLINFOW_V1_SIZE;
    tool.hwnd = window_->handle;
    HWND item = GetDlgItem(window_->handle, id);
    const WindowControl* control = findControl(topWindow(), id);
    const bool button = control != nullptr && control->kind == ControlKind::button;
    tool.uId = button ? reinterpret_cast<UINT_PTR>(item) : static_cast<UINT_PTR>(id);
    tool.lpszText = text;
    SendMessageW(topWindow()->toolTips, TTM_GETTEXTW, 0, reinterpret_cast<LPARAM>(&tool));
  });
  return std::string(text, text + std::wcslen(text));
}

// Kinds and marks by the system's numbers, put in words as the scripts expect them.
std::string DialogUser::reading(int32_t id) {
  static const std::map<int32_t, const char*> kRoles = {
      {43, "button"}, {51, "slider"}, {44, "toggle"}, {46, "menu"}, {49, "dial"}, {40, "image"}};
  constexpr int32_t kDisabled = 1;
  constexpr int32_t kFocused = 4;
  constexpr int32_t kChecked = 16;
  ElementReading element;
  bool found = false;
  const Rectangle rect = controlRect(id);
  const int32_t place[] = {rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top};
  doInUserThread([&] { found = readElementAt(window_->handle, place, &element); });
  if (!found) return "";
  const auto role = kRoles.find(element.role);
  std::string text = role == kRoles.end() ? "?" : role->second;
  text += ", " + element.name + ", " + element.value;
  // A range stands before what the control means; a slider's value is its amount.
  std::string meaning = element.description;
  const size_t colon = meaning.find(": ");
  if (colon != std::string::npos && meaning.find(" to ") < colon) {
    const bool slider = text.rfind("slider", 0) == 0;
    text += ", " + (slider ? element.value + " of " : "") + meaning.substr(0, colon);
    meaning = meaning.substr(colon + 2);
  }
  if (element.role == 44) text += element.state & kChecked ? ", checked" : ", not checked";
  if (element.state & kFocused) text += ", focused";
  if (element.state & kDisabled) text += ", disabled";
  return text + ", " + meaning;
}

std::string DialogUser::clipboard() {
  std::string text;
  doInUserThread([&] {
    if (!OpenClipboard(window_->handle)) return;
    HANDLE block = GetClipboardData(CF_TEXT);
    const void* bytes = block != nullptr ? GlobalLock(block) : nullptr;
    if (bytes != nullptr) text = static_cast<const char*>(bytes);
    if (bytes != nullptr) GlobalUnlock(block);
    CloseClipboard();
  });
  return text;
}
