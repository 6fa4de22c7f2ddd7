// host_state: what the services of the open host share. Private to this library; the callbacks
// carry no context and reach it through host().

#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "entry/host_interface.h"
#include "hosts/substitute_host/substitute_host.h"

constexpr uint8_t kGarbage = 0xA5;  // undefined memory holds it, so that reading it shows

constexpr int16_t kBadParameter = -50;
constexpr int16_t kServiceMissing = -30900;

// Every block is a heap allocation of its exact size, so that the address sanitizer sees each
// overrun and each use after its end.
using HostBytes = std::unique_ptr<uint8_t[]>;

struct HandleBlock {
  std::unique_ptr<void*> master;
  HostBytes bytes;
  int32_t size = 0;
  int32_t locks = 0;
  bool hostOwned = false;  // a descriptor: the host's until disposed of, not the module's to free
};

struct BufferBlock {
  HostBytes bytes;
  int32_t size = 0;
  int32_t locks = 0;
  bool wasUnlocked = false;
};

// Rows as last delivered: an exchange compares with them, and stores the output from them.
struct DeliveredRows {
  Rectangle rect = {};
  int16_t loPlane = 0;
  int16_t hiPlane = 0;
  HostBytes bytes;  // null: nothing is delivered
  size_t size = 0;
};

struct ReadSession {
  std::vector<ScriptValue> values;
  size_t delivered = 0;      // keys given out so far; the getters answer the last of them
  uint32_t* keys = nullptr;  // the module's list of expected keys, or null
  int16_t lastError = 0;
};

struct HostState {
  HostSwitches switches;
  HostPicture source;  // empty when the host works in place; see hostSource()
  HostPicture destination;
  HostMask mask;

  std::unique_ptr<FilterRecord> record;
  PlatformData platformData = {};
  uint8_t errorString[256] = {};
  intptr_t dataSlot = 0;

  DeliveredRows input;
  DeliveredRows output;
  DeliveredRows maskRows;

  HandleProcs handleProcs = {};
  BufferProcs bufferProcs = {};
  std::map<Handle, HandleBlock> handles;
  std::map<HostBufferId, BufferBlock> buffers;
  int32_t allocations = 0;
  int32_t bufferIds = 0;  // given so far
  int32_t misuses = 0;

  PIDescriptorParameters scripting = {};
  ReadDescriptorProcs readProcs = {};
  WriteDescriptorProcs writeProcs = {};
  std::map<Handle, std::vector<ScriptValue>> descriptors;
  std::map<ReadToken, ReadSession> readSessions;
  std::map<WriteToken, std::vector<ScriptValue>> writeSessions;
  uintptr_t lastToken = 0;
  std::vector<ScriptValue> recorded;

  std::vector<std::string> log;
  std::vector<HostExchange> exchanges;
  int32_t exchangeCount = 0;
  int32_t abortTests = 0;
  int32_t failsAt = 0;
  int32_t fallibleCalls = 0;
  const char* failedCall = nullptr;
  HostPicture displayed;
};

// The open host; its record is null while none has been opened.
HostState& host();

// What the module's input comes from.
const HostPicture& hostSource();
