#include "dialog/choices/picture_windows.h"

#include <algorithm>
#include <cstring>

#include "dialog/controls/buttons.h"
#include "dialog/controls/dialog_controls.h"
#include "dialog/controls/small_controls.h"
#include "dialog/dialog_scale.h"
#include "dialog/dialog_state.h"
#include "persistence/path_parts.h"
#include "persistence/picture_folder.h"
#include "pictures/environment_picture.h"
#include "pictures/picture_surface.h"
#include "pictures/sources/bitmap_file.h"
#include "pictures/texture_picture.h"
#include "services/alerts.h"
#include "services/choosers.h"

constexpr int32_t kSampleSide = 64;     // pixels at 100 percent
constexpr int16_t kJustPressed = -999;  // horizontal part of lastMouse
constexpr Rgb8 kNoTexture = {128, 128, 128};

// The remainder from 0 on; sizes below 1 count as 1.
static int32_t wrapped(int64_t value, int32_t size) {
  const int64_t wrap = std::max(size, 1);
  return static_cast<int32_t>(((value % wrap) + wrap) % wrap);
}

// Texels that can be shown one after the other: a small picture repeats up to 64 on its surface.
static int32_t shownSize(int32_t size) {
  return std::clamp(size, 1, kLargestPictureSide);
}

void drawTextureSample(DialogState* dialog, bool withFrame) {
  const EffectSettings* settings = settingsOf(dialog);
  if (withFrame) drawButtonFrame(&dialog->canvas, controlRect(kTextureFrame), {});
  const Rectangle area = controlRect(kTextureSample);
  const PictureSurface* surface = settings->texturePicture;
  if (surface == nullptr) return fillArea(&dialog->canvas, area, kNoTexture);
  const int32_t width = shownSize(settings->textureWidth);
  const int32_t height = shownSize(settings->textureHeight);
  const int32_t side = scaled(kSampleSide);
  for (int32_t y = 0; y < side; ++y) {
    const int32_t row = wrapped(int64_t{settings->textureOffsetY} + y, height);
    for (int32_t x = 0; x < side; ++x) {
      const int32_t column = wrapped(int64_t{settings->textureOffsetX} + x, width);
      drawPixels(&dialog->canvas, area.left - pen() + x, area.top - pen() + y, 1, 1,
                 surfacePixel(surface, column, row), 0);
    }
  }
}

// A place along the square, in 256ths of its pixels, between whose middles it is mixed.
static int32_t enlargedPlace(int32_t at, int32_t side) {
  const int32_t place = (512 * at + 256) * kEnvironmentSide / (2 * side) - 128;
  return std::clamp(place, 0, 256 * (kEnvironmentSide - 1));
}

static void enlargedPixel(const PictureSurface* surface, int32_t x, int32_t y, int32_t side,
                          uint8_t rgb[3]) {
  const int32_t across = enlargedPlace(x, side);
  const int32_t down = enlargedPlace(y, side);
  const int32_t column = across >> 8;
  const int32_t row = down >> 8;
  const int32_t nextColumn = std::min(column + 1, kEnvironmentSide - 1);
  const int32_t nextRow = std::min(row + 1, kEnvironmentSide - 1);
  const int32_t right = across & 255;
  const int32_t below = down & 255;
  for (int32_t i = 0; i < 3; ++i) {
    const int32_t upper = surfacePixel(surface, column, row)[i] * (256 - right) +
                          surfacePixel(surface, nextColumn, row)[i] * right;
    const int32_t lower = surfacePixel(surface, column, nextRow)[i] * (256 - right) +
                          surfacePixel(surface, nextColumn, nextRow)[i] * right;
    rgb[i] = static_cast<uint8_t>((upper * (256 - below) + lower * below + 32768) >> 16);
  }
}

void drawEnvironmentThumbnail(DialogState* dialog, const ItemState& state) {
  drawButtonFrame(&dialog->canvas, controlRect(kEnvironmentFrame), state);
  const PictureSurface* surface = settingsOf(dialog)->environmentPicture;
  if (surface == nullptr) return;
  const Rectangle area = controlRect(kEnvironmentButton);
  const int32_t shift = state.pressed ? pen() : 0;
  const int32_t side = scaled(kEnvironmentSide);
  for (int32_t y = 0; y < side; ++y) {
    for (int32_t x = 0; x < side; ++x) {
      uint8_t rgb[3];
      enlargedPixel(surface, x, y, side, rgb);
      drawPixels(&dialog->canvas, area.left + shift + x, area.top + shift + y, 1, 1, rgb, 0);
    }
  }
}

static void moveTexture(DialogState* dialog, int32_t dx, int32_t dy) {
  EffectSettings* settings = settingsOf(dialog);
  const int32_t width = shownSize(settings->textureWidth);
  const int32_t height = shownSize(settings->textureHeight);
  settings->textureOffsetX =
      wrapped(int64_t{settings->textureOffsetX} + width - std::clamp(dx, -width, width), width);
  settings->textureOffsetY =
      wrapped(int64_t{settings->textureOffsetY} + height - std::clamp(dy, -height, height), height);
}

void stepTexture(DialogState* dialog, int32_t right, int32_t down) {
  moveTexture(dialog, right, down);
  repaintControl(dialog, kTextureFrame);
  refreshPreview(dialog, {ChangeKind::steps, kTextureSample, /*continues=*/true});
}

void dragTexture(DialogState* dialog) {
  EffectSettings* settings = settingsOf(dialog);
  const Rectangle area = controlRect(kTextureSample);
  dialog->controlValue[kTextureSample] = pointInRect(settings->mouse, &area) ? 1 : 0;
  const int32_t dx = settings->mouse.h - settings->lastMouse.h;
  const int32_t dy = settings->mouse.v - settings->lastMouse.v;
  if ((dx != 0 || dy != 0) && settings->lastMouse.h != kJustPressed) {
    settings->textureDragMoved = 1;
    moveTexture(dialog, dx, dy);
    drawTextureSample(dialog, /*withFrame=*/false);
    presentArea(dialog, controlRect(kTextureFrame));
  }
  pointerHandled(dialog);
}

// A file that is no picture changes nothing.
static bool refuse(const char* path) {
  showFileAlert(kNotPictureString, fileNameOf(path));
  return false;
}

bool openEnvironmentPicture(DialogState* dialog) {
  EffectSettings* settings = settingsOf(dialog);
  char path[kPathBytes];
  if (settings->environmentPicture == nullptr) return false;
  if (!chooseFileToOpen(path, kPictureFiles, "Open an environment picture")) return false;
  if (loadEnvironmentPicture(dialog->session, path) != kBitmapLoaded) return refuse(path);
  std::memcpy(settings->environmentPath, path, kPathBytes);
  learnPictureFolder(dialog->session, path);
  settings->environmentTurns = 0;
  return true;
}

bool openTexturePicture(DialogState* dialog) {
  EffectSettings* settings = settingsOf(dialog);
  char path[kPathBytes];
  if (settings->texturePicture == nullptr) return false;
  if (!chooseFileToOpen(path, kPictureFiles, "Open a texture picture")) return false;
  const int32_t width = settings->textureWidth;
  const int32_t height = settings->textureHeight;
  if (loadTexturePicture(dialog->session, path) != kBitmapLoaded) {
    settings->textureWidth = width;
    settings->textureHeight = height;
    return refuse(path);
  }
  std::memcpy(settings->texturePath, path, kPathBytes);
  learnPictureFolder(dialog->session, path);
  settings->textureOffsetX = 0;
  settings->textureOffsetY = 0;
  return true;
}
