// The sequences of legacy files as bytes that may be damaged (docs/format-0.md, "sequence").
#include "toolkit/rescue/internal/legacy_sequences.h"

#include <algorithm>
#include <array>
#include <vector>

#include "format_converter/version0/containers/song_log.h"
#include "format_converter/version0/containers/timeline.h"
#include "toolkit/rescue/internal/record_bytes.h"

namespace zuna_toolkit {

namespace {

constexpr std::size_t kFrameSize = 1 + 2;  // event code and payload length

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

std::span<const SequenceKind> TimelineSequences() { return kTimelineSequences; }
std::span<const SequenceKind> SongLogSequences() { return kSongLogSequences; }

std::optional<SequenceStart> StartAt(std::string_view bytes, std::size_t at,
                                     std::span<const SequenceKind> kinds) {
  RecordCursor in(bytes, at);
  const std::uint32_t code = in.Number(1);
  const std::uint32_t length = in.Number(4);
  const auto kind = std::find_if(kinds.begin(), kinds.end(),
                                 [code](const SequenceKind& candidate) { return candidate.code == code; });
  if (!in.ok() || kind == kinds.end()) return std::nullopt;
  return SequenceStart{&*kind, length};
}

std::string FrameBytes(const SequenceKind& kind) {
  return {static_cast<char>(kind.code), static_cast<char>(kind.payload), '\0'};
}

std::size_t RecordSize(const SequenceKind& kind) { return kind.payload == 0 ? 0 : kFrameSize + kind.payload; }

std::optional<std::size_t> RecordEnd(std::string_view bytes, std::size_t at, const SequenceKind& kind) {
  RecordCursor in(bytes, at);
  if (kind.payload != 0) {
    const bool framed = in.Take(kFrameSize) == FrameBytes(kind);
    in.Take(kind.payload);
    if (!in.ok() || !framed) return std::nullopt;
  } else if (kind.code == version0::RBarsBeats::eventCode) {
    const bool coded = in.Number(1) == kind.code;
    const std::uint32_t payload = in.Number(2);
    in.Take(4);  // time
    const std::size_t label = in.Text().size();
    in.Take(1);  // tag
    if (!in.ok() || !coded || payload != 4 + 1 + label + 1) return std::nullopt;
  } else {
    in.Take(4);  // time
    in.Text();
    if (!in.ok()) return std::nullopt;
  }
  return in.at();
}

std::size_t CountSequences(std::string_view bytes, std::size_t begin, std::size_t end,
                           std::span<const SequenceKind> kinds, Steps& steps) {
  std::vector<const SequenceKind*> seen;
  std::size_t at = begin;
  while (at < end) {
    const auto start = StartAt(bytes.substr(0, end), at, kinds);
    if (!start || std::find(seen.begin(), seen.end(), start->kind) != seen.end()) return 0;
    seen.push_back(start->kind);
    at += kSequenceHead;
    if (start->length > end - at) return 0;
    const std::size_t sequence_end = at + start->length;
    while (at < sequence_end) {
      const auto record_end = RecordEnd(bytes.substr(0, sequence_end), at, *start->kind);
      if (!record_end || !steps.Take()) return 0;
      at = *record_end;
    }
  }
  return seen.size();
}

}  // namespace zuna_toolkit
