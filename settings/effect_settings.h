// effect_settings: everything the user can set, plus the few values that the run control and the
// preview leave there for the rendering. The record lives in the block of the host's parameter
// handle, so the host keeps it from one use of the filter to the next. Ranges and defaults of what
// the user sets stand in setting_ranges.

#pragma once

#include <cstdint>

#include "services/rectangle.h"

struct PictureSurface;

constexpr int32_t kPathBytes = 260;  // a path field: at most 259 characters and a zero

struct Direction {
  float x;  // to the right
  float y;  // downward
  float z;  // toward the viewer
};

struct Color16 {
  uint16_t red;
  uint16_t green;
  uint16_t blue;
};

struct EffectSettings {
  uint32_t showDialog;   // 1: the next Start shows the dialog
  int16_t scriptAmount;  // exchanged with the host's scripting, no effect on the rendering
  int16_t rowsPerBand;   // factor of the memory request made in Prepare
  int32_t dragControl;   // dialog: control that owns the mouse, -1 for none
  int32_t previousTextureChoice;
  uint8_t textureDragMoved;
  Point lastMouse;
  Point mouse;
  uint8_t environmentReady;  // the picture may be copied into the render tables
  uint8_t textureReady;
  uint32_t scriptMood;          // four-character value, "moD0" to "moD3"
  uint8_t scriptEntire;         // 0 or 1
  uint8_t hostDrawsPreview;     // the host offers both advanceState and displayPixels
  uint8_t textureReliefActive;  // written by the render set-up
  uint8_t bevelActive;          // written by the render set-up
  Direction light1Dir;          // each -1 to 1
  Direction light2Dir;
  uint32_t proceduralTexture[4];  // pattern type and three more
  int32_t texture;                // -100 to 100, depth of the relief
  uint32_t proceduralTextureVariant;
  int32_t iriColors;         // 0 to 100
  int32_t iridescence;       // 0 to 100
  int32_t tarnish;           // 0 to 100
  int32_t caustic;           // 0 to 100
  int32_t textureScale;      // 0 to 100
  int32_t reflection;        // 0 to 100
  int32_t height;            // -100 to 100
  int32_t radius;            // 2 to 100
  int32_t textureChoice;     // 1 none, 2 to 12 built in, 13 the picture file
  int32_t blendMode;         // 1 to 12
  int32_t shape;             // 1 to 13
  int32_t variant;           // 1 to 3
  int32_t environmentTurns;  // quarter turns, 0 to 3
  int32_t gloss;             // 0 to 100
  int32_t glare;             // 0 to 100
  int32_t glassiness;        // 0 to 100
  uint32_t constantOne;
  int32_t previewScale;  // 1 for the final render, else the preview's reduction factor
  uint32_t previewMode;  // 1: no progress, no abort test, checkerboard outside the selection
  uint32_t autoPreview;
  int32_t previewOriginX;  // first column of the preview within the filter rectangle
  int32_t previewOriginY;
  PictureSurface* environmentPicture;  // owned by pictures/, null between runs
  PictureSurface* texturePicture;
  void** environmentRef;  // picture reference blocks taken over from a settings file
  void** textureRef;
  int32_t light1Angle;  // degrees, derived from light1Dir
  int32_t light2Angle;
  int32_t textureOffsetX;  // texels
  int32_t textureOffsetY;
  uint32_t iriTableChoice;  // 1: grey caustic light
  int32_t textureWidth;     // texels; the relief wraps at these sizes
  int32_t textureHeight;
  Color16 light1Color;
  Color16 light2Color;
  Color16 tarnishColor;
  int32_t light1Elevation;  // derived from light1Dir
  int32_t light2Elevation;
  char texturePath[kPathBytes];
  char environmentPath[kPathBytes];
  char pictureFolder[kPathBytes];
  uint64_t loadMark;     // load of the module that the pointers above belong to
  uint32_t textureSeed;  // with which the texture was drawn
};

constexpr int32_t kShapeCount = 13;
constexpr int32_t kTextureChoiceNone = 1;
constexpr int32_t kTextureChoiceFile = 13;

// The built-in textures are drawn by chance.
inline bool dependsOnSeed(const EffectSettings& settings) {
  return settings.textureChoice != kTextureChoiceNone &&
         settings.textureChoice != kTextureChoiceFile;
}

constexpr int32_t kBlendModeTarnish = 11;
constexpr int32_t kBlendModeCaustic = 12;
