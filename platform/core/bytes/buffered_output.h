#pragma once

// Output in pieces of 64 KiB.

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string_view>

namespace zuna_core {

/// A buffer of 64 KiB before an output stream. It stays in the processor's cache, and memory does not grow
/// with the file.
class BufferedOutput {
 public:
  static constexpr std::size_t kSize = std::size_t{64} * 1024;

  /// Writes to `os`. With `checksum`, computes the CRC-32 of everything that is written.
  BufferedOutput(std::ostream& os, bool checksum);

  /// At least `size` (at most kSize) writable bytes. Commit() takes those that were used, up to `end`.
  char* Room(std::size_t size) {
    if (static_cast<std::size_t>(end_ - next_) < size) Flush();
    return next_;
  }
  void Commit(char* end) { next_ = end; }

  void Write(std::string_view bytes);

  /// Writes what the buffer holds to the stream. Throws kit::IoError when the stream does not take it, or
  /// std::ios_base::failure where the stream's mask asks for that.
  void Flush();

  /// The CRC-32 of all bytes that were flushed.
  std::uint32_t flushed_crc() const { return crc_; }

 private:
  std::ostream& os_;
  std::unique_ptr<char[]> buffer_;
  char* next_;
  char* end_;
  bool checksum_;
  std::uint32_t crc_ = 0;
};

}  // namespace zuna_core
