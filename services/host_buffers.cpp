#include "services/host_buffers.h"

bool hostBuffersUsable(const BufferProcs* bufferProcs) {
  return bufferProcs != nullptr && bufferProcs->bufferProcsVersion == kBufferProcsVersion &&
         static_cast<uint16_t>(bufferProcs->numBufferProcs) >= kBufferProcsCount &&
         bufferProcs->allocateProc != nullptr && bufferProcs->lockProc != nullptr &&
         bufferProcs->unlockProc != nullptr && bufferProcs->freeProc != nullptr &&
         bufferProcs->spaceProc != nullptr;
}

int16_t allocateHostBuffer(const FilterRecord* filter, int32_t bytes, HostBufferId* id) {
  *id = 0;
  if (!hostBuffersUsable(filter->bufferProcs)) return kMemoryFull;
  return filter->bufferProcs->allocateProc(bytes, id);
}

void* lockHostBuffer(const FilterRecord* filter, HostBufferId id, bool moveHigh) {
  if (!hostBuffersUsable(filter->bufferProcs)) return nullptr;
  return filter->bufferProcs->lockProc(id, moveHigh ? 1 : 0);
}

void unlockHostBuffer(const FilterRecord* filter, HostBufferId id) {
  if (hostBuffersUsable(filter->bufferProcs)) filter->bufferProcs->unlockProc(id);
}

void freeHostBuffer(const FilterRecord* filter, HostBufferId id) {
  if (hostBuffersUsable(filter->bufferProcs)) filter->bufferProcs->freeProc(id);
}
