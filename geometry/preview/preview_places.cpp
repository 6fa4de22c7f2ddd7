#include "geometry/preview/preview_places.h"

#include <algorithm>

#include "entry/session_record.h"
#include "geometry/render_buffers.h"
#include "services/fixed_point.h"

// Pixels after which the smoothing has forgotten where it began, but for a step of 1 that it may
// carry along a straight edge.
constexpr int32_t kSmoothingMargin = 64;

Rectangle reducedPicture(const SessionRecord* session, int32_t factor) {
  const Rectangle& whole = session->filter->filterRect;
  const auto reduced = [factor](int16_t side) { return static_cast<int16_t>(side / factor); };
  return {reduced(whole.top), reduced(whole.left), reduced(whole.bottom), reduced(whole.right)};
}

Rectangle previewRect(const SessionRecord* session, int32_t factor) {
  const EffectSettings* settings = settingsOf(session);
  const Rectangle& whole = session->filter->filterRect;
  const Rectangle& frame = session->render.previewFrame;
  Rectangle rect = whole;
  offsetRect(&rect, settings->previewOriginX, settings->previewOriginY);
  rect = intersectRects(rect, whole);
  rect.top = static_cast<int16_t>(rect.top / factor);
  rect.left = static_cast<int16_t>(rect.left / factor);
  rect.bottom = static_cast<int16_t>(rect.bottom / factor);
  rect.right = static_cast<int16_t>(rect.right / factor);
  const int32_t width = frame.right - frame.left;
  const int32_t height = frame.bottom - frame.top;
  if (rect.right - rect.left > width) rect.right = saturateToInt16(rect.left + width);
  if (rect.bottom - rect.top > height) rect.bottom = saturateToInt16(rect.top + height);
  return rect;
}

Rectangle withMargin(const Rectangle& rect, int32_t radius, const Rectangle& picture) {
  const int32_t margin = radius + kSmoothingMargin;
  return intersectRects(
      {saturateToInt16(rect.top - margin), saturateToInt16(rect.left - margin),
       saturateToInt16(rect.bottom + margin), saturateToInt16(rect.right + margin)},
      picture);
}

bool isSameRect(const Rectangle& a, const Rectangle& b) {
  return a.top == b.top && a.left == b.left && a.bottom == b.bottom && a.right == b.right;
}

bool isWithin(const Rectangle& inner, const Rectangle& outer) {
  return inner.top >= outer.top && inner.left >= outer.left && inner.bottom <= outer.bottom &&
         inner.right <= outer.right;
}

void usePlace(SessionRecord* session, const Rectangle& rect) {
  RenderState* render = &session->render;
  const Rectangle& delivered = session->filter->maskRect;
  setGeometry(session, rect, settingsOf(session)->previewScale);
  PreviewPlace* place = &render->preview.place;
  place->placed = 1;
  place->left = rect.left - render->preview.picture.left;
  place->top = rect.top - render->preview.picture.top;
  if (session->filter->haveMask == 0) return;
  render->bandTop = delivered.top - rect.top;
  render->bandLeft = delivered.left - rect.left;
}
