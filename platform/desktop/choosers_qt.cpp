#include "platform/choosers.h"

// The programs built on this back end open no window: it is as if the user had cancelled.

static bool cancelled(char* path, int32_t bytes) {
  if (bytes > 0) path[0] = '\0';
  return false;
}

bool choosePlatformFileToOpen(const FileChooser&, char* path, int32_t bytes) {
  return cancelled(path, bytes);
}

bool choosePlatformFileToSave(const FileChooser&, char* path, int32_t bytes) {
  return cancelled(path, bytes);
}
