#include "tests/support/hosts/host_runs.h"

#include "entry/handles.h"
#include "hosts/substitute_host/host_state.h"
#include "platform/none/none_script.h"

HostRun runHost(const HostSwitches& switches, const HostPicture& picture, const HostMask& mask,
                const std::function<void()>& prepare) {
  resetNone();
  openHost(switches, picture, mask);
  HostRun run = {};
  run.result = callSelector(kSelectorPrepare);
  if (run.result == 0) {
    showEverything(hostSettings());
    if (prepare) prepare();
    run.result = renderFilter();
  }
  run.effect = filteredPicture();
  run.ledgerAfter = hostLedger();
  const bool ownHandles = switches.handleSuite != SuiteOffer::usable;
  // Handles of the module's own outlive the run by design; nobody else would free them.
  if (ownHandles) {
    disposeModuleHandle(reinterpret_cast<Handle>(host().dataSlot));
    disposeModuleHandle(hostRecord()->parameters);
    host().dataSlot = 0;
    hostRecord()->parameters = nullptr;
  }
  closeHost();
  return run;
}
