// The fields of a legacy file with the bytes that they take (docs/format-0.md).
#include <algorithm>
#include <array>
#include <bit>
#include <string>
#include <utility>

#include "format_converter/version0/containers/change_log_header.h"
#include "kit/uuid.h"
#include "toolkit/document/internal/field_lists.h"
#include "toolkit/document/internal/legacy_fields.h"
#include "toolkit/document/internal/legacy_walk.h"

namespace zuna_toolkit {

namespace {

/// Thrown where the bytes are not those of a legacy file.
struct Damage {};

/// A sequence: its event code, and the list of the text form that has its records.
struct SequenceList {
  cmn::FileKind kind;
  std::uint8_t code;
  std::string_view list;
};

constexpr cmn::FileKind kOfShows = cmn::FileKind::kShow;
constexpr cmn::FileKind kOfLogs = cmn::FileKind::kLog;
constexpr auto kLists = std::to_array<SequenceList>({
    {kOfShows, version0::RTempo::eventCode, "tempos"},
    {kOfShows, version0::RBarsBeats::eventCode, "barsBeats"},
    {kOfShows, version0::RKey::eventCode, "keys"},
    {kOfShows, version0::RPageNum::eventCode, "pageNumbers"},
    {kOfShows, version0::RMeter::eventCode, "meters"},
    {kOfLogs, version0::CutV0::eventCode, "cuts"},
    {kOfLogs, version0::VampV0::eventCode, "vamps"},
    {kOfLogs, version0::RepeatV0::eventCode, "repeats"},
    {kOfLogs, version0::ClickV0::eventCode, "clicks"},
    {kOfLogs, version0::TempoScaleV0::eventCode, "tempoScales"},
    {kOfLogs, version0::TransposeV0::eventCode, "transposes"},
    {kOfLogs, version0::XCaesura::eventCode, "caesuras"},
    {kOfLogs, version0::XScoreMarker::eventCode, "markers"},
});

/// The list of the sequence with this event code. Throws Damage for one that files of this kind do not have.
std::string_view ListOf(cmn::FileKind kind, std::uint8_t code) {
  for (const SequenceList& sequence : kLists) {
    if (sequence.kind == kind && sequence.code == code) return sequence.list;
  }
  throw Damage();
}

}  // namespace

/// Reads the fields in their order and places each of them.
class LegacyFieldList : public LegacyWalk<LegacyFieldList> {
 public:
  LegacyFieldList(cmn::FileKind kind, std::string_view file, cmn::FieldPlacer& placer)
      : kind_(kind), file_(file), placer_(placer) {}

  void ListShow() {
    const std::uint32_t songs = Number("songs", 1);
    for (std::uint32_t i = 0; i < songs; ++i) {
      placer_.Enter("songs", i);
      PassSong();
      placer_.Leave();
    }
    if (placer_.end() < file_.size()) placer_.PlaceUpTo(file_.size(), "ignored");
  }

  void ListLog() {
    Magic(version0::kChangeLogMagic);
    const std::uint32_t length = Number("logLength", 4);
    const std::uint32_t end = position() + length;
    kit::UUID::Bytes identifier{};
    const std::string_view bytes = Next(identifier.size());
    std::copy(bytes.begin(), bytes.end(), identifier.begin());
    placer_.Place(bytes.size(), "identifier", std::string_view(kit::UUID(identifier).ToString()));
    Text("logLabel");
    Text("showName");
    Skip("tagPair[0]", 2);
    Skip("tagPair[1]", 2);
    for (std::size_t i = 0; position() < end; ++i) {
      placer_.Enter("songLogs", i);
      PassSongLog();
      placer_.Leave();
    }
  }

  // What LegacyWalk asks for.

  std::uint32_t position() const { return static_cast<std::uint32_t>(placer_.end()); }

  std::uint32_t Number(std::string_view key, std::size_t size) {
    std::uint32_t number = 0;
    unsigned shift = 0;
    for (const char byte : Next(size)) {
      number |= std::uint32_t{static_cast<unsigned char>(byte)} << shift;
      shift += 8;
    }
    placer_.Place(size, key, number);
    return number;
  }
  void Skip(std::string_view key, std::size_t size) { Number(key, size); }
  void Text(std::string_view key) {
    const std::size_t length = static_cast<unsigned char>(Next(1).front());
    placer_.Place(1 + length, key, Next(1 + length).substr(1));
  }

  void Track(std::uint32_t index) { List<version0::TrackObject>("tracks", index); }

