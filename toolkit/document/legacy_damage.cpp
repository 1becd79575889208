// Where a legacy file that cannot be read is damaged (docs/format-0.md).
#include "toolkit/document/internal/legacy_damage.h"

#include <cstddef>
#include <cstdint>
#include <istream>
#include <string>
#include <utility>

#include <streambuf>

#include "format_converter/version0/containers/change_log_header.h"
#include "format_converter/version0/containers/song_data.h"
#include "format_converter/version0/containers/song_log.h"
#include "toolkit/document/internal/content.h"
#include "toolkit/internal/translate.h"
#include "toolkit/words.h"

namespace zuna_toolkit {

namespace {

constexpr std::uint64_t kNumberOffset = 4;  // of a song's number, after the length of the song's record

/// Reads from another buffer and knows where the last read began, and whether it met the end.
class TracingBuffer : public std::streambuf {
 public:
  explicit TracingBuffer(std::streambuf& source) : source_(source) {}

  std::uint64_t last_read() const { return last_read_; }
  bool met_end() const { return met_end_; }

 protected:
  int_type underflow() override {
    Note();
    return CheckEnd(source_.sgetc());
  }
  int_type uflow() override {
    Note();
    return CheckEnd(source_.sbumpc());
  }
  std::streamsize xsgetn(char* to, std::streamsize size) override {
    Note();
    const std::streamsize count = source_.sgetn(to, size);
    met_end_ = count < size;
    return count;
  }
  pos_type seekoff(off_type offset, std::ios_base::seekdir from, std::ios_base::openmode which) override {
    return source_.pubseekoff(offset, from, which);
  }
  pos_type seekpos(pos_type position, std::ios_base::openmode which) override {
    return source_.pubseekpos(position, which);
  }

 private:
  void Note() {
    last_read_ = static_cast<std::uint64_t>(
        static_cast<std::streamoff>(source_.pubseekoff(0, std::ios_base::cur, std::ios_base::in)));
  }
  int_type CheckEnd(int_type byte) {
    met_end_ = traits_type::eq_int_type(byte, traits_type::eof());
    return byte;
  }

  std::streambuf& source_;
  std::uint64_t last_read_ = 0;
  bool met_end_ = false;
};

/// Where reading stops.
enum class Stop {
  kNowhere,       ///< all songs can be read
  kAtEnd,         ///< the file ends
  kAtWrongBytes,  ///< the file has bytes that cannot be there
};

/// How far a file can be read.
struct Reach {
  std::size_t stated_songs = 0;  ///< of a show; 0 for a log, which does not say
  std::size_t whole_songs = 0;   ///< songs that were read completely
  std::uint64_t begin = 0;       ///< of the song after these; 0 before the first one
  Stop stop = Stop::kNowhere;    ///< why no more can be read
  std::uint64_t offset = 0;      ///< where reading stops
};

std::uint64_t Position(std::istream& stream) {
  return static_cast<std::uint64_t>(static_cast<std::streamoff>(stream.tellg()));
}

template <typename Song>
void ReadSong(std::istream& stream, Reach& reach) {
  reach.begin = Position(stream);
  const Song song(stream);
  ++reach.whole_songs;
}

void ReadSongs(std::istream& stream, cmn::FileKind kind, Reach& reach) {
  if (kind == cmn::FileKind::kShow) {
    reach.stated_songs = static_cast<std::size_t>(stream.get());
    while (reach.whole_songs < reach.stated_songs) ReadSong<version0::SongData>(stream, reach);
    return;
  }
  const version0::ChangeLogHeader header(stream);
  while (stream.tellg() < std::streamoff{header.end_position}) {
    ReadSong<version0::SongLogV0>(stream, reach);
  }
}

/// The number of the song whose record is at `begin`; empty where the file ends before its end.
std::string NumberOf(std::istream& plaintext, std::uint64_t begin) {
  Rewind(plaintext);
  plaintext.seekg(static_cast<std::streamoff>(begin + kNumberOffset));
  const int size = plaintext.get();
  if (size <= 0) return "";
  std::string number(static_cast<std::size_t>(size), '\0');
  return plaintext.read(number.data(), size) ? number : "";
}

std::uint64_t SizeOf(std::istream& plaintext) {
  Rewind(plaintext);
  plaintext.seekg(0, std::ios_base::end);
  return Position(plaintext);
}

/// "song 2 of 3, number 12a"
std::string SongText(const Reach& reach, const std::string& number) {
  std::string text = "song " + std::to_string(reach.whole_songs + 1);
  if (reach.stated_songs > 0) text += " of " + std::to_string(reach.stated_songs);
  return number.empty() ? text : text + ", number " + NumberText(number);
}

/// What is wrong where reading stops, and in which song.
std::string PlaceText(const Reach& reach, const std::string& number) {
  const bool ends = reach.stop == Stop::kAtEnd;
  if (reach.begin == 0) return std::string(ends ? "ends" : "is damaged") + " before its first song";
  if (ends && reach.offset == reach.begin) return "ends before " + SongText(reach, number);
  return (ends ? "ends inside " : "is damaged in ") + SongText(reach, number) + ", which begins at byte " +
         std::to_string(reach.begin);
}

/// Reads as far as possible.
Reach ReachOf(std::istream& plaintext, cmn::FileKind kind) {
  Rewind(plaintext);
  TracingBuffer buffer(*plaintext.rdbuf());
  std::istream stream(&buffer);
  stream.exceptions(std::ios_base::failbit | std::ios_base::badbit);
  Reach reach;
  try {
    ReadSongs(stream, kind, reach);
    reach.stop = Stop::kNowhere;
    reach.offset = Position(stream);
  } catch (const std::exception& error) {
    PassOnBadAlloc(error);
    reach.stop = buffer.met_end() ? Stop::kAtEnd : Stop::kAtWrongBytes;
    reach.offset = buffer.met_end() ? SizeOf(plaintext) : buffer.last_read();
  }
  return reach;
}

}  // namespace

Error LegacyDamage(std::istream& plaintext, cmn::FileKind kind) {
  const Reach reach = ReachOf(plaintext, kind);
  ErrorParts parts;
  parts.offset = reach.offset;
  ErrorCode code = ErrorCode::kBytesAfterEnd;
  std::string what = "has another length than its header says";
  parts.remedy = "get another copy of the file";
  if (reach.stop != Stop::kNowhere) {
    const bool ends = reach.stop == Stop::kAtEnd;
    if (reach.begin > 0) parts.song = NumberOf(plaintext, reach.begin);
    what = PlaceText(reach, parts.song);
    code = ends ? ErrorCode::kCutOff : ErrorCode::kBadContent;
    parts.remedy = ends ? "get a complete copy of the file" : kGetUndamagedCopy;
  }
  parts.problem = "cannot be read as a " + std::string(cmn::KindName(kind)) + " of version 0.0: it " + what +
                  " (offset " + std::to_string(reach.offset) + ")";
  return {code, std::move(parts)};
}

bool HoldsLegacySong(std::istream& plaintext) {
  constexpr std::uint64_t kNoSongs = 1;  // the size of a show without songs, in bytes
  const Reach reach = ReachOf(plaintext, cmn::FileKind::kShow);
  const bool is_empty_show = reach.stop == Stop::kNowhere && SizeOf(plaintext) == kNoSongs;
  Rewind(plaintext);
  return reach.whole_songs > 0 || is_empty_show;
}

}  // namespace zuna_toolkit
