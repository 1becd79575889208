#pragma once

// The fields of every record of a log, in the order in which files state them (docs/format-1.md,
// docs/format-2.md). `fields` is one of the four visitors in platform/core/file/: binary_field_writer.h,
// binary_field_reader.h, text_field_writer.h and text_field_binder.h. A record that is written is const.

#include <concepts>
#include <memory>
#include <string_view>
#include <type_traits>
#include <utility>

#include "CL/change_log.h"
#include "platform/core/file/records.h"

namespace zuna_core {

template <typename Fields, typename Event>
requires std::derived_from<Event, CL::PairedEvent>
void VisitFields(Fields& fields, Event& event) {
  fields.Position("start", event.start);
  fields.PositionFrom("end", event.start, event.end);
  fields.Text("label", event.label);
  if constexpr (std::is_same_v<std::remove_const_t<Event>, CL::TempoScale>) {
    fields.Float("value", event.value_bits);
  } else {
    fields.Signed("value", event.value_bits);
  }
}

template <typename Fields, typename Event>
requires std::derived_from<Event, CL::PointEvent>
void VisitFields(Fields& fields, Event& event) {
  fields.Position("position", event.position);
  fields.Text("label", event.label);
  if constexpr (std::is_same_v<std::remove_const_t<Event>, CL::Marker>) {
    fields.Text("text", event.text);
  } else {
    fields.Number("secondWord", event.second_word);
  }
}

template <typename Fields, typename SongLog>
requires std::same_as<std::remove_const_t<SongLog>, CL::SongLog>
void VisitFields(Fields& fields, SongLog& song) {
  fields.SongNumber("songNumber", song.song_number);
  fields.Text("songName", song.song_name);
  fields.Number("division", song.division);
  fields.Number("songLength", song.song_length);
  fields.Number("attacca", song.attacca);
  fields.List("vamps", song.vamps);
  fields.List("repeats", song.repeats);
  fields.List("cuts", song.cuts);
  fields.List("transposes", song.transposes);
  fields.List("tempoScales", song.tempo_scales);
  fields.List("clicks", song.clicks);
  fields.List("fermatas", song.fermatas);
  fields.List("markers", song.markers);
  fields.List("caesuras", song.caesuras);
}

template <typename Fields, typename ChangeLog>
requires std::same_as<std::remove_const_t<ChangeLog>, CL::ChangeLog>
void VisitFields(Fields& fields, ChangeLog& log) {
  fields.Text("showName", log.show_name);
  fields.Text("logLabel", log.log_label);
  fields.Identifier("identifier", log.identifier);
  fields.Pair("tagPair", log.log_tag_pair);
  fields.Children("songLogs", log);
}

template <std::derived_from<CL::PairedEvent> Event>
struct Blank<Event> {
  static Event Make() { return {0, 0, "", 0}; }
};
template <>
struct Blank<CL::Marker> {
  static CL::Marker Make() { return {0, "", ""}; }
};
template <>
struct Blank<CL::Caesura> {
  static CL::Caesura Make() { return {0, ""}; }
};

template <>
struct ChildRecords<CL::ChangeLog> {
  static constexpr std::string_view kKey = "songNumber";

  static const CL::ChangeLog::SongLogs& Of(const CL::ChangeLog& log) { return log.song_logs(); }
  static std::shared_ptr<CL::SongLog> New() {
    return std::make_shared<CL::SongLog>("", "", static_cast<unsigned short>(0), 0U);
  }
  static const char* Add(CL::ChangeLog& log, std::shared_ptr<CL::SongLog> song) {
    if (log.song_logs().contains(song->song_number)) return "the log has another song of the same number";
    log.AddSongLog(std::move(song));
    return nullptr;
  }
};

}  // namespace zuna_core
