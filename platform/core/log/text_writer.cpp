#include "platform/core/log/text_writer.h"

#include "platform/core/json/text_writer.h"

namespace zuna_core {

namespace {

void WriteValue(JsonTextWriter& json, const CL::PairedEvent& event) { json.Number(event.IntValue()); }
void WriteValue(JsonTextWriter& json, const CL::TempoScale& event) { json.Float(event.FloatValue()); }

template <class Event>
void WriteEvent(JsonTextWriter& json, const Event& event) {
  json.Raw(R"({"start": )");
  json.Number(event.start);
  json.Raw(R"(, "end": )");
  json.Number(event.end);
  json.Raw(R"(, "label": )");
  json.Text(event.label);
  json.Raw(R"(, "value": )");
  WriteValue(json, event);
  json.Raw("}");
}

void WriteEvent(JsonTextWriter& json, const CL::Marker& event) {
  json.Raw(R"({"position": )");
  json.Number(event.position);
  json.Raw(R"(, "label": )");
  json.Text(event.label);
  json.Raw(R"(, "text": )");
  json.Text(event.text);
  json.Raw("}");
}

void WriteEvent(JsonTextWriter& json, const CL::Caesura& event) {
  json.Raw(R"({"position": )");
  json.Number(event.position);
  json.Raw(R"(, "label": )");
  json.Text(event.label);
  json.Raw(R"(, "secondWord": )");
  json.Number(event.second_word);
  json.Raw("}");
}

template <class Event>
void WriteEvents(JsonTextWriter& json, std::string_view opening, const CL::EventList<Event>& list) {
  json.List(opening, 8, list.events, [&](const Event& event) { WriteEvent(json, event); });
}

void WriteSong(JsonTextWriter& json, const CL::SongLog& song) {
  json.Raw("{\n      \"songNumber\": ");
  json.Text(song.song_number);
  json.Raw(",\n      \"songName\": ");
  json.Text(song.song_name);
  json.Raw(",\n      \"division\": ");
  json.Number(song.division);
  json.Raw(",\n      \"songLength\": ");
  json.Number(song.song_length);
  json.Raw(",\n      \"attacca\": ");
  json.Number(song.attacca);
  WriteEvents(json, ",\n      \"vamps\": [", *song.vamps);
  WriteEvents(json, ",\n      \"repeats\": [", *song.repeats);
  WriteEvents(json, ",\n      \"cuts\": [", *song.cuts);
  WriteEvents(json, ",\n      \"transposes\": [", *song.transposes);
  WriteEvents(json, ",\n      \"tempoScales\": [", *song.tempo_scales);
  WriteEvents(json, ",\n      \"clicks\": [", *song.clicks);
  WriteEvents(json, ",\n      \"fermatas\": [", *song.fermatas);
  WriteEvents(json, ",\n      \"markers\": [", *song.markers);
  WriteEvents(json, ",\n      \"caesuras\": [", *song.caesuras);
  json.Raw("\n    }");
}

}  // namespace

void WriteTextLog(std::ostream& os, const CL::ChangeLog& log) {
  OutputWindow window(os, false);
  JsonTextWriter json(window);
  json.Raw("{\n  \"kind\": \"logdata\",\n  \"fileVersion\": \"2.0\",\n  \"showName\": ");
  json.Text(log.show_name);
  json.Raw(",\n  \"logLabel\": ");
  json.Text(log.log_label);
  json.Raw(",\n  \"identifier\": ");
  json.Text(log.identifier.ToString());
  json.Raw(",\n  \"tagPair\": [");
  json.Number(log.log_tag_pair.first);
  json.Raw(", ");
  json.Number(log.log_tag_pair.second);
  json.List("],\n  \"songLogs\": [", 4, log.song_logs(),
            [&](const auto& song) { WriteSong(json, *song.second); });
  json.Raw("\n}\n");
  window.Flush();
}

template <class Event>
void WriteTextEvent(OutputWindow& window, const Event& event) {
  JsonTextWriter json(window);
  WriteEvent(json, event);
}
template void WriteTextEvent(OutputWindow&, const CL::PairedEvent&);
template void WriteTextEvent(OutputWindow&, const CL::TempoScale&);
template void WriteTextEvent(OutputWindow&, const CL::Marker&);
template void WriteTextEvent(OutputWindow&, const CL::Caesura&);

}  // namespace zuna_core
