#include "dialog/preview_area.h"

#include <algorithm>

#include "dialog/dialog_state.h"
#include "geometry/row_machine.h"
#include "geometry/row_requests.h"
#include "geometry/selection_mask.h"
#include "platform/window.h"
#include "services/fixed_point.h"

constexpr int32_t kFrameInset = 2;

static int16_t narrowed(int32_t value) {
  return saturateToInt16(value);
}

static Rectangle inset(const Rectangle& rect, int32_t by) {
  return {narrowed(rect.top + by), narrowed(rect.left + by), narrowed(rect.bottom - by),
          narrowed(rect.right - by)};
}

static int32_t widthOf(const Rectangle& rect) {
  return rect.right - rect.left;
}
static int32_t heightOf(const Rectangle& rect) {
  return rect.bottom - rect.top;
}

void setPreviewFrame(DialogState* dialog) {
  const Rectangle& whole = dialog->session->filter->filterRect;
  Rectangle frame = inset(controlRect(kPreviewArea), kFrameInset);
  frame.right = narrowed(frame.left + std::min(widthOf(frame), widthOf(whole)));
  frame.bottom = narrowed(frame.top + std::min(heightOf(frame), heightOf(whole)));
  dialog->session->render.previewFrame = frame;
}

static int32_t ceilingRatio(int32_t whole, int32_t part) {
  const int32_t limited = std::max(std::min(part, whole), 1);
  return std::max((whole + limited - 1) / limited, 1);
}

int32_t previewFactor(const DialogState* dialog) {
  const Rectangle& whole = dialog->session->filter->filterRect;
  const Rectangle& frame = dialog->session->render.previewFrame;
  return std::max(ceilingRatio(widthOf(whole), widthOf(frame)),
                  ceilingRatio(heightOf(whole), heightOf(frame)));
}

static void runPreviewUnderWaitCursor(DialogState* dialog) {
  setCursor(dialog->window, CursorShape::wait);
  runPreview(dialog->session);
  setCursor(dialog->window, CursorShape::arrow);
}

void startPreview(DialogState* dialog) {
  EffectSettings* settings = settingsOf(dialog);
  dialog->fitScale = 1;
  if (settings->hostDrawsPreview != 1) return;
  setPreviewFrame(dialog);
  dialog->fitScale = previewFactor(dialog);
  settings->previewScale = dialog->fitScale;
  settings->previewOriginX = 0;
  settings->previewOriginY = 0;
  requestPreviewImage(dialog->session, settings->previewScale);
  dialog->session->render.buildHeightField = 1;
  if (*dialog->session->result == kNoError) {
    runPreviewUnderWaitCursor(dialog);
  } else {
    settings->hostDrawsPreview = 0;
    *dialog->session->result = kNoError;
    dialog->fitScale = 1;
  }
}

// Zero-based: with the bounds of the requested rectangle real hosts shift the picture and read past
// its end once it is panned.
static void displayHostPixels(DialogState* dialog, int32_t row, int32_t column) {
  const FilterRecord* filter = dialog->session->filter;
  if (filter->displayPixels == nullptr || filter->outData == nullptr) return;
  const HostRectangle32 bounds = {0, 0, heightOf(filter->outRect), widthOf(filter->outRect)};
  PSPixelMap map = {};
  map.version = 1;
  map.bounds = bounds;
  map.imageMode = filter->imageMode;
  map.rowBytes = filter->outRowBytes;
  map.colBytes = filter->outHiPlane - filter->outLoPlane + 1;
  map.planeBytes = 1;
  map.baseAddr = filter->outData;
  void* context = beginHostDrawing(dialog->window, &dialog->canvas.target);
  filter->displayPixels(&map, &bounds, row, column, context);
  endHostDrawing(dialog->window, &dialog->canvas.target, context);
}

void drawPreview(DialogState* dialog, bool erase) {
  const Rectangle area = controlRect(kPreviewArea);
  const Rectangle inner = inset(area, kFrameInset);
  const Rectangle clip = dialog->canvas.clip;
  dialog->canvas.clip = area;
  if (erase) fillArea(&dialog->canvas, inner, kWhite);
  drawFrame(&dialog->canvas, inset(inner, -1), kBlack);
  const Rectangle& out = dialog->session->filter->outRect;
  displayHostPixels(dialog, (area.top + area.bottom - heightOf(out)) / 2,
                    (area.left + area.right - widthOf(out)) / 2);
  dialog->canvas.clip = clip;
  presentArea(dialog, area);
}

void renderPreview(DialogState* dialog) {
  // A host that could not deliver the first picture will not deliver this one.
  const FilterRecord* filter = dialog->session->filter;
  const bool hostCouldDraw = filter->advanceState != nullptr && filter->displayPixels != nullptr;
  if (settingsOf(dialog)->hostDrawsPreview != 1 && hostCouldDraw) return;
  runPreviewUnderWaitCursor(dialog);
  repaintControl(dialog, kPreviewArea);
}

// --- Zoom -----------------------------------------------------------------------------------

