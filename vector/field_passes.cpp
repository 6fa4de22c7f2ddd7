#include "vector/field_passes.h"

#include "vector/cone_lanes.h"
#include "vector/row_scan.h"
#include "vector/strip_scan.h"
#include "vector/table_passes.h"

namespace MORVALIS_SET {

static void walkDown(const uint8_t* mask, const uint16_t* above, int32_t count, uint16_t* codes) {
  for (int32_t i = 0; i < count; ++i) {
    const int32_t m = mask[i];
    const int32_t farther = above[i] >= 0xFF00 ? above[i] : above[i] + 256;
    const int32_t selected = above[i] == kUnselectedCode ? 256 | m : farther;
    codes[i] = static_cast<uint16_t>(m == 0 ? kUnselectedCode : selected);
  }
}

static bool isSoft(const uint8_t* mask, int32_t count) {
  uint32_t soft = 0;
  for (int32_t i = 0; i < count; ++i) soft |= mask[i] != 0 && mask[i] != 255 ? 1 : 0;
  return soft != 0;
}

const FieldPasses* fieldPasses() {
  static constexpr FieldPasses kPasses = {walkDown,    isSoft,       beginRows,     scanSoftRow,
                                          scanHardRow, takeStripRow, finishStripRow};
  return &kPasses;
}

}  // namespace MORVALIS_SET
