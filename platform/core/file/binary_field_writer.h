#pragma once

// Writing the fields of records in the binary versions (docs/format-1.md). show/fields.h and log/fields.h
// list the fields of each record once; BinaryFieldWriter, BinaryFieldReader, TextFieldWriter and
// TextFieldBinder have functions of the same names, one for each kind of field.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "kit/uuid.h"
#include "platform/core/bytes/byte_writer.h"
#include "platform/core/file/records.h"
#include "platform/core/file/versions.h"

namespace zuna_core {

/// The bytes of a bar number in the fixed layout, where zero bytes fill it up.
inline constexpr std::size_t kBarNumberSize = 8;

/// Writes fields into a ByteCounter or a ByteWriter.
template <Layout kLayout, typename Sink>
class BinaryFieldWriter {
 public:
  explicit BinaryFieldWriter(Sink& sink) : sink_(sink) {}

  /// Unsigned integers of 8, 16 and 32 bits.
  ///@{
  void U8(std::string_view, std::uint8_t value) { sink_.Fixed(value, 1); }
  void U16(std::string_view, std::uint16_t value) { Unsigned(value, 2); }
  void U32(std::string_view, std::uint32_t value) { Unsigned(value, 4); }
  ///@}

  /// Signed integers of 16 and 32 bits; `bits` are the two's complement.
  ///@{
  void I16(std::string_view, std::int16_t value) { Signed(value, 2); }
  void I32(std::string_view, std::uint32_t bits) { Signed(static_cast<std::int32_t>(bits), 4); }
  ///@}

  /// The bits of a float: four bytes in every layout.
  void F32(std::string_view, std::uint32_t bits) { sink_.Fixed(bits, 4); }

  /// The position in ticks of an entry of a list, mostly near that of the entry before.
  void Position(std::string_view key, std::uint32_t position) {
    PositionFrom(key, before_, position);
    before_ = position;
  }
  /// A position that is mostly near `origin`.
  void PositionFrom(std::string_view key, std::uint32_t origin, std::uint32_t position) {
    U32(key, kCompact ? position - origin : position);
  }

  void Text(std::string_view key, std::string_view text) {
    Count(key, text.size());
    sink_.Bytes(text);
  }
  void SongNumber(std::string_view key, const std::string& number) { Text(key, number); }
  void TrackNumber(std::string_view key, std::uint16_t number) { U16(key, number); }

  void BarNumber(std::string_view key, const TL::BarsBeats& entry) {
    std::string text(entry.bar_number());
    if constexpr (kCompact) {
      Text(key, text);
    } else {
      text.resize(kBarNumberSize);
      sink_.Bytes(text);
    }
  }

  void Identifier(std::string_view, const kit::UUID& identifier) {
    for (const std::uint8_t byte : identifier.bytes()) sink_.Fixed(byte, 1);
  }

  void Pair(std::string_view key, const std::pair<std::uint16_t, std::uint16_t>& pair) {
    U16(key, pair.first);
    U16(key, pair.second);
  }

  template <typename Messages>
  void MessageRows(std::string_view key, const Messages& messages) {
    Count(key, messages.size());
    BinaryMessages<Messages>::Put(sink_, kLayout, messages);
  }

  template <typename Record>
  void Object(std::string_view, const Record& record) {
    VisitFields(*this, record);
  }

  template <typename Entry>
  void List(std::string_view key, const std::vector<Entry>& entries) {
    Count(key, entries.size());
    before_ = 0;
    for (const Entry& entry : entries) VisitFields(*this, entry);
  }
  template <typename Shared>
  void List(std::string_view key, const std::shared_ptr<Shared>& list) {
    List(key, list->events);
  }

  /// The records that `parent` holds by number.
  template <typename Parent>
  void Children(std::string_view key, const Parent& parent) {
    Count(key, ChildRecords<Parent>::Of(parent).size());
    for (const auto& [number, child] : ChildRecords<Parent>::Of(parent))
      VisitFields(*this, std::as_const(*child));
  }

 private:
  static constexpr bool kCompact = kLayout == Layout::kCompact;

  /// A count that does not fit needs more bytes than a file may have, which is refused before one is written.
  void Count(std::string_view key, std::size_t count) { U32(key, static_cast<std::uint32_t>(count)); }

  /// `width` is in bytes.
  ///@{
  void Unsigned(std::uint32_t value, std::size_t width) {
    if constexpr (kCompact) {
      sink_.Varint(value);
    } else {
      sink_.Fixed(value, width);
    }
  }
  void Signed(std::int32_t value, std::size_t width) {
    if constexpr (kCompact) {
      sink_.Varint(ZigZag(value));
    } else {
      sink_.Fixed(static_cast<std::uint32_t>(value), width);
    }
  }
  ///@}

  Sink& sink_;
  std::uint32_t before_ = 0;  ///< the position of the entry before
};

/// Writes the fields of `record`, as they are in this version. Throws std::invalid_argument for a version
/// that is not binary.
template <typename Sink, typename Record>
void WriteBinaryFields(Sink& sink, cmn::FileVersion version, const Record& record) {
  switch (LayoutOf(version)) {
    case Layout::kFixed: {
      BinaryFieldWriter<Layout::kFixed, Sink> fields(sink);
      return VisitFields(fields, record);
    }
    case Layout::kCompact: {
      BinaryFieldWriter<Layout::kCompact, Sink> fields(sink);
      return VisitFields(fields, record);
    }
    case Layout::kText:
      ThrowNotBinary(version);
  }
}

}  // namespace zuna_core
