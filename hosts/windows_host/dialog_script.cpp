#include "hosts/windows_host/dialog_script.h"

#include <fstream>
#include <functional>
#include <sstream>
#include <utility>
#include <vector>

#include "hosts/windows_host/dialog_readings.h"
#include "hosts/windows_host/picture_files.h"
#include "platform/windows/windows_api.h"

constexpr DWORD kPatience = 30000;  // milliseconds
constexpr DWORD kPause = 10;

static std::string scriptPath;
static std::string dialogCaption;
static HWND dialogOwner = nullptr;
static HWND moduleDialog = nullptr;  // once it has come; message boxes may have its caption
static std::string startFolder;      // choosers move the current one
static DWORD userThread = 0;         // that runs the module and its windows
static HANDLE scriptThread = nullptr;
static HANDLE settled = nullptr;
static UINT settleMessage = 0;
static std::function<void()>
    forReader;  // to be done in the dialog's thread, with the next of these

// --- Waiting --------------------------------------------------------------------------------

// The system tells of the real pointer whenever a window comes or goes under it, and to whoever
// has the mouse. Its button is up; the script's moves and the module's own have it down.
static bool isRealMove(const MSG& message) {
  return message.message == WM_MOUSEMOVE && (message.wParam & MK_LBUTTON) == 0;
}

static LRESULT CALLBACK watchMessages(int code, WPARAM wParam, LPARAM lParam) {
  auto* message = reinterpret_cast<MSG*>(lParam);
  if (code == HC_ACTION) {
    if (wParam == PM_REMOVE && message->message == settleMessage) {
      if (forReader) std::exchange(forReader, nullptr)();
      SetEvent(settled);
    }
    if (isRealMove(*message)) message->message = WM_NULL;
  }
  return CallNextHookEx(nullptr, code, wParam, lParam);
}

// Until the thread has taken every message that was posted before.
static void waitForQueue() {
  ResetEvent(settled);
  PostThreadMessageA(userThread, settleMessage, 0, 0);
  if (WaitForSingleObject(settled, kPatience) != WAIT_OBJECT_0) failWith("the module is stuck");
}

// An action may post another message to its own window.
static void settle() {
  waitForQueue();
  waitForQueue();
}

struct WindowSearch {
  bool (*matches)(HWND window);
  HWND found;
};

static BOOL CALLBACK visitWindow(HWND window, LPARAM context) {
  auto* search = reinterpret_cast<WindowSearch*>(context);
  if (!IsWindowVisible(window) || !search->matches(window)) return TRUE;
  search->found = window;
  return FALSE;
}

