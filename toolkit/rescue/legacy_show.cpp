// What is left of a damaged legacy show (docs/format-0.md, "show_data").
#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <sstream>
#include <utility>

#include "toolkit/internal/legacy_sizes.h"
#include "toolkit/rescue/internal/legacy_events.h"
#include "toolkit/rescue/internal/legacy_head.h"
#include "toolkit/rescue/internal/legacy_sequences.h"
#include "toolkit/rescue/internal/legacy_song.h"
#include "toolkit/rescue/internal/mended_song.h"
#include "toolkit/rescue/internal/record_bytes.h"
#include "toolkit/words.h"

namespace zuna_toolkit {

namespace {

constexpr std::size_t kCountSize = 1;  // of the count of songs at the beginning

/// A timeline that may be damaged.
struct FoundTimeline {
  std::size_t end = 0;
  std::size_t sequences = 0;  ///< 0 where it is damaged
};

version0::SongData SongFrom(const std::string& bytes) {
  std::istringstream stream(bytes);
  stream.exceptions(std::ios_base::failbit | std::ios_base::badbit);
  return version0::SongData(stream);
}

class ShowSalvage {
 public:
  explicit ShowSalvage(std::string_view bytes)
      : bytes_(bytes), steps_(bytes.size()), mend_steps_(bytes.size()) {}

  Salvage Run() {
    if (!bytes_.empty()) {
      report_.stated_songs = static_cast<unsigned char>(bytes_.front());
      report_.framing = {{0, kCountSize}};
    }
    WalkSongs(*this, std::min(kCountSize, bytes_.size()), bytes_.size());
    return {LegacyShow{NumberedShow()}, kLegacyVersion, std::move(report_), missing_bytes_};
  }

  std::optional<std::size_t> WholeEnd(std::size_t at) {
    RecordCursor front(bytes_, at);
    const std::size_t length = front.Number(4);
    if (!front.ok() || !HasTimelineAt(bytes_, front.at() + length)) return std::nullopt;
    const auto head = HeadAt(at);
    if (!head || !StatesItsLength(*head, at)) return std::nullopt;
    const FoundTimeline timeline = TimelineAt(EndOfStatedEvents(*head));
    return timeline.sequences == TimelineSequences().size() ? std::optional(timeline.end) : std::nullopt;
  }

  void TakeWhole(std::size_t begin, std::size_t end) {
    Keep({"", "", begin, end}, std::string(bytes_.substr(begin, end - begin)));
  }

  void TakeDamaged(std::size_t begin, std::size_t end) {
    if (end == bytes_.size() && !songs_.empty() && songs_.size() == report_.stated_songs &&
        songs_.size() == report_.songs.size()) {
      report_.remarks.push_back(Counted(end - begin, "byte follows", "bytes follow") + " the last song");
      return;
    }
    // A legacy show states no size: any number of songs may have followed.
    if (end == bytes_.size() && IsCutIn(begin)) missing_bytes_ = kMaxFileSize;
    while (begin < end) {
      const auto timeline_end = EndOfFirstTimeline(begin, end);
      const std::size_t song_end = timeline_end.value_or(end);
      if (IsWholeBut(begin, song_end, song_end == end || BeginsSong(song_end))) {
        TakeWhole(begin, song_end);
        begin = song_end;
      } else {
        const std::size_t mended_end = Mend(begin, song_end, timeline_end.has_value());
        const bool goes_on = HasTimelineBetween(mended_end, song_end) && mend_steps_.Take(song_end - begin);
        begin = goes_on ? mended_end : song_end;
      }
    }
  }

 private:
  /// Whether the song at `at` ends after the file, as its record or its timeline states.
  bool IsCutIn(std::size_t at) {
    const auto is_cut = [this](RecordCursor& in) {
      const std::uint64_t length = in.Number(4);
      return in.ok() && in.at() + length > bytes_.size();
    };
    RecordCursor record(bytes_, at);
    const auto head = HeadAt(at);
    if (!head || !HasTimelineAt(bytes_, EndOfStatedEvents(*head))) return is_cut(record);
    RecordCursor timeline(bytes_, EndOfStatedEvents(*head) + version0::kTimelineMagic.size());
    timeline.Text();
    timeline.Number(4);  // song length
    return is_cut(timeline);
  }

  /// The head of the song at `at`, if it is whole.
  std::optional<SongHead> HeadAt(std::size_t at) {
    RecordCursor in(bytes_, at);
    SongHead head = ReadSongHead(in, steps_);
    return in.ok() ? std::optional(std::move(head)) : std::nullopt;
  }

  /// Whether the head of a song is at `at`, with a timeline where its events end.
  bool BeginsSong(std::size_t at) {
    const auto head = HeadAt(at);
    return head && HasTimelineAt(bytes_, EndOfStatedEvents(*head));
  }