void clampOrigin(DialogState* dialog, int32_t scale) {
  EffectSettings* settings = settingsOf(dialog);
  const Rectangle& whole = dialog->session->filter->filterRect;
  const Rectangle& frame = dialog->session->render.previewFrame;
  const int32_t width = whole.right / scale - whole.left / scale;
  const int32_t height = whole.bottom / scale - whole.top / scale;
  const int32_t farX = std::max((width - widthOf(frame)) * scale, 0);
  const int32_t farY = std::max((height - heightOf(frame)) * scale, 0);
  settings->previewOriginX = std::clamp(settings->previewOriginX, 0, farX);
  settings->previewOriginY = std::clamp(settings->previewOriginY, 0, farY);
}

// Keeps the centre of what is shown where it is.
static void rezoom(DialogState* dialog, int32_t oldScale, int32_t newScale) {
  EffectSettings* settings = settingsOf(dialog);
  const FilterRecord* filter = dialog->session->filter;
  const Rectangle& frame = dialog->session->render.previewFrame;
  const int32_t centreX = (filter->inRect.left + filter->inRect.right) / 2 * oldScale;
  const int32_t centreY = (filter->inRect.top + filter->inRect.bottom) / 2 * oldScale;
  settings->previewOriginX = centreX - widthOf(frame) * newScale / 2 - filter->filterRect.left;
  settings->previewOriginY = centreY - heightOf(frame) * newScale / 2 - filter->filterRect.top;
  clampOrigin(dialog, newScale);
}

static void zoomTo(DialogState* dialog, int32_t scale) {
  EffectSettings* settings = settingsOf(dialog);
  if (settings->hostDrawsPreview == 1) {
    rezoom(dialog, settings->previewScale, scale);
    settings->previewScale = scale;
    if (scale == dialog->fitScale && dialog->fitScale > 1) {
      settings->previewOriginX = 0;
      settings->previewOriginY = 0;
    }
    requestPreviewImage(dialog->session, settings->previewScale);
  }
  updateZoomButtons(dialog);
}

void zoomIn(DialogState* dialog) {
  const int32_t scale = settingsOf(dialog)->previewScale;
  if (scale >= 2) zoomTo(dialog, scale - 1);
}

void zoomOut(DialogState* dialog) {
  const int32_t scale = settingsOf(dialog)->previewScale;
  if (scale < dialog->fitScale) zoomTo(dialog, scale + 1);
}

void zoomToFull(DialogState* dialog) {
  zoomTo(dialog, 1);
}

void updateZoomButtons(DialogState* dialog) {
  const int32_t scale = settingsOf(dialog)->previewScale;
  uint8_t* enabled = dialog->session->dialog.controlEnabled;
  enabled[kZoomOutButton] = scale < dialog->fitScale ? 1 : 0;
  enabled[kZoomInButton] = scale > 1 ? 1 : 0;
  for (int32_t id : {kZoomOutButton, kZoomInButton, kZoomButton}) repaintControl(dialog, id);
}

// --- Pan ------------------------------------------------------------------------------------

// The untouched picture over the checkerboard, into the host's output buffer.
static void copySourceToOutput(DialogState* dialog) {
  const FilterRecord* filter = dialog->session->filter;
  const int32_t planes = filter->planes;
  if (filter->inData == nullptr || filter->outData == nullptr || (planes != 1 && planes != 3)) {
    return;
  }
  const int32_t inStep = filter->inHiPlane - filter->inLoPlane + 1;
  const int32_t width = std::min(widthOf(filter->outRect), widthOf(filter->inRect));
  const int32_t height = std::min(heightOf(filter->inRect), heightOf(filter->outRect));
  for (int32_t y = 0; y < height; ++y) {
    const uint8_t* in = filter->inData + int64_t{y} * filter->inRowBytes;
    uint8_t* out = filter->outData + int64_t{y} * filter->outRowBytes;
    const MaskRow mask = maskRow(dialog->session, y);
    for (int32_t x = 0; x < width; ++x, in += inStep, out += planes) {
      const int32_t m = mask.value(x);
      const int32_t checker = ((x ^ y) & 8) == 0 ? 255 : 204;
      for (int32_t plane = 0; plane < planes; ++plane) {
        out[plane] = static_cast<uint8_t>((in[plane] * m + checker * (255 - m)) / 256);
      }
    }
  }
}

void showSourceInPreview(DialogState* dialog) {
  if (settingsOf(dialog)->hostDrawsPreview != 1) return;
  if (settingsOf(dialog)->previewMode == 1) copySourceToOutput(dialog);
  drawPreview(dialog, /*erase=*/false);
}

void panPreview(DialogState* dialog) {
  EffectSettings* settings = settingsOf(dialog);
  const int32_t dx = (settings->mouse.h - settings->lastMouse.h) * settings->previewScale;
  const int32_t dy = (settings->mouse.v - settings->lastMouse.v) * settings->previewScale;
  if (dx != 0 || dy != 0) {
    settings->previewOriginX -= dx;
    settings->previewOriginY -= dy;
    clampOrigin(dialog, settings->previewScale);
    requestPreviewImage(dialog->session, settings->previewScale);
    setCursor(dialog->window, CursorShape::closedHand);
    showSourceInPreview(dialog);
  }
  settings->lastMouse = settings->mouse;
}
