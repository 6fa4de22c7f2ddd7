// none_state: what the procedures of this back end share.

#pragma once

#include <map>

#include "platform/none/none_script.h"

struct NoneBitmap {
  int32_t width;
  int32_t height;
  std::vector<uint8_t> rgb;
};

struct NoneState {
  NoneScript script;
  NoneRecord record;
  std::map<std::string, NoneBitmap> bitmaps;
  std::map<std::string, std::string> remembered;
};

NoneState& noneState();
