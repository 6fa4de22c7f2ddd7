// open_host: the module opened on one picture, and what every run of it has in common.

#pragma once

#include <string>

#include "hosts/substitute_host/substitute_host.h"
#include "settings/effect_settings.h"

// One at a time; closed with its scope.
struct OpenHost {
  OpenHost(const HostSwitches& switches, HostPicture picture, HostMask mask);
  ~OpenHost();
  OpenHost(const OpenHost&) = delete;
  OpenHost& operator=(const OpenHost&) = delete;
};

// Each ends the command when a selector, or the whole run, has failed on the picture of `file`.
// What an alert has reported on standard error is not said again.
void checkResult(int16_t result, const std::string& file);
[[noreturn]] void failOnMemory(const std::string& file);

// The settings that the module has made, after a first selector.
EffectSettings* moduleSettings(const std::string& file);

// Everything that settings files hold. The module keeps the rest of its record itself.
void copySettings(const EffectSettings& from, EffectSettings* to);
