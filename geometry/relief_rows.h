// relief_rows: the quick form of the relief. Each row of the texture is resampled along the
// picture's columns once and kept while rows of the picture lie near it.

#pragma once

#include <cstdint>

struct SessionRecord;

// Texel depths beyond this (settings within their range stay below) take the plain form.
constexpr int32_t kLargestFastDepth = 400;
constexpr int32_t kLargestFastScale = 32767;

// Sets reliefIsFast where the texture and the columns suit. firstTexel: of column 0, before it is
// wrapped at the texture's width.
void prepareReliefRows(SessionRecord* session, int64_t firstTexel);

// What prepareReliefRows wants filled in, renderWidth + 1 entries each: the first of the four texel
// columns, and the fraction of a texel (0 to 127).
uint8_t* reliefFirstTexels(SessionRecord* session);
uint8_t* reliefParts(SessionRecord* session);

// Presses the relief into field row currentRow; only where reliefIsFast. texelRows: the four rows
// of the texture table; part: 0 to 127.
void pressReliefRow(SessionRecord* session, const uint8_t texelRows[4], int32_t part,
                    int32_t depth);
