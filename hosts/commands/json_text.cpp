#include "hosts/commands/json_text.h"

#include <cstdio>

std::string jsonString(const std::string& text) {
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') {
      quoted += '\\';
      quoted += c;
    } else if (static_cast<unsigned char>(c) < ' ') {
      char escape[8];
      std::snprintf(escape, sizeof(escape), "\\u%04x", static_cast<unsigned char>(c));
      quoted += escape;
    } else {
      quoted += c;
    }
  }
  return quoted + "\"";
}

std::string jsonArray(const std::vector<std::string>& parts) {
  std::string text = "[";
  for (const std::string& part : parts) text += (text.size() > 1 ? ", " : "") + part;
  return text + "]";
}
