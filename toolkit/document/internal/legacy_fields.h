// The fields of every legacy record in the text form, in its order (docs/text-form.md). `fields` is a
// LegacyTextWriter or a LegacyTextBinder; for the records of sequences and for tracks, whose fields have the
// same order in a file, also a LegacyFieldList.
#pragma once

#include <type_traits>

#include "format_converter/version0/containers/change_log.h"
#include "format_converter/version0/containers/show_data.h"
#include "zuna_json/fields.h"

namespace zuna_toolkit {

using zuna_json::MaybeConst;

/// A record that is to be filled: numbers 0, texts empty.
template <typename Entry>
Entry BlankLegacy() {
  if constexpr (std::is_same_v<Entry, version0::RTempo>) {
    return {0, 0, 0, 0, 0};
  } else if constexpr (std::is_same_v<Entry, version0::RBarsBeats>) {
    return {0, "", 0};
  } else if constexpr (std::is_same_v<Entry, version0::TrackObject> ||
                       std::is_same_v<Entry, version0::XScoreMarker>) {
    return {0, ""};
  } else if constexpr (std::is_same_v<Entry, version0::RPageNum>) {
    return {0, 0};
  } else if constexpr (std::is_same_v<Entry, version0::XCaesura>) {
    return Entry(0);
  } else {
    return {0, 0, 0};
  }
}

template <typename Fields, MaybeConst<version0::RTempo> Tempo>
void VisitFields(Fields& fields, Tempo& tempo) {
  fields.U32("time", tempo.time);
  fields.F32("secondsPerTick", tempo.seconds_per_tick);
  fields.U8("notated32PerClick", tempo.notated_32_per_click);
  fields.U8("notated32PerQuarter", tempo.notated_32_per_quarter);
  fields.U16("bpm", tempo.bpm);
}

template <typename Fields, MaybeConst<version0::RBarsBeats> BarsBeats>
void VisitFields(Fields& fields, BarsBeats& bars_beats) {
  fields.U32("time", bars_beats.time);
  fields.ShortText("label", bars_beats.label);
  fields.U8("tag", bars_beats.tag);
}

template <typename Fields, MaybeConst<version0::RKey> Key>
void VisitFields(Fields& fields, Key& key) {
  fields.U32("time", key.time);
  fields.I8("key", key.key);
  fields.U8("mode", key.mode);
}

template <typename Fields, MaybeConst<version0::RPageNum> PageNum>
void VisitFields(Fields& fields, PageNum& page) {
  fields.U32("time", page.time);
  fields.U16("page", page.page);
}

template <typename Fields, MaybeConst<version0::RMeter> Meter>
void VisitFields(Fields& fields, Meter& meter) {
  fields.U32("time", meter.time);
  fields.U8("numerator", meter.numerator);
  fields.U8("denominator", meter.denominator);
}

template <typename Fields, MaybeConst<version0::Timeline> Timeline>
void VisitFields(Fields& fields, Timeline& timeline) {
  fields.ShortText("name", timeline.name);
  fields.U32("songLength", timeline.song_length);
  fields.List("tempos", timeline.tempos);
  fields.List("barsBeats", timeline.bars_beats);
  fields.List("keys", timeline.keys);
  fields.List("pageNumbers", timeline.page_nums);
  fields.List("meters", timeline.meters);
}

template <typename Fields, MaybeConst<version0::TrackObject> Track>
void VisitFields(Fields& fields, Track& track) {
  fields.U8("trackId", track.track_id);
  fields.ShortText("name", track.track_name);
}

template <typename Fields, MaybeConst<version0::SongData> Song>
void VisitFields(Fields& fields, Song& song) {
  fields.ShortText("songNumber", song.song_number);
  fields.ShortText("songName", song.song_name);
  fields.U16("division", song.division);
  fields.U32("songLength", song.song_length);
  fields.List("tracks", song.tracks);
  fields.Events("events", song.events);
  fields.Object("timeline", song.timeline);
}

template <typename Fields, MaybeConst<version0::ShowData> Show>
void VisitFields(Fields& fields, Show& show) {
  fields.Children("songs", show);
}

template <typename Fields, typename Event>
requires requires(Event event) { event.start, event.end, event.value; }
void VisitFields(Fields& fields, Event& event) {
  fields.U32("start", event.start);
  fields.U32("end", event.end);
  if constexpr (std::is_same_v<std::remove_const_t<Event>, version0::TempoScaleV0>) {
    fields.F32("value", event.value);
  } else {
    fields.I8("value", event.value);
  }
}

template <typename Fields, MaybeConst<version0::XCaesura> Caesura>
void VisitFields(Fields& fields, Caesura& caesura) {
  fields.U32("time", caesura.time);
}

template <typename Fields, MaybeConst<version0::XScoreMarker> Marker>
void VisitFields(Fields& fields, Marker& marker) {
  fields.U32("time", marker.time);
  fields.ShortText("text", marker.text);
}

template <typename Fields, MaybeConst<version0::SongLogV0> Song>
void VisitFields(Fields& fields, Song& song) {
  fields.ShortText("songNumber", song.songNumber_);
  fields.ShortText("songName", song.songName_);
  fields.U32("songLength", song.songLength_);
  fields.List("cuts", song.cuts);
  fields.List("vamps", song.vamps);
  fields.List("repeats", song.repeats);
  fields.List("clicks", song.clicks);
  fields.List("tempoScales", song.tempo_scales);
  fields.List("transposes", song.transposes);
  fields.List("caesuras", song.caesuras);
  fields.List("markers", song.score_markers);
}

template <typename Fields, MaybeConst<version0::ChangeLogV0> Log>
void VisitFields(Fields& fields, Log& log) {
  fields.ShortText("showName", log.show_name);
  fields.ShortText("logLabel", log.log_label);
  fields.Identifier("identifier", log.identifier);
  fields.Pair("tagPair", log.log_tag_pair);
  fields.Children("songLogs", log);
}

}  // namespace zuna_toolkit
