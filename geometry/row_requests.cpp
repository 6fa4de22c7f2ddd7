#include "geometry/row_requests.h"

#include <algorithm>
#include <cstdlib>

#include "entry/session_record.h"
#include "geometry/preview/mask_copy.h"
#include "geometry/preview/preview_places.h"
#include "geometry/render_buffers.h"
#include "services/fixed_point.h"

// Rows of the mask band before and after the row in work.
constexpr int32_t kBandBefore = 2;
constexpr int32_t kBandAfter = 2;

void requestAllPlanes(FilterRecord* filter, int32_t rate) {
  filter->inLoPlane = 0;
  filter->outLoPlane = 0;
  filter->inHiPlane = static_cast<int16_t>(filter->planes - 1);
  filter->outHiPlane = filter->inHiPlane;
  filter->inputRate = rate;
  if (filter->haveMask != 0) filter->maskRate = rate;
  filter->inputPadding = kPaddingRepeatEdge;
  filter->outputPadding = kPaddingRepeatEdge;
  filter->maskPadding = kPaddingRepeatEdge;
}

static Rectangle rowsOf(const Rectangle& rect, int32_t top, int32_t bottom) {
  return {saturateToInt16(top), rect.left, saturateToInt16(bottom), rect.right};
}

static Rectangle maskBand(const Rectangle& rect, int32_t row) {
  const int32_t top = std::max(rect.top + row - kBandBefore, int32_t{rect.top});
  const int32_t bottom = std::min(rect.top + row + kBandAfter, int32_t{rect.bottom});
  return rowsOf(rect, top, std::max(bottom, top + 1));
}

void requestRowRects(SessionRecord* session) {
  FilterRecord* filter = session->filter;
  RenderState* render = &session->render;
  const Rectangle& rect = render->renderedRect;
  setGeometry(session, rect, 1);
  const int32_t row = rect.top + std::max(render->row, 0);
  filter->inRect = rowsOf(rect, row, row + 1);
  filter->outRect = filter->inRect;
  if (filter->haveMask != 0) filter->maskRect = maskBand(rect, render->row);
  if (render->maskPass == 1) {
    // Hosts take an empty input as the end, so one column is asked for and left alone.
    filter->inRect.right = static_cast<int16_t>(filter->inRect.left + 1);
    filter->outRect = {};
  } else {
    filter->maskRect = {};
  }
  requestAllPlanes(filter, kFixedOne);
  render->bandTop = filter->maskRect.top - rect.top;
}

void emptyRects(SessionRecord* session) {
  session->filter->inRect = {};
  session->filter->outRect = {};
  session->filter->maskRect = {};
}

int16_t withdrawForRate(SessionRecord* session, int32_t rate) {
  const FilterRecord* filter = session->filter;
  const int32_t before = session->render.requestedRate;
  session->render.requestedRate = rate;
  if (before == 0 || before == rate || filter->advanceState == nullptr) return kNoError;
  emptyRects(session);
  return filter->advanceState();
}

bool maskIsDelivered(const FilterRecord* filter, const Rectangle& rect) {
  return filter->maskData != nullptr && isSameRect(filter->maskRect, rect) &&
         std::abs(int64_t{filter->maskRowBytes}) >= rect.right - rect.left;
}

static int16_t exchangePreview(FilterRecord* filter, const Rectangle& frame, const Rectangle& mask,
                               int32_t rate) {
  filter->inRect = frame;
  filter->outRect = frame;
  if (filter->haveMask != 0) filter->maskRect = mask;
  requestAllPlanes(filter, rate);
  return filter->advanceState == nullptr ? kNoError : filter->advanceState();
}

// Whether the host refuses the rectangle, rather than fail for want of something else.
static bool isRefusal(int16_t error) {
  return error == kParameterError || error == kFilterBadParameters;
}

void requestPreviewImage(SessionRecord* session, int32_t factor) {
  FilterRecord* filter = session->filter;
  PreviewState* preview = &session->render.preview;
  if (!recordStands(session)) {
    *session->result = kFilterBadParameters;
    return;
  }
  const int32_t reduction = std::clamp(factor, 1, int32_t{INT16_MAX});
  const int32_t rate = reduction * kFixedOne;
  const Rectangle frame = previewRect(session, reduction);
  preview->frame = frame;
  preview->picture = reducedPicture(session, reduction);
  preview->maskRegion =
      withMargin(frame, std::max(kLargestRadius / reduction, 1), preview->picture);
  if (preview->marginRefused != 0) preview->maskRegion = frame;
  int16_t error = withdrawForRate(session, rate);
  if (error == kNoError && reduction == 1 && preview->marginRefused == 0 &&
      !isSameRect(preview->maskRegion, preview->picture)) {
    takeMaskCopy(session);
  }
  if (error == kNoError) error = exchangePreview(filter, frame, preview->maskRegion, rate);
  const bool known = filter->haveMask == 0 || maskIsDelivered(filter, preview->maskRegion);
  if (!isSameRect(preview->maskRegion, frame) &&
      (isRefusal(error) || (error == kNoError && !known))) {
    preview->marginRefused = 1;
    error = exchangePreview(filter, frame, frame, rate);
  }
  if (filter->advanceState != nullptr) *session->result = error;
  setGeometry(session, frame, reduction);
  const bool margin = filter->haveMask == 0 || (known && preview->marginRefused == 0);
  preview->wide = margin && error == kNoError && isWithin(frame, preview->picture) ? 1 : 0;
  if (preview->wide != 0) usePlace(session, frame);
}
