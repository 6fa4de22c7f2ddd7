// host_run: calls the module's selectors in the order of real hosts.

#include "entry/entry_point.h"
#include "hosts/substitute_host/host_record.h"
#include "hosts/substitute_host/host_state.h"
#include "hosts/substitute_host/row_exchange.h"

constexpr int16_t kNeverFinished = -1;

// Some hosts leave this in the word before About and take what then stands there as the answer.
constexpr int16_t kWordBeforeAbout = 1;

static int16_t enterAbout(void* window, int16_t enteredWith) {
  PlatformData platformData = {window};
  AboutRecord about = {};
  about.platformData = &platformData;
  int16_t result = enteredWith;
  ENTRYPOINT(kSelectorAbout, &about, &host().dataSlot, &result);
  return result;
}

int16_t callSelector(int16_t selector, int16_t enteredWith) {
  if (selector == kSelectorAbout) return enterAbout(nullptr, enteredWith);
  int16_t result = enteredWith;
  ENTRYPOINT(selector, host().record.get(), &host().dataSlot, &result);
  return result;
}

int16_t callAbout(void* window) {
  return enterAbout(window, kWordBeforeAbout);
}

static bool requestsRows() {
  const FilterRecord& record = *host().record;
  return !isEmptyRect(record.inRect) || !isEmptyRect(record.outRect) ||
         !isEmptyRect(record.maskRect);
}

// More than any module needs that does at least a row of one pass in a call.
static int32_t mostContinues() {
  return 100 * hostSource().height + 10000;
}

static int16_t renderRows() {
  int16_t result = callSelector(kSelectorStart);
  int32_t continues = 0;
  while (result == kNoError && requestsRows()) {
    if (continues++ == mostContinues()) return kNeverFinished;
    result = exchangeRows();
    if (result == kNoError) result = callSelector(kSelectorContinue);
  }
  if (result == kNoError) result = exchangeRows();
  return result == kNoError ? callSelector(kSelectorFinish) : result;
}

int16_t renderFilter() {
  const int16_t result = renderRows();
  releaseRows();
  return result;
}

static int16_t prepareAndRender() {
  const int16_t result = callSelector(kSelectorPrepare);
  return result == kNoError ? renderFilter() : result;
}

int16_t repeatFilter() {
  beginRun();
  return prepareAndRender();
}

int16_t runFilter() {
  beginRun();
  int16_t result = callSelector(kSelectorParameters);
  if (result == kNoError) result = prepareAndRender();
  releaseRows();
  return result;
}
