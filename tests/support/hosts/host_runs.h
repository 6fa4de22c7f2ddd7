// host_runs: runs without a dialog that the tests of the entry point share.

#pragma once

#include <functional>

#include "tests/support/hosts/host_pictures.h"

struct HostRun {
  int16_t result;
  HostPicture effect;
  HostLedger ledgerAfter;  // before the module is forgotten
};

// Opens a host, makes the settings block, lets `prepare` change what it likes, renders without
// dialog, closes.
HostRun runHost(const HostSwitches& switches, const HostPicture& picture, const HostMask& mask,
                const std::function<void()>& prepare = nullptr);
