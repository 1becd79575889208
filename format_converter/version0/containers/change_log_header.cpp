// Reads the header of a legacy change log: docs/format-0.md, "change_log_header".

#include "format_converter/version0/containers/change_log_header.h"

#include <array>
#include <istream>

#include "format_converter/version0/primitives/errors.h"
#include "format_converter/version0/primitives/internal/primitives.h"
#include "kit/format.h"

namespace version0 {

namespace {

void expect_log_magic(std::istream& is) {
  std::array<char, kChangeLogMagic.size() + 1> magic{};  // with a terminating NUL
  is.read(magic.data(), kChangeLogMagic.size());
  if (magic.data() == kChangeLogMagic) return;
  throw IDError(kit::format("Version0 ChangeLog must begin with ZUNA. Begins with %s at %i", magic.data(),
                            static_cast<int>(istream_tellg(is))));
}

}  // namespace

ChangeLogHeader::ChangeLogHeader(std::istream& is) {
  expect_log_magic(is);
  const std::uint32_t length = get_u32(is);
  end_position = istream_tellg(is) + length;
  identifier = kit::UUID(is, true);
  log_label = get_string(is);
  show_name = get_string(is);
  log_tag_pair = get_u32(is);
}

std::string get_show_name(std::istream& is) { return ChangeLogHeader(is).show_name; }

}  // namespace version0