static HWND findWindow(bool (*matches)(HWND)) {
  WindowSearch search = {matches, nullptr};
  EnumThreadWindows(userThread, visitWindow, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

static HWND awaitWindow(bool (*matches)(HWND), const char* what) {
  for (DWORD waited = 0; waited < kPatience; waited += kPause) {
    HWND window = findWindow(matches);
    if (window != nullptr) return window;
    Sleep(kPause);
  }
  failWith(std::string("no ") + what + " has come");
}

static void awaitEnd(HWND window) {
  for (DWORD waited = 0; waited < kPatience; waited += kPause) {
    if (!IsWindow(window) || !IsWindowVisible(window)) return;
    Sleep(kPause);
  }
  failWith("a window stays open");
}

// --- The windows ----------------------------------------------------------------------------

static std::string classOf(HWND window) {
  char name[64] = {};
  GetClassNameA(window, name, sizeof(name));
  return name;
}

static bool isModuleDialog(HWND window) {
  char caption[128] = {};
  GetWindowTextA(window, caption, sizeof(caption));
  return classOf(window) == "#32770" && caption == dialogCaption;
}

static bool isPopup(HWND window) {
  return classOf(window) == "PopupClass";
}

static bool isOtherDialog(HWND window) {
  return classOf(window) == "#32770" && window != moduleDialog;
}

// The name of the file is typed into an edit control, or into the one of a list.
constexpr int kFileNameEdit = 0x480;
constexpr int kFileNameList = 0x47C;

static HWND nameFieldOf(HWND chooser) {
  HWND list = GetDlgItem(chooser, kFileNameList);
  return list != nullptr ? list : GetDlgItem(chooser, kFileNameEdit);
}

static bool isFileChooser(HWND window) {
  return isOtherDialog(window) && nameFieldOf(window) != nullptr;
}

// --- Actions --------------------------------------------------------------------------------

static void chooseFile(const std::string& path) {
  const bool isFull = path.find(':') != std::string::npos;
  const std::string full = isFull ? path : startFolder + "\\" + path;
  HWND chooser = awaitWindow(isFileChooser, "file chooser");
  settle();  // it is still filling itself when it comes
  wchar_t wide[MAX_PATH * 2] = {};
  MultiByteToWideChar(CP_UTF8, 0, full.c_str(), -1, wide, MAX_PATH * 2 - 1);
  SendMessageW(nameFieldOf(chooser), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(wide));
  PostMessageA(chooser, WM_COMMAND, IDOK, 0);
  awaitEnd(chooser);
  settle();
}

static void answerDialog(int id) {
  HWND dialog = awaitWindow(isOtherDialog, "other dialog");
  HWND below = GetWindow(dialog, GW_OWNER);
  if (below != nullptr && IsWindowEnabled(below) != FALSE) {
    failWith("the window below a dialog can be used");
  }
  // As a press on the button itself.
  PostMessageA(dialog, WM_COMMAND, static_cast<WPARAM>(id),
               reinterpret_cast<LPARAM>(GetDlgItem(dialog, id)));
  awaitEnd(dialog);
  settle();
}

static void saveShot(HWND window, const std::string& path) {
  RECT client = {};
  GetClientRect(window, &client);
  BITMAPINFO info = {};
  info.bmiHeader = {sizeof(info.bmiHeader), client.right, -client.bottom, 1, 32, 0, 0, 0, 0, 0, 0};
  std::vector<uint32_t> pixels(static_cast<size_t>(client.right) *
                               static_cast<size_t>(client.bottom));
  UpdateWindow(window);
  HDC from = GetDC(window);
  HDC context = CreateCompatibleDC(from);
  HBITMAP bitmap = CreateCompatibleBitmap(from, client.right, client.bottom);
  HGDIOBJ previous = SelectObject(context, bitmap);
  BitBlt(context, 0, 0, client.right, client.bottom, from, 0, 0, SRCCOPY);
  SelectObject(context, previous);
  GetDIBits(context, bitmap, 0, static_cast<UINT>(client.bottom), pixels.data(), &info,
            DIB_RGB_COLORS);
  DeleteObject(bitmap);
  DeleteDC(context);
  ReleaseDC(window, from);
  writeBitmap(path, client.right, client.bottom, pixels);
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
  const std::string rest = action == "readings" ? takeRest(line) : "";
  if (action == "readings") {
    forReader = [=] { writeReadings(dialog, rest); };
  } else if (action == "setreading") {
    int value = 0;
    *line >> value;
    const std::string name = takeRest(line);
    forReader = [=] { setReading(dialog, name, std::to_string(value)); };
  } else if (action == "usereading") {
    const std::string name = takeRest(line);
    forReader = [=] { useReading(dialog, name); };
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
  HHOOK hook = SetWindowsHookExA(WH_GETMESSAGE, watchMessages, nullptr, userThread);
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
  UnhookWindowsHookEx(hook);
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
  userThread = GetCurrentThreadId();
  settled = CreateEventA(nullptr, TRUE, FALSE, nullptr);
  settleMessage = RegisterWindowMessageA("windows_host settle");
  scriptThread = CreateThread(nullptr, 0, playScript, nullptr, 0, nullptr);
}

void finishDialogScript() {
  // The last action may wait for a queue that nobody looks into any more.
  MSG message;
  for (;;) {
    const DWORD reason =
        MsgWaitForMultipleObjectsEx(1, &scriptThread, kPatience, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
    if (reason == WAIT_OBJECT_0) break;
    if (reason != WAIT_OBJECT_0 + 1) failWith("the dialog has ended before the script");
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&message);
  }
  CloseHandle(scriptThread);
  CloseHandle(settled);
}
