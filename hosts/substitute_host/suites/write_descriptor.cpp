#include "hosts/substitute_host/suites/write_descriptor.h"

#include <cstdint>

#include "hosts/substitute_host/host_ledger.h"
#include "hosts/substitute_host/host_log.h"
#include "hosts/substitute_host/host_state.h"
#include "hosts/substitute_host/suites/descriptors.h"

static WriteToken MORVALIS_CALL openWriteDescriptorProc() {
  if (callFails("openWriteDescriptorProc")) return nullptr;
  const WriteToken token = newToken();
  host().writeSessions[token] = {};
  return token;
}

// What was recorded becomes a new descriptor, which the module may open at the next run.
static int16_t MORVALIS_CALL closeWriteDescriptorProc(WriteToken token, Handle* result) {
  const bool fails = callFails("closeWriteDescriptorProc");
  const auto found = host().writeSessions.find(token);
  if (found == host().writeSessions.end()) {
    noteMisuse();
    return kBadParameter;
  }
  const Handle descriptor = fails ? nullptr : newDescriptor(found->second);
  if (descriptor == nullptr) return kMemoryFull;
  host().recorded = found->second;
  host().writeSessions.erase(found);
  *result = descriptor;
  return kNoError;
}

static int16_t put(WriteToken token, const ScriptValue& value) {
  const auto found = host().writeSessions.find(token);
  if (found == host().writeSessions.end()) {
    noteMisuse();
    return kBadParameter;
  }
  found->second.push_back(value);
  return kNoError;
}

// Of a kind that a script value cannot hold, only key and type are recorded.
static int16_t putTypeOnly(WriteToken token, uint32_t key, uint32_t type) {
  ScriptValue value;
  value.key = key;
  value.type = type;
  return put(token, value);
}

static int16_t MORVALIS_CALL putIntegerProc(WriteToken token, uint32_t key, int32_t number) {
  if (callFails("putIntegerProc")) return kMemoryFull;
  ScriptValue value;
  value.key = key;
  value.type = kTypeInteger;
  value.number = number;
  return put(token, value);
}

static int16_t MORVALIS_CALL putFloatProc(WriteToken token, uint32_t key, const double* number) {
  if (callFails("putFloatProc")) return kMemoryFull;
  ScriptValue value;
  value.key = key;
  value.type = kTypeFloat;
  value.number = *number;
  return put(token, value);
}

static int16_t MORVALIS_CALL putUnitFloatProc(WriteToken token, uint32_t key, uint32_t unit,
                                              const double* number) {
  if (callFails("putUnitFloatProc")) return kMemoryFull;
  ScriptValue value;
  value.key = key;
  value.type = kTypeUnitFloat;
  value.unit = unit;
  value.number = *number;
  return put(token, value);
}

static int16_t MORVALIS_CALL putBooleanProc(WriteToken token, uint32_t key, uint8_t boolean) {
  if (callFails("putBooleanProc")) return kMemoryFull;
  ScriptValue value;
  value.key = key;
  value.type = kTypeBoolean;
  value.boolean = boolean != 0;
  return put(token, value);
}

static int16_t MORVALIS_CALL putEnumeratedProc(WriteToken token, uint32_t key, uint32_t type,
                                               uint32_t enumeration) {
  if (callFails("putEnumeratedProc")) return kMemoryFull;
  ScriptValue value;
  value.key = key;
  value.type = kTypeEnumeration;
  value.unit = type;
  value.enumeration = enumeration;
  return put(token, value);
}

static int16_t putClass(WriteToken token, uint32_t key, uint32_t code) {
  ScriptValue value;
  value.key = key;
  value.type = kTypeClass;
  value.enumeration = code;
  return put(token, value);
}

static int16_t MORVALIS_CALL putClassProc(WriteToken token, uint32_t key, uint32_t code) {
  logCall("putClassProc");
  return putClass(token, key, code);
}

static int16_t MORVALIS_CALL putScopedClassProc(WriteToken token, uint32_t key, uint32_t code) {
  logCall("putScopedClassProc");
  return putClass(token, key, code);
}

static int16_t MORVALIS_CALL putTextProc(WriteToken token, uint32_t key, Handle /*text*/) {
  logCall("putTextProc");
  return putTypeOnly(token, key, fourCharacterCode("TEXT"));
}

static int16_t MORVALIS_CALL putAliasProc(WriteToken token, uint32_t key, Handle /*alias*/) {
  logCall("putAliasProc");
  return putTypeOnly(token, key, fourCharacterCode("alis"));
}

static int16_t MORVALIS_CALL putSimpleReferenceProc(WriteToken token, uint32_t key,
                                                    const SimpleReference* /*reference*/) {
  logCall("putSimpleReferenceProc");
  return putTypeOnly(token, key, fourCharacterCode("obj "));
}

static int16_t MORVALIS_CALL putObjectProc(WriteToken token, uint32_t key, uint32_t /*type*/,
                                           Handle /*object*/) {
  logCall("putObjectProc");
  return putTypeOnly(token, key, fourCharacterCode("Objc"));
}

static int16_t MORVALIS_CALL putScopedObjectProc(WriteToken token, uint32_t key, uint32_t /*type*/,
                                                 Handle /*object*/) {
  logCall("putScopedObjectProc");
  return putTypeOnly(token, key, fourCharacterCode("Objc"));
}

static int16_t MORVALIS_CALL putStringProc(WriteToken token, uint32_t key,
                                           const uint8_t* /*text*/) {
  logCall("putStringProc");
  return putTypeOnly(token, key, fourCharacterCode("TEXT"));
}

static int16_t MORVALIS_CALL putCountProc(WriteToken token, uint32_t key, uint32_t count) {
  logCall("putCountProc");
  ScriptValue value;
  value.key = key;
  value.type = kTypeInteger;
  value.number = count;
  return put(token, value);
}

WriteDescriptorProcs* offerWriteSuite() {
  WriteDescriptorProcs* suite = &host().writeProcs;
  *suite = {kDescriptorVersion,
            kWriteDescriptorProcsCount,
            openWriteDescriptorProc,
            closeWriteDescriptorProc,
            putIntegerProc,
            putFloatProc,
            putUnitFloatProc,
            putBooleanProc,
            putTextProc,
            putAliasProc,
            putEnumeratedProc,
            putClassProc,
            putSimpleReferenceProc,
            putObjectProc,
            putCountProc,
            putStringProc,
            putScopedClassProc,
            putScopedObjectProc};
  return suite;
}
