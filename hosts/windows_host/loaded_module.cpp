#include "hosts/windows_host/loaded_module.h"

#include <cstring>
#include <vector>

#include "entry/host_interface.h"
#include "hosts/windows_host/picture_files.h"
#include "platform/windows/windows_api.h"

static HMODULE module = nullptr;
static ModuleEntry entry = nullptr;

// --- The module's description ---------------------------------------------------------------

constexpr uint32_t kVendor = fourCharacterCode("8BIM");
constexpr uint32_t kFilterKind = fourCharacterCode("8BFM");
constexpr uint32_t kEntryKey = fourCharacterCode(sizeof(void*) == 8 ? "8664" : "wx86");

struct Description {
  bool isFilter = false;
  std::string entryName;  // "" when there is none for this kind of process
};

template <typename Value>
static Value valueAt(const uint8_t* bytes, size_t offset) {
  Value value;
  std::memcpy(&value, bytes + offset, sizeof(value));
  return value;
}

// Properties follow each other at whole 32-bit words behind a header of 10 bytes.
static Description parseDescription(const uint8_t* bytes, size_t count) {
  constexpr size_t kHeaderBytes = 10;
  constexpr size_t kPropertyHeaderBytes = 16;
  Description description;
  if (count < kHeaderBytes || valueAt<uint16_t>(bytes, 0) != 1 || valueAt<int32_t>(bytes, 2) != 0) {
    return description;
  }
  const auto properties = valueAt<int32_t>(bytes, 6);
  size_t at = kHeaderBytes;
  for (int32_t i = 0; i < properties && at + kPropertyHeaderBytes <= count; ++i) {
    const auto vendor = valueAt<uint32_t>(bytes, at);
    const auto key = valueAt<uint32_t>(bytes, at + 4);
    const auto length = valueAt<uint32_t>(bytes, at + 12);
    at += kPropertyHeaderBytes;
    if (length > count - at) break;
    const char* data = reinterpret_cast<const char*>(bytes + at);
    if (vendor == kVendor && key == fourCharacterCode("kind") && length >= 4) {
      description.isFilter = valueAt<uint32_t>(bytes, at) == kFilterKind;
    } else if (vendor == kVendor && key == kEntryKey) {
      description.entryName = std::string(data, strnlen(data, length));
    }
    at += (length + 3) / 4 * 4;
  }
  return description;
}

static BOOL CALLBACK readDescription(HMODULE file, LPCSTR type, LPSTR name, LONG_PTR context) {
  HRSRC resource = FindResourceA(file, name, type);
  HGLOBAL loaded = resource != nullptr ? LoadResource(file, resource) : nullptr;
  if (loaded == nullptr) return TRUE;
  *reinterpret_cast<Description*>(context) = parseDescription(
      static_cast<const uint8_t*>(LockResource(loaded)), SizeofResource(file, resource));
  return FALSE;  // one is enough
}

// Hosts look before they let the module's code run.
static Description describeModule(const std::string& path) {
  Description description;
  HMODULE file = LoadLibraryExA(path.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
  if (file == nullptr) return description;
  EnumResourceNamesA(file, "PIPL", readDescription, reinterpret_cast<LONG_PTR>(&description));
  FreeLibrary(file);
  return description;
}

std::string loadModule(const std::string& path) {
  const Description description = describeModule(path);
  if (!description.isFilter) return "does not describe itself as a filter";
  if (description.entryName.empty()) return "has no entry for this kind of process";
  module = LoadLibraryA(path.c_str());
  if (module == nullptr) return "cannot be loaded: error " + std::to_string(GetLastError());
  FARPROC found = GetProcAddress(module, description.entryName.c_str());
  if (found == nullptr) return "does not export " + description.entryName;
  entry = reinterpret_cast<ModuleEntry>(reinterpret_cast<void*>(found));
  return "";
}

ModuleEntry moduleEntry() {
  return entry;
}

// A class of windows outlives the module whose procedure it names.
static void expectNoClassLeft() {
  WNDCLASSA description;
  if (GetClassInfoA(module, "PopupClass", &description)) {
    failWith("the module leaves a class of windows behind");
  }
}

void unloadModule() {
  expectNoClassLeft();
  FreeLibrary(module);
  module = nullptr;
  entry = nullptr;
}

void unloadModuleForGood() {
  void* place = module;
  unloadModule();
  VirtualAlloc(place, 1, MEM_RESERVE, PAGE_NOACCESS);
}

// --- What it imports ------------------------------------------------------------------------

static void replaceImport(IMAGE_THUNK_DATA* slot, void* procedure) {
  DWORD protection = 0;
  VirtualProtect(slot, sizeof(*slot), PAGE_READWRITE, &protection);
  slot->u1.Function = reinterpret_cast<ULONG_PTR>(procedure);
  VirtualProtect(slot, sizeof(*slot), protection, &protection);
}

// Asks of every procedure that the module imports by name what is to stand in its place; null
// leaves it.
static void replaceImports(void* (*replacementOf)(const char* name)) {
  auto* base = reinterpret_cast<uint8_t*>(module);
  const auto* header = reinterpret_cast<IMAGE_NT_HEADERS*>(
      base + reinterpret_cast<IMAGE_DOS_HEADER*>(base)->e_lfanew);
  const IMAGE_DATA_DIRECTORY& imports =
      header->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  const auto* library = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + imports.VirtualAddress);
  for (; library->Name != 0; ++library) {
    auto* names = reinterpret_cast<IMAGE_THUNK_DATA*>(base + library->OriginalFirstThunk);
    auto* slots = reinterpret_cast<IMAGE_THUNK_DATA*>(base + library->FirstThunk);
    for (; names->u1.AddressOfData != 0; ++names, ++slots) {
      if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal)) continue;
      const auto* byName = reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(base + names->u1.AddressOfData);
      void* procedure = replacementOf(reinterpret_cast<const char*>(byName->Name));
      if (procedure != nullptr) replaceImport(slots, procedure);
    }
  }
}

