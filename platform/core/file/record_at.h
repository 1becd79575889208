#pragma once

// Reading single records of a binary file (docs/format-1.md).

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "cmn/data_error.h"
#include "platform/core/file/binary_field_reader.h"
#include "platform/core/file/partial_field_reader.h"

namespace zuna_core {

/// Reads everything of a file before its songs, and of these the count.
template <Layout kLayout>
class HeadReader : public BinaryFieldReader<kLayout> {
 public:
  HeadReader(ByteReader& in, std::uint32_t& songs) : BinaryFieldReader<kLayout>(in), songs_(songs) {}

  template <typename Parent>
  void Children(std::string_view key, Parent&) {
    this->U32(key, songs_);
  }

 private:
  std::uint32_t& songs_;
};

/// Calls read(in, layout) for the bytes of `file` from `offset` on, where `layout` is a constant of that
/// layout. Then `offset` is where reading stopped; it stays where `read` throws. Throws std::invalid_argument
/// for a version that is not binary.
template <typename Read>
void ReadAt(std::string_view file, std::size_t& offset, cmn::FileVersion version, Read read) {
  ByteReader in(file, offset);
  switch (LayoutOf(version)) {
    case Layout::kFixed:
      read(in, std::integral_constant<Layout, Layout::kFixed>());
      break;
    case Layout::kCompact:
      read(in, std::integral_constant<Layout, Layout::kCompact>());
      break;
    case Layout::kText:
      ThrowNotBinary(version);
  }
  offset = static_cast<std::size_t>(in.next() - file.data());
}

/// Reads the record at `offset`.
template <typename Record>
void ReadRecordAt(std::string_view file, std::size_t& offset, cmn::FileVersion version, Record& record) {
  ReadAt(file, offset, version, [&](ByteReader& in, auto layout) {
    BinaryFieldReader<layout()> fields(in);
    VisitFields(fields, record);
  });
}

/// Reads what is before the damage of the record at `offset`; all of it where there is none.
template <typename Record>
void ReadBeginningAt(std::string_view file, std::size_t& offset, cmn::FileVersion version, Record& record) {
  ReadAt(file, offset, version, [&](ByteReader& in, auto layout) {
    PartialFieldReader<layout()> fields(in);
    try {
      VisitFields(fields, record);
    } catch (const cmn::DataError&) {
      return;  // `in` stands where reading stopped
    }
  });
}

/// Reads what is before the songs of `whole`, which begins at `offset`, and how many there are.
template <typename Whole>
void ReadHeadAt(std::string_view file, std::size_t& offset, cmn::FileVersion version, Whole& whole,
                std::uint32_t& songs) {
  ReadAt(file, offset, version, [&](ByteReader& in, auto layout) {
    HeadReader<layout()> fields(in, songs);
    VisitFields(fields, whole);
  });
}

}  // namespace zuna_core
