#pragma once

// The fields of every record of a log, in the order of the file (docs/format-1.md, docs/format-2.md).
// `fields` is one of the visitors that platform/core/file/records.h describes, or NullListFinder in
// log/file.cpp. A record that is written is const.
//
// The names of the functions state the width of a field in the fixed binary layout: U8, U16, U32 are unsigned
// and I16, I32 signed integers of that many bits, F32 a float; a Position is a U32 and a Pair two U16.
// A member of another type does not compile, so a released format does not change with the model.

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
    fields.F32("value", event.value_bits);
  } else {
    fields.I32("value", event.value_bits);
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
    fields.U32("secondWord", event.second_word);
  }
}

template <typename Fields, MaybeConst<CL::SongLog> SongLog>
void VisitFields(Fields& fields, SongLog& song) {
  fields.SongNumber("songNumber", song.song_number);
  fields.Text("songName", song.song_name);
  fields.U16("division", song.division);
  fields.U32("songLength", song.song_length);
  fields.U8("attacca", song.attacca);
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

template <typename Fields, MaybeConst<CL::ChangeLog> ChangeLog>
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
