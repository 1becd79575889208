// What is left of a damaged legacy show (docs/format-0.md, "show_data").
#include <algorithm>
#include <map>
#include <sstream>

#include "toolkit/internal/legacy_sizes.h"
#include "toolkit/rescue/internal/legacy_records.h"
#include "toolkit/rescue/internal/legacy_song.h"
#include "toolkit/words.h"

namespace zuna_toolkit {

namespace {

constexpr std::string_view kTimelineMagic = "TLMN";
constexpr std::size_t kCountSize = 1;       // of the count of songs at the beginning
constexpr std::size_t kEventsThatTell = 8;  // that a file without any timeline is a show

/// The fields of a song before its events.
struct SongHead {
  std::string_view number;
  std::string_view name;
  std::string_view division_and_length;
  std::string_view tracks;  ///< with their count
  std::size_t stated_events = 0;
  std::size_t events = 0;  ///< where they begin
};

/// A timeline that may be damaged.
struct FoundTimeline {
  std::size_t end = 0;
  std::size_t sequences = 0;  ///< 0 where it is damaged
};

/// The head of the song at `at`, as far as it goes; `in` is not ok where it is not whole.
SongHead ReadSongHead(RecordCursor& in, std::string_view bytes, Steps& steps) {
  SongHead head;
  in.Number(4);  // record length
  head.number = in.Text();
  head.name = in.Text();
  head.division_and_length = in.Take(2 + 4);
  const std::size_t tracks = in.at();
  for (std::uint32_t left = in.Number(1); left > 0 && in.ok() && steps.Take(); --left) {
    in.Take(1);  // id
    in.Text();
  }
  head.tracks = bytes.substr(tracks, in.at() - tracks);
  head.stated_events = in.Number(4);
  head.events = in.at();
  return head;
}

version0::SongData SongFrom(const std::string& bytes) {
  std::istringstream stream(bytes);
  stream.exceptions(std::ios_base::failbit | std::ios_base::badbit);
  return version0::SongData(stream);
}

class ShowSalvage {
 public:
  explicit ShowSalvage(std::string_view bytes) : bytes_(bytes), steps_(bytes.size()) {}

  Salvage Run() {
    if (!bytes_.empty()) report_.stated_songs = static_cast<unsigned char>(bytes_.front());
    WalkSongs(*this, std::min(kCountSize, bytes_.size()), bytes_.size());
    return {LegacyShow{NumberedShow()}, kLegacyVersion, std::move(report_)};
  }

  std::optional<std::size_t> WholeEnd(std::size_t at) {
    RecordCursor front(bytes_, at);
    const std::size_t length = front.Number(4);
    const std::size_t timeline = front.at() + length;
    if (!front.ok() || !HasTimelineAt(timeline) || EndOfEvents(at) != timeline) return std::nullopt;
    const bool has_all = TimelineAt(timeline).sequences == TimelineSequences().size();
    return has_all ? std::optional(TimelineAt(timeline).end) : std::nullopt;
  }

  void TakeWhole(std::size_t begin, std::size_t end) {
    Keep(begin, end, std::string(bytes_.substr(begin, end - begin)), {});
  }

  void TakeDamaged(std::size_t begin, std::size_t end) {
    if (end == bytes_.size() && report_.saved() == report_.stated_songs &&
        report_.saved() == report_.songs.size()) {
      report_.remarks.push_back(Counted(end - begin, "byte follows", "bytes follow") + " the last song");
      return;
    }
    while (begin < end) {
      const std::size_t song_end = EndOfFirst(begin, end);
      if (IsWholeBut(begin, song_end)) {
        TakeWhole(begin, song_end);
      } else {
        Mend(begin, song_end);
      }
      begin = song_end;
    }
  }

 private:
  bool HasTimelineAt(std::size_t at) const {
    return at < bytes_.size() && bytes_.substr(at).starts_with(kTimelineMagic);
  }

  /// Where the events of the song at `at` end; none where what is before them does not fit.
  std::optional<std::size_t> EndOfEvents(std::size_t at) {
    RecordCursor in(bytes_, at);
    const SongHead head = ReadSongHead(in, bytes_, steps_);
    return in.ok() ? std::optional(head.events + head.stated_events * kEventSize) : std::nullopt;
  }

  /// Whether the song between `begin` and `end` is undamaged but for the length of its record, or has not all
  /// lists, as other writers may write it. That is too little to find a song by.
  bool IsWholeBut(std::size_t begin, std::size_t end) {
    const auto timeline = EndOfEvents(begin);
    return timeline && *timeline < end && HasTimelineAt(*timeline) && TimelineAt(*timeline).sequences > 0 &&
           TimelineAt(*timeline).end == end;
  }

