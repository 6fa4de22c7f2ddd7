#include "hosts/substitute_host/host_record.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "hosts/substitute_host/host_log.h"
#include "hosts/substitute_host/host_state.h"
#include "hosts/substitute_host/row_exchange.h"
#include "hosts/substitute_host/suites/buffer_suite.h"
#include "hosts/substitute_host/suites/color_services.h"
#include "hosts/substitute_host/suites/descriptors.h"
#include "hosts/substitute_host/suites/display_pixels.h"
#include "hosts/substitute_host/suites/handle_suite.h"

constexpr int16_t kPaddingError = -3;
constexpr int32_t kResolution = 72 * kFixedOne;  // pixels per inch, 16.16

HostState& host() {
  static HostState state;
  return state;
}

const HostPicture& hostSource() {
  return host().switches.inPlace == InPlace::off ? host().source : host().destination;
}

static uint8_t MORVALIS_CALL abortProc() {
  logCall("abortProc");
  const HostSwitches& switches = host().switches;
  ++host().abortTests;
  if (host().abortTests == switches.abortAtTest) return 1;
  return switches.abortTest && switches.abortTest() ? 1 : 0;
}

static void MORVALIS_CALL progressProc(int32_t done, int32_t total) {
  logCall("progressProc");
  if (host().switches.progress) host().switches.progress(done, total);
}

static void MORVALIS_CALL processEvent(void* /*event*/) {
  logCall("processEvent");
}

static int16_t filterCaseOf(bool layer, bool masked) {
  if (layer) return masked ? 5 : 4;
  return masked ? 2 : 1;
}

static void describePlanes(FilterRecord* record, int16_t planes) {
  const bool layer = planes == 2 || planes == 4;
  const int16_t colors = planes < 3 ? 1 : 3;
  const int16_t transparency = layer ? 1 : 0;
  const int16_t layerPlanes = layer ? colors : 0;
  const int16_t flatPlanes = layer ? 0 : colors;
  record->planes = planes;
  record->imageMode = planes < 3 ? kImageModeGrey : kImageModeRgb;
  record->filterCase = filterCaseOf(layer, record->haveMask != 0);
  record->inLayerPlanes = record->outLayerPlanes = record->absLayerPlanes = layerPlanes;
  record->inTransparencyMask = record->outTransparencyMask = record->absTransparencyMask =
      transparency;
  record->inNonLayerPlanes = record->outNonLayerPlanes = record->absNonLayerPlanes = flatPlanes;
  record->inPlaneBytes = record->outPlaneBytes = 1;
}

static void offerServices(FilterRecord* record) {
  record->abortProc = abortProc;
  record->progressProc = progressProc;
  record->processEvent = reinterpret_cast<void*>(processEvent);
  record->bufferProcs = offerBufferSuite();
  record->handleProcs = offerHandleSuite();
  record->displayPixels = offerDisplayPixels();
  record->advanceState = offerAdvanceState();
  record->colorServices = offerColorServices();
  record->descriptorParameters = offerScripting();
}

static void fillRecord(FilterRecord* record) {
  const HostPicture& picture = hostSource();
  const int16_t width = static_cast<int16_t>(picture.width);
  const int16_t height = static_cast<int16_t>(picture.height);
  record->imageSize = {height, width};
  record->wholeSize = record->imageSize;
  record->filterRect = {0, 0, height, width};
  record->background = {65535, 65535, 65535};
  std::fill_n(record->backColor, 4, uint8_t{255});
  record->maxSpace = kHostMemory;
  record->maxSpace64 = kHostMemory;
  record->haveMask = host().mask.empty() ? 0 : 1;
  record->autoMask = 1;
  record->hostSig = fourCharacterCode("MvSb");
  record->imageHRes = record->imageVRes = kResolution;
  record->platformData = &host().platformData;
  record->dummyPlaneValue = -1;
  record->supportsPadding = 1;
  record->inputPadding = record->outputPadding = record->maskPadding = kPaddingError;
  record->samplingSupport = host().switches.honourSampling ? 1 : 0;
  record->inputRate = record->maskRate = kFixedOne;
  record->errorString = host().errorString;
  record->depth = 8;
  describePlanes(record, static_cast<int16_t>(picture.planes));
  offerServices(record);
}

void openHost(const HostSwitches& switches, HostPicture picture, HostMask mask) {
  HostState& state = host();
  state = HostState{};
  state.switches = switches;
  // Whatever the caller states as size, every pixel is there.
  const size_t pixels = static_cast<size_t>(picture.width) * static_cast<size_t>(picture.height);
  picture.samples.resize(pixels * static_cast<size_t>(picture.planes));
  if (!mask.empty()) mask.resize(pixels);
  state.destination = std::move(picture);
  if (switches.inPlace == InPlace::off) state.source = state.destination;
  state.mask = std::move(mask);
  state.record = std::make_unique<FilterRecord>();
  fillRecord(state.record.get());
}

void setFilterRect(const Rectangle& rect) {
  host().record->filterRect = rect;
}

void closeHost() {
  HostState& state = host();
  if (state.record == nullptr) return;
  releaseRows();
  state.handles.clear();
  state.buffers.clear();
  state.descriptors.clear();
  state.readSessions.clear();
  state.writeSessions.clear();
  state.scripting.descriptor = nullptr;
  state.record->parameters = nullptr;
  state.dataSlot = 0;
}

void forgetModule() {
  HostState& state = host();
  const intptr_t slot = std::exchange(state.dataSlot, 0);
  if (!freeHandle(reinterpret_cast<Handle>(slot))) freeBuffer(slot);
  freeHandle(state.record->parameters);
  state.record->parameters = nullptr;
}

// A handle of the module's own is kept as the number that it is.
static Handle copyBlock(Handle handle) {
  const auto found = host().handles.find(handle);
  if (found == host().handles.end()) return handle;
  Handle copy = newHostHandle(found->second.size);
  HandleBlock& block = host().handles[copy];
  block.hostOwned = false;
  std::memcpy(block.bytes.get(), found->second.bytes.get(), static_cast<size_t>(block.size));
  freeHandle(handle);
  return copy;
}

void copyKeptBlocks() {
  HostState& state = host();
  state.record->parameters = copyBlock(state.record->parameters);
  state.dataSlot = reinterpret_cast<intptr_t>(copyBlock(reinterpret_cast<Handle>(state.dataSlot)));
}

FilterRecord* hostRecord() {
  return host().record.get();
}

void beginRun() {
  HostState& state = host();
  releaseRows();
  if (state.switches.inPlace == InPlace::off) state.destination = state.source;
  state.record->inRect = {};
  state.record->outRect = {};
  state.record->maskRect = {};
}

const HostPicture& filteredPicture() {
  return host().destination;
}

HostPicture takeFilteredPicture() {
  return std::exchange(host().destination, HostPicture());
}
