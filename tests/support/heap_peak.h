// The most heap memory that some work takes: an oracle for tests and fuzz targets.
//
//   const zuna_test::HeapPeak peak;
//   Work();
//   EXPECT_LE(peak.bytes(), zuna_test::HeapBound(input.size()));
//
// A program that compiles heap_peak.cpp counts every allocation of the process: new, malloc(3) and its
// relatives, those of the shared libraries too. It replaces malloc(3), which needs glibc. With
// AddressSanitizer, of g++ or clang, the sanitizer reports each allocation instead, and freed memory that it
// holds back does not count. ThreadSanitizer and MemorySanitizer keep malloc(3) for themselves: such a
// program cannot have it.

#pragma once

#include <cstddef>

namespace zuna_test {

/// Begins to count when it is made. Objects may be nested; all threads count together.
class HeapPeak {
 public:
  HeapPeak();
  ~HeapPeak();
  HeapPeak(const HeapPeak&) = delete;
  HeapPeak& operator=(const HeapPeak&) = delete;

  /// The bytes that were in use at the worst moment so far, without those that were in use at the beginning.
  std::size_t bytes() const;

 private:
  std::size_t at_beginning_;
  std::size_t peak_before_;
};

}  // namespace zuna_test
