// What can be read of the damaged sequences of a legacy song (docs/format-0.md, "sequence").
#include "toolkit/rescue/internal/mended_sequences.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "toolkit/rescue/internal/record_bytes.h"

namespace zuna_toolkit {

namespace {

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
  for (std::size_t at = 0; at < bytes.size(); at += RecordSize(kind)) {
    std::copy(frame.begin(), frame.end(), bytes.begin() + static_cast<std::ptrdiff_t>(at));
  }
  return bytes;
}

/// What was taken of a sequence.
struct TakenSequence {
  const SequenceKind* kind;
  std::size_t stated;  ///< length of its records, in bytes
  std::size_t taken;   ///< length of those that were read
  bool is_whole;       ///< whether they reach up to what follows
};

/// Takes what can be read of the sequences in some bytes.
class SequenceMender {
 public:
  SequenceMender(std::string_view bytes, std::size_t begin, std::span<const SequenceKind> kinds)
      : bytes_(bytes), kinds_(kinds), begin_(begin), at_(begin), steps_(bytes.size() - begin) {}

  MendedSequences Run(std::size_t stated_size) {
    mended_.end = at_;
    while (const auto start = FindStart()) {
      if (at_ > mended_.end) mended_.unread.push_back({mended_.end, at_});
      TakeSequence(*start);
      mended_.end = at_;
    }
    AddWhatIsMissing(stated_size);
    if (!mended_.unread.empty() && mended_.remarks.empty()) {
      mended_.remarks.emplace_back("there are other bytes between its lists");
    }
    return std::move(mended_);
  }

 private:
  bool IsSeen(const SequenceKind& kind) const {
    return std::any_of(seen_.begin(), seen_.end(),
                       [&kind](const TakenSequence& sequence) { return sequence.kind == &kind; });
  }

  /// Tells which sequences are not whole, and adds empty ones for those that are missing.
  void AddWhatIsMissing(std::size_t stated_size) {
    const bool is_shorter = mended_.end - begin_ < stated_size;
    for (const TakenSequence& sequence : seen_) {
      const bool is_last = sequence.kind == &kinds_.back();
      const bool meets_end = !is_last || mended_.end == bytes_.size();
      const bool may_lack_records = is_shorter && (!meets_end || sequence.taken < sequence.stated);
      mended_.has_last = is_last && sequence.is_whole && !may_lack_records;
      if (sequence.is_whole && !may_lack_records) continue;
      mended_.remarks.push_back("some of its " + std::string(sequence.kind->what) +
                                (sequence.is_whole ? " may be missing" : " are missing"));
    }
    for (const SequenceKind& kind : kinds_) {
      if (IsSeen(kind)) continue;
      mended_.bytes += SequenceBytes(kind, "");
      mended_.remarks.push_back("its " + std::string(kind.what) + ", if it had any, are missing");
    }
  }

  /// The beginning of a sequence of a kind that was not seen yet.
  std::optional<SequenceStart> NewStartAt(std::size_t at) const {
    const auto start = StartAt(bytes_, at, kinds_);
    return start && !IsSeen(*start->kind) ? start : std::nullopt;
  }

  /// Whether all of a sequence is at `at`, with records, and of a kind that writers write after those seen.
  bool IsWholeAndLater(std::size_t at, const SequenceStart& start) {
    if (!seen_.empty() && start.kind < seen_.back().kind) return false;
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
    seen_.push_back({&kind, start.length, start.length, true});
    at_ += kSequenceHead;
    const bool is_there = start.length <= bytes_.size() - at_;
    const std::size_t stated_end = is_there ? at_ + start.length : bytes_.size();
    const bool goes_on =
        is_there && (stated_end == bytes_.size() || NewStartAt(stated_end)) && !EndsBefore(stated_end, kind);
    const std::string_view stated = bytes_.substr(at_, stated_end - at_);
    if (goes_on && kind.payload != 0 && stated.size() % RecordSize(kind) == 0) {
      mended_.bytes += SequenceBytes(kind, Reframed(stated, kind));
      mended_.records += stated.size() / RecordSize(kind);
      at_ = stated_end;
      return;
    }
    const std::size_t records_end =
        EndOfRecords(goes_on ? bytes_.substr(0, stated_end) : bytes_, at_, kind, mended_.records);
    seen_.back().taken = records_end - at_;
    seen_.back().is_whole = (is_there && records_end == stated_end) || (!goes_on && NewStartAt(records_end));
    mended_.bytes += SequenceBytes(kind, bytes_.substr(at_, records_end - at_));
    if (goes_on && records_end < stated_end) mended_.unread.push_back({records_end, stated_end});
    at_ = goes_on ? stated_end : records_end;
  }

  /// Whether the records at the current place end before `end`, and nothing but sequences follows them there.
  /// A record is missing then that is as long as sequences without records are.
  bool EndsBefore(std::size_t end, const SequenceKind& kind) {
    std::size_t count = 0;
    const std::size_t records_end = EndOfRecords(bytes_.substr(0, end), at_, kind, count);
    return records_end < end && CountSequences(bytes_, records_end, bytes_.size(), kinds_, steps_) > 0;
  }

  std::string_view bytes_;
  std::span<const SequenceKind> kinds_;
  std::size_t begin_;
  std::size_t at_;
  Steps steps_;
  std::vector<TakenSequence> seen_;
  MendedSequences mended_;
};

}  // namespace

MendedSequences MendSequences(std::string_view bytes, std::size_t begin, std::size_t end,
                              std::span<const SequenceKind> kinds, std::size_t stated_size) {
  return SequenceMender(bytes.substr(0, end), begin, kinds).Run(stated_size);
}

}  // namespace zuna_toolkit
