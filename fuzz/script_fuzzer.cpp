// Any recorded script, from a host whose services fail and whose record changes while it is asked.

#include "fuzz/fuzz_input.h"
#include "fuzz/fuzz_runs.h"
#include "hosts/substitute_host/substitute_host.h"
#include "platform/none/none_script.h"
#include "tests/support/hosts/host_pictures.h"

constexpr int32_t kMostKeys = 12;

static uint32_t takeCode(FuzzInput* input) {
  constexpr uint32_t kCodes[] = {
      fourCharacterCode("Amnt"), fourCharacterCode("disP"), fourCharacterCode("entI"),
      fourCharacterCode("UntF"), fourCharacterCode("enum"), fourCharacterCode("bool"),
      fourCharacterCode("long"), fourCharacterCode("mooD"), fourCharacterCode("#Prc")};
  const int32_t which = takeBetween(input, 0, 11);
  return which < 9 ? kCodes[which] : take<uint32_t>(input);
}

static std::vector<ScriptValue> takeScript(FuzzInput* input) {
  std::vector<ScriptValue> script;
  for (int32_t keys = takeBetween(input, 0, kMostKeys); keys > 0; --keys) {
    ScriptValue value;
    value.key = takeCode(input);
    value.type = takeCode(input);
    value.unit = takeCode(input);
    value.number = take<double>(input);
    value.enumeration = takeCode(input);
    value.boolean = take<uint8_t>(input) & 1;
    value.error = static_cast<int16_t>(take<uint8_t>(input) < 224 ? 0 : take<int16_t>(input));
    script.push_back(value);
  }
  return script;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t count) {
  FuzzInput input = {bytes, count};
  resetNone();
  HostSwitches switches;
  switches.scripting = static_cast<SuiteOffer>(takeBetween(&input, 0, 4));
  switches.scriptingShowsDialog = take<uint8_t>(&input) & 1;
  switches.advanceState = take<uint8_t>(&input) & 1;
  switches.keepsLog = false;
  const int32_t failsAt = takeBetween(&input, 0, 60);
  switches.abortTest = [&input] {
    changeRecord(&input);
    return false;
  };
  switches.progress = [&input](int32_t, int32_t) { changeRecord(&input); };
  openHost(switches, testPicture(15, 11, 3), testMask(15, 11));
  prepareFirst();
  setScript(takeScript(&input));
  Handle settings = hostRecord()->parameters;
  for (int32_t i = 0; i < 2; ++i) {
    failHostCall(failsAt);
    repeatFilter();
    // What the host took away from the record it still has.
    if (hostRecord()->parameters != nullptr) settings = hostRecord()->parameters;
    hostRecord()->parameters = settings;
  }
  finishAndCheck();
  freeOwnHandles();
  closeHost();
  return 0;
}
