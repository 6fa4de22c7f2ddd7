#include "hosts/picture_files/formats_library.h"

#include "hosts/process/command_failure.h"
#include "hosts/process/own_library.h"

const FormatsLibrary& formatsLibrary() {
  static const FormatsLibrary* library = nullptr;
  if (library != nullptr) return *library;
  std::string reason;
  const auto entry = reinterpret_cast<const FormatsLibrary* (*)()>(
      ownProcedure("libmorvalis_formats.so", "morvalisFormats", &reason));
  if (entry == nullptr) {
    throw CommandFailure{kExitFailed,
                         "the library for other formats than plain PNG is missing: " + reason};
  }
  library = entry();
  return *library;
}
