// rip_map: the environment picture reduced by powers of two, separately along each axis. The
// reflection takes a coarser one where it jumps between neighbouring pixels.
//
//   64 x 64 picture | 32 | 16 ..   each block to the right is half as wide,
//   64 x 32         |              each block below half as high;
//   64 x 16         |              column 127 and row 127 stay black
//   ..

#pragma once

struct SessionRecord;

// Fills the surface around the picture, and marks the picture ready for the render tables.
void buildEnvironmentRipMap(SessionRecord* session);
