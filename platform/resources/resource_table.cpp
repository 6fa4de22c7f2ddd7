#include "platform/resource_table.h"

#include <algorithm>

#include "platform/resource_access.h"

static const EmbeddedPicture* findIn(std::span<const EmbeddedPicture> table, int32_t id) {
  const auto found = std::lower_bound(
      table.begin(), table.end(), id,
      [](const EmbeddedPicture& picture, int32_t wanted) { return picture.id < wanted; });
  return found != table.end() && found->id == id ? &*found : nullptr;
}

bool findResourcePicture(int32_t id, ResourcePicture* picture) {
  const EmbeddedPicture* found = findIn(embeddedPictures(), id);
  if (found == nullptr) return false;
  *picture = {found->width, found->height, found->rgb, found->coverage};
  return true;
}

const EmbeddedPicture* findResourceCursor(int32_t id) {
  return findIn(embeddedCursors(), id);
}
