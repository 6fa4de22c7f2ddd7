// failing_calls: preloaded into the program, it counts the calls of one procedure of the system or
// of the allocator, and lets one of them fail, with errno EIO or ENOMEM. A write writes half first.
//
//   FAILING_CALL      which: the name of a procedure below
//   FAILING_AT        the n-th call of it fails; 0: none
//   FAILING_COUNT     file that receives the number of calls at the end

#include <dlfcn.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

extern "C" void* __libc_malloc(size_t bytes);
extern "C" void* __libc_calloc(size_t count, size_t bytes);

namespace {

std::atomic<long> calls = 0;
std::atomic<bool> counting = true;

const char* variable(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

// The loader calls before there is an environment.
bool fails(const char* procedure, int error) {
  if (environ == nullptr || !counting) return false;
  if (std::strcmp(variable("FAILING_CALL"), procedure) != 0) return false;
  if (++calls != std::atol(variable("FAILING_AT"))) return false;
  errno = error;
  return true;
}

template <typename... Arguments>
int callNext(const char* procedure, Arguments... arguments) {
  return reinterpret_cast<int (*)(Arguments...)>(dlsym(RTLD_NEXT, procedure))(arguments...);
}

// What threads wake each other with has eight bytes and is no file.
bool isWakeUp(int file, size_t count) {
  struct stat about = {};
  return count == 8 && fstat(file, &about) == 0 && !S_ISREG(about.st_mode);
}

[[gnu::destructor]] void tellCount() {
  counting = false;
  if (*variable("FAILING_COUNT") == 0) return;
  std::FILE* file = std::fopen(variable("FAILING_COUNT"), "w");
  if (file == nullptr) return;
  std::fprintf(file, "%ld", calls.load());
  std::fclose(file);
}

}  // namespace

#pragma GCC visibility push(default)
extern "C" {

void* malloc(size_t bytes) {
  return fails("malloc", ENOMEM) ? nullptr : __libc_malloc(bytes);
}

void* calloc(size_t count, size_t bytes) {
  return fails("malloc", ENOMEM) ? nullptr : __libc_calloc(count, bytes);
}

ssize_t write(int file, const void* bytes, size_t count) {
  const auto real =
      reinterpret_cast<ssize_t (*)(int, const void*, size_t)>(dlsym(RTLD_NEXT, "write"));
  if (isWakeUp(file, count) || !fails("write", EIO)) return real(file, bytes, count);
  real(file, bytes, count / 2);
  errno = EIO;
  return -1;
}

int mkostemp(char* name, int flags) {
  return fails("mkostemp", EIO) ? -1 : callNext("mkostemp", name, flags);
}

int mkstemp(char* name) {
  return fails("mkstemp", EIO) ? -1 : callNext("mkstemp", name);
}

int fsync(int file) {
  return fails("fsync", EIO) ? -1 : callNext("fsync", file);
}

int close(int file) {
  if (!fails("close", EIO)) return callNext("close", file);
  callNext("close", file);
  errno = EIO;
  return -1;
}

int fchmod(int file, mode_t rights) {
  return fails("fchmod", EIO) ? -1 : callNext("fchmod", file, rights);
}

int rename(const char* from, const char* to) {
  return fails("rename", EIO) ? -1 : callNext("rename", from, to);
}

int unlink(const char* name) {
  return fails("unlink", EIO) ? -1 : callNext("unlink", name);
}

int symlink(const char* from, const char* to) {
  return fails("symlink", EIO) ? -1 : callNext("symlink", from, to);
}
}
#pragma GCC visibility pop
