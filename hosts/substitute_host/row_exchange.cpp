#include "hosts/substitute_host/row_exchange.h"

#include <algorithm>
#include <cstring>

#include "hosts/substitute_host/host_ledger.h"
#include "hosts/substitute_host/host_log.h"
#include "hosts/substitute_host/host_state.h"
#include "hosts/substitute_host/mask_mixing.h"
#include "hosts/substitute_host/row_source.h"

// One row of the output, `pixels` from `pixel` on.
static void storeRow(const DeliveredRows& rows, const uint8_t* from, size_t pixel, int32_t pixels) {
  HostPicture& picture = host().destination;
  const int32_t planes = rows.hiPlane - rows.loPlane + 1;
  uint8_t* to = &picture.samples[pixel * static_cast<size_t>(picture.planes)];
  const bool allPlanes = planes == picture.planes;
  if (allPlanes && host().switches.inPlace != InPlace::off && !host().mask.empty()) {
    mixRow(&host().mask[pixel], from, pixels, picture.planes,
           host().switches.inPlace == InPlace::whole, to);
  } else if (allPlanes) {
    std::memcpy(to, from, static_cast<size_t>(pixels) * static_cast<size_t>(planes));
  } else {
    to += rows.loPlane;
    for (int32_t x = 0; x < pixels; ++x, to += picture.planes) {
      for (int32_t plane = 0; plane < planes; ++plane) to[plane] = *from++;
    }
  }
}

static void storeOutput() {
  const DeliveredRows& rows = host().output;
  if (rows.bytes == nullptr) return;
  const HostPicture& picture = host().destination;
  const Rectangle& rect = rows.rect;
  const int32_t left = std::max<int32_t>(rect.left, 0);
  const int32_t right = std::min<int32_t>(rect.right, picture.width);
  const int32_t top = std::max<int32_t>(rect.top, 0);
  const int32_t bottom = std::min<int32_t>(rect.bottom, picture.height);
  if (left >= right) return;
  const size_t planes = static_cast<size_t>(rows.hiPlane - rows.loPlane + 1);
  for (int32_t y = top; y < bottom; ++y) {
    const size_t before = static_cast<size_t>(y - rect.top) * (rect.right - rect.left) +
                          static_cast<size_t>(left - rect.left);
    const size_t pixel = static_cast<size_t>(y) * picture.width + static_cast<size_t>(left);
    storeRow(rows, &rows.bytes[before * planes], pixel, right - left);
  }
}

static bool sameRect(const Rectangle& a, const Rectangle& b) {
  return a.top == b.top && a.left == b.left && a.bottom == b.bottom && a.right == b.right;
}

// Rows that are delivered clean and in their place need no new block each time.
static bool canReuse(const DeliveredRows& rows, size_t size) {
  const HostSwitches& switches = host().switches;
  return rows.bytes != nullptr && rows.size == size && !switches.moveBuffers &&
         !switches.dirtyMemory;
}

// Makes `rows` what the request asks for. Neither another rate nor other planes alone refill.
static int16_t deliver(const RowRequest& request, DeliveredRows* rows) {
  if (isEmptyRect(request.rect)) {
    *rows = {};
    return kNoError;
  }
  if (request.loPlane < 0 || request.hiPlane < request.loPlane ||
      request.hiPlane >= request.planes) {
    return kFilterBadParameters;
  }
  const bool unchanged = rows->bytes != nullptr && sameRect(request.rect, rows->rect);
  if (unchanged && !host().switches.moveBuffers) return kNoError;

  HostBytes bytes;
  size_t size = rows->size;
  if (unchanged) {
    bytes = movedBlock(rows->bytes, static_cast<int64_t>(size));
  } else if (canReuse(*rows, requestedBytes(request))) {
    bytes = std::move(rows->bytes);
  } else {
    size = requestedBytes(request);
    bytes = newBlock(static_cast<int64_t>(size));
  }
  if (bytes == nullptr) return kMemoryFull;
  if (!unchanged) {
    const int16_t error = fillRows(request, bytes.get());
    if (error != kNoError) return error;
    rows->rect = request.rect;
    rows->loPlane = request.loPlane;
    rows->hiPlane = request.hiPlane;
    rows->size = size;
  }
  rows->bytes = std::move(bytes);
  return kNoError;
}

static int16_t deliverMask() {
  FilterRecord& record = *host().record;
  // Without a mask its rectangle is not even read, whatever the record tells.
  if (record.haveMask == 0 || !host().switches.deliverMask || host().mask.empty()) return kNoError;
  if (!host().switches.maskBeyondOutput && !isEmptyRect(record.outRect)) {
    Rectangle* rect = &record.maskRect;
    rect->top = std::max(rect->top, record.outRect.top);
    rect->left = std::max(rect->left, record.outRect.left);
    rect->bottom = std::min(rect->bottom, record.outRect.bottom);
    rect->right = std::min(rect->right, record.outRect.right);
  }
  const HostPicture& source = hostSource();
  return deliver({record.maskRect, 0, 0, record.maskRate, record.maskPadding, host().mask.data(),
                  source.width, source.height, 1},
                 &host().maskRows);
}

static int16_t deliverInput() {
  const FilterRecord& record = *host().record;
  const HostPicture& source = hostSource();
  return deliver(
      {record.inRect, record.inLoPlane, record.inHiPlane, record.inputRate, record.inputPadding,
       source.samples.data(), source.width, source.height, source.planes},
      &host().input);
}

static int16_t deliverOutput() {
  const FilterRecord& record = *host().record;
  const HostPicture& picture = host().destination;
  return deliver(
      {record.outRect, record.outLoPlane, record.outHiPlane, kFixedOne, record.outputPadding,
       picture.samples.data(), picture.width, picture.height, picture.planes},
      &host().output);
}

static int32_t rowBytesOf(const DeliveredRows& rows) {
  if (rows.bytes == nullptr) return 0;
  return (rows.rect.right - rows.rect.left) * (rows.hiPlane - rows.loPlane + 1);
}

static void publishRows() {
  FilterRecord& record = *host().record;
  record.inData = host().input.bytes.get();
  record.inRowBytes = rowBytesOf(host().input);
  record.outData = host().output.bytes.get();
  record.outRowBytes = rowBytesOf(host().output);
  record.maskData = host().maskRows.bytes.get();
  record.maskRowBytes = rowBytesOf(host().maskRows);
}

int16_t exchangeRows() {
  const int32_t number = logExchange();
  storeOutput();
  int16_t error = number == host().switches.failExchangeAt ? host().switches.exchangeError : 0;
  if (error == kNoError) error = deliverMask();
  if (error == kNoError) error = deliverInput();
  if (error == kNoError) error = deliverOutput();
  if (error == kNoError) {
    publishRows();
  } else {
    releaseRows();
  }
  return error;
}

void releaseRows() {
  host().input = {};
  host().output = {};
  host().maskRows = {};
  publishRows();
}

static int16_t MORVALIS_CALL advanceState() {
  logCall("advanceState");
  return exchangeRows();
}

AdvanceStateProc offerAdvanceState() {
  return host().switches.advanceState ? advanceState : nullptr;
}
