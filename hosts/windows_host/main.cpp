// windows_host: a host of the filter module for Windows, for tests and for developers.
//   windows_host MODULE.8bf OPTION...     one job
//   windows_host MODULE.8bf --batch FILE  a job a line, words separated by tabs
//   windows_host MODULE.8bf --loads N     loads and unloads it; prints the bytes that each has cost
// Prints the module's result of each job; ends with 0 when all were 0, with 1 when one was not, and
// with 3 when a job could not be done.

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "hosts/windows_host/job.h"
#include "hosts/windows_host/leftovers.h"
#include "hosts/windows_host/picture_files.h"
#include "platform/windows/windows_api.h"

static int runBatch(const std::string& path, const std::string& module) {
  std::ifstream file(path);
  if (!file) failWith(path + ": cannot be read");
  int worst = 0;
  std::string line;
  while (std::getline(file, line)) {
    std::vector<std::string> words;
    std::istringstream text(line);
    for (std::string word; std::getline(text, word, '\t');) words.push_back(word);
    const int result = runJob(parseJob(words), module);
    std::printf("%d\n", result);
    if (result != 0) worst = 1;
  }
  return worst;
}

int main(int count, char** words) {
  if (count < 3) {
    std::fprintf(stderr, "Usage: windows_host MODULE.8bf OPTION...\n       %s\n%s",
                 "windows_host MODULE.8bf --batch FILE  (a job a line, words separated by tabs)",
                 kJobHelp);
    return 2;
  }
  // A crash ends the program at once, without asking anybody.
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
  const std::string module = words[1];
  if (std::string(words[2]) == "--loads" && count == 4) {
    std::printf("%d\n", static_cast<int>(bytesPerLoad(module, std::atoi(words[3]))));
    return 0;
  }
  if (std::string(words[2]) == "--batch" && count == 4) return runBatch(words[3], module);
  const int result = runJob(parseJob(std::vector<std::string>(words + 2, words + count)), module);
  std::printf("%d\n", result);
  return result == 0 ? 0 : 1;
}
