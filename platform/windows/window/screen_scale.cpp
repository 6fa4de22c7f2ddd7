#include "platform/windows/window/screen_scale.h"

#include <algorithm>
#include <cstring>

#include "platform/window.h"
#include "services/scaling.h"

// A procedure of the system's windows by its name; null where the system does not have it.
template <typename Procedure>
static Procedure systemProcedure(const char* name) {
  HMODULE windows = GetModuleHandleA("user32.dll");
  FARPROC found = windows != nullptr ? GetProcAddress(windows, name) : nullptr;
  Procedure procedure = nullptr;
  static_assert(sizeof(procedure) == sizeof(found));
  std::memcpy(&procedure, &found, sizeof(procedure));
  return procedure;
}

int systemDots() {
  HDC screen = GetDC(nullptr);
  if (screen == nullptr) return kPlainDots;
  const int dots = GetDeviceCaps(screen, LOGPIXELSX);
  ReleaseDC(nullptr, screen);
  return dots > 0 ? dots : kPlainDots;
}

// Hosts that know nothing of scales are enlarged by the system, as is whatever they show: 96.
int dotsOf(HWND window) {
  using DotsOfWindow = UINT(WINAPI*)(HWND);
  using DotsOfSystem = UINT(WINAPI*)();
  using KnowsScales = BOOL(WINAPI*)();
  const auto knowsScales = systemProcedure<KnowsScales>("IsProcessDPIAware");
  if (knowsScales == nullptr || !knowsScales()) return kPlainDots;
  const auto ofWindow = systemProcedure<DotsOfWindow>("GetDpiForWindow");
  const auto ofSystem = systemProcedure<DotsOfSystem>("GetDpiForSystem");
  UINT dots = 0;
  if (ofWindow != nullptr && IsWindow(window)) dots = ofWindow(window);
  if (dots == 0 && ofSystem != nullptr) dots = ofSystem();
  return dots != 0 ? static_cast<int>(dots) : systemDots();
}

int metricAt(int metric, int dots) {
  using MetricAtDots = int(WINAPI*)(int, UINT);
  const auto atDots = systemProcedure<MetricAtDots>("GetSystemMetricsForDpi");
  return atDots != nullptr ? atDots(metric, static_cast<UINT>(dots)) : GetSystemMetrics(metric);
}

MONITORINFO monitorOf(HWND window) {
  MONITORINFO info = {};
  info.cbSize = sizeof(info);
  if (!GetMonitorInfoA(MonitorFromWindow(window, MONITOR_DEFAULTTOPRIMARY), &info)) {
    info.rcMonitor = {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    info.rcWork = info.rcMonitor;
  }
  return info;
}

ScreenRoom screenRoom(void* ownerWindow) {
  const auto owner = static_cast<HWND>(ownerWindow);
  const MONITORINFO monitor = monitorOf(IsWindow(owner) ? owner : nullptr);
  const RECT& work = monitor.rcWork;
  const int dots = dotsOf(owner);
  const LONG across = work.right - work.left - 2 * metricAt(SM_CXDLGFRAME, dots);
  const LONG down =
      work.bottom - work.top - 2 * metricAt(SM_CYDLGFRAME, dots) - metricAt(SM_CYCAPTION, dots);
  return {kPlainScale * dots / kPlainDots, static_cast<int32_t>(std::max<LONG>(across, 1)),
          static_cast<int32_t>(std::max<LONG>(down, 1)),
          static_cast<int32_t>(monitor.rcMonitor.bottom - monitor.rcMonitor.top)};
}

void keepLayout(HWND dialog) {
  using SetBehaviour = BOOL(WINAPI*)(HWND, int, int);
  constexpr int kNoneOfIt = 1;
  const auto set = systemProcedure<SetBehaviour>("SetDialogDpiChangeBehavior");
  if (set != nullptr) set(dialog, kNoneOfIt, kNoneOfIt);
}
