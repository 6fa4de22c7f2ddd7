// render_state: the geometry, buffers and position of the render in progress.

#pragma once

#include <cstdint>

#include "entry/host_interface.h"
#include "geometry/field/fast_field_state.h"
#include "geometry/preview/preview_state.h"

// One of the six large buffers: the host's with that identifier, any, or a block of our own.
struct RenderBuffer {
  void* address;
  bool isHosts;
  HostBufferId hostId;
  uint64_t bytes;
};

// The passes of a render, in order. Recorded height fields are named after these numbers.
constexpr int32_t kPhaseStamp = 0;
constexpr int32_t kPhaseBorder = 1;
constexpr int32_t kPhaseSmoothForward = 70;
constexpr int32_t kPhaseSmoothBackward = 2;
constexpr int32_t kPhaseProfile = 4;
constexpr int32_t kPhaseShade = 5;

constexpr int32_t kConeTop = 3000;         // height-field value on and outside the edge
constexpr int32_t kProfileEntries = 3001;  // one per height-field value, 0 to kConeTop
constexpr int32_t kLargestRadius = 150;    // effective radius, pixels
constexpr int32_t kKernelSide = 2 * kLargestRadius + 3;
constexpr int32_t kKernelBytes = 2 * kKernelSide * kKernelSide;

struct FastPasses;

struct RenderState {
  int32_t renderWidth;  // pixels, already reduced in the preview
  int32_t renderHeight;
  int32_t lastCol;
  int32_t lastRow;
  int32_t fieldStride;  // renderWidth + 2: one cell of border on every side
  int32_t fieldRows;
  int32_t lineBufferWords;
  int32_t columnTableStart;  // word of the line buffer
  int32_t tarnishRowStart;   // word of the line buffer

  RenderBuffer lineBuffer;        // 32-bit words
  RenderBuffer heightField;       // int16 cells; cell (i, j) belongs to pixel (i - 1, j - 1)
  RenderBuffer coneKernel;        // int16 cells
  RenderBuffer edgeKernel;        // int16 cells
  RenderBuffer environmentTable;  // 128 x 128 pixels: 0, red, green, blue
  RenderBuffer textureTable;      // 256 x 256 texels, 255 minus green

  const FastPasses* fast;  // null: this render takes the plain passes

  int32_t phase;
  int32_t row;         // row that the next step works on
  int32_t currentRow;  // row of the step in progress
  uint8_t running;
  uint8_t internalPass;      // the pass needs nothing from the host
  uint8_t maskPass;          // the host must deliver the mask rather than image rows
  uint8_t buildHeightField;  // 0: shade whatever the field buffer holds
  int32_t progressDone;
  int32_t progressTotal;
  int32_t requestedRate;   // of the last exchange, 16.16 fixed point; 0 before the first
  int32_t bandTop;         // row of the rendered rectangle where the delivered mask begins
  int32_t bandLeft;        // column, 0 or less
  Rectangle previewFrame;  // the dialog's preview area; a preview image is never larger
  Rectangle renderedRect;  // filter rectangle that the final render was started for
  int16_t renderedPlanes;
  uint8_t started;         // this session has seen a Start
  uint8_t exchangeFailed;  // the last exchange of the final render has

  int32_t effRadius;         // 1 to kLargestRadius
  int32_t coneStep;          // the cone's value at distance 1
  int32_t kernelStride;      // cells
  int32_t edgeKernelKind;    // stamp that the edge kernel was last built for, -1 for none
  int32_t edgeKernelWeight;  // 0 to 255

  FastFieldState fastField;
  PreviewState preview;

  int16_t profile[kProfileEntries];
  int32_t depthLow;            // smallest -profile entry
  int32_t textureScaleFactor;  // hundredths of a texel per pixel
  uint8_t reliefIsFast;        // the texture's rows can be resampled once each
  int32_t reliefWidth;         // of the texture when the columns were placed, texels
  int32_t reliefRowTags[4];    // texture row that each resampled row holds, -1 for none
};

inline int32_t* lineBufferWords(RenderState* render) {
  return static_cast<int32_t*>(render->lineBuffer.address);
}

inline int16_t* fieldCells(RenderState* render) {
  if (render->preview.place.onCutOut != 0) return render->preview.cutOut;
  return static_cast<int16_t*>(render->heightField.address);
}

// First cell of a field row; row 0 is the border row above the picture.
inline int16_t* fieldRow(RenderState* render, int32_t row) {
  return fieldCells(render) + static_cast<int64_t>(row) * render->fieldStride;
}
