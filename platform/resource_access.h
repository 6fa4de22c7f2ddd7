// resource_access: what a back end supplies to reach the pictures that the module carries.

#pragma once

#include <cstdint>

struct ResourcePicture {
  int32_t width;
  int32_t height;
  const uint8_t* rgb;       // rows from the top
  const uint8_t* coverage;  // of an icon, 0 or 255 a pixel; null for a bitmap
};

// Bitmaps and icons have numbers of their own each; an icon's is asked for with this added.
constexpr int32_t kIconNumbers = 100000;

// A bitmap or icon by its resource number; false when there is none. The pixels stay where they
// are as long as the module is loaded.
bool findResourcePicture(int32_t id, ResourcePicture* picture);

// The pack of all pictures at a scale above 100 percent (see pictures/packed_pictures), cursors too
// with this added to their numbers; false when there is none.
constexpr int32_t kCursorNumbers = 200000;
bool findPicturePack(int32_t scale, const uint8_t** pack, int32_t* length);
