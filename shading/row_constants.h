// row_constants: what holds for all pixels of a row, in the plain form and in the quick one.

#pragma once

#include <cstdint>

#include "shading/lit_pixel.h"
#include "shading/shading_tables.h"

struct SessionRecord;

// What holds for one light in all pixels of a row.
struct LightConstants {
  const LightStencil* main;
  const LightStencil* side;
  const LightStencil* caustic;
  Word32 elevation;
};

// What holds for all pixels of a row.
struct RowConstants {
  LightConstants light1;
  LightConstants light2;
  RowLights colours;
  bool light2On;
  bool reflectOn;
  Word32 glass;          // 0 to 256
  Word32 transmitScale;  // 0 to 256
  Word32 reflectRest;    // 0 to 256
  Word32 reflectWeight;  // 0 to 256
  Word32 glareWidth;
  Word32 glossScale;
  Word32 glossDivisor;
  Word32 edgeHeight;  // the profile on and outside the selection's edge
  Word32 depthSpan;   // at least 1
  Word32 heightReference;
  Word32 slopeReference;
  Word32 causticGain;
  Word32 causticSharpness;
  Word32 causticFloor;
};

RowConstants rowConstants(const SessionRecord* session);

// Entry of the caustic table for a steepness.
int32_t causticEntry(const RowConstants& row, Word32 slope);

// Where on the environment, 0 to 63, a difference of neighbouring cells looks.
int32_t environmentCoordinate(const ShadingTables& tables, int32_t difference);

// What the pixel before the first one of a row has seen, across.
int32_t reflectionBefore(SessionRecord* session, int32_t row);

// The host's rows and how far apart their pixels are.
struct HostRows {
  const uint8_t* in;
  uint8_t* out;
  int32_t inStep;   // bytes
  int32_t outStep;  // bytes
  bool grey;
  int32_t width;  // pixels
};

// False when the host's buffers are missing or cannot hold the planes.
bool hostRows(const SessionRecord* session, HostRows* rows);