  /// Whether the song between `begin` and `end` is undamaged but for the length of its record, or meets the
  /// next song and has not all lists, as other writers may write it. That is too little to find a song by.
  bool IsWholeBut(std::size_t begin, std::size_t end, bool meets_next) {
    const auto head = HeadAt(begin);
    if (!head || EndOfStatedEvents(*head) >= end || !HasTimelineAt(bytes_, EndOfStatedEvents(*head)))
      return false;
    const bool may_lack_lists = meets_next && StatesItsLength(*head, begin);
    const FoundTimeline found = TimelineAt(EndOfStatedEvents(*head));
    return found.end == end && found.sequences >= (may_lack_lists ? 1 : TimelineSequences().size());
  }

  /// The timeline whose magic is at `at`.
  FoundTimeline TimelineAt(std::size_t at) {
    const auto [entry, is_new] = timelines_.try_emplace(at);
    if (!is_new) return entry->second;
    RecordCursor in(bytes_, at + version0::kTimelineMagic.size());
    in.Text();
    in.Number(4);  // song length
    const std::size_t length = in.Number(4);
    if (!in.ok() || length > bytes_.size() - in.at()) return {};
    const std::size_t end = in.at() + length;
    entry->second = {end, CountSequences(bytes_, in.at(), end, TimelineSequences(), steps_)};
    has_timeline_ = has_timeline_ || entry->second.sequences > 0;
    return entry->second;
  }

  /// Where the first undamaged timeline between `begin` and `end` ends, and the damaged song that it is of.
  std::optional<std::size_t> EndOfFirstTimeline(std::size_t begin, std::size_t end) {
    const std::string_view bytes = bytes_.substr(0, end);
    for (std::size_t at = begin; (at = bytes.find(version0::kTimelineMagic, at)) != std::string_view::npos;
         ++at) {
      const FoundTimeline timeline = TimelineAt(at);
      if (timeline.sequences > 0 && timeline.end <= end) return timeline.end;
    }
    return std::nullopt;
  }

  /// Whether the magic of a timeline, which may be damaged, is between `begin` and `end`.
  bool HasTimelineBetween(std::size_t begin, std::size_t end) const {
    return bytes_.substr(0, end).find(version0::kTimelineMagic, begin) != std::string_view::npos;
  }

  /// Takes what is left of the first song between `begin` and `end`, and tells where that ends. Without a
  /// number or an undamaged timeline, nothing shows that there was one.
  std::size_t Mend(std::size_t begin, std::size_t end, bool has_timeline) {
    MendedSong mended = MendSong(bytes_.substr(0, end), begin, has_timeline_);
    if (!has_timeline && !IsNumber(mended.told.number)) return end;
    const std::size_t song_end = static_cast<std::size_t>(mended.told.end.value_or(end));
    if (!mended.problem.empty()) {
      AddLost(report_, std::move(mended.told), mended.problem);
    } else if (Keep(std::move(mended.told), mended.bytes)) {
      report_.unread.insert(report_.unread.end(), mended.unread.begin(), mended.unread.end());
    }
    return song_end;
  }

  /// Whether the song that `bytes` now are, which `told` tells about, is kept.
  bool Keep(RescuedSong told, const std::string& bytes) {
    version0::SongData song = SongFrom(bytes);
    told.number = song.song_number;
    told.name = song.song_name;
    std::string problem = WhyNotWritable(song);
    if (songs_.size() == kMostLegacySongs) problem = "a legacy show holds 255 songs";
    if (!problem.empty()) {
      AddLost(report_, std::move(told), problem);
      return false;
    }
    MakeConvertible(song, told.remarks);
    const std::vector<std::string> of_events = EventRemarks(song);
    told.remarks.insert(told.remarks.end(), of_events.begin(), of_events.end());
    if (!told.remarks.empty()) told.state = SongState::kPartly;
    songs_.push_back(std::move(song));
    report_.songs.push_back(std::move(told));
    return true;
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

  std::string_view bytes_;
  Steps steps_;
  Steps mend_steps_;                                ///< one for each byte of a song that is mended
  std::map<std::size_t, FoundTimeline> timelines_;  ///< by the place of their magic
  std::uint64_t missing_bytes_ = 0;                 ///< at most, where the file was cut
  bool has_timeline_ = false;                       ///< whether one of these is undamaged
  std::vector<version0::SongData> songs_;           ///< those in the report that are not lost
  RescueReport report_;
};

}  // namespace

Salvage SalvageLegacyShow(std::string_view plaintext) { return ShowSalvage(plaintext).Run(); }

}  // namespace zuna_toolkit
