#include "geometry/render_buffers.h"

#include <algorithm>

#include "entry/session_record.h"
#include "geometry/field/fast_field.h"
#include "geometry/preview/preview_places.h"
#include "geometry/preview/preview_render.h"
#include "pictures/picture_release.h"
#include "pictures/sources/picture_tables.h"
#include "services/fixed_point.h"
#include "services/host_buffers.h"
#include "services/memory_blocks.h"

constexpr int32_t kSpareBufferSpace = 1000;  // bytes asked of the host beyond the buffers

constexpr int32_t kLargestPreviewScale = 32767;  // no host's picture is larger

// Words of the line buffer that the row memories and the column table may use together.
constexpr int32_t kLineBufferSpare = 2184;
constexpr int32_t kTarnishRowStart = 2176;
constexpr int32_t kColumnTableGap = 2178;

void setGeometry(SessionRecord* session, const Rectangle& rect, int32_t factor) {
  RenderState* render = &session->render;
  settingsOf(session)->previewScale = std::clamp(factor, 1, kLargestPreviewScale);
  render->renderWidth = std::max(rect.right - rect.left, 0);
  render->renderHeight = std::max(rect.bottom - rect.top, 0);
  render->lastCol = render->renderWidth - 1;
  render->lastRow = render->renderHeight - 1;
  render->fieldStride = render->renderWidth + 2;
  render->fieldRows = render->renderHeight + 2;
  render->lineBufferWords =
      std::max(render->renderWidth + 4, 3 * render->renderWidth + kLineBufferSpare);
  render->columnTableStart = render->renderWidth + kColumnTableGap;
  // Past the previous-row memory, which is one word per column.
  render->tarnishRowStart = std::max(kTarnishRowStart, render->renderWidth);
  render->bandTop = 0;
  render->bandLeft = 0;
  render->preview.place = {};
}

static uint64_t lineBufferBytes(const RenderState* render) {
  return uint64_t{4} * static_cast<uint32_t>(render->lineBufferWords);
}

static uint64_t heightFieldBytes(const RenderState* render) {
  return uint64_t{2} * static_cast<uint32_t>(render->fieldStride) *
         static_cast<uint32_t>(render->fieldRows);
}

void computeBufferSizes(SessionRecord* session) {
  RenderState* render = &session->render;
  const uint64_t sum = lineBufferBytes(render) + heightFieldBytes(render) + 2 * kKernelBytes +
                       2 * kPictureTableBytes + kSpareBufferSpace;
  session->filter->bufferSpace = saturateToInt32(static_cast<int64_t>(sum));
}

static bool allocateFromHost(const FilterRecord* filter, RenderBuffer* buffer, uint64_t bytes) {
  if (bytes > INT32_MAX) return false;
  HostBufferId id = 0;
  if (allocateHostBuffer(filter, static_cast<int32_t>(bytes), &id) != kNoError) return false;
  buffer->address = lockHostBuffer(filter, id, /*moveHigh=*/true);
  buffer->isHosts = buffer->address != nullptr;
  if (buffer->isHosts) {
    buffer->hostId = id;
  } else {
    freeHostBuffer(filter, id);
  }
  return buffer->isHosts;
}

static void allocateBuffer(const FilterRecord* filter, RenderBuffer* buffer, uint64_t bytes) {
  *buffer = {};
  if (!allocateFromHost(filter, buffer, bytes)) buffer->address = newModuleBlock(bytes);
  if (buffer->address != nullptr) buffer->bytes = bytes;
}

void allocateBuffers(SessionRecord* session) {
  RenderState* render = &session->render;
  const FilterRecord* filter = session->filter;
  allocateBuffer(filter, &render->lineBuffer, lineBufferBytes(render));
  allocateBuffer(filter, &render->heightField, heightFieldBytes(render));
  allocateBuffer(filter, &render->coneKernel, kKernelBytes);
  allocateBuffer(filter, &render->edgeKernel, kKernelBytes);
  allocateBuffer(filter, &render->environmentTable, kPictureTableBytes);
  allocateBuffer(filter, &render->textureTable, kPictureTableBytes);
  if (render->lineBuffer.address == nullptr || render->heightField.address == nullptr ||
      render->coneKernel.address == nullptr || render->edgeKernel.address == nullptr) {
    freeBuffers(session);
    *session->result = kRenderBuffersMissing;
  }
}

static void freeBuffer(const FilterRecord* filter, RenderBuffer* buffer) {
  if (buffer->isHosts) {
    unlockHostBuffer(filter, buffer->hostId);
    freeHostBuffer(filter, buffer->hostId);
  } else {
    freeModuleBlock(buffer->address);
  }
  *buffer = {};
}

void freeBuffers(SessionRecord* session) {
  releasePictures(session);
  RenderState* render = &session->render;
  const FilterRecord* filter = session->filter;
  freeBuffer(filter, &render->lineBuffer);
  freeBuffer(filter, &render->heightField);
  freeBuffer(filter, &render->coneKernel);
  freeBuffer(filter, &render->edgeKernel);
  freeBuffer(filter, &render->environmentTable);
  freeBuffer(filter, &render->textureTable);
  freeFastField(session);
  freePreviewRender(session);
}

bool geometryFitsBuffers(const SessionRecord* session) {
  const RenderState* render = &session->render;
  return render->renderWidth > 0 && render->renderHeight > 0 &&
         render->lineBuffer.bytes >= lineBufferBytes(render) &&
         render->heightField.bytes >= heightFieldBytes(render) &&
         render->coneKernel.address != nullptr && render->edgeKernel.address != nullptr;
}

bool recordStands(const SessionRecord* session) {
  const FilterRecord* filter = session->filter;
  return filter->parameters != nullptr && filter->parameters == session->lockedSettings &&
         isSameRect(filter->filterRect, session->render.renderedRect) &&
         filter->planes == session->render.renderedPlanes;
}
