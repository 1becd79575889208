// Reads, writes and compares a legacy change log: docs/format-0.md, "change_log".

#include "format_converter/version0/containers/change_log.h"

#include <istream>
#include <ostream>

#include "format_converter/version0/containers/change_log_header.h"
#include "format_converter/version0/containers/internal/is_prefix.h"
#include "format_converter/version0/primitives/internal/primitives.h"

namespace version0 {

namespace {

constexpr std::uint32_t kBitsOfHalf = 16;

}  // namespace

ChangeLogV0::ChangeLogV0(std::istream& is) {
  is.exceptions(std::ios_base::failbit | std::ios_base::badbit);
  const ChangeLogHeader header(is);
  identifier = header.identifier;
  log_label = header.log_label;
  show_name = header.show_name;
  log_tag_pair = {static_cast<std::uint16_t>(header.log_tag_pair),
                  static_cast<std::uint16_t>(header.log_tag_pair >> kBitsOfHalf)};
  do {
    SongLogV0 log(is);
    const std::string number = log.songNumber_;
    songs.insert_or_assign(number, std::move(log));
  } while (!at_end(is, header.end_position));
}

void ChangeLogV0::write_binary(std::ostream& os) const {
  os.write(kChangeLogMagic.data(), kChangeLogMagic.size());
  const LengthField log_length(os);
  identifier.WriteBinary(os, true);
  put_string(os, log_label);
  put_string(os, show_name);
  put_u16(os, log_tag_pair.first);
  put_u16(os, log_tag_pair.second);
  for (const auto& [number, log] : songs) log.write_binary(os);
  log_length.patch(os);
}

bool operator==(const ChangeLogV0& a, const ChangeLogV0& b) {
  const auto same_log = [](const auto& x, const auto& y) { return x.second == y.second; };
  return a.identifier == b.identifier && a.log_label == b.log_label && a.show_name == b.show_name &&
         a.log_tag_pair == b.log_tag_pair && is_prefix_of(a.songs, b.songs, same_log);
}

bool operator!=(const ChangeLogV0& a, const ChangeLogV0& b) { return !(a == b); }

}  // namespace version0
