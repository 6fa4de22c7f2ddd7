#include "dialog/preview/preview_area.h"

#include <algorithm>
#include <cstring>

#include "dialog/controls/dialog_controls.h"
#include "dialog/dialog_scale.h"
#include "dialog/dialog_state.h"
#include "dialog/preview/preview_zoom.h"
#include "geometry/field/selection_mask.h"
#include "geometry/preview/preview_render.h"
#include "geometry/preview/preview_request.h"
#include "platform/window.h"
#include "services/fixed_point.h"
#include "services/memory_blocks.h"

// Pixels at 100 percent.
constexpr int32_t kFrameInset = 2;
constexpr int32_t kPanStep = 16;

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
  Rectangle frame = inset(controlRect(kPreviewArea), kFrameInset * pen());
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

// A host that could not deliver the first picture will not deliver another one.
static bool canRender(const DialogState* dialog) {
  const FilterRecord* filter = dialog->session->filter;
  const bool hostCouldDraw = filter->advanceState != nullptr && filter->displayPixels != nullptr;
  return settingsOf(dialog)->hostDrawsPreview == 1 || !hostCouldDraw;
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
  if (*dialog->session->result == kNoError && openAtBevel(dialog)) {
    clampOrigin(dialog, settings->previewScale);
    requestPreviewImage(dialog->session, settings->previewScale);
  }
  dialog->session->render.buildHeightField = 1;
  if (*dialog->session->result == kNoError) {
    runPreviewUnderWaitCursor(dialog);
  } else {
    settings->hostDrawsPreview = 0;
    settings->previewScale = 1;
    *dialog->session->result = kNoError;
    dialog->fitScale = 1;
  }
}

// Of the output, no more than was asked for: a host may change its rectangle, not what it holds.
static int32_t outputWidth(const SessionRecord* session) {
  const int32_t asked = widthOf(session->render.preview.frame);
  return std::clamp(widthOf(session->filter->outRect), 0, std::max(asked, 0));
}
static int32_t outputHeight(const SessionRecord* session) {
  const int32_t asked = heightOf(session->render.preview.frame);
  return std::clamp(heightOf(session->filter->outRect), 0, std::max(asked, 0));
}

// Zero-based: with the bounds of the requested rectangle real hosts shift the picture and read past
// its end once it is panned.
static void displayHostPixels(DialogState* dialog, int32_t row, int32_t column) {
  const FilterRecord* filter = dialog->session->filter;
  if (filter->displayPixels == nullptr || filter->outData == nullptr) return;
  const HostRectangle32 bounds = {0, 0, outputHeight(dialog->session),
                                  outputWidth(dialog->session)};
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
  const Rectangle inner = inset(area, kFrameInset * pen());
  const Rectangle clip = dialog->canvas.clip;
  dialog->canvas.clip = area;
  if (erase) fillArea(&dialog->canvas, inner, kWhite);
  drawBevel(&dialog->canvas,
            {narrowed(inner.top - pen()), narrowed(inner.left - pen()),
             narrowed(inner.bottom + pen() - 1), narrowed(inner.right + pen() - 1)},
            kBlack, kBlack);
  displayHostPixels(dialog, (area.top + area.bottom - outputHeight(dialog->session)) / 2,
                    (area.left + area.right - outputWidth(dialog->session)) / 2);
  dialog->canvas.clip = clip;
  presentArea(dialog, area);
}

void renderPreview(DialogState* dialog) {
  forgetSource(dialog);
  if (!canRender(dialog)) return;
  runPreviewUnderWaitCursor(dialog);
  repaintControl(dialog, kPreviewArea);
}

void renderPreviewAtOnce(DialogState* dialog) {
  forgetSource(dialog);
  if (!canRender(dialog)) return;
  runQuickPreview(dialog->session);
  drawPreview(dialog, /*erase=*/false);
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
  forgetSource(dialog);
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
  if (scale >= 2) zoomTo(dialog, zoomedIn(scale));
}

