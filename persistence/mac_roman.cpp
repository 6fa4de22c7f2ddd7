#include "persistence/mac_roman.h"

#include <cstdint>

// The Mac OS Roman codes of the Windows codes 128 to 255; 1 where there is none.
constexpr uint8_t kMacRoman[128] = {
    1,   1,   44,  196, 44,  201, 160, 160, 94,  228, 1,   1,   206, 1,   1,   1,    //
    1,   212, 213, 210, 211, 165, 1,   1,   126, 170, 1,   62,  207, 1,   1,   1,    //
    1,   193, 162, 163, 219, 180, 124, 164, 172, 169, 187, 199, 194, 173, 168, 1,    //
    161, 177, 1,   1,   1,   181, 166, 165, 252, 1,   188, 200, 1,   1,   1,   192,  //
    203, 231, 229, 204, 128, 129, 174, 130, 233, 131, 230, 232, 237, 234, 235, 236,  //
    1,   132, 241, 238, 239, 205, 133, 215, 175, 244, 242, 243, 134, 1,   1,   167,  //
    136, 135, 137, 139, 138, 140, 190, 141, 143, 142, 144, 145, 147, 146, 148, 149,  //
    182, 150, 152, 151, 153, 155, 154, 214, 191, 157, 156, 158, 159, 1,   1,   216};

// Where two Windows codes share a Macintosh code, the higher one is taken.
static uint8_t windowsCode(uint8_t mac) {
  for (int32_t i = 127; i >= 0; --i) {
    if (kMacRoman[i] == mac) return static_cast<uint8_t>(128 + i);
  }
  return mac;
}

void windowsFromMacRoman(char* text) {
  for (; *text != 0; ++text) {
    const auto mac = static_cast<uint8_t>(*text);
    if (mac >= 128) *text = static_cast<char>(windowsCode(mac));
  }
}
