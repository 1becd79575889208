// What is left of a damaged binary file of a current version (docs/format-1.md). Its songs state no length:
// where one ends is only known once it is read.
#include <algorithm>

#include "cmn/data_error.h"
#include "kit/utf8.h"
#include "toolkit/rescue/internal/current_songs.h"
#include "toolkit/rescue/internal/salvage.h"

namespace zuna_toolkit {

namespace {

constexpr std::size_t kChecksumSize = 4;
constexpr std::size_t kLongestTypedNumber = 64;  // bytes, of a song that is looked for
constexpr std::size_t kLongestName = 1024;
constexpr std::size_t kStepsOfATry = 256;

/// Whether a person may have typed `text`.
bool IsTyped(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = kit::Utf8Length(text);
    if (length == 0 || kit::IsControl(kit::CodePoint(text.substr(0, length)))) return false;
    text.remove_prefix(length);
  }
  return true;
}

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
  BinarySalvage(std::string_view bytes, cmn::FileVersion version)
      : bytes_(bytes),
        version_(version),
        compact_(version == cmn::FileVersion{1, 2}),
        checksum_size_(version == cmn::FileVersion{1, 0} ? 0 : kChecksumSize),
        steps_(bytes.size()) {}

  Salvage Run() {
    std::size_t at = ReadHead();
    std::size_t last = at;  // where the song before begins
    while (!IsEnd(at)) {
      if (Take(at, last)) continue;
      const std::size_t next = Find(std::min(at, last + 1));
      if (next < at) DropLast();
      Lose(next < at ? last : at, next);
      at = last = next;
    }
    AddNumbered<Kind>(model_, report_, songs_);
    return {std::move(model_), version_, std::move(report_)};
  }

 private:
  using Song = typename Kind::Song;

  std::size_t ReadHead() {
    std::size_t at = std::min(kBinaryHeaderSize, bytes_.size());
    try {
      auto [model, songs] = Kind::ReadHead(bytes_, at, version_);
      model_ = std::move(model);
      report_.stated_songs = songs;
      return at;
    } catch (const cmn::DataError&) {
      report_.missing.emplace_back(Kind::kHead);
      const std::size_t first = Find(at);
      report_.unread.push_back({at, first});
      return first;
    }
  }

  /// Whether the songs can end at `at`: all are there, or nothing more is.
  bool IsEnd(std::size_t at) const {
    const std::size_t left = bytes_.size() - at;
    return left == 0 || (left <= checksum_size_ && songs_.size() >= report_.stated_songs.value_or(0));
  }

  /// The song at `at`, which is after it then; null where there is none.
  std::shared_ptr<Song> Read(std::size_t& at) {
    try {
      return Kind::ReadSong(bytes_, at, version_);
    } catch (const cmn::DataError& error) {
      failed_at_ = error.offset().value_or(at);
      return nullptr;
    }
  }

  /// Takes the song at `at`, where `at` is after it then and `last` before it. A song that nobody would have
  /// made is only taken where another one or the end follows.
  bool Take(std::size_t& at, std::size_t& last) {
    std::size_t next = at;
    std::shared_ptr<Song> song = Read(next);
    if (!song) return Refuse(at);
    if (!BeginsLikeSong(at) && !IsEnd(next)) {
      std::size_t after = next;
      if (!Read(after)) return Refuse(at);
    }
    report_.songs.push_back({song->song_number, song->song_name, at});
    songs_.push_back(std::move(song));
    last = at;
    at = next;
    return true;
  }

  /// Counts what was read in vain from `at` on.
  bool Refuse(std::size_t at) {
    steps_.Take(failed_at_ - at);
    return false;
  }

  /// Whether a song with a number and a name that can be typed may begin at `at`.
  bool BeginsLikeSong(std::size_t at) const {
    const auto number = TypedText(bytes_, at, compact_, kLongestTypedNumber);
    return number && !number->empty() && TypedText(bytes_, at, compact_, kLongestName);
  }

  /// Where a song begins that is followed by another one or by the end, from `at` on; the end where there is
  /// none.
  std::size_t Find(std::size_t at) {
    for (; at < bytes_.size(); ++at) {
      if (!BeginsLikeSong(at)) continue;
      std::size_t next = at;
      const bool is_song = Read(next) != nullptr;
      if (!steps_.Take(kStepsOfATry + ((is_song ? next : failed_at_) - at))) break;
      if (!is_song) continue;
      if (bytes_.size() - next <= checksum_size_) return at;
      std::size_t after = next;
      if (!BeginsLikeSong(next)) continue;
      if (Read(after)) return at;
      if (!steps_.Take(failed_at_ - next)) break;
    }
    return bytes_.size();
  }

  /// Takes back the last song, whose end lies in another one.
  void DropLast() {
    songs_.pop_back();
    report_.songs.pop_back();
  }

  void Lose(std::size_t begin, std::size_t end) {
    RescuedSong song{"", "", begin};
    std::size_t at = begin;
    if (const auto number = TypedText(bytes_, at, compact_, kLongestTypedNumber)) {
      song.number = *number;
      song.name = TypedText(bytes_, at, compact_, kLongestName).value_or("");
    }
    AddLost(report_, std::move(song), end, "its fields cannot be read");
  }

  std::string_view bytes_;
  cmn::FileVersion version_;
  bool compact_;
  std::size_t checksum_size_;
  Steps steps_;
  std::uint64_t failed_at_ = 0;               ///< where the last song that could not be read is wrong
  std::vector<std::shared_ptr<Song>> songs_;  ///< those in the report that are not lost
  typename Kind::Model model_;
  RescueReport report_;
};

}  // namespace

Salvage SalvageBinary(std::string_view plaintext, cmn::FileKind kind, cmn::FileVersion version) {
  if (kind == cmn::FileKind::kLog) return BinarySalvage<CurrentLogs>(plaintext, version).Run();
  return BinarySalvage<CurrentShows>(plaintext, version).Run();
}

}  // namespace zuna_toolkit
