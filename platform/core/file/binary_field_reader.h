#pragma once

// Reading the fields of records in the binary versions (docs/format-1.md). The counterpart of
// binary_field_writer.h.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/core/bytes/byte_reader.h"
#include "platform/core/file/binary_field_writer.h"

namespace zuna_core {

/// Reads what a BinaryFieldWriter wrote. Throws cmn::DataError with path, field and offset.
template <Layout kLayout>
class BinaryFieldReader {
 public:
  explicit BinaryFieldReader(ByteReader& in) : in_(in) {}

  // A member of another width does not compile: it does not bind to the reference.
  void U8(std::string_view key, std::uint8_t& value) { value = static_cast<std::uint8_t>(in_.Fixed(1, key)); }
  void U16(std::string_view key, std::uint16_t& value) {
    value = static_cast<std::uint16_t>(Unsigned(key, 2, 0xFFFF));
  }
  void U32(std::string_view key, std::uint32_t& value) { value = Unsigned(key, 4, 0xFFFFFFFF); }
  void I16(std::string_view key, std::int16_t& value) {
    value = static_cast<std::int16_t>(Signed(key, 2, 0xFFFF));
  }
  void I32(std::string_view key, std::uint32_t& bits) { bits = Signed(key, 4, 0xFFFFFFFF); }
  void F32(std::string_view key, std::uint32_t& bits) {
    bits = static_cast<std::uint32_t>(in_.Fixed(4, key));
  }

  void Position(std::string_view key, std::uint32_t& position) {
    PositionFrom(key, before_, position);
    before_ = position;
  }
  void PositionFrom(std::string_view key, std::uint32_t origin, std::uint32_t& position) {
    U32(key, position);
    if (kCompact) position += origin;
  }

  void Text(std::string_view key, std::string& text) {
    const std::size_t size = Count(key);
    text.assign(in_.Take(size, key), size);
  }
  void SongNumber(std::string_view key, std::string& number) {
    Text(key, number);
    in_.path.song = number;
  }
  void TrackNumber(std::string_view key, std::uint16_t& number) {
    U16(key, number);
    in_.path.voice = number;
  }

  void BarNumber(std::string_view key, TL::BarsBeats& entry) {
    std::string text;
    if constexpr (kCompact) {
      Text(key, text);
    } else {
      text.assign(in_.Take(kBarNumberSize, key), kBarNumberSize);
      const std::size_t length = text.find('\0');
      if (length == std::string::npos || text.find_first_not_of('\0', length) != std::string::npos) {
        in_.Fail(key, "expected a text that is filled up with zero bytes");
      }
      text.resize(length);
    }
    if (const char* problem = SetBarNumber(entry, text)) in_.Fail(key, problem);
  }

  void Identifier(std::string_view key, kit::UUID& identifier) {
    kit::UUID::Bytes bytes{};
    const char* from = in_.Take(bytes.size(), key);
    std::copy(from, from + bytes.size(), bytes.begin());
    identifier = kit::UUID(bytes);
  }

  void Pair(std::string_view key, std::pair<std::uint16_t, std::uint16_t>& pair) {
    U16(key, pair.first);
    U16(key, pair.second);
  }

  template <typename Messages>
  void MessageRows(std::string_view key, Messages& messages) {
    BinaryMessages<Messages>::Take(in_, kLayout, key, Count(key), messages);
  }

  template <typename Record>
  void Object(std::string_view, Record& record) {
    VisitFields(*this, record);
  }

  template <typename Entry>
  void List(std::string_view key, std::vector<Entry>& entries) {
    static const std::size_t smallest = SizeOf(Blank<Entry>::Make());
    const std::size_t count = in_.Entries(Count(key), smallest, key);
    // A list that grew would take up to three times the memory for a moment.
    entries.reserve(count);
    in_.path.list = key;
    before_ = 0;
    for (in_.path.index = 0; in_.path.index < count; ++in_.path.index) {
      VisitFields(*this, entries.emplace_back(Blank<Entry>::Make()));
    }
    in_.path.list = {};
  }
  template <typename Shared>
  void List(std::string_view key, const std::shared_ptr<Shared>& list) {
    List(key, list->events);
  }

  template <typename Parent>
  void Children(std::string_view key, Parent& parent) {
    using Of = ChildRecords<Parent>;
    static const std::size_t smallest = SizeOf(*Of::New());
    const std::size_t count = in_.Entries(Count(key), smallest, key);
    const FieldPath path = in_.path;
    for (std::size_t i = 0; i < count; ++i) {
      const auto child = Of::New();
      VisitFields(*this, *child);
      if (const char* problem = Of::Add(parent, child)) in_.Fail(Of::kKey, problem);
      in_.path = path;
    }
  }

 protected:
  ByteReader& in_;
  std::uint32_t before_ = 0;  ///< the position of the entry before, in a list

 private:
  static constexpr bool kCompact = kLayout == Layout::kCompact;

  /// The bytes that a record with zeros and empty texts takes, which are the fewest that any takes. A list
  /// whose count says that it has more entries than the remaining bytes can hold is refused by this size,
  /// before memory is reserved.
  template <typename Record>
  static std::size_t SizeOf(const Record& blank) {
    ByteCounter counter;
    BinaryFieldWriter<kLayout, ByteCounter> writer(counter);
    VisitFields(writer, blank);
    return static_cast<std::size_t>(counter.size());
  }

  std::uint32_t Count(std::string_view key) {
    std::uint32_t count = 0;
    U32(key, count);
    return count;
  }

  /// An integer of `width` bytes in the fixed layout; the one in the compact layout is at most `max`.
  std::uint32_t Unsigned(std::string_view key, std::size_t width, std::uint32_t max) {
    return static_cast<std::uint32_t>(kCompact ? in_.Varint(max, key) : in_.Fixed(width, key));
  }
  /// The same for a signed integer. Its low `width` bytes are the two's complement.
  std::uint32_t Signed(std::string_view key, std::size_t width, std::uint32_t max) {
    const std::uint32_t bits = Unsigned(key, width, max);
    return kCompact ? static_cast<std::uint32_t>(UnZigZag(bits)) : bits;
  }
};

/// Reads the fields of a record that takes the rest of `in`.
template <Layout kLayout, typename Record>
void ReadFieldsIn(ByteReader& in, Record& record) {
  BinaryFieldReader<kLayout> fields(in);
  VisitFields(fields, record);
  in.ExpectEnd();
}

/// Reads the body of a binary file, which is nothing but the fields of `record`. Throws std::invalid_argument
/// for a version that is not binary.
template <typename Record>
void ReadBinaryFields(ByteReader& in, cmn::FileVersion version, Record& record) {
  switch (LayoutOf(version)) {
    case Layout::kFixed:
      return ReadFieldsIn<Layout::kFixed>(in, record);
    case Layout::kCompact:
      return ReadFieldsIn<Layout::kCompact>(in, record);
    case Layout::kText:
      ThrowNotBinary(version);
  }
}

}  // namespace zuna_core
