#include "hosts/windows_host/dialog_script.h"

#include <fstream>
#include <sstream>

#include "hosts/windows_host/dialog_readings.h"
#include "hosts/windows_host/picture_files.h"
#include "hosts/windows_host/user_thread.h"

static std::string scriptPath;
static std::string dialogCaption;
static HWND dialogOwner = nullptr;
static HWND moduleDialog = nullptr;  // once it has come; message boxes may have its caption
static std::string startFolder;      // choosers move the current one
static HANDLE scriptThread = nullptr;

// --- The windows ----------------------------------------------------------------------------

static bool isModuleDialog(HWND window) {
  char caption[128] = {};
  GetWindowTextA(window, caption, sizeof(caption));
  return isDialogBox(window) && caption == dialogCaption;
}

static bool isOtherDialog(HWND window) {
  return isDialogBox(window) && window != moduleDialog;
}

static bool isFileChooser(HWND window) {
  return isOtherDialog(window) && nameFieldOf(window) != nullptr;
}

// --- Actions --------------------------------------------------------------------------------

static void chooseFile(const std::string& path) {
  const bool isFull = path.find(':') != std::string::npos;
  takeFile(awaitWindow(isFileChooser, "file chooser"), isFull ? path : startFolder + "\\" + path);
}

static HWND awaitOtherDialog() {
  HWND dialog = awaitWindow(isOtherDialog, "other dialog");
  for (HWND below : {moduleDialog, GetWindow(dialog, GW_OWNER)}) {
    if (below != nullptr && IsWindowEnabled(below) != FALSE) {
      failWith("the window below a dialog can be used");
    }
  }
  return dialog;
}

static void answerDialog(int id) {
  HWND dialog = awaitOtherDialog();
  // As a press on the button itself.
  PostMessageA(dialog, WM_COMMAND, static_cast<WPARAM>(id),
               reinterpret_cast<LPARAM>(GetDlgItem(dialog, id)));
  awaitEnd(dialog);
  settle();
}

static void checkFocus(int id) {
  HWND dialog = awaitOtherDialog();
  int focused = 0;
  doInUserThread([&] { focused = GetDlgCtrlID(GetFocus()); });
  if (focused != id || GetDlgItem(dialog, id) == nullptr) {
    failWith("the keyboard is on control " + std::to_string(focused));
  }
}

// Keys go to what has the keyboard.
static void endOtherDialog(UINT message, int key) {
  HWND dialog = awaitOtherDialog();
  HWND target = dialog;
  doInUserThread([&] {
    if (message == WM_KEYDOWN && IsChild(dialog, GetFocus())) target = GetFocus();
  });
  PostMessageA(target, message, static_cast<WPARAM>(key), message == WM_KEYDOWN ? 1 : 0);
  awaitEnd(dialog);
  settle();
}

static void saveShot(HWND window, const std::string& path) {
  const WindowShot shot = shotOf(window);
  writeBitmap(path, shot.width, shot.height, shot.pixels);
}

static void listControls(HWND dialog, const std::string& path) {
  std::ofstream file(path, std::ios::binary);
  for (HWND item = GetWindow(dialog, GW_CHILD); item != nullptr;
       item = GetWindow(item, GW_HWNDNEXT)) {
    RECT rect = {};
    GetWindowRect(item, &rect);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&rect), 2);
    file << GetDlgCtrlID(item) << ' ' << rect.left << ' ' << rect.top << ' ' << rect.right << ' '
         << rect.bottom << '\n';
  }
}

struct MouseAction {
  const char* name;
  UINT message;
  WPARAM buttons;
};

constexpr MouseAction kMouseActions[] = {{"press", WM_LBUTTONDOWN, MK_LBUTTON},
                                         {"move", WM_MOUSEMOVE, MK_LBUTTON},
                                         {"release", WM_LBUTTONUP, 0},
                                         {"double", WM_LBUTTONDBLCLK, MK_LBUTTON},
                                         {"otherpress", WM_RBUTTONDOWN, MK_RBUTTON},
                                         {"otherrelease", WM_RBUTTONUP, 0}};

static LPARAM takePoint(std::istream* line) {
  int x = 0;
  int y = 0;
  *line >> x >> y;
  return MAKELPARAM(x, y);
}

