// What is left of a damaged binary file of a current version (docs/format-1.md). Its songs state no length:
// where one ends is only known once it is read.
#include <algorithm>

#include "cmn/data_error.h"
#include "toolkit/rescue/internal/current_header.h"
#include "toolkit/rescue/internal/current_songs.h"
#include "toolkit/rescue/internal/salvage.h"

namespace zuna_toolkit {

namespace {

constexpr std::size_t kChecksumSize = 4;
constexpr std::size_t kLongestTypedNumber = 64;  // bytes, of a song that is looked for
constexpr std::size_t kLongestName = 1024;
constexpr std::size_t kStepsOfATry = 256;

/// The text at `at`, whose length has four bytes or, in the compact layout, seven bits a byte. None where it
/// is longer than `longest`, or not typed. `at` is after it then.
std::optional<std::string_view> TypedText(std::string_view bytes, std::size_t& at, bool compact,
                                          std::size_t longest) {
  std::size_t size = 0;
  bool more = true;
  for (unsigned i = 0; more && i < 4; ++i) {
    if (at == bytes.size()) return std::nullopt;
    const auto byte = static_cast<unsigned char>(bytes[at++]);
    size |= static_cast<std::size_t>(compact ? byte & 0x7F : byte) << ((compact ? 7 : 8) * i);
    more = !compact || byte > 0x7F;
  }
  if (size > std::min(longest, bytes.size() - at)) return std::nullopt;
  const std::string_view text = bytes.substr(at, size);
  at += size;
  return IsTyped(text) ? std::optional(text) : std::nullopt;
}

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
        at = next;
      } else {
        at = TakeBeginning(at, next);
      }
    }
    const bool has_checksum = stated_size_ == bytes_.size() || songs_.size() == report_.stated_songs;
    if (at < bytes_.size() && has_checksum) report_.framing.push_back({at, bytes_.size()});
    AddNumbered<Kind>(model_, report_, songs_);
    const std::uint64_t missing = std::max<std::uint64_t>(stated_size_, bytes_.size()) - bytes_.size();
    return {std::move(model_), version_, std::move(report_), missing, checksum_size_ > 0};
  }

 private:
  using Song = typename Kind::Song;

  std::size_t ReadHead() {
    std::size_t at = std::min(kBinaryHeaderSize, bytes_.size());
    try {
      auto [model, songs] = Kind::ReadHead(bytes_, at, version_);
      if (IsEnd(at) || MayBegin(at)) {
        model_ = std::move(model);
        report_.stated_songs = songs;
        report_.framing = {{0, at}};
        return at;
      }
    } catch (const cmn::DataError&) {
      // The songs may still be there.
    }
    report_.missing.emplace_back(Kind::kHead);
    return Find(0);
  }

  /// Whether the songs can end at `at`.
  bool IsEnd(std::size_t at) const {
    const std::size_t left = bytes_.size() - at;
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
    const auto number = TypedText(bytes_, at, compact_, kLongestTypedNumber);
    return IsNumberBefore(song.song_number, *number, Kind::kOrder);
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
      Lose(begin, end);
    }
    return end;
  }

  void Lose(std::size_t begin, std::size_t end) {
    std::size_t at = begin;
    const std::string number(*TypedText(bytes_, at, compact_, kLongestTypedNumber));
    const std::string name(*TypedText(bytes_, at, compact_, kLongestName));
    AddLost(report_, {number, name, begin, end}, "its fields cannot be read");
  }

  std::string_view bytes_;
  cmn::FileVersion version_;
  std::uint64_t stated_size_;
  bool compact_;
  std::size_t checksum_size_;
  std::size_t songs_end_;  ///< before the checksum, where that is known to be there
  Steps steps_;
  std::uint64_t failed_at_ = 0;               ///< where the last song that could not be read is wrong
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
