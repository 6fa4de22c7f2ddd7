#include "hosts/substitute_host/suites/read_descriptor.h"

#include <algorithm>
#include <cstdint>

#include "hosts/substitute_host/host_ledger.h"
#include "hosts/substitute_host/host_log.h"
#include "hosts/substitute_host/host_state.h"
#include "hosts/substitute_host/suites/descriptors.h"

constexpr uint32_t kKeyFound = fourCharacterCode("null");
constexpr int16_t kValuePinned = 2;

static ReadSession* findSession(ReadToken token) {
  const auto found = host().readSessions.find(token);
  if (found != host().readSessions.end()) return &found->second;
  noteMisuse();
  return nullptr;
}

// Only a handle that the host gave out as a descriptor can be opened.
static ReadToken MORVALIS_CALL openReadDescriptorProc(Handle descriptor, uint32_t* keys) {
  if (callFails("openReadDescriptorProc")) return nullptr;
  const auto found = host().descriptors.find(descriptor);
  if (found == host().descriptors.end()) {
    noteMisuse();
    return nullptr;
  }
  const ReadToken token = newToken();
  host().readSessions[token] = {found->second, 0, keys, 0};
  return token;
}

static int16_t MORVALIS_CALL closeReadDescriptorProc(ReadToken token) {
  const bool fails = callFails("closeReadDescriptorProc");
  const ReadSession* session = findSession(token);
  if (session == nullptr) return kBadParameter;
  const int16_t error = fails ? kBadParameter : session->lastError;
  host().readSessions.erase(token);
  return error;
}

// For an enumeration the answered type is the enumeration's own, as real hosts do.
static uint8_t MORVALIS_CALL getKeyProc(ReadToken token, uint32_t* key, uint32_t* type,
                                        int32_t* flags) {
  if (callFails("getKeyProc")) return 0;
  ReadSession* session = findSession(token);
  if (session == nullptr || session->delivered == session->values.size()) return 0;
  const ScriptValue& value = session->values[session->delivered++];
  *key = value.key;
  *type = value.type == kTypeEnumeration && value.unit != 0 ? value.unit : value.type;
  *flags = 0;
  for (uint32_t* expected = session->keys; expected != nullptr && *expected != 0; ++expected) {
    if (*expected == value.key) *expected = kKeyFound;
  }
  return 1;
}

static int16_t noteError(ReadToken token, int16_t error) {
  const auto found = host().readSessions.find(token);
  if (found != host().readSessions.end() && error != kNoError) found->second.lastError = error;
  return error;
}

// The value of the last key given out. Null, and the error in *error, when it has another type or
// is to fail.
static const ScriptValue* currentValue(ReadToken token, uint32_t type, int16_t* error) {
  *error = kBadParameter;
  const ReadSession* session = findSession(token);
  if (session == nullptr || session->delivered == 0) return nullptr;
  const ScriptValue& value = session->values[session->delivered - 1];
  if (value.error != kNoError) {
    *error = value.error;
  } else if (value.type == type) {
    *error = kNoError;
  }
  noteError(token, *error);
  return *error == kNoError ? &value : nullptr;
}

static int16_t readInteger(ReadToken token, int32_t* result) {
  int16_t error = kNoError;
  const ScriptValue* value = currentValue(token, kTypeInteger, &error);
  if (value != nullptr) *result = static_cast<int32_t>(value->number);
  return error;
}

static int16_t readFloat(ReadToken token, double* result) {
  int16_t error = kNoError;
  const ScriptValue* value = currentValue(token, kTypeFloat, &error);
  if (value != nullptr) *result = value->number;
  return error;
}

static int16_t readUnitFloat(ReadToken token, uint32_t* unit, double* result) {
  int16_t error = kNoError;
  const ScriptValue* value = currentValue(token, kTypeUnitFloat, &error);
  if (value != nullptr) {
    *unit = value->unit;
    *result = value->number;
  }
  return error;
}

static int16_t MORVALIS_CALL getIntegerProc(ReadToken token, int32_t* result) {
  if (callFails("getIntegerProc")) return noteError(token, kBadParameter);
  return readInteger(token, result);
}

static int16_t MORVALIS_CALL getFloatProc(ReadToken token, double* result) {
  if (callFails("getFloatProc")) return noteError(token, kBadParameter);
  return readFloat(token, result);
}

static int16_t MORVALIS_CALL getUnitFloatProc(ReadToken token, uint32_t* unit, double* result) {
  if (callFails("getUnitFloatProc")) return noteError(token, kBadParameter);
  return readUnitFloat(token, unit, result);
}

static int16_t MORVALIS_CALL getBooleanProc(ReadToken token, uint8_t* result) {
  if (callFails("getBooleanProc")) return noteError(token, kBadParameter);
  int16_t error = kNoError;
  const ScriptValue* value = currentValue(token, kTypeBoolean, &error);
  if (value != nullptr) *result = value->boolean ? 1 : 0;
  return error;
}

