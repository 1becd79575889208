#include "platform/core/show/text_reader.h"

#include <memory>
#include <utility>

#include "platform/core/json/document.h"
#include "platform/core/json/schema_reader.h"
#include "platform/core/show/show_builder.h"

namespace zuna_core {

namespace {

/// The show so far, and the song and the voice that are being read.
struct Builder {
  zuna_midi::ShowData show;
  std::shared_ptr<zuna_midi::SongData> song;
  std::shared_ptr<zuna_midi::VoiceTrack> track;
  /// The messages of the voice, whose number the text does not tell beforehand. They grow here, in memory
  /// that all voices share, so that each voice takes just what it needs.
  decltype(zuna_midi::VoiceTrack::messages) messages;

  TL::Timeline& timeline() const { return *song->timeline; }
};

using Field = JsonField<Builder>;
using Layout = Schema<Builder>;

template <class T>
constexpr Field Integer(std::string_view key, void (*set)(Builder&, std::int64_t)) {
  return IntegerField<Builder>(key, kRangeOf<T>, set);
}

constexpr Field Text(std::string_view key, const char* (*set)(Builder&, std::string&&)) {
  return TextField<Builder>(key, set);
}

using Value = std::int64_t;

constexpr Field kTempo[] = {
    Integer<std::uint32_t>("time",
                           [](Builder& b, Value v) { StoreNumber(b.timeline().tempos.back().time, v); }),
    Integer<std::uint32_t>("microseconds", [](Builder& b, Value v) {
      StoreNumber(b.timeline().tempos.back().microseconds, v);
    })};
constexpr Layout kTempoLayout = ObjectSchema(kTempo, [](Builder& b) { b.timeline().tempos.emplace_back(); });

constexpr Field kBarsBeats[] = {
    Integer<std::uint32_t>("time",
                           [](Builder& b, Value v) { StoreNumber(b.timeline().bars_beats.back().time, v); }),
    Text("barNumber",
         [](Builder& b, std::string&& text) { return SetBarNumber(b.timeline().bars_beats.back(), text); }),
    Integer<std::uint8_t>("tag",
                          [](Builder& b, Value v) { StoreNumber(b.timeline().bars_beats.back().tag, v); })};
constexpr Layout kBarsBeatsLayout =
    ObjectSchema(kBarsBeats, [](Builder& b) { b.timeline().bars_beats.emplace_back(); });

constexpr Field kKey[] = {
    Integer<std::uint32_t>("time",
                           [](Builder& b, Value v) { StoreNumber(b.timeline().keys.back().time, v); }),
    Integer<std::int16_t>("key", [](Builder& b, Value v) { StoreNumber(b.timeline().keys.back().key, v); }),
    Integer<std::uint16_t>("mode",
                           [](Builder& b, Value v) { StoreNumber(b.timeline().keys.back().mode, v); })};
constexpr Layout kKeyLayout = ObjectSchema(kKey, [](Builder& b) { b.timeline().keys.emplace_back(); });

constexpr Field kPageNumber[] = {
    Integer<std::uint32_t>(
        "time", [](Builder& b, Value v) { StoreNumber(b.timeline().page_numbers.back().time, v); }),
    Integer<std::uint32_t>(
        "page", [](Builder& b, Value v) { StoreNumber(b.timeline().page_numbers.back().page, v); })};
constexpr Layout kPageNumberLayout =
    ObjectSchema(kPageNumber, [](Builder& b) { b.timeline().page_numbers.emplace_back(); });

TL::Meter& LastMeter(Builder& b) { return b.timeline().meters.back(); }
constexpr Field kMeter[] = {
    Integer<std::uint32_t>("time", [](Builder& b, Value v) { StoreNumber(LastMeter(b).time, v); }),
    Integer<std::uint8_t>("numerator", [](Builder& b, Value v) { StoreNumber(LastMeter(b).numerator, v); }),
    Integer<std::uint8_t>("denominator",
                          [](Builder& b, Value v) { StoreNumber(LastMeter(b).denominator, v); }),
    Integer<std::uint8_t>("clocksPerClick",
                          [](Builder& b, Value v) { StoreNumber(LastMeter(b).clocks_per_click, v); }),
    Integer<std::uint8_t>("notated32PerQuarter",
                          [](Builder& b, Value v) { StoreNumber(LastMeter(b).notated_32_per_quarter, v); })};
constexpr Layout kMeterLayout = ObjectSchema(kMeter, [](Builder& b) { b.timeline().meters.emplace_back(); });

constexpr Field kTimeline[] = {ListField("tempos", kTempoLayout), ListField("barsBeats", kBarsBeatsLayout),
                               ListField("keys", kKeyLayout), ListField("pageNumbers", kPageNumberLayout),
                               ListField("meters", kMeterLayout)};
constexpr Layout kTimelineLayout = ObjectSchema(kTimeline);

constexpr JsonColumns kMessage{
    4, {kRangeOf<std::uint32_t>, kRangeOf<std::uint8_t>, kRangeOf<std::uint8_t>, kRangeOf<std::uint8_t>}};

void AddMessage(Builder& b, const Value* row) {
  const auto byte = [row](int column) { return static_cast<unsigned char>(row[column]); };
  b.messages.emplace_back(static_cast<std::uint32_t>(row[0]),
                          std_midi::VoiceMessage(byte(1), byte(2), byte(3)));
}

const char* EndTrack(Builder& b) {
  b.track->messages = b.messages;
  b.messages.clear();
  return AddNewTrack(*b.song->voice_data, std::move(b.track)) ? nullptr : kDuplicateTrack;
}

constexpr Field kTrack[] = {
    Integer<std::uint16_t>("trackNumber", [](Builder& b, Value v) { StoreNumber(b.track->track_number, v); }),
    Text("name", [](Builder& b, std::string&& text) { return StoreText(b.track->name, std::move(text)); }),
    Integer<std::uint16_t>("reserved", [](Builder& b, Value v) { StoreNumber(b.track->reserved, v); }),
    RowsField<Builder>("messages", kMessage, AddMessage)};
constexpr Layout kTrackLayout = ObjectSchema(
    kTrack, [](Builder& b) { b.track = std::make_shared<zuna_midi::VoiceTrack>(); }, EndTrack);

constexpr Field kSong[] = {
    Text("songNumber",
         [](Builder& b, std::string&& t) { return StoreText(b.song->song_number, std::move(t)); }),
    Text("songName", [](Builder& b, std::string&& t) { return StoreText(b.song->song_name, std::move(t)); }),
    Integer<std::uint16_t>("division", [](Builder& b, Value v) { StoreNumber(b.song->division, v); }),
    Integer<std::uint32_t>("songLength", [](Builder& b, Value v) { StoreNumber(b.song->song_length, v); }),
    ObjectField("timeline", kTimelineLayout),
    ListField("voices", kTrackLayout)};
constexpr Layout kSongLayout = ObjectSchema(
    kSong, [](Builder& b) { b.song = std::make_shared<zuna_midi::SongData>("", "", 0, 0); },
    [](Builder& b) -> const char* {
      return AddNewSong(b.show, std::move(b.song)) ? nullptr : kDuplicateSong;
    });

constexpr Field kShow[] = {
    StringField<Builder>("kind",
                         [](Builder&, std::string&& text) { return CheckKind(FileKind::kShow, text); }),
    StringField<Builder>("fileVersion",
                         [](Builder&, std::string&& text) { return CheckVersion(FileKind::kShow, text); }),
    Text("showName", [](Builder& b, std::string&& t) { return StoreText(b.show.show_name, std::move(t)); }),
    ListField("songs", kSongLayout)};
constexpr Layout kShowLayout = ObjectSchema(kShow);

}  // namespace

zuna_midi::ShowData ReadTextShow(std::istream& is, std::string_view prefix) {
  Builder builder;
  ReadJson(is, prefix, kShowLayout, builder);
  return std::move(builder.show);
}

}  // namespace zuna_core
