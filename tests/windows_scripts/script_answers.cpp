#include "tests/windows_scripts/script_answers.h"

#include <gtest/gtest.h>

#include "hosts/windows_host/user_thread.h"
#include "platform/windows/window/window_record.h"
#include "tests/support/dialog/dialog_answers.h"

// --- Kinds of dialogs -----------------------------------------------------------------------

static bool isOtherDialog(HWND window) {
  const Window* own = topWindow();
  return isDialogBox(window) && (own == nullptr || window != own->handle) &&
         IsWindowEnabled(window) != FALSE;
}

bool isDialogToAnswer() {
  return findWindow(isOtherDialog) != nullptr;
}

static std::string captionOf(HWND window) {
  char text[128] = {};
  GetWindowTextA(window, text, sizeof(text));
  return text;
}

static void dismiss(HWND window, UINT message, WPARAM id) {
  PostMessageA(window, message, id, 0);
  awaitEnd(window);
  settle();
}

// The scripts' place where nothing can be saved is none here: a file that somebody keeps open.
static std::string pathHere(const std::string& path) {
  static HANDLE kept = nullptr;
  if (path != "/proc/nowhere.q9q") return path;
  const std::string own = ::testing::TempDir() + "kept-open.q9q";
  if (kept == nullptr) {
    kept = CreateFileA(own.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                       FILE_FLAG_DELETE_ON_CLOSE, nullptr);
  }
  return own;
}

static void answerFileChooser(HWND chooser) {
  noteChooser(captionOf(chooser));
  const std::string path = pathHere(nextFileAnswer());
  if (path.empty()) return dismiss(chooser, WM_COMMAND, IDCANCEL);
  takeFile(chooser, path);
}

// The chooser of colours has a field for each channel.
constexpr int kRedField = 706;

static void answerColorChooser(HWND chooser) {
  const ColorAnswer color = nextColorAnswer();
  if (!color.has_value()) return dismiss(chooser, WM_COMMAND, IDCANCEL);
  settle();
  for (int channel = 0; channel < 3; ++channel) {
    const std::string text = std::to_string((*color)[static_cast<size_t>(channel)]);
    SendMessageA(GetDlgItem(chooser, kRedField + channel), WM_SETTEXT, 0,
                 reinterpret_cast<LPARAM>(text.c_str()));
  }
  dismiss(chooser, WM_COMMAND, IDOK);
}

void answerNextDialog() {
  HWND window = awaitWindow(isOtherDialog, "other dialog");
  const Window* own = topWindow();
  if (own != nullptr) {
    EXPECT_FALSE(IsWindowEnabled(own->handle)) << "the dialog can be used below another one";
    EXPECT_FALSE(own->toolTips != nullptr && IsWindowVisible(own->toolTips)) << "a tip above it";
  }
  if (nameFieldOf(window) != nullptr) return answerFileChooser(window);
  if (GetDlgItem(window, kRedField) != nullptr) return answerColorChooser(window);
  captionOf(window) == "Keys and mouse" ? noteSheet() : noteAlert();
  dismiss(window, WM_CLOSE, 0);
}
