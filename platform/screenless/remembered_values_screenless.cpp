// Values that the desktop back end has remembered are read from its file; this one keeps its own in
// memory.

#include "platform/remembered_values.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <optional>
#include <string>

#include "platform/screenless/remembered_file.h"
#include "platform/unix/program_session.h"

static bool cutOff = false;
static std::map<std::string, std::optional<std::string>> values;

void keepRememberedValuesInMemory() {
  cutOff = true;
  values.clear();
}

bool runIsCutOff() {
  return cutOff;
}

void stageRememberedValue(const char* name, const char* text) {
  values[name] = text == nullptr ? std::nullopt : std::optional<std::string>(text);
}

static std::optional<std::string> findValue(const char* name) {
  const auto found = values.find(name);
  if (found != values.end()) return found->second;
  return cutOff ? std::nullopt : readRememberedFile(name);
}

bool readRememberedValue(const char* name, char* text, int32_t bytes) {
  if (bytes <= 0) return false;
  try {
    const std::optional<std::string> value = findValue(name);
    if (!value.has_value()) return false;
    const size_t length = std::min(value->size(), static_cast<size_t>(bytes) - 1);
    std::memcpy(text, value->data(), length);
    text[length] = '\0';
    return true;
  } catch (...) {
    return false;  // out of memory
  }
}

void writeRememberedField(const char* name, const char field[kRememberedBytes], bool) {
  try {
    values[name] = std::string(field);
  } catch (...) {
    // out of memory: not remembered
  }
}
