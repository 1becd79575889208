#pragma once

// Writing the fields of a binary file, and counting their bytes first (docs/format-1.md).

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/core/bytes/buffered_output.h"
#include "platform/core/bytes/coding.h"

namespace zuna_core {

/// A variable-length integer and the `size` low bytes of `bytes` after it; 8 bytes in all at most.
struct VarintRecord {
  std::uint64_t varint;
  std::uint64_t bytes;
  std::size_t size;
};

/// The size of what a ByteWriter would write. An encoder is a template over the two, so that the size in a
/// file's header is known before its first byte is written and always agrees with what follows.
class ByteCounter {
 public:
  void Fixed(std::uint64_t, std::size_t size) { size_ += size; }
  void Varint(std::uint64_t value) { size_ += VarintSize(value); }
  template <typename Entries, typename MakeRecord>
  void Records(const Entries& entries, MakeRecord make_record) {
    std::uint64_t size = 0;
    for (const auto& entry : entries) {
      const VarintRecord record = make_record(entry);
      size += VarintSize(record.varint) + record.size;
    }
    size_ += size;
  }
  void Bytes(std::string_view bytes) { size_ += bytes.size(); }

  std::uint64_t size() const { return size_; }

 private:
  std::uint64_t size_ = 0;
};

/// Writes numbers and bytes into a buffered output.
class ByteWriter {
 public:
  explicit ByteWriter(BufferedOutput& output) : output_(output) {}

  /// The `size` (at most 8) low bytes of `value`, lowest first.
  void Fixed(std::uint64_t value, std::size_t size) {
    output_.Commit(PutFixed(output_.Room(8), value, size));
  }

  /// `value`, below 2^35, as a variable-length integer.
  void Varint(std::uint64_t value) { output_.Commit(PutVarint(output_.Room(8), value)); }

  /// The record that `make_record` makes of each entry, in order. The position stays in a register for the
  /// length of a block.
  template <typename Entries, typename MakeRecord>
  void Records(const Entries& entries, MakeRecord make_record) {
    constexpr std::size_t kBlock = 256;
    auto entry = entries.begin();
    for (std::size_t left = entries.size(); left != 0;) {
      const std::size_t block = std::min(left, kBlock);
      char* to = output_.Room(block * 8);
      for (std::size_t i = 0; i < block; ++i, ++entry) {
        const VarintRecord record = make_record(*entry);
        const EncodedVarint varint = EncodeVarint(record.varint);
        to = PutFixed(to, varint.bytes | record.bytes << (8 * varint.size), varint.size + record.size);
      }
      output_.Commit(to);
      left -= block;
    }
  }

  void Bytes(std::string_view bytes) { output_.Write(bytes); }

 private:
  BufferedOutput& output_;
};

}  // namespace zuna_core
