#include "geometry/preview/preview_request.h"

#include <algorithm>

#include "entry/session_record.h"
#include "geometry/preview/mask_copy.h"
#include "geometry/preview/preview_places.h"
#include "geometry/render_buffers.h"
#include "geometry/row_requests.h"
#include "services/fixed_point.h"

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
  // What the host still holds then is another request's, if it holds anything.
  if (filter->advanceState == nullptr || error != kNoError) preview->frame = {};
  setGeometry(session, frame, reduction);
  const bool margin = filter->haveMask == 0 || (known && preview->marginRefused == 0);
  preview->wide = margin && error == kNoError && isWithin(frame, preview->picture) ? 1 : 0;
  if (preview->wide != 0) usePlace(session, frame);
}
