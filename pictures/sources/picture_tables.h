// picture_tables: both pictures in the form that the row passes read.

#pragma once

#include <cstdint>

struct SessionRecord;

constexpr int32_t kPictureTableBytes = 65536;

// Copies the environment (0, red, green, blue a pixel) and the texture (255 minus green) into the
// render tables, each where picture and table exist and the picture is ready.
void copyPicturesToTables(SessionRecord* session);
