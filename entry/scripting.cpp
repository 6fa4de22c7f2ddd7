#include "entry/scripting.h"

#include <cstring>

#include "entry/session_record.h"
#include "services/fixed_point.h"

constexpr uint32_t kKeyAmount = fourCharacterCode("Amnt");
constexpr uint32_t kKeyMood = fourCharacterCode("disP");
constexpr uint32_t kKeyEntire = fourCharacterCode("entI");
constexpr uint32_t kTypeMood = fourCharacterCode("mooD");
constexpr uint32_t kUnitPercent = fourCharacterCode("#Prc");

constexpr int32_t kMostKeys = 1000;  // a host that never says "no more" is not waited for

// Every procedure of a suite, from its first on, is there.
template <typename Suite, typename First>
static bool allPresent(const Suite* suite, const First* first, int32_t count) {
  const auto offset = reinterpret_cast<const char*>(first) - reinterpret_cast<const char*>(suite);
  for (int32_t i = 0; i < count; ++i) {
    void* procedure = nullptr;
    std::memcpy(&procedure, reinterpret_cast<const char*>(suite) + offset + i * sizeof(procedure),
                sizeof(procedure));
    if (procedure == nullptr) return false;
  }
  return true;
}

bool hostDescriptorsUsable(const PIDescriptorParameters* parameters) {
  if (parameters == nullptr || parameters->descriptorParametersVersion != kDescriptorVersion) {
    return false;
  }
  const ReadDescriptorProcs* read = parameters->readDescriptorProcs;
  const WriteDescriptorProcs* write = parameters->writeDescriptorProcs;
  return read != nullptr && write != nullptr &&
         read->readDescriptorProcsVersion == kDescriptorVersion &&
         write->writeDescriptorProcsVersion == kDescriptorVersion &&
         static_cast<uint16_t>(read->numReadDescriptorProcs) >= kReadDescriptorProcsCount &&
         static_cast<uint16_t>(write->numWriteDescriptorProcs) >= kWriteDescriptorProcsCount &&
         allPresent(read, &read->openReadDescriptorProc, kReadDescriptorProcsCount) &&
         allPresent(write, &write->openWriteDescriptorProc, kWriteDescriptorProcsCount);
}

static int16_t readKey(const ReadDescriptorProcs* read, ReadToken token, uint32_t key,
                       EffectSettings* settings) {
  int16_t error = kNoError;
  if (key == kKeyAmount) {
    uint32_t unit = kUnitPercent;
    double amount = 0;
    error = read->getUnitFloatProc(token, &unit, &amount);
    if (error == kNoError) settings->scriptAmount = saturateToInt16(truncateToInt32(amount));
  } else if (key == kKeyMood) {
    uint32_t mood = 0;
    error = read->getEnumeratedProc(token, &mood);
    if (error == kNoError) settings->scriptMood = mood;
  } else if (key == kKeyEntire) {
    uint8_t entire = 0;
    error = read->getBooleanProc(token, &entire);
    if (error == kNoError) settings->scriptEntire = entire != 0 ? 1 : 0;
  }
  return error;
}

// The first error that is not a missing key, or kNoError.
static int16_t readKeys(const ReadDescriptorProcs* read, Handle descriptor,
                        EffectSettings* settings) {
  uint32_t expected[] = {kKeyAmount, kKeyMood, kKeyEntire, 0};
  ReadToken token = read->openReadDescriptorProc(descriptor, expected);
  if (token == nullptr) return kNoError;
  int16_t error = kNoError;
  const auto note = [&error](int16_t code) {
    if (error == kNoError && code != kMissingParameter) error = code;
  };
  uint32_t key = 0;
  uint32_t type = 0;
  int32_t flags = 0;
  for (int32_t i = 0; i < kMostKeys && read->getKeyProc(token, &key, &type, &flags) != 0; ++i) {
    note(readKey(read, token, key, settings));
  }
  note(read->closeReadDescriptorProc(token));
  return error;
}

void readScriptParameters(SessionRecord* session) {
  const PIDescriptorParameters* parameters = session->filter->descriptorParameters;
  if (!hostDescriptorsUsable(parameters)) return;
  EffectSettings* settings = settingsOf(session);
  if (parameters->descriptor != nullptr) {
    const int16_t error =
        readKeys(parameters->readDescriptorProcs, parameters->descriptor, settings);
    if (error != kNoError) *session->result = error;
  }
  settings->showDialog = parameters->playInfo == kPlayShowDialog ? 1 : 0;
}

void writeScriptParameters(SessionRecord* session) {
  PIDescriptorParameters* parameters = session->filter->descriptorParameters;
  if (!hostDescriptorsUsable(parameters)) return;
  const EffectSettings* settings = settingsOf(session);
  const WriteDescriptorProcs* write = parameters->writeDescriptorProcs;
  WriteToken token = write->openWriteDescriptorProc();
  if (token == nullptr) return;
  const double amount = settings->scriptAmount;
  write->putUnitFloatProc(token, kKeyAmount, kUnitPercent, &amount);
  write->putEnumeratedProc(token, kKeyMood, kTypeMood, settings->scriptMood);
  if (settings->scriptEntire == 1) write->putBooleanProc(token, kKeyEntire, 1);
  write->closeWriteDescriptorProc(token, &parameters->descriptor);
}
