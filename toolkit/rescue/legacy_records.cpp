// The records of legacy files as bytes that may be damaged (docs/format-0.md).
#include "toolkit/rescue/internal/legacy_records.h"

#include <algorithm>
#include <array>

#include "format_converter/version0/containers/song_log.h"
#include "format_converter/version0/containers/timeline.h"

namespace zuna_toolkit {

namespace {

constexpr std::array kTimelineSequences = {
    SequenceKind{version0::RTempo::eventCode, version0::RTempo::kPayloadLength, "tempos"},
    SequenceKind{version0::RBarsBeats::eventCode, 0, "bar labels"},
    SequenceKind{version0::RKey::eventCode, version0::RKey::kPayloadLength, "keys"},
    SequenceKind{version0::RPageNum::eventCode, version0::RPageNum::kPayloadLength, "page numbers"},
    SequenceKind{version0::RMeter::eventCode, version0::RMeter::kPayloadLength, "meters"},
};

constexpr std::array kSongLogSequences = {
    SequenceKind{version0::CutV0::eventCode, version0::CutV0::kPayloadLength, "cuts"},
    SequenceKind{version0::VampV0::eventCode, version0::VampV0::kPayloadLength, "vamps"},
    SequenceKind{version0::RepeatV0::eventCode, version0::RepeatV0::kPayloadLength, "repeats"},
    SequenceKind{version0::ClickV0::eventCode, version0::ClickV0::kPayloadLength, "clicks"},
    SequenceKind{version0::TempoScaleV0::eventCode, version0::TempoScaleV0::kPayloadLength, "tempo scales"},
    SequenceKind{version0::TransposeV0::eventCode, version0::TransposeV0::kPayloadLength, "transposes"},
    SequenceKind{version0::XCaesura::eventCode, version0::XCaesura::kPayloadLength, "caesuras"},
    SequenceKind{version0::XScoreMarker::eventCode, 0, "markers"},
};

}  // namespace

std::string_view RecordCursor::Take(std::size_t size) {
  ok_ = ok_ && size <= bytes_.size() - at_;
  if (!ok_) return {};
  const std::string_view taken = bytes_.substr(at_, size);
  at_ += size;
  return taken;
}

std::uint32_t RecordCursor::Number(std::size_t size) {
  const std::string_view bytes = Take(size);
  std::uint32_t number = 0;
  for (std::size_t i = bytes.size(); i > 0; --i) {
    number = number << 8 | static_cast<unsigned char>(bytes[i - 1]);
  }
  return number;
}

std::string_view RecordCursor::Text() { return Take(Number(1)); }

std::string WordBytes(std::size_t number) {
  std::string bytes;
  for (unsigned shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(number >> shift);
  return bytes;
}

bool HasTimelineAt(std::string_view bytes, std::size_t at) {
  return at < bytes.size() && bytes.substr(at).starts_with(kTimelineMagic);
}

std::string TextBytes(std::string_view text) { return static_cast<char>(text.size()) + std::string(text); }

std::span<const SequenceKind> TimelineSequences() { return kTimelineSequences; }
std::span<const SequenceKind> SongLogSequences() { return kSongLogSequences; }

}  // namespace zuna_toolkit
