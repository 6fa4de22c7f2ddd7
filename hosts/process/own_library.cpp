#include "hosts/process/own_library.h"

#include <dlfcn.h>

#include "hosts/process/file_names.h"

// Seen from the program: bin/ beside lib/; the folder of the build, or lib/morvalis/ itself, where
// programs stand that others start.
constexpr const char* kPlaces[] = {"/../lib/morvalis/", "/"};

void* ownProcedure(const std::string& library, const std::string& procedure, std::string* reason) {
  for (const char* place : kPlaces) {
    const std::string file = wholePath(programFolder() + place + library);
    if (!fileExists(file)) continue;
    void* loaded = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
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
