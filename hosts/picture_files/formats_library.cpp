#include "hosts/picture_files/formats_library.h"

#include "hosts/process/command_failure.h"
#include "hosts/process/libraries/library_guard.h"
#include "hosts/process/libraries/own_library.h"
#include "hosts/process/progress_bar.h"

static const FormatsLibrary* loadedLibrary() {
  const LibraryGuard guard;
  std::string reason;
  const auto entry = reinterpret_cast<const FormatsLibrary* (*)()>(
      ownProcedure("libmorvalis_formats.so", "morvalisFormats", &reason));
  if (entry == nullptr) {
    const bool shortOfRoom = reason.find("map segment") != std::string::npos ||
                             reason.find("allocate memory") != std::string::npos;
    throw CommandFailure{kExitFailed,
                         (shortOfRoom ? "there is not enough memory for the library"
                                      : "the library for other formats than plain PNG is missing") +
                             std::string(": ") + reason};
  }
  return entry();
}

const FormatsLibrary& formatsLibrary() {
  static const FormatsLibrary* library = nullptr;
  if (library != nullptr) return *library;
  library = loadedLibrary();
  library->tellProgress(noteProgress);
  return *library;
}
