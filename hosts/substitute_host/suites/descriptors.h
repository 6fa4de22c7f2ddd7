// descriptors: the scripting block, and the descriptors behind its handles.

#pragma once

#include <vector>

#include "entry/host_interface.h"
#include "hosts/substitute_host/substitute_host.h"

constexpr uint32_t kTypeInteger = fourCharacterCode("long");
constexpr uint32_t kTypeFloat = fourCharacterCode("doub");
constexpr uint32_t kTypeUnitFloat = fourCharacterCode("UntF");
constexpr uint32_t kTypeBoolean = fourCharacterCode("bool");
constexpr uint32_t kTypeEnumeration = fourCharacterCode("enum");
constexpr uint32_t kTypeClass = fourCharacterCode("type");

// Lays out the block as the switches offer it; null when it is absent.
PIDescriptorParameters* offerScripting();

// A handle that stands for these values; null when there is no memory.
Handle newDescriptor(const std::vector<ScriptValue>& values);

// An opaque number for a token, never an address and never given twice.
void* newToken();
