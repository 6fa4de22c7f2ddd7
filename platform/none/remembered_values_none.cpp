#include "platform/remembered_values.h"

#include <cstdio>

#include "platform/none/none_state.h"

bool readRememberedValue(const char* name, char* text, int32_t bytes) {
  const auto found = noneState().remembered.find(name);
  if (found == noneState().remembered.end()) return false;
  std::snprintf(text, static_cast<size_t>(bytes), "%s", found->second.c_str());
  return true;
}

void writeRememberedField(const char* name, const char field[kRememberedBytes], bool) {
  if (!noneState().script.forgetsValues) noneState().remembered[name] = field;
}
