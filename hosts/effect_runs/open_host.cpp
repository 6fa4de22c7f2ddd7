#include "hosts/effect_runs/open_host.h"

#include <cstring>
#include <utility>

#include "hosts/process/command_failure.h"
#include "hosts/process/interrupt.h"
#include "persistence/settings_items.h"
#include "platform/unix/program_session.h"

OpenHost::OpenHost(const HostSwitches& switches, HostPicture picture, HostMask mask) {
  openHost(switches, std::move(picture), std::move(mask));
}

// Finish lets go of what a run that was stopped still holds.
OpenHost::~OpenHost() {
  callSelector(kSelectorFinish);
  closeHost();
}

void failOnMemory(const std::string& file) {
  failOnFile(file, "there is not enough memory for the effect");
}

void checkResult(int16_t result, const std::string& file) {
  stopIfInterrupted();
  if (result == kNoError) return;
  if (reportedAlerts() > 0) throw CommandFailure{kExitFailed, ""};
  if (result == kMemoryFull || result == kRenderBuffersMissing) failOnMemory(file);
  if (result == kFilterBadParameters) failOnFile(file, "the effect cannot work on this picture");
  failOnFile(file, "the effect failed (result " + std::to_string(result) + ")");
}

EffectSettings* moduleSettings(const std::string& file) {
  const Handle handle = hostRecord()->parameters;
  if (handle == nullptr) failOnMemory(file);
  return static_cast<EffectSettings*>(*handle);
}

static size_t bytesOf(ItemForm form) {
  switch (form) {
    case ItemForm::integer:
    case ItemForm::hundredths:
      return 4;
    case ItemForm::channel:
      return 2;
    default:
      return 0;
  }
}

void copySettings(const EffectSettings& from, EffectSettings* to) {
  const char* source = reinterpret_cast<const char*>(&from);
  char* target = reinterpret_cast<char*>(to);
  for (const SettingsItem& item : kSettingsItems) {
    std::memcpy(target + item.offset, source + item.offset, bytesOf(item.form));
  }
}
