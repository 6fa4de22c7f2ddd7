// field_passes: the height field without stamps: the distances to the nearest unselected pixels are
// known by codes, and each cell takes the largest value that its surroundings give.
//
// A code says how far a cell is from the nearest unselected pixel along one axis, to both sides:
// 256 t + m, where t is the distance and m the mask of the selected pixel beside the unselected
// one. An unselected pixel has the code 255 (t = 0, m = 255). geometry/field/fast_field.h tells why
// that is all there is to know, and how the passes follow each other.

#pragma once

#include <cstdint>

constexpr int32_t kLargestReach = 150;  // largest radius of a cone
constexpr int32_t kFineGroup = 8;       // neighbours that one lower bound speaks for
constexpr int32_t kCoarseGroup = 64;
constexpr uint16_t kUnselectedCode = 255;
constexpr int32_t kFieldTop = 3000;    // value of a cell on and outside the edge
constexpr int32_t kColumnBlock = 16;   // columns that the passes work on at a time
constexpr int32_t kWidestStrip = 512;  // columns

// A render's cone, and what bounds the values it gives. Squared distances count in units of
// 1 / 2^scaleBits.
constexpr int32_t kNoDistance = kLargestReach + kFineGroup;  // place of distance 0 in `squares`
struct FieldCone {
  const int16_t* centre;  // cell at distance 0
  int32_t stride;
  int32_t radius;
  int32_t coneStep;  // value at distance 1
  int32_t scaleBits;
  float scale;      // units in a squared pixel
  float perUnit;    // squared pixels
  float reach;      // of a value of 0, in pixels
  float perValue;   // pixels
  float sureReach;  // `reach` where the least sum of bounds is all that is known
  // Of the distances from -kNoDistance on; 65535 for those beyond the radius.
  uint16_t squares[2 * kNoDistance + 1];       // in units
  uint16_t pixelSquares[2 * kNoDistance + 1];  // in squared pixels
  uint16_t rows[2 * kNoDistance + 1];          // cells from the cone's centre to that row
};

// Lists of one number per column. All but `up` go on for kRowMargin columns on either side, and
// every list has kRowMargin places more than the row has pixels.
constexpr int32_t kRowMargin = 256;
struct FieldRow {
  uint16_t* up;       // codes for upward distances alone
  uint16_t* codes;    // of the nearer side
  uint16_t* bounds;   // no more than the squared distance
  uint16_t* sources;  // the same, but 65535 for unselected pixels
  uint16_t* fine;     // least of kFineGroup bounds from here on
  uint16_t* coarse;   // least of kCoarseGroup bounds from here on
};

// Rows of codes along the row, for a strip of columns. Rows count from `radius` rows above the
// picture to `radius` rows below it; the row in work and `radius` rows on either side are kept in a
// ring.
struct FieldStrip {
  uint16_t* codes;
  uint16_t* bounds;
  uint16_t* fine;       // least bound of kFineGroup rows
  uint16_t* coarse;     // least bound of kCoarseGroup rows
  int32_t width;        // columns that there is room for, a multiple of kColumnBlock
  int32_t ringRows;     // a multiple of kFineGroup
  int32_t fineSlots;    // a power of two, as is
  int32_t coarseSlots;  // this
  int32_t firstColumn;
  int32_t columns;
};

// Mask rows are readable up to the next multiple of kColumnBlock and hold 0 there. Cells are those
// of a field row, the first pixel's first.
struct FieldPasses {
  // The codes for downward distances, from those of the row above.
  void (*walkDown)(const uint8_t* mask, const uint16_t* above, int32_t count, uint16_t* codes);
  // Whether some value is neither 0 nor 255.
  bool (*isSoft)(const uint8_t* mask, int32_t count);
  // Before the first row of a scan.
  void (*beginRows)(const FieldRow& row, int32_t count);
  // Cells hold the codes of walkDown and become the largest value of all sources in their columns
  // and the columns around. Rows come from the last to the first.
  void (*scanSoftRow)(const FieldCone& cone, const FieldRow& row, const uint8_t* mask,
                      int32_t count, int16_t* cells);
  // The same where no pixel is partly selected: cells become final. values: by squared distance.
  void (*scanHardRow)(const FieldCone& cone, const FieldRow& row, const int16_t* values,
                      const uint8_t* mask, int32_t count, int16_t* cells);
  // Puts the next row into the strip. mask: the row from its column 0, null outside the picture.
  void (*takeStripRow)(const FieldCone& cone, const FieldStrip& strip, int32_t row,
                       const uint8_t* mask, int32_t count);
  // Makes a row's cells final; they hold what scanSoftRow left. The strip has taken the rows up to
  // row + radius. mask and cells: from the strip's first column on.
  void (*finishStripRow)(const FieldCone& cone, const FieldStrip& strip, int32_t row,
                         const uint8_t* mask, int16_t* cells);
};
