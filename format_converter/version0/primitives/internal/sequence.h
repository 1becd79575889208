#pragma once

// A sequence holds records of one type: the type's event code (1 byte), the length of the body in bytes (4
// bytes), then the records. docs/format-0.md, "sequence", draws it.

#include <istream>
#include <ostream>
#include <vector>

#include "format_converter/version0/primitives/errors.h"
#include "format_converter/version0/primitives/internal/primitives.h"
#include "kit/format.h"

namespace version0 {

/// Reads the event code that must come next. Throws EventCodeError for any other byte and at the end.
inline void expect_event_code(std::istream& is, std::uint8_t code) {
  const int found = is.get();
  if (found == code) return;
  throw EventCodeError(kit::format("Expected %#x, found %#x before %u", static_cast<unsigned>(code),
                                   static_cast<unsigned>(found), istream_tellg(is)));
}

/// Reads a sequence of `Record`. Every record reads bytes from the stream and a failed stream ends the list,
/// so a wrong length costs no more than the bytes that are there.
template <typename Record>
std::vector<Record> read_sequence(std::istream& is) {
  expect_event_code(is, Record::eventCode);
  std::vector<Record> records;
  const std::uint32_t length = get_u32(is);
  if (length == 0) return records;
  const std::uint32_t end = istream_tellg(is) + length;
  do {
    records.emplace_back(is);
  } while (!at_end(is, end));
  return records;
}

template <typename Record>
void write_sequence(std::ostream& os, const std::vector<Record>& records) {
  put_u8(os, Record::eventCode);
  const LengthField length(os);
  for (const Record& record : records) record.write_binary(os);
  length.patch(os);
}

}  // namespace version0
