// Any bytes as a settings file: what they give can be written again, and rendered with.

#include <cstdlib>

#include "entry/handles.h"
#include "hosts/substitute_host/substitute_host.h"
#include "persistence/settings_codec.h"
#include "tests/support/hosts/host_runs.h"

static void require(bool holds) {
  if (!holds) std::abort();
}

static void dropReferences(EffectSettings* settings) {
  for (Handle* reference : {&settings->environmentRef, &settings->textureRef}) {
    disposeModuleHandle(*reference);
    *reference = nullptr;
  }
}

static void renderWith(const uint8_t* bytes, size_t count) {
  const HostPicture picture = testPicture(24, 20, 3);
  const HostRun run = runHost({}, picture, testMask(24, 20), [bytes, count] {
    DecodedSettings decoded;
    decodeSettings(bytes, count, hostSettings(), &decoded);
    dropReferences(hostSettings());
  });
  require(run.result == 0);
  require(run.ledgerAfter.buffers == 0 && run.ledgerAfter.misuses == 0);
}

// What was read can be written, in the length that the format has.
static void writeAgain(const uint8_t* bytes, size_t count) {
  EffectSettings settings = {};
  DecodedSettings decoded;
  decodeSettings(bytes, count, &settings, &decoded);
  uint8_t written[kLongestEncodedSettings];
  const size_t writtenCount = encodeSettings(&settings, written);
  dropReferences(&settings);
  require(writtenCount > 0 && writtenCount <= kLongestEncodedSettings);
  EffectSettings again = {};
  decodeSettings(written, writtenCount, &again, &decoded);
  dropReferences(&again);
  require(decoded.complete && decoded.version == 31);
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t count) {
  writeAgain(bytes, count);
  renderWith(bytes, count);
  return 0;
}
