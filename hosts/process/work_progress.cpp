#include "hosts/process/work_progress.h"

#include <atomic>

#include "hosts/process/interrupt.h"

static std::atomic<int32_t> done = -1;

bool watchWork(int32_t percent) {
  done = percent;
  return interrupted();
}

void forgetWork() {
  done = -1;
}

int32_t workDone() {
  return done;
}
