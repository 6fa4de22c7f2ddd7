#include "platform/windows/window/reader_calls.h"

// System libraries stay loaded.
template <typename Procedure>
static void lookUp(const char* library, const char* name, Procedure* found) {
  HMODULE module = LoadLibraryA(library);
  if (module == nullptr) return;
  *found = reinterpret_cast<Procedure>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

const ReaderCalls& readerCalls() {
  static const ReaderCalls calls = [] {
    ReaderCalls found = {};
    lookUp("oleaut32.dll", "SysAllocString", &found.allocText);
    lookUp("oleacc.dll", "LresultFromObject", &found.wrapObject);
    lookUp("oleacc.dll", "AccessibleObjectFromWindow", &found.findParent);
    lookUp("ole32.dll", "CoDisconnectObject", &found.disconnectObject);
    lookUp("ole32.dll", "CoInitialize", &found.openLibrary);
    lookUp("ole32.dll", "CoUninitialize", &found.closeLibrary);
    return found;
  }();
  return calls;
}

NotifyEvent notifyCall() {
  static const NotifyEvent call = [] {
    NotifyEvent found = nullptr;
    lookUp("user32.dll", "NotifyWinEvent", &found);
    return found;
  }();
  return call;
}
