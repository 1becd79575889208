#pragma once

#include <type_traits>

#include "CL/song_log.h"

// The fields of every record of a binary log in their order, for writing and for reading: `fields` is a
// FieldWriter, and the record is const then, or a FieldReader.

namespace zuna_core {

template <class Fields, class Event>
void EventFields(Fields& fields, Event& event) {
  using Class = std::remove_const_t<Event>;
  if constexpr (std::is_base_of_v<CL::PairedEvent, Class>) {
    fields.Position("start", event.start);
    fields.PositionFrom("end", event.start, event.end);
    fields.Text("label", event.label);
    if constexpr (std::is_same_v<Class, CL::TempoScale>) {
      fields.Bits("value", event.value_bits);
    } else {
      fields.Signed("value", event.value_bits);
    }
  } else {
    fields.Position("position", event.position);
    fields.Text("label", event.label);
    if constexpr (std::is_same_v<Class, CL::Marker>) {
      fields.Text("text", event.text);
    } else {
      fields.Number("second word", event.second_word);
    }
  }
}

template <class Fields, class Song>
void SongFields(Fields& fields, Song& song) {
  fields.SongNumber("song number", song.song_number);
  fields.Text("song name", song.song_name);
  fields.Number("division", song.division);
  fields.Number("song length", song.song_length);
  fields.Number("attacca", song.attacca);
  fields.Events("vamps", song.vamps->events);
  fields.Events("repeats", song.repeats->events);
  fields.Events("cuts", song.cuts->events);
  fields.Events("transposes", song.transposes->events);
  fields.Events("tempo scales", song.tempo_scales->events);
  fields.Events("clicks", song.clicks->events);
  fields.Events("fermatas", song.fermatas->events);
  fields.Events("markers", song.markers->events);
  fields.Events("caesuras", song.caesuras->events);
}

template <class Fields, class Log>
void LogFields(Fields& fields, Log& log) {
  fields.Text("show name", log.show_name);
  fields.Text("log label", log.log_label);
  fields.Identifier("identifier", log.identifier);
  fields.Number("tag pair", log.log_tag_pair.first);
  fields.Number("tag pair", log.log_tag_pair.second);
  fields.Songs("songs", log);
}

}  // namespace zuna_core
