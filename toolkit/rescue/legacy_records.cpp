// The records of legacy files as bytes that may be damaged (docs/format-0.md).
#include "toolkit/rescue/internal/legacy_records.h"

#include <algorithm>
#include <array>

#include "format_converter/version0/containers/song_log.h"
#include "format_converter/version0/containers/timeline.h"

namespace zuna_toolkit {

namespace {

constexpr std::size_t kStatusOffset = 8;  // in an event
constexpr std::size_t kVoiceOffset = 11;

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

/// The identifiers of `tracks`, which have their count before them.
std::string VoicesOf(std::string_view tracks) {
  std::string voices;
  RecordCursor in(tracks, 0);
  for (std::uint32_t left = in.Number(1); left > 0; --left) {
    voices += in.Take(1);
    in.Text();
  }
  return voices;
}

bool IsPlausibleEvent(std::string_view event, std::string_view voices) {
  const auto byte = [event](std::size_t at) { return static_cast<unsigned char>(event[at]); };
  const unsigned status = byte(kStatusOffset);
  const bool has_data = byte(kStatusOffset + 1) < 0x80 && byte(kStatusOffset + 2) < 0x80;
  return status >= 0x80 && (status & 0x0FU) == 0 && has_data &&
         (voices.empty() || voices.find(event[kVoiceOffset]) != std::string_view::npos);
}

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

std::string TextBytes(std::string_view text) { return static_cast<char>(text.size()) + std::string(text); }

std::size_t CountPlausibleEvents(std::string_view bytes, std::string_view tracks) {
  const std::string voices = VoicesOf(tracks);
  std::size_t count = 0;
  while (bytes.size() >= kEventSize && IsPlausibleEvent(bytes.substr(0, kEventSize), voices)) {
    bytes.remove_prefix(kEventSize);
    ++count;
  }
  return count;
}

std::span<const SequenceKind> TimelineSequences() { return kTimelineSequences; }
std::span<const SequenceKind> SongLogSequences() { return kSongLogSequences; }

}  // namespace zuna_toolkit
