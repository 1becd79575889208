#pragma once

// The fields of every record of a show, in the order of the file (docs/format-1.md, docs/format-2.md).
// `fields` is one of the visitors that platform/core/file/records.h describes. A record that is written is
// const.
//
// The names of the functions state the width of a field in the fixed binary layout: U8, U16, U32 are unsigned
// and I16, I32 signed integers of that many bits, F32 a float; a Position is a U32 and a TrackNumber a U16.
// A member of another type does not compile, so a released format does not change with the model.

#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>

#include "platform/core/file/records.h"
#include "zuna_midi/show_data.h"

namespace zuna_core {

template <typename Fields, MaybeConst<TL::Tempo> Tempo>
void VisitFields(Fields& fields, Tempo& tempo) {
  fields.Position("time", tempo.time);
  fields.U32("microseconds", tempo.microseconds);
}

template <typename Fields, MaybeConst<TL::BarsBeats> BarsBeats>
void VisitFields(Fields& fields, BarsBeats& bars_beats) {
  fields.Position("time", bars_beats.time);
  fields.BarNumber("barNumber", bars_beats);
  fields.U8("tag", bars_beats.tag);
}

template <typename Fields, MaybeConst<TL::Key> Key>
void VisitFields(Fields& fields, Key& key) {
  fields.Position("time", key.time);
  fields.I16("key", key.key);
  fields.U16("mode", key.mode);
}

template <typename Fields, MaybeConst<TL::PageNumber> PageNumber>
void VisitFields(Fields& fields, PageNumber& page_number) {
  fields.Position("time", page_number.time);
  fields.U32("page", page_number.page);
}

template <typename Fields, MaybeConst<TL::Meter> Meter>
void VisitFields(Fields& fields, Meter& meter) {
  fields.Position("time", meter.time);
  fields.U8("numerator", meter.numerator);
  fields.U8("denominator", meter.denominator);
  fields.U8("clocksPerClick", meter.clocks_per_click);
  fields.U8("notated32PerQuarter", meter.notated_32_per_quarter);
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
  fields.U16("reserved", track.reserved);
  fields.MessageRows("messages", track.messages);
}

template <typename Fields, MaybeConst<zuna_midi::SongData> SongData>
void VisitFields(Fields& fields, SongData& song) {
  fields.SongNumber("songNumber", song.song_number);
  fields.Text("songName", song.song_name);
  fields.U16("division", song.division);
  fields.U32("songLength", song.song_length);
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
    track->reserved = 0;  // 0xFFFF would take three bytes instead of one in the compact layout
    return track;
  }
  static const char* Add(zuna_midi::VoiceData& voices, std::shared_ptr<zuna_midi::VoiceTrack> track) {
    if (voices.tracks().contains(track->track_number)) return "the song has another voice of the same number";
    voices.AddTrack(std::move(track));
    return nullptr;
  }

  static bool HoldsSomething(const zuna_midi::VoiceTrack& track) { return !track.messages.empty(); }

  /// Adds a track of a damaged song, whose number may be wrong: in place of the number of another track it
  /// gets the one after the last. Returns false where there is none.
  static bool AddUnderFreeNumber(zuna_midi::VoiceData& voices, std::shared_ptr<zuna_midi::VoiceTrack> track) {
    if (voices.tracks().contains(track->track_number)) {
      const std::uint16_t last = voices.tracks().rbegin()->first;
      if (last == 0xFFFF) return false;
      track->track_number = static_cast<std::uint16_t>(last + 1);
    }
    voices.AddTrack(std::move(track));
    return true;
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
