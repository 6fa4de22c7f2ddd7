// host_runs: pictures and runs that the tests of the entry point share.

#pragma once

#include <string>

#include "hosts/substitute_host/substitute_host.h"
#include "settings/effect_settings.h"

// Deterministic colourful picture; the last of 2 or 4 planes is unlike the others.
HostPicture testPicture(int32_t width, int32_t height, int32_t planes);

// Antialiased disc and bar.
HostMask testMask(int32_t width, int32_t height);

// The settings in the open host's parameter handle.
EffectSettings* hostSettings();

// Settings that let every effect show.
void showEverything(EffectSettings* settings);

struct HostRun {
  int16_t result;
  HostPicture effect;
  HostLedger ledgerAfter;  // before the module is forgotten
};

// Opens a host, makes the settings block, lets `prepare` change what it likes, renders without
// dialog, closes.
HostRun runHost(const HostSwitches& switches, const HostPicture& picture, const HostMask& mask,
                const std::function<void()>& prepare = nullptr);
