#include "platform/window.h"

// The programs built on this back end set the values themselves and open no window.

int32_t runMainDialog(SessionRecord*, void*) {
  return kDialogUnavailable;
}

void runAboutBox(void*) {
}