static uint32_t fixedSeconds = 0;

static int64_t fixedTime64(int64_t* time) {
  if (time != nullptr) *time = fixedSeconds;
  return fixedSeconds;
}

static int32_t fixedTime32(int32_t* time) {
  if (time != nullptr) *time = static_cast<int32_t>(fixedSeconds);
  return static_cast<int32_t>(fixedSeconds);
}

static void* clockFor(const char* name) {
  const bool wide = std::strcmp(name, "_time64") == 0;
  const bool narrow = std::strcmp(name, "_time32") == 0;
  const bool plain = std::strcmp(name, "time") == 0;
  if (wide || (plain && sizeof(void*) == 8)) return reinterpret_cast<void*>(fixedTime64);
  if (narrow || plain) return reinterpret_cast<void*>(fixedTime32);
  return nullptr;
}

void fixModuleClock(uint32_t seconds) {
  fixedSeconds = seconds;
  replaceImports(clockFor);
}

// What users without the rights of an administrator are refused.
static LSTATUS WINAPI createKeyAsUser(HKEY root, LPCSTR name, DWORD reserved, LPSTR kind,
                                      DWORD options, REGSAM access, SECURITY_ATTRIBUTES* security,
                                      HKEY* key, DWORD* disposition) {
  if (root == HKEY_LOCAL_MACHINE && (access & KEY_SET_VALUE) != 0) return ERROR_ACCESS_DENIED;
  return RegCreateKeyExA(root, name, reserved, kind, options, access, security, key, disposition);
}

static HANDLE WINAPI createFileAsUser(LPCSTR path, DWORD access, DWORD sharing,
                                      SECURITY_ATTRIBUTES* security, DWORD creation, DWORD flags,
                                      HANDLE pattern) {
  const bool machines = _strnicmp(path, "c:\\Windows\\", 11) == 0;
  if (machines && (access & GENERIC_WRITE) != 0) {
    SetLastError(ERROR_ACCESS_DENIED);
    return INVALID_HANDLE_VALUE;
  }
  return CreateFileA(path, access, sharing, security, creation, flags, pattern);
}

static void* refusalFor(const char* name) {
  if (std::strcmp(name, "RegCreateKeyExA") == 0) return reinterpret_cast<void*>(createKeyAsUser);
  if (std::strcmp(name, "CreateFileA") == 0) return reinterpret_cast<void*>(createFileAsUser);
  return nullptr;
}

void refuseWhatIsTheMachines() {
  replaceImports(refusalFor);
}

static BOOL WINAPI writeOnFullDisk(HANDLE, const void*, DWORD, DWORD* written, OVERLAPPED*) {
  *written = 0;
  SetLastError(ERROR_DISK_FULL);
  return FALSE;
}

static void* fullDiskFor(const char* name) {
  return std::strcmp(name, "WriteFile") == 0 ? reinterpret_cast<void*>(writeOnFullDisk) : nullptr;
}

void fillModuleDisk() {
  replaceImports(fullDiskFor);
}
