#include "hosts/process/libraries/own_library.h"

#include <dlfcn.h>

#include "hosts/process/file_names.h"
#include "hosts/process/libraries/library_guard.h"
#include "hosts/process/libraries/quiet_errors.h"

// Seen from the program: bin/ beside lib/; the folder of the build, or lib/morvalis/ itself, where
// programs stand that others start.
constexpr const char* kPlaces[] = {"/../lib/morvalis/", "/"};

static void* loadLibrary(const std::string& file) {
  const LibraryGuard guard;
  const QuietErrors quiet;
  return dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
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
