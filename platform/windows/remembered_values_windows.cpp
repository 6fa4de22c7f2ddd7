#include "platform/remembered_values.h"

#include <algorithm>
#include <cstring>

#include "platform/windows/windows_api.h"

constexpr char kKey[] = "SOFTWARE\\Quorrelin\\Morvalis\\2.08f";

// Made when it is missing, by readers too. Null where the user may not write to it.
static HKEY openForWriting(HKEY root) {
  HKEY key = nullptr;
  const LSTATUS status = RegCreateKeyExA(root, kKey, 0, nullptr, REG_OPTION_NON_VOLATILE,
                                         KEY_READ | KEY_WRITE, nullptr, &key, nullptr);
  return status == ERROR_SUCCESS ? key : nullptr;
}

static HKEY openForReading(HKEY root) {
  HKEY key = nullptr;
  return RegOpenKeyExA(root, kKey, 0, KEY_READ, &key) == ERROR_SUCCESS ? key : nullptr;
}

// The value's bytes, with a zero after them whatever another program has stored. Closes the key,
// which may be missing.
static bool queryValue(HKEY key, const char* name, char value[kRememberedBytes + 1]) {
  if (key == nullptr) return false;
  DWORD bytes = kRememberedBytes;
  std::memset(value, 0, kRememberedBytes + 1);
  const LSTATUS status =
      RegQueryValueExA(key, name, nullptr, nullptr, reinterpret_cast<BYTE*>(value), &bytes);
  RegCloseKey(key);
  return status == ERROR_SUCCESS;
}

// The values are the machine's where the user may write them. Elsewhere each user has values of
// their own, and those of the machine stand behind them.
static bool findValue(const char* name, char value[kRememberedBytes + 1]) {
  HKEY machine = openForWriting(HKEY_LOCAL_MACHINE);
  if (machine != nullptr) return queryValue(machine, name, value);
  return queryValue(openForReading(HKEY_CURRENT_USER), name, value) ||
         queryValue(openForReading(HKEY_LOCAL_MACHINE), name, value);
}

bool readRememberedValue(const char* name, char* text, int32_t bytes) {
  char value[kRememberedBytes + 1];
  if (bytes <= 0 || !findValue(name, value)) return false;
  const size_t length = std::min(std::strlen(value), static_cast<size_t>(bytes) - 1);
  std::memcpy(text, value, length);
  text[length] = '\0';
  return true;
}

void writeRememberedField(const char* name, const char field[kRememberedBytes], bool atOnce) {
  HKEY key = openForWriting(HKEY_LOCAL_MACHINE);
  if (key == nullptr) key = openForWriting(HKEY_CURRENT_USER);
  if (key == nullptr) return;
  RegSetValueExA(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(field), kRememberedBytes);
  if (atOnce) RegFlushKey(key);
  RegCloseKey(key);
}
