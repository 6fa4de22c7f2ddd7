#include "platform/remembered_values.h"

#include <algorithm>
#include <cstring>

#include "platform/windows/windows_api.h"

constexpr char kKey[] = "SOFTWARE\\Quorrelin\\Morvalis\\2.08f";

// Made when it is missing, by readers too. Null where the user may not.
static HKEY openKey() {
  HKEY key = nullptr;
  return RegCreateKeyA(HKEY_LOCAL_MACHINE, kKey, &key) == ERROR_SUCCESS ? key : nullptr;
}

// The value's bytes, with a zero after them whatever another program has stored.
static bool queryValue(HKEY key, const char* name, char value[kRememberedBytes + 1]) {
  DWORD bytes = kRememberedBytes;
  std::memset(value, 0, kRememberedBytes + 1);
  return RegQueryValueExA(key, name, nullptr, nullptr, reinterpret_cast<BYTE*>(value), &bytes) ==
         ERROR_SUCCESS;
}

bool readRememberedValue(const char* name, char* text, int32_t bytes) {
  HKEY key = openKey();
  if (key == nullptr || bytes <= 0) return false;
  char value[kRememberedBytes + 1];
  const bool found = queryValue(key, name, value);
  RegCloseKey(key);
  if (!found) return false;
  const size_t length = std::min(std::strlen(value), static_cast<size_t>(bytes) - 1);
  std::memcpy(text, value, length);
  text[length] = '\0';
  return true;
}

void writeRememberedField(const char* name, const char field[kRememberedBytes], bool atOnce) {
  HKEY key = openKey();
  if (key == nullptr) return;
  RegSetValueExA(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(field), kRememberedBytes);
  if (atOnce) RegFlushKey(key);
  RegCloseKey(key);
}