  /// The timeline whose magic is at `at`.
  FoundTimeline TimelineAt(std::size_t at) {
    const auto [entry, is_new] = timelines_.try_emplace(at);
    if (!is_new) return entry->second;
    RecordCursor in(bytes_, at + kTimelineMagic.size());
    in.Text();
    in.Number(4);  // song length
    const std::size_t length = in.Number(4);
    if (!in.ok() || length > bytes_.size() - in.at()) return {};
    const std::size_t end = in.at() + length;
    entry->second = {end, CountSequences(bytes_, in.at(), end, TimelineSequences(), steps_)};
    has_timeline_ = has_timeline_ || entry->second.sequences > 0;
    return entry->second;
  }

  /// Where the first of the damaged songs between `begin` and `end` ends: after its timeline, where that is
  /// undamaged.
  std::size_t EndOfFirst(std::size_t begin, std::size_t end) {
    const std::string_view bytes = bytes_.substr(0, end);
    for (std::size_t at = begin; (at = bytes.find(kTimelineMagic, at)) != std::string_view::npos; ++at) {
      const FoundTimeline timeline = TimelineAt(at);
      if (timeline.sequences > 0 && timeline.end <= end) return timeline.end;
    }
    return end;
  }

  /// Takes what is left of the song between `begin` and `end`.
  void Mend(std::size_t begin, std::size_t end) {
    const std::string_view bytes = bytes_.substr(0, end);
    RecordCursor in(bytes, begin);
    Steps steps(end - begin);
    const SongHead head = ReadSongHead(in, bytes, steps);
    if (!in.ok()) return Lose(begin, end, head, "its beginning cannot be read");

    const std::size_t stated_end = head.events + head.stated_events * kEventSize;
    std::size_t timeline = stated_end;
    if (stated_end >= end || !HasTimelineAt(stated_end)) timeline = bytes.find(kTimelineMagic, head.events);
    const bool has_magic = timeline != std::string_view::npos;
    if (!has_magic) timeline = std::min(stated_end, end);
    std::size_t events = (timeline - head.events) / kEventSize;
    if (has_magic && timeline != head.events + events * kEventSize) {
      return Lose(begin, end, head, "its events cannot be told from its beginning");
    }
    if (!has_magic || timeline != stated_end) {
      const std::size_t plausible =
          CountPlausibleEvents(bytes.substr(head.events, events * kEventSize), head.tracks);
      if (!has_timeline_ && plausible < kEventsThatTell) {
        return Lose(begin, end, head, "nothing tells that it is a song");
      }
      if (!has_magic) events = plausible;
    }

    std::vector<std::string> remarks;
    if (events != head.stated_events) {
      remarks.push_back("has " + std::to_string(events) + " of the " + std::to_string(head.stated_events) +
                        " events that it states");
    }
    RecordCursor front(bytes, std::min(timeline + kTimelineMagic.size(), end));
    const std::string name = TextBytes(front.Text());
    const std::string length = WordBytes(front.Number(4));
    front.Number(4);  // of the body
    MendedSequences body = MendSequences(bytes, front.ok() ? front.at() : end, end, TimelineSequences());
    remarks.insert(remarks.end(), body.remarks.begin(), body.remarks.end());
    Keep(begin, end,
         WordBytes(0) + TextBytes(head.number) + TextBytes(head.name) +
             std::string(head.division_and_length) + std::string(head.tracks) + WordBytes(events) +
             std::string(bytes.substr(head.events, events * kEventSize)) + std::string(kTimelineMagic) +
             name + length + WordBytes(body.bytes.size()) + body.bytes,
         std::move(remarks));
  }

  /// Reads the song that `bytes` now are.
  void Keep(std::size_t begin, std::size_t end, const std::string& bytes, std::vector<std::string> remarks) {
    version0::SongData song = SongFrom(bytes);
    RescuedSong told{song.song_number, song.song_name, begin, SongState::kWhole, std::move(remarks)};
    std::string problem = WhyNotWritable(song);
    if (songs_.size() == kMostLegacySongs) problem = "a legacy show holds 255 songs";
    if (!problem.empty()) return AddLost(report_, std::move(told), end, problem);
    MakeConvertible(song, told.remarks);
    if (!told.remarks.empty()) told.state = SongState::kPartly;
    songs_.push_back(std::move(song));
    report_.songs.push_back(std::move(told));
  }

  version0::ShowData NumberedShow() {
    version0::ShowData show;
    NumberSongs(report_, SongOrder::kNumeric, songs_,
                [&show](const std::string& number, version0::SongData& song) {
                  song.song_number = number;
                  show.songs[number] = std::move(song);
                });
    return show;
  }

  void Lose(std::size_t begin, std::size_t end, const SongHead& head, const std::string& problem) {
    AddLost(report_, {std::string(head.number), std::string(head.name), begin}, end, problem);
  }

  std::string_view bytes_;
  Steps steps_;
  std::map<std::size_t, FoundTimeline> timelines_;  ///< by the place of their magic
  bool has_timeline_ = false;                       ///< whether one of these is undamaged
  std::vector<version0::SongData> songs_;           ///< those in the report that are not lost
  RescueReport report_;
};

}  // namespace

Salvage SalvageLegacyShow(std::string_view plaintext) { return ShowSalvage(plaintext).Run(); }

}  // namespace zuna_toolkit
