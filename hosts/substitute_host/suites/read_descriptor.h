// read_descriptor: the suite that reads a descriptor key by key.

#pragma once

#include "entry/host_interface.h"
#include "hosts/substitute_host/substitute_host.h"

// Lays out the suite with the fault that the offer names.
ReadDescriptorProcs* offerReadSuite(SuiteOffer offer);
