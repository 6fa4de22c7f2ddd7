#include "platform/bitmap_decoder.h"

#include <cstdlib>
#include <cstring>

#include "platform/none/none_state.h"

bool decodeBitmapFile(const char* path, DecodedBitmap* bitmap) {
  const auto found = noneState().bitmaps.find(path);
  if (found == noneState().bitmaps.end()) return false;
  const NoneBitmap& scripted = found->second;
  auto* rgb = static_cast<uint8_t*>(std::malloc(scripted.rgb.size()));
  if (rgb == nullptr) return false;
  std::memcpy(rgb, scripted.rgb.data(), scripted.rgb.size());
  *bitmap = {scripted.width, scripted.height, rgb};
  return true;
}
