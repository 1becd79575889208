// A buffer in front of standard output.

#pragma once

#include <iosfwd>
#include <memory>

#include "kit/api.h"

namespace kit {

/// Collects text for standard output and writes it in one piece: on Flush(), or when it is destroyed. The
/// text of several buffers therefore does not interleave within a piece.
class ZUNA_API CoutBuffer {
 public:
  CoutBuffer();
  ~CoutBuffer();
  CoutBuffer(const CoutBuffer&) = delete;
  CoutBuffer& operator=(const CoutBuffer&) = delete;

  /// The stream that takes the text; the same object on every call. Throws std::bad_alloc where it lacks
  /// memory.
  std::ostream& stream();

  /// Writes what was collected to std::cout, flushes it and starts anew.
  void Flush();

 private:
  struct Text;
  std::unique_ptr<Text> text_;
};

}  // namespace kit
