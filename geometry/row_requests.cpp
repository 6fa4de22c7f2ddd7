#include "geometry/row_requests.h"

#include <algorithm>

#include "entry/session_record.h"
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
