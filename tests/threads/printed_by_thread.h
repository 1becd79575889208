// What one thread prints to standard output.

#pragma once

#include <string>

namespace zuna_test {

/// While one lives, every thread gets back what itself prints to standard output.
class PrintedByThread {
 public:
  PrintedByThread();
  PrintedByThread(const PrintedByThread&) = delete;
  PrintedByThread& operator=(const PrintedByThread&) = delete;
  ~PrintedByThread();

  /// What this thread has printed since it last asked.
  static std::string Take();
};

}  // namespace zuna_test
