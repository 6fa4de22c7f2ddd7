#include "hosts/process/leftovers.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <climits>
#include <csignal>
#include <cstdint>
#include <cstring>

constexpr int kMostLeftovers = 4;  // a draft, and folders of the gallery and of long paths

static char paths[kMostLeftovers][PATH_MAX];
static volatile std::sig_atomic_t used[kMostLeftovers];

void noteLeftover(const std::string& path) {
  if (path.size() >= PATH_MAX) return;
  for (int i = 0; i < kMostLeftovers; ++i) {
    if (used[i] != 0) continue;
    std::memcpy(paths[i], path.c_str(), path.size() + 1);
    used[i] = 1;
    return;
  }
}

void forgetLeftover(const std::string& path) {
  for (int i = 0; i < kMostLeftovers; ++i) {
    if (used[i] != 0 && path == paths[i]) used[i] = 0;
  }
}

void forgetLeftovers() {
  for (volatile std::sig_atomic_t& one : used) one = 0;
}

// As the kernel writes an entry of a folder.
struct FolderEntry {
  uint64_t inode;
  int64_t offset;
  uint16_t bytes;
  uint8_t kind;
  char name[256];
};

// The C library's own reading of folders takes memory.
static void removeFolder(const char* path) {
  const int folder = open(path, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
  if (folder < 0) return;
  alignas(FolderEntry) static char entries[32768];
  for (;;) {
    const long count = syscall(SYS_getdents64, folder, entries, sizeof(entries));
    if (count <= 0) break;
    for (long at = 0; at < count;) {
      const auto* entry = reinterpret_cast<const FolderEntry*>(entries + at);
      unlinkat(folder, entry->name, 0);
      at += entry->bytes;
    }
  }
  close(folder);
  rmdir(path);
}

void removeLeftovers() {
  for (int i = 0; i < kMostLeftovers; ++i) {
    if (used[i] != 0 && unlink(paths[i]) != 0) removeFolder(paths[i]);
  }
}