  void Events(std::uint32_t count) {
    for (std::uint32_t i = 0; i < count; ++i) {
      placer_.Enter("events", i);
      Skip("deltaTime", 4);
      Skip("absoluteTime", 4);
      Skip("statusHigh", 1);
      Skip("data1", 1);
      Skip("data2", 1);
      Skip("trackId", 1);
      placer_.Leave();
    }
  }

  void BeginTimeline() {
    placer_.Enter("timeline");
    Magic(version0::kTimelineMagic);
  }
  void EndTimeline() { placer_.Leave(); }

  void BeginSequences() {}
  std::uint8_t BeginSequence() {
    const auto code = static_cast<std::uint8_t>(Next(1).front());
    placer_.Enter(ListOf(kind_, code));
    placer_.Place(1, "eventCode", Next(1));
    return code;
  }
  void EndSequence(std::uint8_t, std::uint32_t) { placer_.Leave(); }

  void Record(std::uint8_t code, std::size_t index) {
    switch (code) {
      case version0::RTempo::eventCode:
        return Framed<version0::RTempo>(index);
      case version0::RBarsBeats::eventCode:
        return Framed<version0::RBarsBeats>(index);
      case version0::RKey::eventCode:
        return Framed<version0::RKey>(index);
      case version0::RPageNum::eventCode:
        return Framed<version0::RPageNum>(index);
      case version0::RMeter::eventCode:
        return Framed<version0::RMeter>(index);
      case version0::XScoreMarker::eventCode:
        return List<version0::XScoreMarker>("", index);
      case version0::XCaesura::eventCode:
        return Framed<version0::XCaesura>(index);
      case version0::TempoScaleV0::eventCode:
        RequireCode(code);
        return Framed<version0::TempoScaleV0>(index);
      default:  // the other edits, which differ in nothing but their code
        RequireCode(code);
        return Framed<version0::VampV0>(index);
    }
  }

  // What VisitFields() asks for; the values are not kept.

  void U8(std::string_view key, std::uint8_t&) { Skip(key, 1); }
  void U16(std::string_view key, std::uint16_t&) { Skip(key, 2); }
  void U32(std::string_view key, std::uint32_t&) { Skip(key, 4); }
  void I8(std::string_view key, std::int8_t&) {
    const auto value = static_cast<std::int8_t>(Next(1).front());
    placer_.Place(1, key, std::int32_t{value});
  }
  void F32(std::string_view key, float&) {
    std::uint32_t bits = 0;
    const std::string_view bytes = Next(4);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      bits |= std::uint32_t{static_cast<unsigned char>(bytes[i])} << (8 * i);
    }
    placer_.Place(bytes.size(), key, std::bit_cast<float>(bits));
  }
  void ShortText(std::string_view key, std::string&) { Text(key); }

 private:
  /// The next `size` bytes, which stay where they are. Throws Damage.
  std::string_view Next(std::size_t size) const {
    const auto at = static_cast<std::size_t>(placer_.end());
    if (file_.size() - at < size) throw Damage();
    return file_.substr(at, size);
  }

  void Magic(std::string_view magic) {
    if (Next(magic.size()) != magic) throw Damage();
    placer_.Place(magic.size(), "magic", magic);
  }

  void RequireCode(std::uint8_t code) const {
    if (static_cast<std::uint8_t>(Next(1).front()) != code) throw Damage();
  }

  template <typename Entry>
  void List(std::string_view list, std::size_t index) {
    placer_.Enter(list, index);
    Entry entry = BlankLegacy<Entry>();
    VisitFields(*this, entry);
    placer_.Leave();
  }

  template <typename Entry>
  void Framed(std::size_t index) {
    placer_.Enter("", index);
    placer_.Place(1, "eventCode", Next(1));
    Skip("payloadLength", 2);
    Entry entry = BlankLegacy<Entry>();
    VisitFields(*this, entry);
    placer_.Leave();
  }

  cmn::FileKind kind_;
  std::string_view file_;
  cmn::FieldPlacer& placer_;
};

void ListLegacyFields(cmn::FileKind kind, std::string_view file, const cmn::TakeField& take) {
  cmn::FieldPlacer placer(take);
  LegacyFieldList fields(kind, file, placer);
  try {
    if (kind == cmn::FileKind::kLog) {
      fields.ListLog();
    } else {
      fields.ListShow();
    }
  } catch (const Damage&) {
    return;  // which the reader of whole files reports
  }
}

}  // namespace zuna_toolkit
