#include "tests/windows_scripts/script_answers.h"

#include <gtest/gtest.h>

#include <deque>

#include "hosts/windows_host/user_thread.h"
#include "platform/windows/window/window_record.h"
#include "tests/support/dialog/dialog_user.h"

using MaybeColor = std::optional<std::array<uint8_t, 3>>;

static std::deque<std::string> fileAnswers;
static std::deque<MaybeColor> colorAnswers;
static std::vector<std::string> chooserTitles;
static int32_t alerts = 0;
static int32_t sheets = 0;

void forgetAnswers() {
  fileAnswers.clear();
  colorAnswers.clear();
  chooserTitles.clear();
  alerts = 0;
  sheets = 0;
}

void answerFiles(const std::vector<std::string>& paths) {
  fileAnswers.insert(fileAnswers.end(), paths.begin(), paths.end());
}

void answerColors(const std::vector<MaybeColor>& colors) {
  colorAnswers.insert(colorAnswers.end(), colors.begin(), colors.end());
}

std::vector<std::string> shownChoosers() {
  return chooserTitles;
}

int32_t shownAlerts() {
  return alerts;
}

int32_t DialogUser::shownSheets() {
  return sheets;
}

template <typename Answers>
static auto nextAnswer(Answers* answers) {
  typename Answers::value_type answer = {};
  if (!answers->empty()) {
    answer = answers->front();
    answers->pop_front();
  }
  return answer;
}

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
  chooserTitles.push_back(captionOf(chooser));
  const std::string path = pathHere(nextAnswer(&fileAnswers));
  if (path.empty()) return dismiss(chooser, WM_COMMAND, IDCANCEL);
  takeFile(chooser, path);
}

// The chooser of colours has a field for each channel.
constexpr int kRedField = 706;

static void answerColorChooser(HWND chooser) {
  const MaybeColor color = nextAnswer(&colorAnswers);
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
  ++(captionOf(window) == "Keys and mouse" ? sheets : alerts);
  dismiss(window, WM_CLOSE, 0);
}
