// Reads, writes and compares the timeline of a legacy song: docs/format-0.md, "timeline".

#include "format_converter/version0/containers/timeline.h"

#include <array>
#include <functional>
#include <istream>
#include <ostream>

#include "format_converter/version0/containers/internal/is_prefix.h"
#include "format_converter/version0/primitives/internal/sequence.h"

namespace version0 {

namespace {

void expect_timeline_magic(std::istream& is) {
  std::array<char, kTimelineMagic.size()> magic{};
  is.read(magic.data(), magic.size());
  const std::string found(magic.data(), magic.size());
  if (found != kTimelineMagic)
    throw IDError("Version0 Timeline must begin with \"TLMN\". Begins with: " + found);
}

/// Reads the next sequence into its list.
void read_list(std::istream& is, Timeline& timeline) {
  const int code = is.peek();
  switch (code) {
    case RTempo::eventCode:
      timeline.tempos = read_sequence<RTempo>(is);
      return;
    case RBarsBeats::eventCode:
      timeline.bars_beats = read_sequence<RBarsBeats>(is);
      return;
    case RKey::eventCode:
      timeline.keys = read_sequence<RKey>(is);
      return;
    case RPageNum::eventCode:
      timeline.page_nums = read_sequence<RPageNum>(is);
      return;
    case RMeter::eventCode:
      timeline.meters = read_sequence<RMeter>(is);
      return;
    default:
      throw EventCodeError(kit::format("Unknown Timeline eventCode %#x at %d", static_cast<unsigned>(code),
                                       static_cast<int>(istream_tellg(is))));
  }
}

}  // namespace

Timeline::Timeline(std::istream& is) {
  expect_timeline_magic(is);
  name = get_string(is);
  song_length = get_u32(is);
  const std::uint32_t body_length = get_u32(is);
  const std::uint32_t end = istream_tellg(is) + body_length;
  do {
    read_list(is, *this);
  } while (!at_end(is, end));
}

void Timeline::write_binary(std::ostream& os) const {
  os.write(kTimelineMagic.data(), kTimelineMagic.size());
  put_string(os, name);
  put_u32(os, song_length);
  const LengthField body_length(os);
  write_sequence(os, tempos);
  write_sequence(os, bars_beats);
  write_sequence(os, keys);
  write_sequence(os, page_nums);
  write_sequence(os, meters);
  body_length.patch(os);
}

bool operator==(const Timeline& a, const Timeline& b) {
  const std::equal_to<> equal;
  return a.name == b.name && a.song_length == b.song_length && is_prefix_of(a.tempos, b.tempos, equal) &&
         is_prefix_of(a.bars_beats, b.bars_beats, equal) && is_prefix_of(a.keys, b.keys, equal) &&
         is_prefix_of(a.page_nums, b.page_nums, equal) && is_prefix_of(a.meters, b.meters, equal);
}

bool operator!=(const Timeline& a, const Timeline& b) { return !(a == b); }

}  // namespace version0
