// row_source: reads the rows of a request from a picture, reduced and padded as it asks.

#pragma once

#include <cstddef>
#include <cstdint>

#include "entry/host_interface.h"

// What to read (nonempty rectangle, planes within the picture's) and where from.
struct RowRequest {
  Rectangle rect;  // in pixels of the reduced picture
  int16_t loPlane;
  int16_t hiPlane;
  int32_t rate;     // 16.16; whole factors are honoured, below 1 counts as 1
  int16_t padding;  // for what lies outside: -1 edge, -2 undefined, -3 error, 0..255 value
  const uint8_t* samples;
  int32_t width;
  int32_t height;
  int32_t planes;
};

// Bytes of the delivered rows: no gap between pixels or rows.
size_t requestedBytes(const RowRequest& request);

// Reads the rows; an error when the request reaches outside and its padding does not allow that.
int16_t fillRows(const RowRequest& request, uint8_t* rows);
