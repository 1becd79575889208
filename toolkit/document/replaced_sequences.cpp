// Counts the sequences that are replaced in legacy files (docs/format-0.md). The readers keep the last one of
// a kind; this goes over the same bytes in the same way.
#include "toolkit/document/internal/replaced_sequences.h"

#include <bitset>
#include <cstdint>
#include <istream>
#include <string_view>
#include <utility>

#include "format_converter/version0/containers/change_log.h"
#include "format_converter/version0/containers/change_log_header.h"
#include "format_converter/version0/containers/timeline.h"
#include "toolkit/document/internal/content.h"
#include "toolkit/document/internal/legacy_walk.h"

namespace zuna_toolkit {

namespace {

constexpr std::uint32_t kFrame = 1 + 2;  // event code and payload length
constexpr std::uint32_t kEvent = sizeof(version0::EventObject);

/// Goes over a stream that its reader has accepted.
class SequenceCount : public LegacyWalk<SequenceCount> {
 public:
  SequenceCount(std::istream& stream, std::uint32_t position) : stream_(stream), position_(position) {}

  std::uint32_t position() const { return position_; }
  std::size_t replaced() const { return replaced_; }

  std::uint8_t Byte() {
    if (passed_ > 0) stream_.ignore(std::exchange(passed_, 0));
    ++position_;
    return static_cast<std::uint8_t>(stream_.get());
  }

  std::uint32_t Number(std::string_view, unsigned size) {
    std::uint32_t number = 0;
    for (unsigned shift = 0; shift < 8 * size; shift += 8) number |= std::uint32_t{Byte()} << shift;
    return number;
  }
  void Skip(std::string_view, std::uint32_t size) { Pass(size); }
  void Text(std::string_view) { PassText(); }

  void Track(std::uint32_t) {
    Pass(1);  // id
    PassText();
  }
  void Events(std::uint32_t count) { Pass(std::uint64_t{count} * kEvent); }

  void BeginTimeline() { Pass(4); }  // "TLMN"
  void EndTimeline() {}
  void BeginSequences() { filled_.reset(); }
  std::uint8_t BeginSequence() { return Byte(); }
  void EndSequence(std::uint8_t code, std::uint32_t length) {
    if (filled_.test(code)) ++replaced_;
    filled_.set(code, length != 0);
  }

  void Record(std::uint8_t code, std::size_t) {
    switch (code) {
      case version0::RBarsBeats::eventCode:
        Pass(kFrame + 4);  // time
        PassText();
        return Pass(1);  // tag
      case version0::XScoreMarker::eventCode:
        Pass(4);  // time
        return PassText();
      case version0::RTempo::eventCode:
        return Pass(kFrame + version0::RTempo::kPayloadLength);
      case version0::RKey::eventCode:
        return Pass(kFrame + version0::RKey::kPayloadLength);
      case version0::RPageNum::eventCode:
        return Pass(kFrame + version0::RPageNum::kPayloadLength);
      case version0::RMeter::eventCode:
        return Pass(kFrame + version0::RMeter::kPayloadLength);
      case version0::XCaesura::eventCode:
        return Pass(kFrame + version0::XCaesura::kPayloadLength);
      case version0::TempoScaleV0::eventCode:
        return Pass(kFrame + version0::TempoScaleV0::kPayloadLength);
      default:  // the other edits
        return Pass(kFrame + version0::VampV0::kPayloadLength);
    }
  }

 private:
  void Pass(std::uint64_t bytes) {
    passed_ += static_cast<std::streamsize>(bytes);
    position_ += static_cast<std::uint32_t>(bytes);
  }
  void PassText() { Pass(Byte()); }

  std::istream& stream_;
  std::streamsize passed_ = 0;  ///< bytes before the position that the stream has still to pass
  std::uint32_t position_;      ///< in the stream, modulo 2^32
  std::bitset<256> filled_;     ///< the event codes whose last sequence in the song has records
  std::size_t replaced_ = 0;
};

}  // namespace

std::size_t ReplacedSequencesOfShow(std::istream& stream) {
  Rewind(stream);
  SequenceCount walk(stream, 0);
  for (std::uint8_t songs = walk.Byte(); songs > 0; --songs) walk.PassSong();
  return walk.replaced();
}

std::size_t ReplacedSequencesOfLog(std::istream& stream) {
  Rewind(stream);
  const version0::ChangeLogHeader header(stream);
  SequenceCount walk(stream, static_cast<std::uint32_t>(static_cast<std::streamoff>(stream.tellg())));
  while (walk.position() < header.end_position) walk.PassSongLog();
  return walk.replaced();
}

}  // namespace zuna_toolkit
