#include <pthread.h>

#include "platform/current_thread.h"

uintptr_t currentThread() {
  return static_cast<uintptr_t>(pthread_self());
}
