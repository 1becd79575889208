#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "CL/change_log.h"
#include "platform/core/binary/byte_reader.h"
#include "platform/core/binary/byte_writer.h"
#include "platform/core/log/field_writer.h"
#include "platform/core/log/fields.h"
#include "platform/core/log/log_builder.h"

namespace zuna_core {

/// Takes what a FieldWriter put, by functions of the same names. Throws cmn::DataError with place, field and
/// offset.
template <Layout kLayout>
class FieldReader {
 public:
  explicit FieldReader(ByteReader& in) : in_(in) {}

  template <class T>
  void Number(const char* field, T& value) {
    if constexpr (kCompact && sizeof(T) > 1) {
      value = static_cast<T>(in_.Varint(std::numeric_limits<T>::max(), field));
    } else {
      value = static_cast<T>(in_.Fixed(sizeof(T), field));
    }
  }

  void Signed(const char* field, std::uint32_t& bits) {
    Number(field, bits);
    if (kCompact) bits = static_cast<std::uint32_t>(UnZigZag(bits));
  }

  void Bits(const char* field, std::uint32_t& bits) { bits = in_.U32(field); }

  void PositionFrom(const char* field, std::uint32_t origin, std::uint32_t& position) {
    Number(field, position);
    if (kCompact) position += origin;
  }

  void Position(const char* field, std::uint32_t& position) {
    PositionFrom(field, before_, position);
    before_ = position;
  }

  void Text(const char* field, std::string& text) { text = in_.Text(Count(field), field); }

  void Identifier(const char* field, kit::UUID& identifier) {
    kit::UUID::Bytes bytes{};
    const char* from = in_.Take(bytes.size(), field);
    std::copy(from, from + bytes.size(), bytes.begin());
    identifier = kit::UUID(bytes);
  }

  template <class Event>
  void Events(const char* name, std::vector<Event>& events) {
    const std::size_t smallest = SizeOf([](auto& size) {
      const Event blank = BlankEvent<Event>();
      EventFields(size, blank);
    });
    const std::size_t count = in_.Entries(Count(name), smallest, name);
    // No more than the bytes that are left: an event in memory is larger than the smallest one in a file.
    events.reserve(std::min(count, in_.remaining() / sizeof(Event)));
    in_.place.list = name;
    before_ = 0;
    for (in_.place.index = 0; in_.place.index < count; ++in_.place.index) {
      EventFields(*this, events.emplace_back(BlankEvent<Event>()));
    }
    in_.place.list = nullptr;
  }

  void SongNumber(const char* field, std::string& number) {
    Text(field, number);
    in_.place.song = number;
  }

  void Songs(const char* name, CL::ChangeLog& log) {
    const std::size_t smallest = SizeOf([](auto& size) {
      const CL::SongLog blank("", "", 0, 0);
      SongFields(size, blank);
    });
    for (std::size_t left = in_.Entries(Count(name), smallest, name); left != 0; --left) {
      const std::shared_ptr<CL::SongLog> song = BlankSongLog();
      SongFields(*this, *song);
      if (!AddNewSongLog(log, song)) in_.Fail("song number", kDuplicateSongLog);
      in_.place.song.reset();
    }
  }

 private:
  static constexpr bool kCompact = kLayout == Layout::kCompact;

  /// The bytes that a record takes: the fewest, where nothing but zeros stands in it.
  template <class WriteRecord>
  static std::size_t SizeOf(const WriteRecord& write_record) {
    ByteCounter counter;
    FieldWriter<kLayout, ByteCounter> writer(counter);
    write_record(writer);
    return static_cast<std::size_t>(counter.size());
  }

  std::uint32_t Count(const char* field) {
    std::uint32_t count = 0;
    Number(field, count);
    return count;
  }

  ByteReader& in_;
  std::uint32_t before_ = 0;
};

}  // namespace zuna_core