static int16_t MORVALIS_CALL getEnumeratedProc(ReadToken token, uint32_t* result) {
  if (callFails("getEnumeratedProc")) return noteError(token, kBadParameter);
  int16_t error = kNoError;
  const ScriptValue* value = currentValue(token, kTypeEnumeration, &error);
  if (value != nullptr) *result = value->enumeration;
  return error;
}

static int16_t MORVALIS_CALL getClassProc(ReadToken token, uint32_t* result) {
  if (callFails("getClassProc")) return noteError(token, kBadParameter);
  int16_t error = kNoError;
  const ScriptValue* value = currentValue(token, kTypeClass, &error);
  if (value != nullptr) *result = value->enumeration;
  return error;
}

// A script holds no texts, references or objects: their getters meet a value of another type.
static int16_t otherType(ReadToken token) {
  int16_t error = kNoError;
  currentValue(token, 0, &error);
  return error;
}

static int16_t MORVALIS_CALL getTextProc(ReadToken token, Handle* /*result*/) {
  logCall("getTextProc");
  return otherType(token);
}

static int16_t MORVALIS_CALL getAliasProc(ReadToken token, Handle* /*result*/) {
  logCall("getAliasProc");
  return otherType(token);
}

static int16_t MORVALIS_CALL getSimpleReferenceProc(ReadToken token, SimpleReference* /*result*/) {
  logCall("getSimpleReferenceProc");
  return otherType(token);
}

static int16_t MORVALIS_CALL getObjectProc(ReadToken token, uint32_t* /*type*/,
                                           Handle* /*result*/) {
  logCall("getObjectProc");
  return otherType(token);
}

static int16_t MORVALIS_CALL getStringProc(ReadToken token, uint8_t* /*text*/) {
  logCall("getStringProc");
  return otherType(token);
}

static int16_t MORVALIS_CALL getCountProc(ReadToken token, uint32_t* result) {
  if (callFails("getCountProc")) return kBadParameter;
  const ReadSession* session = findSession(token);
  if (session == nullptr) return kBadParameter;
  *result = static_cast<uint32_t>(session->values.size());
  return kNoError;
}

// Limits a read value. A changed value is told to the module and again at the close.
template <typename Number>
static int16_t pinned(ReadToken token, Number low, Number high, Number* result) {
  const Number limited = std::max(low, std::min(high, *result));
  const bool changed = limited != *result;
  *result = limited;
  return changed ? noteError(token, kValuePinned) : kNoError;
}

static int16_t MORVALIS_CALL getPinnedIntegerProc(ReadToken token, int32_t low, int32_t high,
                                                  int32_t* result) {
  if (callFails("getPinnedIntegerProc")) return noteError(token, kBadParameter);
  const int16_t error = readInteger(token, result);
  return error != kNoError ? error : pinned(token, low, high, result);
}

static int16_t MORVALIS_CALL getPinnedFloatProc(ReadToken token, const double* low,
                                                const double* high, double* result) {
  if (callFails("getPinnedFloatProc")) return noteError(token, kBadParameter);
  const int16_t error = readFloat(token, result);
  return error != kNoError ? error : pinned(token, *low, *high, result);
}

static int16_t MORVALIS_CALL getPinnedUnitFloatProc(ReadToken token, const double* low,
                                                    const double* high, uint32_t* unit,
                                                    double* result) {
  if (callFails("getPinnedUnitFloatProc")) return noteError(token, kBadParameter);
  const int16_t error = readUnitFloat(token, unit, result);
  return error != kNoError ? error : pinned(token, *low, *high, result);
}

ReadDescriptorProcs* offerReadSuite(SuiteOffer offer) {
  ReadDescriptorProcs* suite = &host().readProcs;
  *suite = {kDescriptorVersion,
            kReadDescriptorProcsCount,
            openReadDescriptorProc,
            closeReadDescriptorProc,
            getKeyProc,
            getIntegerProc,
            getFloatProc,
            getUnitFloatProc,
            getBooleanProc,
            getTextProc,
            getAliasProc,
            getEnumeratedProc,
            getClassProc,
            getSimpleReferenceProc,
            getObjectProc,
            getCountProc,
            getStringProc,
            getPinnedIntegerProc,
            getPinnedFloatProc,
            getPinnedUnitFloatProc};
  if (offer == SuiteOffer::wrongVersion) suite->readDescriptorProcsVersion = kDescriptorVersion + 1;
  if (offer == SuiteOffer::shortCount) {
    suite->numReadDescriptorProcs = kReadDescriptorProcsCount - 1;
  }
  if (offer == SuiteOffer::missingProc) suite->getPinnedUnitFloatProc = nullptr;
  return suite;
}