void zoomOut(DialogState* dialog) {
  const int32_t scale = settingsOf(dialog)->previewScale;
  if (scale < dialog->fitScale) zoomTo(dialog, zoomedOut(scale, dialog->fitScale));
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

// The untouched picture over the checkerboard, into the host's output buffer. Transparency is left
// as it is.
static void copySourceToOutput(DialogState* dialog) {
  const FilterRecord* filter = dialog->session->filter;
  const int32_t step = filter->planes;
  const int32_t samples = step < 3 ? 1 : 3;
  if (filter->inData == nullptr || filter->outData == nullptr || step < 1) return;
  const PreviewPlace& place = dialog->session->render.preview.place;
  const int32_t width = std::min(outputWidth(dialog->session), widthOf(filter->inRect));
  const int32_t height = std::min(outputHeight(dialog->session), heightOf(filter->inRect));
  for (int32_t y = 0; y < height; ++y) {
    const uint8_t* in = filter->inData + int64_t{y} * filter->inRowBytes;
    uint8_t* out = filter->outData + int64_t{y} * filter->outRowBytes;
    const MaskRow mask = maskRow(dialog->session, y);
    for (int32_t x = 0; x < width; ++x, in += step, out += step) {
      const int32_t m = mask.value(x);
      const int32_t checker = (((place.left + x) ^ (place.top + y)) & 8) == 0 ? 255 : 204;
      for (int32_t i = 0; i < samples; ++i) {
        out[i] = static_cast<uint8_t>((in[i] * m + checker * (255 - m)) / 256);
      }
    }
  }
}

// While panning, pictures with transparency show what the host has delivered.
static void showRawPicture(DialogState* dialog) {
  const int32_t planes = dialog->session->filter->planes;
  const bool copies = planes == 1 || planes == 3;
  if (settingsOf(dialog)->previewMode == 1 && copies) copySourceToOutput(dialog);
  if (settingsOf(dialog)->hostDrawsPreview == 1) drawPreview(dialog, /*erase=*/false);
}

void panPreview(DialogState* dialog) {
  EffectSettings* settings = settingsOf(dialog);
  const int32_t dx = (settings->mouse.h - settings->lastMouse.h) * settings->previewScale;
  const int32_t dy = (settings->mouse.v - settings->lastMouse.v) * settings->previewScale;
  if (dx != 0 || dy != 0) {
    forgetSource(dialog);
    settings->previewOriginX -= dx;
    settings->previewOriginY -= dy;
    clampOrigin(dialog, settings->previewScale);
    requestPreviewImage(dialog->session, settings->previewScale);
    setCursor(dialog->window, CursorShape::closedHand);
    showRawPicture(dialog);
  }
  settings->lastMouse = settings->mouse;
}

void finishPan(DialogState* dialog) {
  readControls(dialog);
  renderPreview(dialog);
  noteChange(dialog, shownSettings(dialog), {});
}

void movePreviewBack(DialogState* dialog) {
  forgetSource(dialog);
  requestPreviewImage(dialog->session, settingsOf(dialog)->previewScale);
  finishPan(dialog);
}

void stepPan(DialogState* dialog, int32_t right, int32_t down, bool end) {
  EffectSettings* settings = settingsOf(dialog);
  const Rectangle& whole = dialog->session->filter->filterRect;
  if (settings->hostDrawsPreview != 1 || settings->previewScale == dialog->fitScale) return;
  const int32_t step = scaled(kPanStep) * settings->previewScale;
  settings->previewOriginX += end ? right * widthOf(whole) : right * step;
  settings->previewOriginY += end ? right * heightOf(whole) : down * step;
  clampOrigin(dialog, settings->previewScale);
  movePreviewBack(dialog);
}

// --- The untouched picture ------------------------------------------------------------------

// The host's output without the gaps between its rows.
static size_t outputRowLength(const SessionRecord* session) {
  const FilterRecord* filter = session->filter;
  const int32_t step = filter->outHiPlane - filter->outLoPlane + 1;
  return static_cast<size_t>(outputWidth(session)) * static_cast<size_t>(std::max(step, 0));
}

static uint8_t* copyOfOutput(const SessionRecord* session) {
  const FilterRecord* filter = session->filter;
  const size_t length = outputRowLength(session);
  const int32_t height = outputHeight(session);
  if (filter->outData == nullptr || height <= 0) return nullptr;
  auto* copy = static_cast<uint8_t*>(newModuleBlock(length * static_cast<size_t>(height)));
  if (copy == nullptr) return nullptr;
  for (int32_t y = 0; y < height; ++y) {
    const uint8_t* row = filter->outData + int64_t{y} * filter->outRowBytes;
    std::memcpy(copy + length * static_cast<size_t>(y), row, length);
  }
  return copy;
}

// False when the host has changed its output since.
static bool putOutputBack(const DialogState* dialog) {
  const FilterRecord* filter = dialog->session->filter;
  const size_t length = dialog->keptRowLength;
  if (dialog->keptPreview == nullptr || filter->outData == nullptr ||
      outputRowLength(dialog->session) != length ||
      outputHeight(dialog->session) != dialog->keptHeight) {
    return false;
  }
  for (int32_t y = 0; y < dialog->keptHeight; ++y) {
    uint8_t* row = filter->outData + int64_t{y} * filter->outRowBytes;
    std::memcpy(row, dialog->keptPreview + length * static_cast<size_t>(y), length);
  }
  return true;
}

void showSource(DialogState* dialog) {
  if (settingsOf(dialog)->hostDrawsPreview != 1 || dialog->showsSource) return;
  dialog->showsSource = true;
  dialog->keptPreview = copyOfOutput(dialog->session);
  dialog->keptRowLength = outputRowLength(dialog->session);
  dialog->keptHeight = outputHeight(dialog->session);
  copySourceToOutput(dialog);
  drawPreview(dialog, /*erase=*/false);
}

void hideSource(DialogState* dialog) {
  if (!dialog->showsSource) return;
  if (!putOutputBack(dialog)) return renderPreview(dialog);
  forgetSource(dialog);
  drawPreview(dialog, /*erase=*/false);
}

void forgetSource(DialogState* dialog) {
  dialog->showsSource = false;
  freeModuleBlock(dialog->keptPreview);
  dialog->keptPreview = nullptr;
}
