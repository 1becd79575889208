// Reading the fields of a binary file in memory: the checks that fail.

#include "platform/core/bytes/byte_reader.h"

#include "cmn/data_error.h"
#include "kit/format.h"

namespace zuna_core {

namespace {

std::string PathText(const FieldPath& path, std::string_view field) {
  std::string text;
  if (path.voice) text = kit::format("voice %u, ", static_cast<unsigned>(*path.voice));
  if (!path.list.empty()) text.append(path.list).append(kit::format("[%zu].", path.index));
  return text.append(field);
}

}  // namespace

std::uint64_t ByteReader::Varint(std::uint64_t max, std::string_view field) {
  std::uint64_t value = 0;
  const char* next = next_;
  if (!GetVarint(next, end_, value)) Fail(field, kNoVarint);
  if (value > max) {
    Fail(field, kit::format("%llu is above the maximum, %llu", static_cast<unsigned long long>(value),
                            static_cast<unsigned long long>(max)));
  }
  next_ = next;
  return value;
}

std::size_t ByteReader::Entries(std::uint32_t count, std::size_t min_size, std::string_view field) {
  if (remaining() / min_size < count) {
    Fail(field, kit::format("%lu entries do not fit into the remaining %zu bytes",
                            static_cast<unsigned long>(count), remaining()));
  }
  return count;
}

void ByteReader::ExpectEnd() {
  if (remaining() != 0) Fail("end", kit::format("unexpected bytes after the last field: %zu", remaining()));
}

void ByteReader::Fail(std::string_view field, const std::string& problem) const {
  throw cmn::DataError(cmn::DataError::Parts{
      .song = path.song, .field = PathText(path, field), .offset = offset(), .problem = problem});
}

void ByteReader::FailShort(std::size_t size, std::string_view field) const {
  Fail(field, kit::format("needs %zu bytes, only %zu remain", size, remaining()));
}

}  // namespace zuna_core
