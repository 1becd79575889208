#include "platform/core/binary/byte_reader.h"

#include "cmn/data_error.h"
#include "kit/format.h"

namespace zuna_core {

namespace {

std::string PathOf(const Place& place, const char* field) {
  std::string text;
  if (place.voice) text += kit::format("voice %u, ", static_cast<unsigned>(*place.voice));
  if (place.list != nullptr) text += kit::format("%s[%zu].", place.list, place.index);
  return text + field;
}

}  // namespace

std::uint64_t ByteReader::Varint(std::uint64_t max, const char* field) {
  std::uint64_t value = 0;
  const char* next = next_;
  if (!GetVarint(next, end_, value)) Fail(field, kNoVarint);
  if (value > max) {
    Fail(field, kit::format("%llu is above the largest value, %llu", static_cast<unsigned long long>(value),
                            static_cast<unsigned long long>(max)));
  }
  next_ = next;
  return value;
}

const char* ByteReader::Take(std::size_t size, const char* field) {
  if (remaining() < size) Fail(field, kit::format("%zu bytes are due and %zu remain", size, remaining()));
  const char* bytes = next_;
  next_ += size;
  return bytes;
}

std::size_t ByteReader::Entries(std::uint32_t count, std::size_t min_size, const char* field) {
  if (remaining() / min_size < count) {
    Fail(field, kit::format("%lu entries cannot fit into the %zu bytes that remain",
                            static_cast<unsigned long>(count), remaining()));
  }
  return count;
}

void ByteReader::ExpectEnd() {
  if (remaining() != 0) Fail("end", kit::format("%zu bytes too many follow the last field", remaining()));
}

void ByteReader::Fail(const char* field, const std::string& what) const {
  throw cmn::DataError(cmn::DataError::Parts{.song = place.song,
                                             .field = PathOf(place, field),
                                             .offset = static_cast<std::uint64_t>(next_ - begin_),
                                             .problem = what});
}

}  // namespace zuna_core
