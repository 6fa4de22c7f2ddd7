#include "platform/remembered_values.h"

#include <cstdio>

void writeRememberedValue(const char* name, const char* text) {
  char field[kRememberedBytes] = {};
  std::snprintf(field, sizeof(field), "%s", text);
  writeRememberedField(name, field, /*atOnce=*/false);
}
