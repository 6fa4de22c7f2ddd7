#include "geometry/preview/preview_render.h"

#include <algorithm>
#include <cstdint>

#include "entry/session_record.h"
#include "geometry/preview/mask_copy.h"
#include "geometry/preview/preview_places.h"
#include "geometry/render_buffers.h"
#include "geometry/render_setup.h"
#include "geometry/row_machine.h"
#include "services/alerts.h"
#include "services/memory_blocks.h"

// Pixels of a picture whose field is built as a whole during a drag as well.
constexpr int64_t kQuickPixels = 1 << 18;

// Cells around a pixel that the tarnish gathers from.
constexpr int32_t kNeighbours = 2;

static int32_t widthOf(const Rectangle& rect) {
  return rect.right - rect.left;
}
static int32_t heightOf(const Rectangle& rect) {
  return rect.bottom - rect.top;
}

// --- The field ------------------------------------------------------------------------------

static bool knowsWholePicture(const SessionRecord* session) {
  const PreviewState& preview = session->render.preview;
  return session->filter->haveMask == 0 || preview.maskCopy.whole != 0 ||
         isSameRect(preview.maskRegion, preview.picture);
}

static bool isKept(const SessionRecord* session, const Rectangle& rect) {
  const KeptField& kept = session->render.preview.kept;
  return kept.valid != 0 && kept.haveMask == session->filter->haveMask &&
         kept.radius == session->render.effRadius &&
         kept.scale == settingsOf(session)->previewScale && isSameRect(kept.rect, rect);
}

// What the field is built over. Reduced, no more than the margin is asked for: the final render
// does not look the same anyway.
static Rectangle fieldRect(const SessionRecord* session, bool quick) {
  const PreviewState& preview = session->render.preview;
  const Rectangle around = withMargin(preview.frame, session->render.effRadius, preview.picture);
  if (settingsOf(session)->previewScale != 1 || !knowsWholePicture(session)) return around;
  const int64_t pixels = int64_t{widthOf(preview.picture)} * heightOf(preview.picture);
  if (quick && pixels > kQuickPixels && !isKept(session, preview.picture)) return around;
  return preview.picture;
}

static void buildField(SessionRecord* session, const Rectangle& rect) {
  RenderState* render = &session->render;
  PreviewState* preview = &render->preview;
  // Read where the host's rows do not reach.
  preview->maskCopy.inUse = preview->maskCopy.whole != 0 &&
                            settingsOf(session)->previewScale == 1 &&
                            isSameRect(rect, preview->picture);
  beginField(session);
  while (render->running == 1 && render->phase != kPhaseProfile) step(session);
  preview->maskCopy.inUse = 0;
  preview->kept = {1, session->filter->haveMask, rect, settingsOf(session)->previewScale,
                   render->effRadius};
}

// --- The part that is shaded ----------------------------------------------------------------

static bool haveCutOutRoom(PreviewState* preview, uint64_t bytes) {
  if (preview->cutOut != nullptr && preview->cutOutBytes >= bytes) return true;
  freeModuleBlock(preview->cutOut);
  preview->cutOut = static_cast<int16_t*>(newModuleBlock(bytes));
  preview->cutOutBytes = preview->cutOut == nullptr ? 0 : bytes;
  return preview->cutOut != nullptr;
}

// The frame and the pixels around it that the shading looks at, as far as there is a picture.
static Rectangle shadedRect(const PreviewState& preview) {
  const Rectangle& frame = preview.frame;
  const Rectangle& picture = preview.picture;
  const auto side = [](int32_t value) { return static_cast<int16_t>(value); };
  return {side(std::max(frame.top - kNeighbours, int32_t{picture.top})),
          side(std::max(frame.left - kNeighbours, int32_t{picture.left})),
          side(std::min(frame.bottom + kNeighbours, int32_t{picture.bottom})),
          side(std::min(frame.right + kNeighbours, int32_t{picture.right}))};
}

// With the border of a cell on every side that a field has.
static void cutOutOfField(SessionRecord* session, const Rectangle& rect) {
  RenderState* render = &session->render;
  PreviewState* preview = &render->preview;
  const Rectangle& kept = preview->kept.rect;
  const int64_t stride = widthOf(kept) + 2;
  const int32_t width = widthOf(rect) + 2;
  const auto* cells = static_cast<const int16_t*>(render->heightField.address) +
                      (rect.top - kept.top) * stride + (rect.left - kept.left);
  int16_t* to = preview->cutOut;
  for (int32_t y = 0; y < heightOf(rect) + 2; ++y, to += width, cells += stride) {
    std::copy_n(cells, width, to);
  }
}

static void shadeFrame(SessionRecord* session, const Rectangle& rect) {
  RenderState* render = &session->render;
  const Rectangle& frame = render->preview.frame;
  cutOutOfField(session, rect);
  usePlace(session, rect);
  PreviewPlace* place = &render->preview.place;
  place->onCutOut = 1;
  place->columnsBefore = frame.left - rect.left;
  place->rowsBefore = frame.top - rect.top;
  place->rowsBehind = rect.bottom - frame.bottom;
  render->running = 1;
  enterProfile(session);
  while (render->running == 1 && *session->result == kNoError) step(session);
}

// --- The whole ------------------------------------------------------------------------------

// By what the frame shows alone.
static void runFramePreview(SessionRecord* session) {
  const RenderState& render = session->render;
  renderSetUp(session);
  if (*session->result != kNoError) {
    showAlert(kNotEnoughMemoryAlert);
    return;
  }
  while (render.running == 1 && *session->result == kNoError) step(session);
}

static void runWidePreview(SessionRecord* session, bool quick) {
  RenderState* render = &session->render;
  PreviewState* preview = &render->preview;
  const Rectangle shaded = shadedRect(*preview);
  const uint64_t bytes = uint64_t{sizeof(int16_t)} * static_cast<uint32_t>(widthOf(shaded) + 2) *
                         static_cast<uint32_t>(heightOf(shaded) + 2);
  if (!haveCutOutRoom(preview, bytes)) return runFramePreview(session);
  setUpSurface(session);
  const Rectangle rect = fieldRect(session, quick);
  usePlace(session, rect);
  if (geometryFitsBuffers(session)) {
    if (!isKept(session, rect)) buildField(session, rect);
    shadeFrame(session, shaded);
  } else {
    *session->result = kRenderBuffersMissing;
    showAlert(kNotEnoughMemoryAlert);
  }
  usePlace(session, preview->frame);
}

static void run(SessionRecord* session, bool quick) {
  RenderState* render = &session->render;
  const FilterRecord* filter = session->filter;
  render->running = 0;
  // A thin picture, reduced, may have no rows left to show.
  if (render->renderWidth < 1 || render->renderHeight < 1) return;
  if (filter->advanceState == nullptr) return;
  if (filter->displayPixels == nullptr) {
    showStringAlert(kPreviewUnavailableString);
    return;
  }
  if (!recordStands(session)) *session->result = kFilterBadParameters;
  if (*session->result != kNoError) {
    showAlert(kNotEnoughMemoryAlert);
    return;
  }
  if (render->preview.wide != 0 && render->buildHeightField == 1) {
    runWidePreview(session, quick);
  } else {
    runFramePreview(session);
  }
  render->running = 0;
}

void runPreview(SessionRecord* session) {
  run(session, /*quick=*/false);
}

void runQuickPreview(SessionRecord* session) {
  run(session, /*quick=*/true);
}

void freePreviewRender(SessionRecord* session) {
  PreviewState* preview = &session->render.preview;
  freeMaskCopy(session);
  freeModuleBlock(preview->cutOut);
  *preview = {};
}
