#pragma once

// Where the fields of a binary file stand (docs/format-1.md): what BinaryFieldReader reads, told field by
// field.

#include <algorithm>
#include <bit>
#include <optional>

#include "cmn/data_error.h"
#include "cmn/field_list.h"
#include "platform/core/file/binary_field_reader.h"
#include "platform/core/file/frame.h"

namespace zuna_core {

/// Reads records as BinaryFieldReader does, and places each field once it is read. Keeps no entries of lists,
/// so that a list whose count is too large is read as far as the bytes go.
template <Layout kLayout>
class FieldLister : public BinaryFieldReader<kLayout> {
  using Reader = BinaryFieldReader<kLayout>;

 public:
  FieldLister(ByteReader& in, cmn::FieldPlacer& placer) : Reader(in), placer_(placer) {}

  void U8(std::string_view key, std::uint8_t& value) {
    Reader::U8(key, value);
    Place(key, std::uint32_t{value});
  }
  void U16(std::string_view key, std::uint16_t& value) {
    Reader::U16(key, value);
    Place(key, std::uint32_t{value});
  }
  void U32(std::string_view key, std::uint32_t& value) {
    Reader::U32(key, value);
    Place(key, value);
  }
  void I16(std::string_view key, std::int16_t& value) {
    Reader::I16(key, value);
    Place(key, std::int32_t{value});
  }
  void I32(std::string_view key, std::uint32_t& bits) {
    Reader::I32(key, bits);
    Place(key, static_cast<std::int32_t>(bits));
  }
  void F32(std::string_view key, std::uint32_t& bits) {
    Reader::F32(key, bits);
    Place(key, std::bit_cast<float>(bits));
  }
  void Position(std::string_view key, std::uint32_t& position) {
    Reader::Position(key, position);
    Place(key, position);
  }
  void PositionFrom(std::string_view key, std::uint32_t origin, std::uint32_t& position) {
    Reader::PositionFrom(key, origin, position);
    Place(key, position);
  }
  void Text(std::string_view key, std::string& text) {
    Reader::Text(key, text);
    Place(key, std::string_view(text));
  }
  void SongNumber(std::string_view key, std::string& number) {
    Reader::SongNumber(key, number);
    Place(key, std::string_view(number));
  }
  void TrackNumber(std::string_view key, std::uint16_t& number) {
    Reader::TrackNumber(key, number);
    Place(key, std::uint32_t{number});
  }
  void BarNumber(std::string_view key, TL::BarsBeats& entry) {
    Reader::BarNumber(key, entry);
    Place(key, std::string_view(entry.bar_number()));
  }
  void Identifier(std::string_view key, kit::UUID& identifier) {
    Reader::Identifier(key, identifier);
    Place(key, std::string_view(identifier.ToString()));
  }
  void Pair(std::string_view key, std::pair<std::uint16_t, std::uint16_t>& pair) {
    U16(std::string(key) + "[0]", pair.first);
    U16(std::string(key) + "[1]", pair.second);
  }

  template <typename Messages>
  void MessageRows(std::string_view key, Messages& messages) {
    using Binary = BinaryMessages<Messages>;
    ByteReader& in = this->in_;
    const std::size_t count = Count(key);
    const std::size_t smallest = Binary::SmallestSize(kLayout);
    const std::size_t fitting = std::min(count, in.remaining() / smallest);
    const std::string_view bytes(in.next(), in.remaining());
    try {
      Binary::Take(in, kLayout, key, static_cast<std::uint32_t>(fitting), messages);
    } catch (const cmn::DataError&) {
      Binary::Place(placer_, kLayout, key, bytes, messages);  // those before the damage
      throw;
    }
    Binary::Place(placer_, kLayout, key, bytes, messages);
    messages = {};
    if (fitting < count) in.Fail(key, "the list is cut off");
  }

  template <typename Record>
  void Object(std::string_view key, Record& record) {
    placer_.Enter(key);
    VisitFields(*this, record);
    placer_.Leave();
  }

  template <typename Entry>
  void List(std::string_view key, std::vector<Entry>&) {
    const std::uint32_t count = Count(key);
    this->before_ = 0;
    for (std::uint32_t i = 0; i < count; ++i) {
      Entry entry = Blank<Entry>::Make();
      placer_.Enter(key, i);
      VisitFields(*this, entry);
      placer_.Leave();
    }
  }
  template <typename Shared>
  void List(std::string_view key, const std::shared_ptr<Shared>& list) {
    List(key, list->events);
  }

  template <typename Parent>
  void Children(std::string_view key, Parent& parent) {
    using Of = ChildRecords<Parent>;
    const std::uint32_t count = Count(key);
    for (std::uint32_t i = 0; i < count; ++i) {
      const auto child = Of::New();
      placer_.Enter(key, i);
      VisitFields(*this, *child);
      placer_.Leave();
      if (const char* problem = Of::Add(parent, child)) this->in_.Fail(Of::kKey, problem);
    }
  }

 private:
  std::uint32_t Count(std::string_view key) {
    std::uint32_t count = 0;
    U32(key, count);
    return count;
  }

  void Place(std::string_view key, const cmn::FieldValue& value) {
    placer_.PlaceUpTo(this->in_.offset(), key, value);
  }

  cmn::FieldPlacer& placer_;
};

/// Places the fields of the header. None where `file` has no header.
inline std::optional<Header> PlaceHeader(FileKind kind, std::string_view file, cmn::FieldPlacer& placer) {
  const std::optional<Header> header = DecodeHeader(kind, file);
  if (!header) return header;
  placer.Place(kMagicSize, "magic", file.substr(0, kMagicSize));
  placer.Place(kHeaderSize - kMagicSize - kVersionSize, "size", header->size);
  placer.Place(1, "major", std::uint32_t{header->version.major});
  placer.Place(1, "minor", std::uint32_t{header->version.minor});
  return header;
}

/// Places the fields of the binary file `file`, whose body is `record`, as far as it can be read.
template <typename Record>
void PlaceFields(FileKind kind, std::string_view file, const cmn::TakeField& take) {
  cmn::FieldPlacer placer(take);
  const std::optional<Header> header = PlaceHeader(kind, file, placer);
  if (!header || !IsBinary(kind, header->version)) return;
  const std::uint64_t size = kHeaderSize - kVersionSize + std::uint64_t{header->size};
  const std::size_t checksum = HasChecksum(header->version) ? kChecksumSize : 0;
  if (size < kHeaderSize + checksum) return;
  const bool is_whole = size <= file.size();
  ByteReader in(is_whole ? file.substr(0, static_cast<std::size_t>(size) - checksum) : file, kHeaderSize);
  Record record;
  try {
    if (LayoutOf(header->version) == Layout::kCompact) {
      FieldLister<Layout::kCompact> fields(in, placer);
      VisitFields(fields, record);
    } else {
      FieldLister<Layout::kFixed> fields(in, placer);
      VisitFields(fields, record);
    }
    in.ExpectEnd();
  } catch (const cmn::DataError&) {
    return;  // which the reader of whole files throws too
  }
  if (!is_whole || checksum == 0) return;
  const std::uint64_t stored = GetFixed(in.end(), kChecksumSize);
  placer.Place(kChecksumSize, "crc32", static_cast<std::uint32_t>(stored));
}

}  // namespace zuna_core
