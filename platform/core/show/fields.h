#pragma once

// The fields of every record of a show, in the order in which files state them (docs/format-1.md,
// docs/format-2.md). `fields` is one of the four visitors in platform/core/file/: binary_field_writer.h,
// binary_field_reader.h, text_field_writer.h and text_field_binder.h. A record that is written is const.

#include <concepts>
#include <cstdint>
#include <memory>
#include <string_view>
#include <type_traits>
#include <utility>

#include "platform/core/file/records.h"
#include "zuna_midi/show_data.h"

namespace zuna_core {

template <typename T, typename Record>
concept MaybeConst = std::same_as<std::remove_const_t<T>, Record>;

template <typename Fields, MaybeConst<TL::Tempo> Tempo>
void VisitFields(Fields& fields, Tempo& tempo) {
  fields.Position("time", tempo.time);
  fields.Number("microseconds", tempo.microseconds);
}

template <typename Fields, MaybeConst<TL::BarsBeats> BarsBeats>
void VisitFields(Fields& fields, BarsBeats& bars_beats) {
  fields.Position("time", bars_beats.time);
  fields.BarNumber("barNumber", bars_beats);
  fields.Number("tag", bars_beats.tag);
}

template <typename Fields, MaybeConst<TL::Key> Key>
void VisitFields(Fields& fields, Key& key) {
  fields.Position("time", key.time);
  fields.Number("key", key.key);
  fields.Number("mode", key.mode);
}

template <typename Fields, MaybeConst<TL::PageNumber> PageNumber>
void VisitFields(Fields& fields, PageNumber& page_number) {
  fields.Position("time", page_number.time);
  fields.Number("page", page_number.page);
}

template <typename Fields, MaybeConst<TL::Meter> Meter>
void VisitFields(Fields& fields, Meter& meter) {
  fields.Position("time", meter.time);
  fields.Number("numerator", meter.numerator);
  fields.Number("denominator", meter.denominator);
  fields.Number("clocksPerClick", meter.clocks_per_click);
  fields.Number("notated32PerQuarter", meter.notated_32_per_quarter);
}

template <typename Fields, MaybeConst<TL::Timeline> Timeline>
void VisitFields(Fields& fields, Timeline& timeline) {
  fields.List("tempos", timeline.tempos);
  fields.List("barsBeats", timeline.bars_beats);
  fields.List("keys", timeline.keys);
  fields.List("pageNumbers", timeline.page_numbers);
  fields.List("meters", timeline.meters);
}

template <typename Fields, MaybeConst<zuna_midi::VoiceTrack> VoiceTrack>
void VisitFields(Fields& fields, VoiceTrack& track) {
  fields.TrackNumber("trackNumber", track.track_number);
  fields.Text("name", track.name);
  fields.Number("reserved", track.reserved);
  fields.MessageRows("messages", track.messages);
}

template <typename Fields, MaybeConst<zuna_midi::SongData> SongData>
void VisitFields(Fields& fields, SongData& song) {
  fields.SongNumber("songNumber", song.song_number);
  fields.Text("songName", song.song_name);
  fields.Number("division", song.division);
  fields.Number("songLength", song.song_length);
  fields.Object("timeline", *song.timeline);
  fields.Children("voices", *song.voice_data);
}

template <typename Fields, MaybeConst<zuna_midi::ShowData> ShowData>
void VisitFields(Fields& fields, ShowData& show) {
  fields.Text("showName", show.show_name);
  fields.Children("songs", show);
}

template <>
struct ChildRecords<zuna_midi::VoiceData> {
  static constexpr std::string_view kKey = "trackNumber";

  static const zuna_midi::VoiceData::Tracks& Of(const zuna_midi::VoiceData& voices) {
    return voices.tracks();
  }
  static std::shared_ptr<zuna_midi::VoiceTrack> New() {
    auto track = std::make_shared<zuna_midi::VoiceTrack>();
    track->reserved = 0;
    return track;
  }
  static const char* Add(zuna_midi::VoiceData& voices, std::shared_ptr<zuna_midi::VoiceTrack> track) {
    if (voices.tracks().contains(track->track_number)) return "the song has another voice of the same number";
    voices.AddTrack(std::move(track));
    return nullptr;
  }
};

template <>
struct ChildRecords<zuna_midi::ShowData> {
  static constexpr std::string_view kKey = "songNumber";

  static const zuna_midi::ShowData::Songs& Of(const zuna_midi::ShowData& show) { return show.songs(); }
  static std::shared_ptr<zuna_midi::SongData> New() {
    return std::make_shared<zuna_midi::SongData>("", "", static_cast<unsigned short>(0), 0U);
  }
  static const char* Add(zuna_midi::ShowData& show, std::shared_ptr<zuna_midi::SongData> song) {
    if (show.songs().contains(song->song_number)) return "the show has another song of the same number";
    show.AddSongData(std::move(song));
    return nullptr;
  }
};

}  // namespace zuna_core
