// What is left of a damaged binary file of a current version (docs/format-1.md). Its songs state no length:
// where one ends is only known once it is read.
#include <algorithm>
#include <iterator>

#include "cmn/data_error.h"
#include "toolkit/rescue/internal/current_header.h"
#include "toolkit/rescue/internal/current_songs.h"
#include "toolkit/rescue/internal/record_bytes.h"
#include "toolkit/rescue/internal/salvage.h"

namespace zuna_toolkit {

namespace {

constexpr std::size_t kChecksumSize = 4;
constexpr std::size_t kLongestTypedNumber = 64;  // bytes, of a song that is looked for
constexpr std::size_t kLongestName = 1024;
constexpr std::size_t kStepsOfATry = 256;

template <typename Kind>
class BinarySalvage {
 public:
  BinarySalvage(std::string_view bytes, cmn::FileVersion version, std::uint64_t stated_size)
      : bytes_(bytes),
        version_(version),
        stated_size_(stated_size),
        compact_(version == cmn::FileVersion{1, 2}),
        checksum_size_(HasChecksum(version) ? kChecksumSize : 0),
        songs_end_(bytes.size() - (stated_size == bytes.size() ? std::min(checksum_size_, bytes.size()) : 0)),
        steps_(bytes.size()) {}

  Salvage Run() {
    std::size_t at = ReadHead();
    while (at < bytes_.size() && !IsEnd(at)) {
      std::size_t end = at;
      const std::shared_ptr<Song> song = Read(end);
      if (!song) steps_.Take(failed_at_ - at);
      if (song && IsSong(at, *song) && Meets(end, *song)) {
        Keep(song, at, end, {});
        at = end;
        continue;
      }
      const std::size_t next = Find(at + 1);
      if (song && IsSong(at, *song) && end <= next) {
        Keep(song, at, end, "its end does not meet the next song");
        if (end < next && MayBeSong(end, song->song_number, next)) {
          gaps_.push_back({report_.songs.size(), end, next});
        }
        at = next;
      } else {
        at = TakeBeginning(at, next);
      }
    }
    const bool has_checksum = stated_size_ == bytes_.size() || songs_.size() == report_.stated_songs;
    if (at < bytes_.size() && has_checksum) report_.framing.push_back({at, bytes_.size()});
    TakeHeadAndGaps();
    AddNumbered<Kind>(model_, report_, songs_);
    const std::uint64_t missing = std::max<std::uint64_t>(stated_size_, bytes_.size()) - bytes_.size();
    return {std::move(model_), version_, std::move(report_), missing, checksum_size_ > 0};
  }

 private:
  using Song = typename Kind::Song;
  using Head = CurrentHead<Kind>;

  std::optional<Head> HeadAtBegin() const {
    std::size_t at = std::min(kBinaryHeaderSize, bytes_.size());
    try {
      auto [model, songs] = Kind::ReadHead(bytes_, at, version_);
      return Head{std::move(model), songs, at};
    } catch (const cmn::DataError&) {
      return std::nullopt;
    }
  }

  void TakeHead(Head head) {
    model_ = std::move(head.model);
    report_.stated_songs = head.songs;
    report_.framing.insert(report_.framing.begin(), {0, head.end});
  }

  /// Returns where the first song is. A head that none follows may be wrong.
  std::size_t ReadHead() {
    std::optional<Head> head = HeadAtBegin();
    if (head && (IsEnd(head->end) || MayBegin(head->end))) {
      TakeHead(std::move(*head));
      return head->end;
    }
    const std::size_t first = Find(0);
    if (head && head->end < first) {
      gaps_.push_back({0, head->end, first});
      uncertain_head_ = std::move(head);
    } else {
      report_.missing.emplace_back(Kind::kHead);
    }
    return first;
  }

  /// Where the head states as many songs as were found and gaps are left, the head is right and each gap is a
  /// lost song. So the song before it is whole.
  void TakeHeadAndGaps() {
    const auto stated = uncertain_head_ ? uncertain_head_->songs : report_.stated_songs;
    const bool is_cut = stated_size_ > bytes_.size();  // Songs after the cut would count as gaps.
    const bool agrees = !is_cut && stated == report_.songs.size() + gaps_.size();
    if (uncertain_head_ && agrees) TakeHead(std::move(*uncertain_head_));
    if (uncertain_head_ && !agrees) report_.missing.emplace_back(Kind::kHead);
    if (!agrees) return;
    for (auto gap = gaps_.rbegin(); gap != gaps_.rend(); ++gap) {
      const auto place = report_.songs.begin() + static_cast<std::ptrdiff_t>(gap->song);
      if (gap->song > 0) {
        std::prev(place)->state = SongState::kWhole;
        std::prev(place)->remarks.clear();
      }
      report_.songs.insert(place, LostSong(gap->begin, gap->end));
    }
  }

  /// Whether the songs can end at `at`.
  bool IsEnd(std::size_t at) const {
    const std::size_t left = bytes_.size() - at;
    if (left < checksum_size_ && at + checksum_size_ == stated_size_) return true;
    return left == checksum_size_ || (left == 0 && stated_size_ != bytes_.size());
  }

