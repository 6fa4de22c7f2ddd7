// Blocks that come back to the module from somewhere else: another process, another version, cut
// short, or full of noise, strangers' pointers included. Numbers may count, pointers are not
// followed.

#include <cstdlib>
#include <cstring>

#include "entry/session_record.h"
#include "fuzz/fuzz_input.h"
#include "fuzz/fuzz_runs.h"
#include "hosts/substitute_host/host_record.h"
#include "hosts/substitute_host/host_state.h"
#include "hosts/substitute_host/substitute_host.h"
#include "hosts/substitute_host/suites/handle_suite.h"
#include "platform/none/none_script.h"
#include "tests/support/hosts/host_pictures.h"

// Another block of the host's with bytes of the old one, the fuzzer's scattered over it.
static Handle otherBlock(FuzzInput* input, Handle old, int32_t fullSize) {
  constexpr int32_t kPlaces = 24;
  // A size of 0 would say that the host cannot tell.
  const int32_t kept =
      take<uint8_t>(input) & 1 ? fullSize : 1 + take<uint16_t>(input) % (fullSize + 9);
  const Handle handle = newHostHandle(kept);
  auto* bytes = static_cast<uint8_t*>(*handle);
  std::memset(bytes, take<uint8_t>(input), static_cast<size_t>(kept));
  if (old != nullptr && take<uint8_t>(input) & 1) {
    const HandleBlock& block = host().handles.at(old);
    std::memcpy(bytes, *old, static_cast<size_t>(std::min(kept, block.size)));
  }
  for (int32_t i = 0; i < kPlaces && input->left > 0 && kept > 8; ++i) {
    const int32_t at = take<uint16_t>(input) % (kept - 8);
    const auto word = take<uint64_t>(input);
    std::memcpy(bytes + at, &word, sizeof(word));
  }
  return handle;
}

// Writes as much of a value into a block as lies within.
template <typename Value>
static void put(Handle handle, size_t at, Value value) {
  const auto size = static_cast<size_t>(host().handles.at(handle).size);
  if (at >= size) return;
  std::memcpy(static_cast<uint8_t*>(*handle) + at, &value, std::min(sizeof(value), size - at));
}

// The mark of this load would make a stranger's pointers honest ones.
static void unmark(Handle settings) {
  constexpr uint64_t kOtherLoad = 0x5A5A5A5A5A5A5A5A;
  put(settings, offsetof(EffectSettings, loadMark), kOtherLoad);
}

// A run without a relief, also where a block was set aside for a new one.
static int16_t repeatPlainly() {
  beginRun();
  const int16_t result = callSelector(kSelectorPrepare);
  if (result != 0) return result;
  const Handle settings = hostRecord()->parameters;
  put(settings, offsetof(EffectSettings, textureChoice), kTextureChoiceNone);
  return renderFilter();
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t count) {
  FuzzInput input = {bytes, count};
  resetNone();
  HostSwitches switches;
  switches.keepsLog = false;
  openHost(switches, testPicture(15, 11, take<uint8_t>(&input) & 1 ? 3 : 1), testMask(15, 11));
  if (take<uint8_t>(&input) & 1) {
    prepareFirst();
    renderFilter();
  }
  const Handle oldSettings = hostRecord()->parameters;
  const Handle settings = otherBlock(&input, oldSettings, sizeof(EffectSettings));
  unmark(settings);
  hostRecord()->parameters = settings;
  if (take<uint8_t>(&input) & 1) {
    auto old = reinterpret_cast<Handle>(host().dataSlot);
    host().dataSlot = reinterpret_cast<intptr_t>(otherBlock(&input, old, sizeof(SessionRecord)));
  }
  repeatPlainly();
  const int16_t second = repeatPlainly();
  if (second != 0 && second != 1) std::abort();
  finishAndCheck();
  closeHost();
  return 0;
}
