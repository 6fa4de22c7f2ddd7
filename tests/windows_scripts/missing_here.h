// missing_here: what the scripts and the test library call and this compiler's library lacks.
// Included before everything else.

#pragma once

#include <cstdlib>
#include <string>

// Threads of the test library's own, which start none here.
namespace testing::internal {

class Notification {
 public:
  void Notify() {
  }
  void WaitForNotification() {
  }
};

}  // namespace testing::internal

inline int setenv(const char* name, const char* value, int) {
  return _putenv((std::string(name) + "=" + value).c_str());
}

inline int unsetenv(const char* name) {
  return setenv(name, "", 1);
}
