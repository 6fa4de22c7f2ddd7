#include "hosts/process/own_library.h"

#include <dlfcn.h>

#include <csignal>
#include <iterator>

#include "hosts/process/command_failure.h"
#include "hosts/process/file_names.h"
#include "hosts/process/quiet_errors.h"

// Seen from the program: bin/ beside lib/, and the folder of the build.
constexpr const char* kPlaces[] = {"/../lib/morvalis/", "/"};

// What libraries need at once they allocate while they are loaded; without memory some abort, and
// some do not look.
static void* loadLibrary(const std::string& file) {
  constexpr int kEnds[] = {SIGABRT, SIGTRAP, SIGSEGV};
  const QuietErrors quiet;
  void (*before[std::size(kEnds)])(int) = {};
  for (size_t i = 0; i < std::size(kEnds); ++i) {
    before[i] = std::signal(kEnds[i], [](int) { endWithoutMemory(); });
  }
  void* loaded = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  for (size_t i = 0; i < std::size(kEnds); ++i) std::signal(kEnds[i], before[i]);
  return loaded;
}

void* ownProcedure(const std::string& library, const std::string& procedure, std::string* reason) {
  for (const char* place : kPlaces) {
    const std::string file = wholePath(programFolder() + place + library);
    if (!fileExists(file)) continue;
    void* loaded = loadLibrary(file);
    void* found = loaded == nullptr ? nullptr : dlsym(loaded, procedure.c_str());
    if (found == nullptr) {
      const char* error = dlerror();
      *reason = error == nullptr ? file : error;
    }
    return found;
  }
  *reason = "there is no " + library + " in " + wholePath(programFolder() + kPlaces[0]);
  return nullptr;
}
