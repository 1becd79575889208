// The records of legacy files as bytes that may be damaged (docs/format-0.md).
#include "toolkit/rescue/internal/legacy_records.h"

#include <algorithm>
#include <array>

#include "format_converter/version0/containers/song_log.h"
#include "format_converter/version0/containers/timeline.h"

namespace zuna_toolkit {

namespace {

constexpr std::size_t kFrameSize = 1 + 2;     // event code and payload length
constexpr std::size_t kSequenceHead = 1 + 4;  // event code and body length

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

/// How a sequence begins.
struct SequenceStart {
  const SequenceKind* kind;
  std::size_t length;  ///< that it states
};

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

/// The end of the record at `at`, where it is whole and as a writer writes it.
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

/// The end of the last record that is whole, of those from `at` on, which are added to `count`.
std::size_t EndOfRecords(std::string_view bytes, std::size_t at, const SequenceKind& kind,
                         std::size_t& count) {
  while (at < bytes.size()) {
    const auto end = RecordEnd(bytes, at, kind);
    if (!end) break;
    at = *end;
    ++count;
  }
  return at;
}

std::string SequenceBytes(const SequenceKind& kind, std::string_view records) {
  return static_cast<char>(kind.code) + WordBytes(records.size()) + std::string(records);
}

/// Records of one size with their frames as they must have been: readers do not need what these state.
std::string Reframed(std::string_view records, const SequenceKind& kind) {
  const std::string frame = FrameBytes(kind);
  std::string bytes(records);
  for (std::size_t at = 0; at < bytes.size(); at += kFrameSize + kind.payload) {
    std::copy(frame.begin(), frame.end(), bytes.begin() + static_cast<std::ptrdiff_t>(at));
  }
  return bytes;
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

MendedSequences MendSequences(std::string_view bytes, std::size_t begin, std::size_t end,
                              std::span<const SequenceKind> kinds) {
  MendedSequences mended;
  std::vector<const SequenceKind*> seen;
  bytes = bytes.substr(0, end);
  const auto next_start = [&](std::size_t at) {
    const auto start = StartAt(bytes, at, kinds);
    return start && std::find(seen.begin(), seen.end(), start->kind) == seen.end() ? start : std::nullopt;
  };
  std::size_t at = begin;
  while (const auto start = next_start(at)) {
    const SequenceKind& kind = *start->kind;
    seen.push_back(&kind);
    at += kSequenceHead;
    const bool is_there = start->length <= end - at;
    const std::size_t stated_end = is_there ? at + start->length : end;
    const bool goes_on = is_there && (stated_end == end || next_start(stated_end));
    const std::string_view stated = bytes.substr(at, stated_end - at);
    if (goes_on && kind.payload != 0 && stated.size() % (kFrameSize + kind.payload) == 0) {
      mended.bytes += SequenceBytes(kind, Reframed(stated, kind));
      mended.records += stated.size() / (kFrameSize + kind.payload);
      at = stated_end;
      continue;
    }
    const std::size_t records_end =
        EndOfRecords(goes_on ? bytes.substr(0, stated_end) : bytes, at, kind, mended.records);
    const bool all = (is_there && records_end == stated_end) || (!goes_on && next_start(records_end));
    if (!all) mended.remarks.push_back("some of its " + std::string(kind.what) + " are missing");
    mended.bytes += SequenceBytes(kind, bytes.substr(at, records_end - at));
    at = goes_on ? stated_end : records_end;
  }
  for (const SequenceKind& kind : kinds) {
    if (std::find(seen.begin(), seen.end(), &kind) != seen.end()) continue;
    mended.bytes += SequenceBytes(kind, "");
    mended.remarks.push_back("its " + std::string(kind.what) + " are missing");
  }
  return mended;
}

}  // namespace zuna_toolkit
