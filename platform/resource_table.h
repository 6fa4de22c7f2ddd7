// resource_table: the pictures that the build has put into the module, for back ends whose system
// has no resources of its own. The tables are generated; findResourcePicture looks into them.

#pragma once

#include <cstdint>
#include <span>

struct EmbeddedPicture {
  int32_t id;
  int32_t width;
  int32_t height;
  const uint8_t* rgb;  // rows from the top, three bytes a pixel
  const uint8_t*
      coverage;  // a byte a pixel: 0 or 255 of an icon, any of a cursor; null of a bitmap
  int32_t hotX;  // of a cursor
  int32_t hotY;
};

// Bitmaps, then icons with kIconNumbers added to their numbers; in rising order.
std::span<const EmbeddedPicture> embeddedPictures();

std::span<const EmbeddedPicture> embeddedCursors();

// The packs of the larger scales, in a table of their own: a program without windows needs none.
struct EmbeddedPack {
  int32_t scale;
  const uint8_t* bytes;
  int32_t length;
};
std::span<const EmbeddedPack> embeddedPacks();

// A cursor by its resource number; null when there is none.
const EmbeddedPicture* findResourceCursor(int32_t id);
