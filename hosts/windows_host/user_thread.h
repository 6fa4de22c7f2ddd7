// user_thread: the thread that runs the module and its windows, as a second one sees it that plays
// the user by messages. What takes too long ends the program.

#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "platform/windows/windows_api.h"

constexpr DWORD kPatience = 30000;  // milliseconds
constexpr DWORD kPause = 10;

// The system tells of the real pointer, too; only moves with a button or with this mark arrive.
constexpr WPARAM kPlayedMove = 0x8000;

// Called in that thread, and by the other one before it does anything, and at its end.
void prepareUserThread();
void watchUserThread();
void leaveUserThread();

// Takes messages until the other thread has ended, which may wait for a queue that nobody looks
// into any more.
void serveUntilEnd(HANDLE thread);

// Until the thread has taken every message that was posted before, and what these have posted.
void settle();

// Does something in that thread.
void doInUserThread(const std::function<void()>& action);

// The thread's windows that can be seen.
HWND findWindow(bool (*matches)(HWND window));
HWND awaitWindow(bool (*matches)(HWND window), const char* what);
void awaitEnd(HWND window);
std::string classOf(HWND window);

bool isPopup(HWND window);
bool isDialogBox(HWND window);  // any dialog of the system's kind

// Where a chooser of files has the name typed in; null for other windows.
HWND nameFieldOf(HWND chooser);

// Takes a file, named in UTF-8 and in full, in a chooser that is open; yes, also over another one.
void takeFile(HWND chooser, const std::string& path);

// What a window shows: rows from the top.
struct WindowShot {
  int32_t width;
  int32_t height;
  std::vector<uint32_t> pixels;
};
WindowShot shotOf(HWND window);
