#include "platform/windows/windows_api.h"

// The linker places it at the start of the module.
extern "C" IMAGE_DOS_HEADER __ImageBase;

HINSTANCE moduleInstance() {
  return reinterpret_cast<HINSTANCE>(&__ImageBase);
}

// The C++ library sets memory aside for exceptions, which nobody here throws, and keeps it beyond
// the module's end.
namespace __gnu_cxx {
void __freeres();
}

[[gnu::destructor]] static void giveMemoryBack() {
  __gnu_cxx::__freeres();
}
