#include "platform/resource_access.h"
#include "platform/resource_table.h"

bool findPicturePack(int32_t scale, const uint8_t** pack, int32_t* length) {
  for (const EmbeddedPack& each : embeddedPacks()) {
    if (each.scale != scale) continue;
    *pack = each.bytes;
    *length = each.length;
    return true;
  }
  return false;
}
