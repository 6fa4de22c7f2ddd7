#include "hosts/windows_host/user_thread.h"

#include <utility>

#include "hosts/windows_host/picture_files.h"

static DWORD userThread = 0;
static HHOOK hook = nullptr;
static HANDLE settled = nullptr;
static UINT settleMessage = 0;
static std::function<void()> waiting;  // to be done there, with the next of these

// --- Waiting --------------------------------------------------------------------------------

// The system tells of the real pointer whenever a window comes or goes under it, and to whoever
// has the mouse. Its button is up.
static bool isRealMove(const MSG& message) {
  return message.message == WM_MOUSEMOVE && (message.wParam & (MK_LBUTTON | kPlayedMove)) == 0;
}

static LRESULT CALLBACK watchMessages(int code, WPARAM wParam, LPARAM lParam) {
  auto* message = reinterpret_cast<MSG*>(lParam);
  if (code == HC_ACTION) {
    if (wParam == PM_REMOVE && message->message == settleMessage) {
      if (waiting) std::exchange(waiting, nullptr)();
      SetEvent(settled);
    }
    if (isRealMove(*message)) message->message = WM_NULL;
    if (message->message == WM_MOUSEMOVE) message->wParam &= ~kPlayedMove;
  }
  return CallNextHookEx(nullptr, code, wParam, lParam);
}

void prepareUserThread() {
  userThread = GetCurrentThreadId();
  settled = CreateEventA(nullptr, TRUE, FALSE, nullptr);
  settleMessage = RegisterWindowMessageA("windows_host settle");
}

void watchUserThread() {
  hook = SetWindowsHookExA(WH_GETMESSAGE, watchMessages, nullptr, userThread);
}

void leaveUserThread() {
  UnhookWindowsHookEx(hook);
}

void serveUntilEnd(HANDLE thread) {
  MSG message;
  for (;;) {
    const DWORD reason =
        MsgWaitForMultipleObjectsEx(1, &thread, kPatience, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
    if (reason == WAIT_OBJECT_0) break;
    if (reason != WAIT_OBJECT_0 + 1) failWith("the dialog has ended before the script");
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&message);
  }
  CloseHandle(thread);
  CloseHandle(settled);
}

static void waitForQueue() {
  ResetEvent(settled);
  PostThreadMessageA(userThread, settleMessage, 0, 0);
  if (WaitForSingleObject(settled, kPatience) != WAIT_OBJECT_0) failWith("the module is stuck");
}

void settle() {
  waitForQueue();
  waitForQueue();
}

void doInUserThread(const std::function<void()>& action) {
  waiting = action;
  waitForQueue();
}

// --- Windows --------------------------------------------------------------------------------

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

HWND findWindow(bool (*matches)(HWND)) {
  WindowSearch search = {matches, nullptr};
  EnumThreadWindows(userThread, visitWindow, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

HWND awaitWindow(bool (*matches)(HWND), const char* what) {
  for (DWORD waited = 0; waited < kPatience; waited += kPause) {
    HWND window = findWindow(matches);
    if (window != nullptr) return window;
    Sleep(kPause);
  }
  failWith(std::string("no ") + what + " has come");
}

static BOOL CALLBACK nameWindow(HWND window, LPARAM context) {
  char caption[128] = {};
  GetWindowTextA(window, caption, sizeof(caption));
  if (IsWindowVisible(window)) {
    *reinterpret_cast<std::string*>(context) += classOf(window) + " \"" + caption + "\" ";
  }
  return TRUE;
}

static std::string openWindows() {
  std::string names;
  EnumThreadWindows(userThread, nameWindow, reinterpret_cast<LPARAM>(&names));
  return names;
}

void awaitEnd(HWND window) {
  for (DWORD waited = 0; waited < kPatience; waited += kPause) {
    if (!IsWindow(window) || !IsWindowVisible(window)) return;
    Sleep(kPause);
  }
  failWith("a window stays open: " + openWindows());
}

std::string classOf(HWND window) {
  char name[64] = {};
  GetClassNameA(window, name, sizeof(name));
  return name;
}

bool isPopup(HWND window) {
  return classOf(window) == "PopupClass";
}

bool isDialogBox(HWND window) {
  return classOf(window) == "#32770";
}

// --- Choosers of files ----------------------------------------------------------------------

// The name of the file is typed into an edit control, or into the one of a list.
constexpr int kFileNameEdit = 0x480;
constexpr int kFileNameList = 0x47C;

HWND nameFieldOf(HWND chooser) {
  HWND list = GetDlgItem(chooser, kFileNameList);
  return list != nullptr ? list : GetDlgItem(chooser, kFileNameEdit);
}

void takeFile(HWND chooser, const std::string& path) {
  settle();  // it is still filling itself when it comes
  wchar_t wide[MAX_PATH * 2] = {};
  MultiByteToWideChar(CP_UTF8, 0, path.c_str(), -1, wide, MAX_PATH * 2 - 1);
  SendMessageW(nameFieldOf(chooser), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(wide));
  PostMessageA(chooser, WM_COMMAND, IDOK, 0);
  settle();
  HWND question = GetLastActivePopup(chooser);
  if (question != chooser && IsWindowVisible(question)) {
    PostMessageA(question, WM_COMMAND, IDYES, 0);
  }
  awaitEnd(chooser);
  settle();
}

// --- Pictures -------------------------------------------------------------------------------

WindowShot shotOf(HWND window) {
  RECT client = {};
  GetClientRect(window, &client);
  BITMAPINFO info = rowsFromTop(client.right, client.bottom, 32);
  std::vector<uint32_t> pixels(static_cast<size_t>(client.right) *
                               static_cast<size_t>(client.bottom));
  // Its buttons are windows of their own.
  RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
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
  return {static_cast<int32_t>(client.right), static_cast<int32_t>(client.bottom), pixels};
}
