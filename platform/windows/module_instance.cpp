#include "platform/windows/windows_api.h"

// The linker places it at the start of the module.
extern "C" IMAGE_DOS_HEADER __ImageBase;

HINSTANCE moduleInstance() {
  return reinterpret_cast<HINSTANCE>(&__ImageBase);
}
