#include "hosts/windows_host/dialog_readings.h"

#include <fstream>

#include "hosts/windows_host/picture_files.h"
#include "platform/windows/windows_api.h"
// The accessible object's header wants the other one first.
#include <oleacc.h>

constexpr GUID kAccessibleId = {
    0x618736E0, 0x3C3D, 0x11CF, {0x81, 0x0C, 0x00, 0xAA, 0x00, 0x38, 0x9B, 0x71}};

static std::string taken(BSTR text) {
  if (text == nullptr) return "";
  char narrow[512] = {};
  WideCharToMultiByte(CP_ACP, 0, text, -1, narrow, sizeof(narrow) - 1, nullptr, nullptr);
  SysFreeString(text);
  return narrow;
}

static VARIANT elementOf(LONG number) {
  VARIANT element = {};
  element.vt = VT_I4;
  element.lVal = number;
  return element;
}

static IAccessible* openReading(void* window) {
  void* object = nullptr;
  const HRESULT result = AccessibleObjectFromWindow(
      static_cast<HWND>(window), static_cast<DWORD>(OBJID_CLIENT), kAccessibleId, &object);
  if (FAILED(result) || object == nullptr) failWith("the window has nothing to read");
  return static_cast<IAccessible*>(object);
}

static ElementReading readElement(IAccessible* access, LONG number) {
  const VARIANT element = elementOf(number);
  BSTR name = nullptr;
  BSTR value = nullptr;
  BSTR description = nullptr;
  VARIANT role = {};
  VARIANT state = {};
  access->get_accName(element, &name);
  access->get_accValue(element, &value);
  access->get_accDescription(element, &description);
  access->get_accRole(element, &role);
  access->get_accState(element, &state);
  return {role.lVal, state.lVal, taken(name), taken(value), taken(description)};
}

static std::string lineOf(const ElementReading& reading) {
  return std::to_string(reading.role) + "|" + reading.name + "|" + reading.value + "|" +
         std::to_string(reading.state) + "|" + reading.description;
}

bool readElementAt(void* window, const int32_t place[4], ElementReading* reading) {
  IAccessible* access = openReading(window);
  POINT corner = {place[0], place[1]};
  ClientToScreen(static_cast<HWND>(window), &corner);
  LONG count = 0;
  access->get_accChildCount(&count);
  bool found = false;
  for (LONG i = 1; i <= count && !found; ++i) {
    LONG left = 0;
    LONG top = 0;
    LONG width = 0;
    LONG height = 0;
    access->accLocation(&left, &top, &width, &height, elementOf(i));
    found = left == corner.x && top == corner.y && width == place[2] && height == place[3];
    if (found) *reading = readElement(access, i);
  }
  access->Release();
  return found;
}

void writeReadings(void* window, const std::string& path) {
  IAccessible* access = openReading(window);
  std::ofstream file(path, std::ios::binary);
  LONG count = 0;
  access->get_accChildCount(&count);
  for (LONG i = 0; i <= count; ++i) file << lineOf(readElement(access, i)) << '\n';
  access->Release();
}

static VARIANT findElement(IAccessible* access, const std::string& name) {
  LONG count = 0;
  access->get_accChildCount(&count);
  for (LONG i = 1; i <= count; ++i) {
    BSTR found = nullptr;
    access->get_accName(elementOf(i), &found);
    if (taken(found) == name) return elementOf(i);
  }
  failWith("no element is called " + name);
}

void setReading(void* window, const std::string& name, const std::string& value) {
  IAccessible* access = openReading(window);
  const std::wstring wide(value.begin(), value.end());
  BSTR text = SysAllocString(wide.c_str());
  if (FAILED(access->put_accValue(findElement(access, name), text))) {
    failWith(name + " does not take " + value);
  }
  SysFreeString(text);
  access->Release();
}

void useReading(void* window, const std::string& name) {
  IAccessible* access = openReading(window);
  access->accDoDefaultAction(findElement(access, name));
  access->Release();
}
