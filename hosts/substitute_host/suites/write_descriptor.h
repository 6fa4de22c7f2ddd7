// write_descriptor: the suite that records a descriptor key by key.

#pragma once

#include "entry/host_interface.h"

WriteDescriptorProcs* offerWriteSuite();
