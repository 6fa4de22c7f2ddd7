#include "platform/windows/dialogs/scaled_template.h"

#include <cstdlib>
#include <cstring>

#include "services/scaling.h"

// Past a number, which 0xFFFF announces, or a text.
static WORD* behind(WORD* at) {
  if (*at == 0xFFFF) return at + 2;
  while (*at != 0) ++at;
  return at + 1;
}

DLGTEMPLATE* templateAtScale(const char* name, int32_t scale) {
  HRSRC found = FindResourceA(moduleInstance(), name, MAKEINTRESOURCEA(5));
  HGLOBAL loaded = found != nullptr ? LoadResource(moduleInstance(), found) : nullptr;
  if (loaded == nullptr) return nullptr;
  const DWORD bytes = SizeofResource(moduleInstance(), found);
  auto* copy = static_cast<DLGTEMPLATE*>(std::malloc(bytes));
  if (copy == nullptr) return nullptr;
  std::memcpy(copy, LockResource(loaded), bytes);
  if ((copy->style & DS_SETFONT) != 0) {
    // Menu, class and caption come before the size of the letters.
    auto* at = reinterpret_cast<WORD*>(reinterpret_cast<uint8_t*>(copy) + sizeof(DLGTEMPLATE));
    at = behind(behind(behind(at)));
    *at = static_cast<WORD>(scaledLength(*at, scale));
  }
  return copy;
}
