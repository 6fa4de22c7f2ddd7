// mask_mixing: rows of an effect into rows of their source, as an editor mixes them.

#pragma once

#include <cstdint>

// `picture` holds the source and gets the mixture. Extra planes (2 of 2, 4 of 4) stay. `whole`
// takes every weight but 0 as 255.
void mixRow(const uint8_t* mask, const uint8_t* effect, int32_t pixels, int32_t planes, bool whole,
            uint8_t* picture);
