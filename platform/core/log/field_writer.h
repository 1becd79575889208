#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "CL/change_log.h"
#include "platform/core/binary/coding.h"
#include "platform/core/log/fields.h"

namespace zuna_core {

/// How the numbers of a binary log stand in it: at their full width; or compact, where those of more than a
/// byte are variable-length integers, and positions are differences.
enum class Layout { kFixed, kCompact };

/// Puts fields into a ByteCounter or a ByteWriter.
template <Layout kLayout, class Sink>
class FieldWriter {
 public:
  explicit FieldWriter(Sink& sink) : sink_(sink) {}

  template <class T>
  void Number(const char*, T value) {
    if constexpr (kCompact && sizeof(T) > 1) {
      sink_.Varint(value);
    } else {
      sink_.Fixed(value, sizeof(T));
    }
  }

  /// An integer that may be negative; `bits` are its two's complement.
  void Signed(const char* field, std::uint32_t bits) {
    Number(field, kCompact ? ZigZag(static_cast<std::int32_t>(bits)) : bits);
  }

  /// Four bytes in every layout.
  void Bits(const char*, std::uint32_t bits) { sink_.Fixed(bits, sizeof bits); }

  /// A position that is mostly near another one.
  void PositionFrom(const char* field, std::uint32_t origin, std::uint32_t position) {
    Number(field, kCompact ? position - origin : position);
  }

  /// The position of an entry of a list.
  void Position(const char* field, std::uint32_t position) {
    PositionFrom(field, before_, position);
    before_ = position;
  }

  void Text(const char* field, const std::string& text) {
    Count(field, text.size());
    sink_.Bytes(text);
  }

  void Identifier(const char*, const kit::UUID& identifier) {
    for (const std::uint8_t byte : identifier.bytes()) sink_.Fixed(byte, 1);
  }

  template <class Event>
  void Events(const char* name, const std::vector<Event>& events) {
    Count(name, events.size());
    before_ = 0;
    for (const Event& event : events) EventFields(*this, event);
  }

  void SongNumber(const char* field, const std::string& number) { Text(field, number); }

  void Songs(const char* name, const CL::ChangeLog& log) {
    Count(name, log.song_logs().size());
    for (const auto& [number, song] : log.song_logs()) SongFields(*this, *song);
  }

 private:
  static constexpr bool kCompact = kLayout == Layout::kCompact;

  /// What does not fit needs more bytes than a file can have, which is found out before one is written.
  void Count(const char* field, std::size_t count) { Number(field, static_cast<std::uint32_t>(count)); }

  Sink& sink_;
  std::uint32_t before_ = 0;  ///< the position of the entry before
};

}  // namespace zuna_core
