#include "platform/current_thread.h"
#include "platform/windows/windows_api.h"

uintptr_t currentThread() {
  return GetCurrentThreadId();
}
