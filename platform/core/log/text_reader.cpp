#include "platform/core/log/text_reader.h"

#include <memory>
#include <stdexcept>
#include <utility>

#include "platform/core/file/versions.h"
#include "platform/core/json/document.h"
#include "platform/core/json/schema_reader.h"
#include "platform/core/log/log_builder.h"

namespace zuna_core {

namespace {

/// The log so far, the song that is being read, and the event that is, whichever of the three it is.
struct Builder {
  CL::ChangeLog log;
  std::shared_ptr<CL::SongLog> song;
  CL::PairedEvent* paired = nullptr;
  CL::Marker* marker = nullptr;
  CL::Caesura* caesura = nullptr;
};

using Field = JsonField<Builder>;
using Layout = Schema<Builder>;
using Value = std::int64_t;

template <class T>
constexpr Field Integer(std::string_view key, void (*set)(Builder&, Value)) {
  return IntegerField<Builder>(key, kRangeOf<T>, set);
}

constexpr Field Text(std::string_view key, const char* (*set)(Builder&, std::string&&)) {
  return TextField<Builder>(key, set);
}

/// An integer of 32 bits, written as a signed one, may also be read as an unsigned one.
constexpr JsonRange kBits32{kRangeOf<std::int32_t>.min, kRangeOf<std::uint32_t>.max};

constexpr Field kStart =
    Integer<std::uint32_t>("start", [](Builder& b, Value v) { StoreNumber(b.paired->start, v); });
constexpr Field kEnd =
    Integer<std::uint32_t>("end", [](Builder& b, Value v) { StoreNumber(b.paired->end, v); });
constexpr Field kLabel =
    Text("label", [](Builder& b, std::string&& text) { return StoreText(b.paired->label, std::move(text)); });

constexpr Field kPaired[] = {kStart, kEnd, kLabel,
                             IntegerField<Builder>("value", kBits32, [](Builder& b, Value v) {
                               StoreNumber(b.paired->value_bits, v);
                             })};
constexpr Field kTempoScale[] = {
    kStart, kEnd, kLabel,
    FloatField<Builder>("value", [](Builder& b, float value) { b.paired->SetFloatValue(value); })};

constexpr Field kMarker[] = {
    Integer<std::uint32_t>("position", [](Builder& b, Value v) { StoreNumber(b.marker->position, v); }),
    Text("label", [](Builder& b, std::string&& t) { return StoreText(b.marker->label, std::move(t)); }),
    Text("text", [](Builder& b, std::string&& t) { return StoreText(b.marker->text, std::move(t)); })};
constexpr Field kCaesura[] = {
    Integer<std::uint32_t>("position", [](Builder& b, Value v) { StoreNumber(b.caesura->position, v); }),
    Text("label", [](Builder& b, std::string&& t) { return StoreText(b.caesura->label, std::move(t)); }),
    Integer<std::uint32_t>("secondWord",
                           [](Builder& b, Value v) { StoreNumber(b.caesura->second_word, v); })};

/// An object of the list kList of a song: begins as a new event, which `kEvent` points to while it is read.
template <auto kList, auto kEvent, auto& kFields>
constexpr Layout kEventLayout = ObjectSchema(kFields, [](Builder& b) {
  auto& events = ((*b.song).*kList)->events;
  using Event = typename std::remove_reference_t<decltype(events)>::value_type;
  b.*kEvent = &events.emplace_back(BlankEvent<Event>());
});

template <auto kList, auto& kFields = kPaired>
constexpr Layout kPairedLayout = kEventLayout<kList, &Builder::paired, kFields>;

using CL::SongLog;

constexpr Field kSong[] = {
    Text("songNumber",
         [](Builder& b, std::string&& t) { return StoreText(b.song->song_number, std::move(t)); }),
    Text("songName", [](Builder& b, std::string&& t) { return StoreText(b.song->song_name, std::move(t)); }),
    Integer<std::uint16_t>("division", [](Builder& b, Value v) { StoreNumber(b.song->division, v); }),
    Integer<std::uint32_t>("songLength", [](Builder& b, Value v) { StoreNumber(b.song->song_length, v); }),
    Integer<std::uint8_t>("attacca", [](Builder& b, Value v) { StoreNumber(b.song->attacca, v); }),
    ListField("vamps", kPairedLayout<&SongLog::vamps>),
    ListField("repeats", kPairedLayout<&SongLog::repeats>),
    ListField("cuts", kPairedLayout<&SongLog::cuts>),
    ListField("transposes", kPairedLayout<&SongLog::transposes>),
    ListField("tempoScales", kPairedLayout<&SongLog::tempo_scales, kTempoScale>),
    ListField("clicks", kPairedLayout<&SongLog::clicks>),
    ListField("fermatas", kPairedLayout<&SongLog::fermatas>),
    ListField("markers", kEventLayout<&SongLog::markers, &Builder::marker, kMarker>),
    ListField("caesuras", kEventLayout<&SongLog::caesuras, &Builder::caesura, kCaesura>)};
constexpr Layout kSongLayout = ObjectSchema(
    kSong, [](Builder& b) { b.song = BlankSongLog(); },
    [](Builder& b) -> const char* {
      return AddNewSongLog(b.log, std::move(b.song)) ? nullptr : kDuplicateSongLog;
    });

const char* SetIdentifier(Builder& b, std::string&& text) {
  try {
    b.log.identifier = kit::UUID::FromString(text);
  } catch (const std::invalid_argument&) {
    return "an identifier such as \"00112233-4455-6677-8899-aabbccddeeff\" is due here";
  }
  return nullptr;
}

constexpr JsonColumns kTagPair{2, {kRangeOf<std::uint16_t>, kRangeOf<std::uint16_t>}};

void SetTagPair(Builder& b, const Value* row) {
  StoreNumber(b.log.log_tag_pair.first, row[0]);
  StoreNumber(b.log.log_tag_pair.second, row[1]);
}

constexpr Field kLog[] = {
    StringField<Builder>("kind",
                         [](Builder&, std::string&& text) { return CheckKind(FileKind::kLog, text); }),
    StringField<Builder>("fileVersion",
                         [](Builder&, std::string&& text) { return CheckVersion(FileKind::kLog, text); }),
    Text("showName", [](Builder& b, std::string&& t) { return StoreText(b.log.show_name, std::move(t)); }),
    Text("logLabel", [](Builder& b, std::string&& t) { return StoreText(b.log.log_label, std::move(t)); }),
    StringField<Builder>("identifier", SetIdentifier),
    RowField<Builder>("tagPair", kTagPair, SetTagPair),
    ListField("songLogs", kSongLayout)};
constexpr Layout kLogLayout = ObjectSchema(kLog);

}  // namespace

CL::ChangeLog ReadTextLog(std::istream& is, std::string_view prefix) {
  Builder builder;
  ReadJson(is, prefix, kLogLayout, builder);
  builder.log.file_version = kTextVersion;
  return std::move(builder.log);
}

}  // namespace zuna_core
