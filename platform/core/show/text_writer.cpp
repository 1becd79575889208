#include "platform/core/show/text_writer.h"

#include "platform/core/json/decimal.h"
#include "platform/core/json/text_writer.h"

namespace zuna_core {

namespace {

void WriteEntry(JsonTextWriter& json, const TL::Tempo& entry) {
  json.Raw(R"({"time": )");
  json.Number(entry.time);
  json.Raw(R"(, "microseconds": )");
  json.Number(entry.microseconds);
  json.Raw("}");
}

void WriteEntry(JsonTextWriter& json, const TL::BarsBeats& entry) {
  json.Raw(R"({"time": )");
  json.Number(entry.time);
  json.Raw(R"(, "barNumber": )");
  json.Text(entry.bar_number());
  json.Raw(R"(, "tag": )");
  json.Number(entry.tag);
  json.Raw("}");
}

void WriteEntry(JsonTextWriter& json, const TL::Key& entry) {
  json.Raw(R"({"time": )");
  json.Number(entry.time);
  json.Raw(R"(, "key": )");
  json.Number(entry.key);
  json.Raw(R"(, "mode": )");
  json.Number(entry.mode);
  json.Raw("}");
}

void WriteEntry(JsonTextWriter& json, const TL::PageNumber& entry) {
  json.Raw(R"({"time": )");
  json.Number(entry.time);
  json.Raw(R"(, "page": )");
  json.Number(entry.page);
  json.Raw("}");
}

void WriteEntry(JsonTextWriter& json, const TL::Meter& entry) {
  json.Raw(R"({"time": )");
  json.Number(entry.time);
  json.Raw(R"(, "numerator": )");
  json.Number(entry.numerator);
  json.Raw(R"(, "denominator": )");
  json.Number(entry.denominator);
  json.Raw(R"(, "clocksPerClick": )");
  json.Number(entry.clocks_per_click);
  json.Raw(R"(, "notated32PerQuarter": )");
  json.Number(entry.notated_32_per_quarter);
  json.Raw("}");
}

template <class Entry>
void WriteList(JsonTextWriter& json, std::string_view opening, const std::vector<Entry>& list) {
  json.List(opening, 10, list, [&](const Entry& entry) { WriteEntry(json, entry); });
}

void WriteTimeline(JsonTextWriter& json, const TL::Timeline& timeline) {
  WriteList(json, "{\n        \"tempos\": [", timeline.tempos);
  WriteList(json, ",\n        \"barsBeats\": [", timeline.bars_beats);
  WriteList(json, ",\n        \"keys\": [", timeline.keys);
  WriteList(json, ",\n        \"pageNumbers\": [", timeline.page_numbers);
  WriteList(json, ",\n        \"meters\": [", timeline.meters);
  json.Raw("\n      }");
}

/// One message a line and not indented: most of a file is messages, and blanks would double it.
void WriteMessages(OutputWindow& window, const zuna_midi::VoiceTrack& track) {
  constexpr std::size_t kLongest = 2 + 1 + kMaxDecimalSize + std::size_t{3} * (1 + 4) + 1;
  bool first = true;
  for (const auto& [time, message] : track.messages) {
    char* to = window.Room(kLongest);
    if (!first) *to++ = ',';
    first = false;
    *to++ = '\n';
    *to++ = '[';
    to = PutDecimal(to, time);
    for (const std::uint8_t byte : {message.status, message.data1, message.data2}) {
      *to++ = ',';
      to = PutDecimal(to, byte);
    }
    *to++ = ']';
    window.Commit(to);
  }
}

void WriteTrack(OutputWindow& window, const zuna_midi::VoiceTrack& track) {
  JsonTextWriter json(window);
  json.Raw("{\n          \"trackNumber\": ");
  json.Number(track.track_number);
  json.Raw(",\n          \"name\": ");
  json.Text(track.name);
  json.Raw(",\n          \"reserved\": ");
  json.Number(track.reserved);
  json.Raw(",\n          \"messages\": [");
  WriteMessages(window, track);
  json.Raw(track.messages.empty() ? "]\n        }" : "\n          ]\n        }");
}

void WriteSong(OutputWindow& window, const zuna_midi::SongData& song) {
  JsonTextWriter json(window);
  json.Raw("{\n      \"songNumber\": ");
  json.Text(song.song_number);
  json.Raw(",\n      \"songName\": ");
  json.Text(song.song_name);
  json.Raw(",\n      \"division\": ");
  json.Number(song.division);
  json.Raw(",\n      \"songLength\": ");
  json.Number(song.song_length);
  json.Raw(",\n      \"timeline\": ");
  WriteTimeline(json, *song.timeline);
  json.List(",\n      \"voices\": [", 8, song.voice_data->tracks(),
            [&](const auto& voice) { WriteTrack(window, *voice.second); });
  json.Raw("\n    }");
}

}  // namespace

void WriteTextShow(std::ostream& os, const zuna_midi::ShowData& show) {
  OutputWindow window(os, false);
  JsonTextWriter json(window);
  json.Raw("{\n  \"kind\": \"showdata\",\n  \"fileVersion\": \"2.0\",\n  \"showName\": ");
  json.Text(show.show_name);
  json.List(",\n  \"songs\": [", 4, show.songs(), [&](const auto& song) { WriteSong(window, *song.second); });
  json.Raw("\n}\n");
  window.Flush();
}

}  // namespace zuna_core