static bool playMouse(HWND dialog, const std::string& action, std::istream* line) {
  const bool inPopup = action.rfind("popup", 0) == 0;
  for (const MouseAction& mouse : kMouseActions) {
    if (action != (inPopup ? "popup" : "") + std::string(mouse.name)) continue;
    HWND target = inPopup ? awaitWindow(isPopup, "pop-up") : dialog;
    PostMessageA(target, mouse.message, mouse.buttons, takePoint(line));
    settle();
    return true;
  }
  if (action != "wheel") return false;
  POINT point = {};
  int notches = 0;
  *line >> point.x >> point.y >> notches;
  ClientToScreen(dialog, &point);
  PostMessageA(dialog, WM_MOUSEWHEEL, MAKEWPARAM(0, notches * WHEEL_DELTA),
               MAKELPARAM(point.x, point.y));
  settle();
  return true;
}

static std::string takeRest(std::istream* line) {
  std::string rest;
  std::getline(*line >> std::ws, rest);
  return rest;
}

// As a screen reader does.
static bool playReader(HWND dialog, const std::string& action, std::istream* line) {
  if (action == "readings") {
    const std::string path = takeRest(line);
    doInUserThread([=] { writeReadings(dialog, path); });
  } else if (action == "setreading") {
    int value = 0;
    *line >> value;
    const std::string name = takeRest(line);
    doInUserThread([=] { setReading(dialog, name, std::to_string(value)); });
  } else if (action == "usereading") {
    const std::string name = takeRest(line);
    doInUserThread([=] { useReading(dialog, name); });
  } else {
    return false;
  }
  settle();
  return true;
}

static int takeNumber(std::istream* line) {
  int number = 0;
  *line >> number;
  return number;
}

static void play(HWND dialog, const std::string& action, std::istream* line) {
  if (playMouse(dialog, action, line) || playReader(dialog, action, line)) return;
  if (action == "button") {
    PostMessageA(GetDlgItem(dialog, takeNumber(line)), BM_CLICK, 0, 0);
  } else if (action == "command") {
    const int id = takeNumber(line);
    PostMessageA(dialog, WM_COMMAND, MAKEWPARAM(id, takeNumber(line)), 0);
  } else if (action == "key") {
    const auto key = static_cast<WPARAM>(takeNumber(line));
    const LPARAM scanCode = static_cast<LPARAM>(MapVirtualKeyA(static_cast<UINT>(key), 0)) << 16;
    PostMessageA(dialog, WM_KEYDOWN, key, scanCode | 1);
  } else if (action == "file") {
    return chooseFile(takeRest(line));
  } else if (action == "answer") {
    return answerDialog(takeNumber(line));
  } else if (action == "boxfocus") {
    return checkFocus(takeNumber(line));
  } else if (action == "boxkey") {
    return endOtherDialog(WM_KEYDOWN, takeNumber(line));
  } else if (action == "boxclose") {
    return endOtherDialog(WM_CLOSE, 0);
  } else if (action == "shot") {
    return saveShot(dialog, takeRest(line));
  } else if (action == "popupshot") {
    return saveShot(awaitWindow(isPopup, "pop-up"), takeRest(line));
  } else if (action == "controls") {
    return listControls(dialog, takeRest(line));
  } else if (action == "close") {
    PostMessageA(dialog, WM_CLOSE, 0, 0);
  } else {
    failWith("the script knows no action '" + action + "'");
  }
  settle();
}

static void checkOwner() {
  if (dialogOwner == nullptr) return;
  if (GetWindow(moduleDialog, GW_OWNER) != dialogOwner) failWith("the dialog has another owner");
  if (IsWindowEnabled(dialogOwner)) failWith("the dialog leaves its owner to the user");
}

static DWORD WINAPI playScript(void*) {
  HWND dialog = awaitWindow(isModuleDialog, "dialog of the module");
  moduleDialog = dialog;
  watchUserThread();
  settle();
  checkOwner();
  std::ifstream script(scriptPath);
  if (!script) failWith(scriptPath + ": cannot be read");
  std::string text;
  while (std::getline(script, text)) {
    std::istringstream line(text);
    std::string action;
    if (line >> action) play(dialog, action, &line);
  }
  leaveUserThread();
  awaitEnd(dialog);
  return 0;
}

void startDialogScript(const std::string& path, const std::string& caption, void* owner) {
  scriptPath = path;
  dialogOwner = static_cast<HWND>(owner);
  dialogCaption = caption;
  char folder[MAX_PATH] = {};
  GetCurrentDirectoryA(sizeof(folder), folder);
  startFolder = folder;
  prepareUserThread();
  scriptThread = CreateThread(nullptr, 0, playScript, nullptr, 0, nullptr);
}

void finishDialogScript() {
  serveUntilEnd(scriptThread);
}
