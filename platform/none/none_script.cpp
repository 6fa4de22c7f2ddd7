#include "platform/none/none_script.h"

#include "platform/none/none_state.h"

NoneState& noneState() {
  static NoneState state;
  return state;
}

void resetNone() {
  noneState() = {};
}

NoneScript& noneScript() {
  return noneState().script;
}

NoneRecord& noneRecord() {
  return noneState().record;
}

void scriptBitmap(const std::string& path, int32_t width, int32_t height,
                  const std::vector<uint8_t>& rgb) {
  noneState().bitmaps[path] = {width, height, rgb};
}

std::string rememberedValue(const std::string& name) {
  const auto found = noneState().remembered.find(name);
  return found == noneState().remembered.end() ? std::string() : found->second;
}
