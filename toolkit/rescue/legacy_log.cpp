// What is left of a damaged legacy log (docs/format-0.md, "change_log").
#include <algorithm>
#include <iterator>
#include <sstream>

#include "toolkit/rescue/internal/legacy_log_head.h"
#include "toolkit/rescue/internal/mended_sequences.h"
#include "toolkit/rescue/internal/record_bytes.h"
#include "toolkit/words.h"

namespace zuna_toolkit {

namespace {

constexpr std::size_t kUncounted = 4;  // bytes of the sequences that a record length leaves out

/// A song log that may be damaged.
struct FoundSong {
  std::size_t end = 0;
  std::size_t sequences = 0;  ///< 0 where it is damaged
};

class LogSalvage {
 public:
  explicit LogSalvage(std::string_view bytes) : bytes_(bytes), steps_(bytes.size()) {}

  Salvage Run() {
    std::size_t first = std::min(kSmallestLogHead, bytes_.size());
    while (first < bytes_.size() && !WholeEnd(first)) ++first;
    LogHead head = ReadLogHead(bytes_, first);
    report_.framing = {{0, head.read_end}};
    report_.missing = std::move(head.missing);
    report_.changed = !head.doubt.empty();
    if (report_.changed) report_.remarks.push_back(head.doubt);
    legacy_.log = std::move(head.log);
    WalkSongs(*this, head.end, bytes_.size());
    const std::uint64_t missing_bytes = CompareLength();
    AddSongs();
    return {std::move(legacy_), kLegacyVersion, std::move(report_), missing_bytes};
  }

  std::optional<std::size_t> WholeEnd(std::size_t at) {
    const FoundSong song = SongAt(at, SongLogSequences().size());
    return song.sequences == SongLogSequences().size() ? std::optional(song.end) : std::nullopt;
  }

  void TakeWhole(std::size_t begin, std::size_t end) {
    has_end_ = true;
    Keep({"", "", begin, end}, std::string(bytes_.substr(begin, end - begin)));
  }

  void TakeDamaged(std::size_t begin, std::size_t end) {
    while (begin < end) {
      const std::size_t song_end = EndOfFirst(begin, end);
      const FoundSong song = SongAt(begin, 1);
      if (song.sequences > 0 && song.end == song_end) {  // other writers may leave lists out
        TakeWhole(begin, song_end);
      } else {
        Mend(begin, song_end);
      }
      begin = song_end;
    }
  }

 private:
  /// Whether no byte can be missing before the last song, nor in it where its end is there.
  bool IsWholeUpToLast() const {
    std::uint64_t at = report_.framing.back().end;
    for (const RescuedSong& song : report_.songs) {
      const bool is_cut = &song == &report_.songs.back() && !has_end_;
      if (song.offset != at || (song.state != SongState::kWhole && !is_cut)) return false;
      at = *song.end;
    }
    return !has_end_ || at == bytes_.size();
  }

  /// Tells where the file has not the length that its header states. Returns how many bytes are missing.
  std::uint64_t CompareLength() {
    const std::uint64_t stated = StatedLogEnd(bytes_);
    const std::uint64_t missing = std::max<std::uint64_t>(stated, bytes_.size()) - bytes_.size();
    if (missing > 0 && IsWholeUpToLast()) {
      report_.missing.push_back("the end of the log (" + Counted(missing, "byte", "bytes") + ")");
    } else if (stated != bytes_.size()) {
      report_.remarks.push_back(LengthRemark(bytes_.size(), stated));
    }
    return missing;
  }

  /// The song log at `at`, which has at least so many sequences if it is undamaged.
  FoundSong SongAt(std::size_t at, std::size_t sequences) {
    RecordCursor in(bytes_, at);
    const SongLogHead head = ReadSongLogHead(in);
    const std::size_t size = head.record_length + kUncounted;
    if (!in.ok() || size > bytes_.size() - in.at()) return {};
    if (size < sequences * kSequenceHead || !steps_.Take()) return {};
    const std::size_t end = in.at() + size;
    return {end, CountSequences(bytes_, in.at(), end, SongLogSequences(), steps_)};
  }

  /// Where the first of the damaged songs between `begin` and `end` ends: as its length says, if the head of
  /// another one follows there.
  std::size_t EndOfFirst(std::size_t begin, std::size_t end) const {
    const std::string_view bytes = bytes_.substr(0, end);
    RecordCursor in(bytes, begin);
    const SongLogHead head = ReadSongLogHead(in);
    if (!in.ok() || head.record_length + kUncounted > end - in.at()) return end;
    const std::size_t song_end = in.at() + head.record_length + kUncounted;
    return BeginsSongLog(bytes, song_end) ? song_end : end;
  }

  /// Takes what is left of the song between `begin` and `end`.
  void Mend(std::size_t begin, std::size_t end) {
    RecordCursor in(bytes_.substr(0, end), begin);
    const SongLogHead head = ReadSongLogHead(in);
    RescuedSong song{std::string(head.number), std::string(head.name), begin, end};
    const char* problem = "its beginning cannot be read";
    if (in.ok()) {
      const MendedSequences body =
          MendSequences(bytes_, in.at(), end, SongLogSequences(), head.record_length + kUncounted);
      const bool has_most_lists = 2 * body.remarks.size() <= SongLogSequences().size();
      if (has_most_lists || (body.records > 0 && IsNumber(head.number))) {
        has_end_ = body.has_last;
        song.end = body.end;
        song.remarks = body.remarks;
        report_.unread.insert(report_.unread.end(), body.unread.begin(), body.unread.end());
        return Keep(std::move(song), WordBytes(body.bytes.size() - kUncounted) + TextBytes(head.number) +
                                         TextBytes(head.name) + std::string(head.length) + body.bytes);
      }
      problem = "none of its edits can be read";
    }
    if (!IsNumber(head.number) || !IsTyped(head.name)) return;
    has_end_ = false;
    AddLost(report_, std::move(song), problem);
  }

  /// Reads the song log that `bytes` now are, which `told` tells about.
  void Keep(RescuedSong told, const std::string& bytes) {
    std::istringstream stream(bytes);
    version0::SongLogV0 song(stream);
    told.number = song.songNumber_;
    told.name = song.songName_;
    if (!told.remarks.empty()) told.state = SongState::kPartly;
    songs_.push_back(std::move(song));
    report_.songs.push_back(std::move(told));
  }

  void AddSongs() {
    NumberSongs(report_, SongOrder::kBytes, songs_,
                [this](const std::string& number, version0::SongLogV0& song) {
                  song.songNumber_ = number;
                  legacy_.log.songs[number] = std::move(song);
                });
  }

  std::string_view bytes_;
  Steps steps_;
  std::vector<version0::SongLogV0> songs_;  ///< those in the report that are not lost
  bool has_end_ = false;                    ///< whether the end of the last song in the report is there
  LegacyLog legacy_;
  RescueReport report_;
};

}  // namespace

Salvage SalvageLegacyLog(std::string_view plaintext) { return LogSalvage(plaintext).Run(); }

}  // namespace zuna_toolkit
