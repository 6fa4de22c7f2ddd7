#include "hosts/substitute_host/suites/descriptors.h"

#include <cstdint>

#include "hosts/substitute_host/host_state.h"
#include "hosts/substitute_host/suites/handle_suite.h"
#include "hosts/substitute_host/suites/read_descriptor.h"
#include "hosts/substitute_host/suites/write_descriptor.h"

constexpr uintptr_t kFirstToken = 0x2001;

PIDescriptorParameters* offerScripting() {
  const HostSwitches& switches = host().switches;
  if (switches.scripting == SuiteOffer::absent) return nullptr;
  PIDescriptorParameters* block = &host().scripting;
  *block = {};
  block->descriptorParametersVersion = kDescriptorVersion;
  if (switches.scriptingSuitesNull) return block;
  block->playInfo = switches.scriptingShowsDialog ? kPlayShowDialog : 0;
  block->readDescriptorProcs = offerReadSuite(switches.scripting);
  block->writeDescriptorProcs = offerWriteSuite();
  return block;
}

Handle newDescriptor(const std::vector<ScriptValue>& values) {
  const int32_t size = static_cast<int32_t>(sizeof(uint32_t) * (values.size() + 1));
  const Handle handle = newHostHandle(size);
  if (handle != nullptr) host().descriptors[handle] = values;
  return handle;
}

void* newToken() {
  uintptr_t& last = host().lastToken;
  last = last == 0 ? kFirstToken : last + 1;
  return reinterpret_cast<void*>(last);
}

void setScript(const std::vector<ScriptValue>& values) {
  PIDescriptorParameters* block = &host().scripting;
  if (block->descriptor != nullptr) freeHandle(block->descriptor);
  const bool readable = block->readDescriptorProcs != nullptr && !values.empty();
  block->descriptor = readable ? newDescriptor(values) : nullptr;
}

const std::vector<ScriptValue>& recordedScript() {
  return host().recorded;
}
