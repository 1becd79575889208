// The sequences of legacy files as bytes that may be damaged (docs/format-0.md, "sequence").
#include "toolkit/rescue/internal/legacy_sequences.h"

#include <algorithm>
#include <array>
#include <utility>

#include "format_converter/version0/containers/song_log.h"
#include "format_converter/version0/containers/timeline.h"
#include "toolkit/rescue/internal/record_bytes.h"

namespace zuna_toolkit {

namespace {

constexpr std::size_t kFrameSize = 1 + 2;     // event code and payload length
constexpr std::size_t kSequenceHead = 1 + 4;  // event code and body length

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

/// Takes what can be read of the sequences in some bytes.
class SequenceMender {
 public:
  SequenceMender(std::string_view bytes, std::size_t begin, std::span<const SequenceKind> kinds)
      : bytes_(bytes), kinds_(kinds), at_(begin), steps_(bytes.size() - begin) {}

  MendedSequences Run() {
    mended_.end = at_;
    while (const auto start = FindStart()) {
      if (at_ > mended_.end) mended_.unread.push_back({mended_.end, at_});
      TakeSequence(*start);
      mended_.end = at_;
    }
    for (const SequenceKind& kind : kinds_) {
      if (IsSeen(kind)) continue;
      mended_.bytes += SequenceBytes(kind, "");
      mended_.remarks.push_back("its " + std::string(kind.what) + " are missing");
    }
    if (!mended_.unread.empty() && mended_.remarks.empty()) {
      mended_.remarks.emplace_back("there are other bytes between its lists");
    }
    return std::move(mended_);
  }

 private:
  bool IsSeen(const SequenceKind& kind) const {
    return std::find(seen_.begin(), seen_.end(), &kind) != seen_.end();
  }

  /// The beginning of a sequence of a kind that was not seen yet.
  std::optional<SequenceStart> NewStartAt(std::size_t at) const {
    const auto start = StartAt(bytes_, at, kinds_);
    return start && !IsSeen(*start->kind) ? start : std::nullopt;
  }

  /// Whether all of a sequence is at `at`, with records, and of a kind that writers write after those seen.
  bool IsWholeAndLater(std::size_t at, const SequenceStart& start) {
    if (!seen_.empty() && start.kind < seen_.back()) return false;
    const std::size_t records = at + kSequenceHead;
    if (start.length == 0 || start.length > bytes_.size() - records) return false;
    const std::string_view sequence = bytes_.substr(0, records + start.length);
    std::size_t read = records;
    while (read < sequence.size()) {
      const auto end = RecordEnd(sequence, read, *start.kind);
      if (!end || !steps_.Take()) return false;
      read = *end;
    }
    return true;
  }

  /// The next sequence: that at the current place, or the first whole one after it, whose place is the
  /// current one then.
  std::optional<SequenceStart> FindStart() {
    if (const auto start = NewStartAt(at_)) return start;
    for (std::size_t at = at_ + 1; at < bytes_.size(); ++at) {
      const auto start = NewStartAt(at);
      if (!start) continue;
      if (!steps_.Take()) break;
      if (!IsWholeAndLater(at, *start)) continue;
      at_ = at;
      return start;
    }
    return std::nullopt;
  }

  /// Takes what can be read of the sequence at the current place, which is after it then.
  void TakeSequence(const SequenceStart& start) {
    const SequenceKind& kind = *start.kind;
    seen_.push_back(&kind);
    at_ += kSequenceHead;
    const bool is_there = start.length <= bytes_.size() - at_;
    const std::size_t stated_end = is_there ? at_ + start.length : bytes_.size();
    const bool goes_on = is_there && (stated_end == bytes_.size() || NewStartAt(stated_end));
    const std::string_view stated = bytes_.substr(at_, stated_end - at_);
    if (goes_on && kind.payload != 0 && stated.size() % (kFrameSize + kind.payload) == 0) {
      mended_.bytes += SequenceBytes(kind, Reframed(stated, kind));
      mended_.records += stated.size() / (kFrameSize + kind.payload);
      at_ = stated_end;
      return;
    }
    const std::size_t records_end =
        EndOfRecords(goes_on ? bytes_.substr(0, stated_end) : bytes_, at_, kind, mended_.records);
    const bool all = (is_there && records_end == stated_end) || (!goes_on && NewStartAt(records_end));
    if (!all) mended_.remarks.push_back("some of its " + std::string(kind.what) + " are missing");
    mended_.bytes += SequenceBytes(kind, bytes_.substr(at_, records_end - at_));
    if (goes_on && records_end < stated_end) mended_.unread.push_back({records_end, stated_end});
    at_ = goes_on ? stated_end : records_end;
  }

  std::string_view bytes_;
  std::span<const SequenceKind> kinds_;
  std::size_t at_;
  Steps steps_;
  std::vector<const SequenceKind*> seen_;
  MendedSequences mended_;
};

}  // namespace

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

bool BeginsSequence(std::string_view bytes, std::size_t at, std::span<const SequenceKind> kinds) {
  return StartAt(bytes, at, kinds).has_value();
}

MendedSequences MendSequences(std::string_view bytes, std::size_t begin, std::size_t end,
                              std::span<const SequenceKind> kinds) {
  return SequenceMender(bytes.substr(0, end), begin, kinds).Run();
}

}  // namespace zuna_toolkit
