#include "platform/windows/dialogs/narrow_path.h"

#include <cstdio>
#include <cstring>

#include "platform/windows/windows_api.h"

static char madeFile[MAX_PATH];  // empty when there is none

constexpr DWORD kLongestWide = 32768;  // characters of the longest path there is

// False when a character is missing in the code page. Characters that merely look alike would name
// another file.
static bool hasNarrowForm(const wchar_t* wide) {
  BOOL replaced = FALSE;
  const int bytes =
      WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, wide, -1, nullptr, 0, nullptr, &replaced);
  return bytes > 0 && replaced == FALSE;
}

static NarrowAnswer convert(const wchar_t* wide, char* path, int32_t bytes) {
  const int written =
      WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, wide, -1, path, bytes, nullptr, nullptr);
  if (written > 0) return NarrowAnswer::done;
  path[0] = '\0';
  return NarrowAnswer::tooLong;
}

NarrowAnswer narrowPath(const wchar_t* wide, char* path, int32_t bytes) {
  path[0] = '\0';
  if (hasNarrowForm(wide)) return convert(wide, path, bytes);
  auto* shortened =
      static_cast<wchar_t*>(HeapAlloc(GetProcessHeap(), 0, kLongestWide * sizeof(wchar_t)));
  if (shortened == nullptr) return NarrowAnswer::noName;
  const DWORD length = GetShortPathNameW(wide, shortened, kLongestWide);
  const bool usable = length > 0 && length < kLongestWide && hasNarrowForm(shortened);
  const NarrowAnswer answer = usable ? convert(shortened, path, bytes) : NarrowAnswer::noName;
  HeapFree(GetProcessHeap(), 0, shortened);
  return answer;
}

NarrowAnswer narrowPathToWrite(const wchar_t* wide, char* path, int32_t bytes) {
  path[0] = '\0';
  madeFile[0] = '\0';
  if (hasNarrowForm(wide)) return convert(wide, path, bytes);
  HANDLE made = CreateFileW(wide, GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_NEW,
                            FILE_ATTRIBUTE_NORMAL, nullptr);
  if (made != INVALID_HANDLE_VALUE) CloseHandle(made);
  const NarrowAnswer answer = narrowPath(wide, path, bytes);
  if (made == INVALID_HANDLE_VALUE) return answer;
  if (answer != NarrowAnswer::done) {
    DeleteFileW(wide);
  } else {
    std::snprintf(madeFile, sizeof(madeFile), "%s", path);
  }
  return answer;
}

bool takeMadeFile(const char* path) {
  const bool made = madeFile[0] != '\0' && std::strcmp(path, madeFile) == 0;
  madeFile[0] = '\0';
  return made;
}
