#include "platform/remembered_values.h"

#include <QSettings>
#include <QString>
#include <algorithm>
#include <cstring>
#include <map>
#include <optional>
#include <string>

#include "platform/unix/program_session.h"
#include "platform/desktop/session_state.h"

static bool keptInMemory = false;
static std::map<std::string, std::string> memoryValues;
static std::map<std::string, std::optional<std::string>> stagedValues;

void keepRememberedValuesInMemory() {
  keptInMemory = true;
  memoryValues.clear();
}

void stageRememberedValue(const char* name, const char* text) {
  stagedValues[name] = text == nullptr ? std::nullopt : std::optional<std::string>(text);
}

bool runIsCutOff() {
  return keptInMemory;
}

static bool findValue(const char* name, std::string* value) {
  const auto staged = stagedValues.find(name);
  if (staged != stagedValues.end()) {
    if (!staged->second.has_value()) return false;
    *value = *staged->second;
    return true;
  }
  if (keptInMemory) {
    const auto found = memoryValues.find(name);
    if (found == memoryValues.end()) return false;
    *value = found->second;
    return true;
  }
  const QVariant kept = QSettings(kOrganisation, kApplication).value(name);
  if (!kept.isValid()) return false;
  *value = kept.toString().toStdString();
  return true;
}

// Texts are UTF-8 on both sides of the door. Running out of memory counts as not remembered.
bool readRememberedValue(const char* name, char* text, int32_t bytes) {
  if (bytes <= 0) return false;
  try {
    std::string value;
    if (!findValue(name, &value)) return false;
    const size_t length = std::min(value.size(), static_cast<size_t>(bytes) - 1);
    std::memcpy(text, value.data(), length);
    text[length] = '\0';
    return true;
  } catch (...) {
    return false;
  }
}

void writeRememberedField(const char* name, const char field[kRememberedBytes], bool atOnce) {
  try {
    stagedValues.erase(name);
    if (keptInMemory) {
      memoryValues[name] = field;
    } else {
      QSettings store(kOrganisation, kApplication);
      store.setValue(name, QString::fromUtf8(field));
      if (atOnce) store.sync();
    }
  } catch (...) {
  }
}