  /// The song at `at`, which is after it then; null where there is none.
  std::shared_ptr<Song> Read(std::size_t& at) {
    failed_at_ = at;
    if (at > songs_end_) return nullptr;
    try {
      return Kind::ReadSong(bytes_.substr(0, songs_end_), at, version_);
    } catch (const cmn::DataError& error) {
      failed_at_ = error.offset().value_or(at);
      return nullptr;
    }
  }

  /// The number of the song that begins at `at`; empty where none can be typed.
  std::string NumberAt(std::size_t at) const {
    return std::string(TypedText(bytes_, at, compact_, kLongestTypedNumber).value_or(""));
  }

  /// Whether the number at `at` is between that of the song before and the one of the song at `next`, if one
  /// is there.
  bool MayBeSong(std::size_t at, const std::string& before, std::size_t next) const {
    const std::string number = NumberAt(at);
    return IsNumberBefore(before, number, Kind::kOrder) &&
           (next == bytes_.size() || IsNumberBefore(number, NumberAt(next), Kind::kOrder));
  }

  /// Whether a song with a number and a name that can be typed may begin at `at`.
  bool MayBegin(std::size_t at) const {
    const auto number = TypedText(bytes_, at, compact_, kLongestTypedNumber);
    return number && !number->empty() && TypedText(bytes_, at, compact_, kLongestName);
  }

  /// Whether what was read at `at` is a song: it begins like one, or it holds something.
  bool IsSong(std::size_t at, const Song& song) const { return MayBegin(at) || Kind::HoldsSomething(song); }

  /// Whether the end of the songs or another one is at `at`, after `song`.
  bool Meets(std::size_t at, const Song& song) {
    if (IsEnd(at)) return true;
    std::size_t end = at;
    const auto next = Read(end);
    if (!steps_.Take((next ? end : failed_at_) - at)) return false;
    if (!MayBegin(at)) return next && Kind::HoldsSomething(*next) && (IsEnd(end) || MayBegin(end));
    if (next && Kind::HoldsSomething(*next)) return true;
    return IsNumberBefore(song.song_number, NumberAt(at), Kind::kOrder);
  }

  /// Where a song with a name begins that is followed by another one or by the end, from `at` on; the end
  /// where there is none.
  std::size_t Find(std::size_t at) {
    for (; at < bytes_.size(); ++at) {
      if (!MayBegin(at)) continue;
      std::size_t next = at;
      const auto song = Read(next);
      if (!steps_.Take(kStepsOfATry + ((song ? next : failed_at_) - at))) break;
      if (!song || song->song_name.empty()) continue;
      if ((MayBegin(next) || IsEnd(next)) && Meets(next, *song)) return at;
    }
    return bytes_.size();
  }

  void Keep(const std::shared_ptr<Song>& song, std::size_t begin, std::size_t end,
            const std::string& remark) {
    RescuedSong told{song->song_number, song->song_name, begin, end};
    if (!remark.empty()) {
      told.state = SongState::kPartly;
      told.remarks = {remark};
    }
    report_.songs.push_back(std::move(told));
    songs_.push_back(song);
  }

  /// Takes what is before the damage of a song that cannot be read to its end. What has no song's number and
  /// name is none. Returns where to go on.
  std::size_t TakeBeginning(std::size_t begin, std::size_t end) {
    if (begin > songs_end_ || !MayBegin(begin)) return end;
    std::size_t stop = begin;
    const auto song = Kind::ReadBeginning(bytes_.substr(0, std::min(end, songs_end_)), stop, version_);
    if (Kind::HoldsSomething(*song)) {
      const bool at_the_end = stop == songs_end_ && stated_size_ == bytes_.size();
      Keep(song, begin, stop,
           at_the_end ? "its fields do not fit together" : "what follows in it cannot be read");
      if (at_the_end) return stop;
    } else {
      report_.songs.push_back(LostSong(begin, end));
    }
    return end;
  }

  RescuedSong LostSong(std::size_t begin, std::size_t end) const {
    std::size_t at = begin;
    RescuedSong song{"", "", begin, end, SongState::kLost, {"its fields cannot be read"}};
    const auto number = TypedText(bytes_, at, compact_, kLongestTypedNumber);
    if (!number || number->empty()) return song;
    song.number = *number;
    song.name = TypedText(bytes_, at, compact_, kLongestName).value_or("");
    return song;
  }

  std::string_view bytes_;
  cmn::FileVersion version_;
  std::uint64_t stated_size_;
  bool compact_;
  std::size_t checksum_size_;
  std::size_t songs_end_;  ///< before the checksum, where that is known to be there
  Steps steps_;
  std::uint64_t failed_at_ = 0;               ///< where the last song that could not be read is wrong
  std::optional<Head> uncertain_head_;        ///< where no song is known to follow it
  std::vector<SongGap> gaps_;                 ///< in the order of the file
  std::vector<std::shared_ptr<Song>> songs_;  ///< those in the report that are not lost
  typename Kind::Model model_;
  RescueReport report_;
};

}  // namespace

Salvage SalvageBinary(std::string_view plaintext, cmn::FileKind kind, cmn::FileVersion version,
                      std::uint64_t stated_size) {
  if (kind == cmn::FileKind::kLog) return BinarySalvage<CurrentLogs>(plaintext, version, stated_size).Run();
  return BinarySalvage<CurrentShows>(plaintext, version, stated_size).Run();
}

}  // namespace zuna_toolkit
