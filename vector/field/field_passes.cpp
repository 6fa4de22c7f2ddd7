#include "vector/field/field_passes.h"

#include "vector/field/cone_lanes.h"
#include "vector/field/row_scan.h"
#include "vector/field/strip_scan.h"
#include "vector/table_passes.h"

namespace MORVALIS_SET {

static void walkDown(const uint8_t* mask, const uint16_t* above, int32_t count, uint16_t* codes) {
  for (int32_t x = 0; x < count; x += kLanes) {
    const Lanes before = loadPart(above + x, count - x);
    storePart(codes + x, nextCodes(loadBytes(mask + x), before), count - x);
  }
}

static bool isSoft(const uint8_t* mask, int32_t count) {
  uint8_t soft = 0;
  for (int32_t i = 0; i < count; ++i) {
    soft |= static_cast<uint8_t>(static_cast<uint8_t>(mask[i] + 1) > 1);
  }
  return soft != 0;
}

const FieldPasses* fieldPasses() {
  static constexpr FieldPasses kPasses = {walkDown,    isSoft,       beginRows,     scanSoftRow,
                                          scanHardRow, takeStripRow, finishStripRow};
  return &kPasses;
}

}  // namespace MORVALIS_SET
