// Reads, writes and compares a song log of a legacy change log: docs/format-0.md, "song_log".

#include "format_converter/version0/containers/song_log.h"

#include <istream>
#include <ostream>

#include "format_converter/version0/containers/internal/is_prefix.h"
#include "format_converter/version0/primitives/internal/sequence.h"

namespace version0 {

namespace {

/// Reads the next sequence into its list.
void read_list(std::istream& is, SongLogV0& log) {
  const int code = is.peek();
  switch (code) {
    case VampV0::eventCode:
      log.vamps = read_sequence<VampV0>(is);
      return;
    case RepeatV0::eventCode:
      log.repeats = read_sequence<RepeatV0>(is);
      return;
    case CutV0::eventCode:
      log.cuts = read_sequence<CutV0>(is);
      return;
    case TransposeV0::eventCode:
      log.transposes = read_sequence<TransposeV0>(is);
      return;
    case TempoScaleV0::eventCode:
      log.tempo_scales = read_sequence<TempoScaleV0>(is);
      return;
    case ClickV0::eventCode:
      log.clicks = read_sequence<ClickV0>(is);
      return;
    case XCaesura::eventCode:
      log.caesuras = read_sequence<XCaesura>(is);
      return;
    case XScoreMarker::eventCode:
      log.score_markers = read_sequence<XScoreMarker>(is);
      return;
    default:
      throw EventCodeError(kit::format("Unknown SongLogV0 eventCode %#x at %u", static_cast<unsigned>(code),
                                       istream_tellg(is)));
  }
}

template <typename Value, std::uint8_t Code>
bool same_event(const PairedEvent<Value, Code>& a, const PairedEvent<Value, Code>& b) {
  return a.start == b.start && a.end == b.end;
}
bool same_event(const XCaesura& a, const XCaesura& b) { return a == b; }
bool same_event(const XScoreMarker& a, const XScoreMarker& b) { return a == b; }

}  // namespace

SongLogV0::SongLogV0(std::istream& is) {
  is.exceptions(std::ios_base::failbit | std::ios_base::badbit);
  const std::uint32_t record_length = get_u32(is);
  songNumber_ = get_string(is);
  songName_ = get_string(is);
  songLength_ = get_u32(is);
  // The record length is the size of the sequences less 4 bytes. The shortest sequence has 5 bytes, so only
  // the last one ends after this length.
  const std::uint32_t begin = istream_tellg(is);
  do {
    read_list(is, *this);
  } while (istream_tellg(is) - begin < record_length);
}

void SongLogV0::write_binary(std::ostream& os) const {
  const std::uint32_t record = ostream_tellp(os);
  put_u32(os, 0);  // the record length, once it is known
  put_string(os, songNumber_);
  put_string(os, songName_);
  put_u32(os, songLength_);
  // Computed: a failed tell at this place would give a wrong length without an error.
  const std::size_t front = 4 + (1 + songNumber_.size()) + (1 + songName_.size()) + 4;
  const std::uint32_t begin = record + static_cast<std::uint32_t>(front);
  write_sequence(os, cuts);
  write_sequence(os, vamps);
  write_sequence(os, repeats);
  write_sequence(os, clicks);
  write_sequence(os, tempo_scales);
  write_sequence(os, transposes);
  write_sequence(os, caesuras);
  write_sequence(os, score_markers);
  const std::uint32_t end = ostream_tellp(os);
  patch_u32(os, record, end - begin - 4, end);
}

bool SongLogV0::operator==(const SongLogV0& b) const {
  const auto same = [](const auto& x, const auto& y) { return same_event(x, y); };
  return songNumber_ == b.songNumber_ && songName_ == b.songName_ && songLength_ == b.songLength_ &&
         is_prefix_of(cuts, b.cuts, same) && is_prefix_of(vamps, b.vamps, same) &&
         is_prefix_of(repeats, b.repeats, same) && is_prefix_of(clicks, b.clicks, same) &&
         is_prefix_of(tempo_scales, b.tempo_scales, same) && is_prefix_of(transposes, b.transposes, same) &&
         is_prefix_of(caesuras, b.caesuras, same) && is_prefix_of(score_markers, b.score_markers, same);
}

bool SongLogV0::operator!=(const SongLogV0& b) const { return !(*this == b); }

}  // namespace version0
