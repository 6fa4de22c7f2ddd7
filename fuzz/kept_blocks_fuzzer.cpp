// Blocks that come back to the module from somewhere else: another process, another version, cut
// short, or full of noise, strangers' pointers included; or handles that are no more than numbers.
// Plain values count where the block is whole, pointers are not followed.

#include <cstdlib>
#include <cstring>

#include "entry/handles.h"
#include "entry/session_record.h"
#include "fuzz/fuzz_input.h"
#include "fuzz/fuzz_runs.h"
#include "hosts/substitute_host/host_record.h"
#include "hosts/substitute_host/host_state.h"
#include "hosts/substitute_host/substitute_host.h"
#include "hosts/substitute_host/suites/handle_suite.h"
#include "platform/none/none_script.h"
#include "tests/support/hosts/heap_faults.h"
#include "tests/support/hosts/host_pictures.h"

static void require(bool holds) {
  if (!holds) std::abort();
}

static int32_t sizeOf(Handle handle) {
  return host().handles.at(handle).size;
}

// Scatters words of the fuzzer's over a block.
static void scatter(FuzzInput* input, Handle handle) {
  constexpr int32_t kPlaces = 24;
  const int32_t room = sizeOf(handle) - 8;
  for (int32_t i = takeBetween(input, 0, kPlaces); i > 0 && room > 0; --i) {
    const int32_t at = take<uint16_t>(input) % room;
    const auto word = take<uint64_t>(input);
    std::memcpy(static_cast<uint8_t*>(*handle) + at, &word, sizeof(word));
  }
}

// Another block of the host's with bytes of the old one, the fuzzer's scattered over it.
static Handle otherBlock(FuzzInput* input, Handle old, int32_t fullSize) {
  // A size of 0 would say that the host cannot tell.
  const int32_t kept =
      take<uint8_t>(input) & 1 ? fullSize : 1 + take<uint16_t>(input) % (fullSize + 9);
  const Handle handle = newHostHandle(kept);
  std::memset(*handle, take<uint8_t>(input), static_cast<size_t>(kept));
  if (old != nullptr && take<uint8_t>(input) & 1) {
    std::memcpy(*handle, *old, static_cast<size_t>(std::min(kept, sizeOf(old))));
  }
  scatter(input, handle);
  return handle;
}

// Writes as much of a value into a block as lies within.
template <typename Value>
static void put(Handle handle, size_t at, Value value) {
  const auto size = static_cast<size_t>(sizeOf(handle));
  if (at >= size) return;
  std::memcpy(static_cast<uint8_t*>(*handle) + at, &value, std::min(sizeof(value), size - at));
}

// The mark of this load would make a stranger's pointers honest ones.
static void unmark(Handle handle, size_t at) {
  constexpr uint64_t kOtherLoad = 0x5A5A5A5A5A5A5A5A;
  put(handle, at, kOtherLoad);
}

// What only the module may write stays as it was in a copy that still counts as its own.
static void keepPointers(Handle copy, Handle old) {
  const auto* kept = static_cast<const EffectSettings*>(*old);
  put(copy, offsetof(EffectSettings, environmentPicture), kept->environmentPicture);
  put(copy, offsetof(EffectSettings, texturePicture), kept->texturePicture);
  put(copy, offsetof(EffectSettings, environmentRef), kept->environmentRef);
  put(copy, offsetof(EffectSettings, textureRef), kept->textureRef);
  put(copy, offsetof(EffectSettings, loadMark), kept->loadMark);
}

static bool isWhole(Handle settings) {
  return settings != nullptr && sizeOf(settings) >= int32_t{sizeof(EffectSettings)};
}

static void bringOtherSettings(FuzzInput* input) {
  const Handle old = hostRecord()->parameters;
  const Handle settings = otherBlock(input, old, sizeof(EffectSettings));
  if (old != nullptr && take<uint8_t>(input) & 1) {
    keepPointers(settings, old);
  } else {
    unmark(settings, offsetof(EffectSettings, loadMark));
  }
  hostRecord()->parameters = settings;
}

// In another block, or in the one that the module knows.
static void bringOtherSession(FuzzInput* input) {
  const auto old = reinterpret_cast<Handle>(host().dataSlot);
  if (old != nullptr && take<uint8_t>(input) & 1) {
    scatter(input, old);
    unmark(old, offsetof(SessionRecord, loadMark));
    return;
  }
  host().dataSlot = reinterpret_cast<intptr_t>(otherBlock(input, old, sizeof(SessionRecord)));
}

// The module's own handles as another process, or nobody, knows them.
static Handle numberFor(FuzzInput* input, Handle handle) {
  const int32_t kind = takeBetween(input, 0, 2);
  if (kind == 0) return handle;
  disposeModuleHandle(handle);
  return kind == 1 ? handle : reinterpret_cast<Handle>(take<intptr_t>(input));
}

static void bringNumbers(FuzzInput* input) {
  hostRecord()->parameters = numberFor(input, hostRecord()->parameters);
  const auto session = reinterpret_cast<Handle>(host().dataSlot);
  host().dataSlot = reinterpret_cast<intptr_t>(numberFor(input, session));
}

// A run without a relief, also where a block was set aside for a new one. `radius`: of the settings
// that are there, to be found again.
static int16_t repeatPlainly(const int32_t* radius) {
  beginRun();
  const int16_t result = callSelector(kSelectorPrepare);
  if (result != 0) return result;
  require(radius == nullptr || hostSettings()->radius == *radius);
  hostSettings()->textureChoice = kTextureChoiceNone;
  return renderFilter();
}

static void runThreeTimes(FuzzInput* input, bool hostHandles) {
  const Handle settings = hostRecord()->parameters;
  const bool whole = hostHandles && isWhole(settings);
  const int32_t radius = whole ? hostSettings()->radius : 0;
  // A host that cannot tell sizes gets no blocks that are cut short.
  const auto slot = reinterpret_cast<Handle>(host().dataSlot);
  const bool tellsAll =
      whole && (slot == nullptr || sizeOf(slot) >= int32_t{sizeof(SessionRecord)});
  if (tellsAll && take<uint8_t>(input) & 1) failHostCall(takeBetween(input, 1, 12));
  if (take<uint8_t>(input) & 1) refuseModuleBlock(takeBetween(input, 1, 20));
  repeatPlainly(nullptr);
  refuseModuleBlock(0);
  failHostCall(0);
  require(!whole || hostRecord()->parameters == settings);
  repeatPlainly(whole ? &radius : nullptr);
  const int16_t third = repeatPlainly(whole ? &radius : nullptr);
  require(third == 0 || third == 1);
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t count) {
  FuzzInput input = {bytes, count};
  resetNone();
  HostSwitches switches;
  switches.keepsLog = false;
  const bool hostHandles = (take<uint8_t>(&input) & 3) != 0;
  if (!hostHandles) switches.handleSuite = static_cast<SuiteOffer>(takeBetween(&input, 1, 4));
  openHost(switches, testPicture(15, 11, take<uint8_t>(&input) & 1 ? 3 : 1), testMask(15, 11));
  if (take<uint8_t>(&input) & 1) {
    prepareFirst();
    renderFilter();
  }
  if (!hostHandles) {
    bringNumbers(&input);
  } else {
    if ((take<uint8_t>(&input) & 3) != 0) bringOtherSettings(&input);
    if (take<uint8_t>(&input) & 1) bringOtherSession(&input);
  }
  runThreeTimes(&input, hostHandles);
  finishAndCheck();
  freeOwnHandles();
  closeHost();
  return 0;
}
