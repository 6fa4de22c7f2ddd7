// library_guard: libraries of others may break, or wait for ever, where memory ends or a file is
// worse than all that they were tried with. While a guard stands, that ends the program in order:
// what it has begun to write is taken away, and a line says what has happened. What waits for the
// user, or for another program, under a guard stands in an UnwatchedWait.

#pragma once

class LibraryGuard {
 public:
  LibraryGuard();
  ~LibraryGuard();
  LibraryGuard(const LibraryGuard&) = delete;
  LibraryGuard& operator=(const LibraryGuard&) = delete;

 private:
  static constexpr int kSignals = 6;
  void (*before[kSignals])(int) = {};
};
