// Songs, voices and timelines.
#include "python/src/song.h"

#include <pybind11/numpy.h>

#include <cstring>
#include <utility>

#include "TL/timeline.h"
#include "kit/format.h"
#include "zuna_midi/show_data.h"

namespace zuna_python {

namespace {

using Message = std::pair<std::uint32_t, std_midi::VoiceMessage>;

/// The type of messages in memory: time, status, data1, data2.
py::dtype MessageType() {
  static const Message sample;
  const auto offset = [](const auto& member) {
    return reinterpret_cast<const char*>(&member) - reinterpret_cast<const char*>(&sample);
  };
  py::list names;
  py::list formats;
  py::list offsets;
  const auto add = [&](const char* name, const char* format, py::ssize_t at) {
    names.append(name);
    formats.append(format);
    offsets.append(at);
  };
  add("time", "u4", offset(sample.first));
  add("status", "u1", offset(sample.second.status));
  add("data1", "u1", offset(sample.second.data1));
  add("data2", "u1", offset(sample.second.data2));
  return {names, formats, offsets, sizeof(Message)};
}

/// The messages themselves, which stay as long as the array.
py::array MessagesOf(const Voice& voice) {
  using Track = std::shared_ptr<const zuna_midi::VoiceTrack>;
  const py::capsule owner(new Track(voice.track), [](void* track) { delete static_cast<Track*>(track); });
  const auto& messages = voice.track->messages;
  py::array array(MessageType(), {messages.size()}, {sizeof(Message)}, messages.data(), owner);
  array.attr("flags").attr("writeable") = false;
  return array;
}

std::vector<Message> MessagesIn(const py::object& object) {
  const py::object array = py::module_::import("numpy").attr("ascontiguousarray")(object);
  const auto messages = array.cast<py::array>();
  if (!messages.dtype().equal(MessageType()) || messages.ndim() != 1) {
    throw py::type_error("give an array with one dimension and the type of Voice.messages");
  }
  std::vector<Message> copy(static_cast<std::size_t>(messages.size()));
  if (!copy.empty())
    std::memcpy(static_cast<void*>(copy.data()), messages.data(), copy.size() * sizeof(Message));
  return copy;
}

std::shared_ptr<zuna_midi::VoiceData> WithTrack(const zuna_midi::VoiceData& voices, std::uint16_t number,
                                                std::vector<Message> messages) {
  const auto found = voices.tracks().find(number);
  if (found == voices.tracks().end()) throw py::key_error("there is no voice " + std::to_string(number));
  auto track = std::make_shared<zuna_midi::VoiceTrack>(*found->second);
  track->messages = std::move(messages);
  auto copy = std::make_shared<zuna_midi::VoiceData>(voices);
  copy->AddTrack(std::move(track));
  return copy;
}

std::vector<Voice> VoicesOf(const Song& song) {
  std::vector<Voice> voices;
  if (!song.data) return voices;
  for (const auto& [number, track] : song.data->voice_data->tracks()) voices.push_back({track});
  return voices;
}

/// A list of the timeline as Python's list; empty for a song of a log.
template <typename Entry>
auto ListOf(std::vector<Entry> TL::Timeline::*list) {
  return [list](const Song& song) {
    return song.data ? song.data->timeline.get()->*list : std::vector<Entry>();
  };
}

py::dict CountsOf(const Song& song) {
  py::dict counts;
  for (const zuna_toolkit::Count& count : song.summary.counts) counts[Text(count.key)] = count.value;
  return counts;
}

std::string ShownSong(const Song& song) {
  return "<zuna.Song " + song.summary.number + " \"" + song.summary.name + "\">";
}

void AddTimeline(py::module_& module) {
  constexpr unsigned char kClocksOfAQuarterNote = 24;
  py::class_<TL::Tempo>(module, "Tempo", "A tempo from `time` on.")
      .def_readonly("time", &TL::Tempo::time, "In ticks.")
      .def_readonly("microseconds", &TL::Tempo::microseconds, "Of a quarter note.")
      .def_property_readonly(
          "bpm", [](const TL::Tempo& tempo) { return tempo.bpm(kClocksOfAQuarterNote); },
          "Quarter notes a minute, whole where the microseconds were rounded from a whole tempo; infinite "
          "for a tempo of 0.")
      .def("__repr__", [](const TL::Tempo& tempo) {
        return kit::format("<zuna.Tempo at %u: %u us>", tempo.time, tempo.microseconds);
      });
  py::class_<TL::Meter>(module, "Meter", "A time signature from `time` on.")
      .def_readonly("time", &TL::Meter::time, "In ticks.")
      .def_readonly("numerator", &TL::Meter::numerator, "Beats of a bar.")
      .def_readonly("denominator", &TL::Meter::denominator, "The note that is a beat: 4 for a quarter.")
      .def_readonly("clocks_per_click", &TL::Meter::clocks_per_click, "MIDI clocks, 24 to the quarter note.")
      .def_readonly("notated_32_per_quarter", &TL::Meter::notated_32_per_quarter,
                    "Notated 32nd notes in 24 MIDI clocks.")
      .def("__repr__", [](const TL::Meter& meter) {
        return kit::format("<zuna.Meter at %u: %u/%u>", meter.time, unsigned{meter.numerator},
                           unsigned{meter.denominator});
      });
  py::class_<TL::BarsBeats>(module, "BarLabel", "The label of a bar or beat.")
      .def_readonly("time", &TL::BarsBeats::time, "In ticks.")
      .def_property_readonly(
          "label", [](const TL::BarsBeats& bar) { return Text(bar.bar_number()); }, "At most 7 bytes.")
      .def_readonly("tag", &TL::BarsBeats::tag, "Carried unchanged.")
      .def("__repr__", [](const TL::BarsBeats& bar) {
        return Text("<zuna.BarLabel at " + std::to_string(bar.time) + ": \"" + bar.bar_number() + "\">");
      });
  py::class_<TL::Key>(module, "Key", "A key signature from `time` on.")
      .def_readonly("time", &TL::Key::time, "In ticks.")
      .def_readonly("key", &TL::Key::key, "Sharps, or flats where negative.")
      .def_readonly("mode", &TL::Key::mode, "0 is major, 1 minor.")
      .def("__repr__", [](const TL::Key& key) {
        return kit::format("<zuna.Key at %u: %d, mode %u>", key.time, int{key.key}, unsigned{key.mode});
      });
  py::class_<TL::PageNumber>(module, "Page", "A page of the score that begins at `time`.")
      .def_readonly("time", &TL::PageNumber::time, "In ticks.")
      .def_readonly("page", &TL::PageNumber::page, "The number of the page.")
      .def("__repr__", [](const TL::PageNumber& page) {
        return kit::format("<zuna.Page at %u: %u>", page.time, page.page);
      });
}

void AddVoice(py::module_& module) {
  py::class_<Voice>(module, "Voice", "A voice of a song.")
      .def_property_readonly(
          "number", [](const Voice& voice) { return voice.track->track_number; }, "The number of its track.")
      .def_property_readonly(
          "name", [](const Voice& voice) { return Text(voice.track->name); },
          "\"Drum Kit\" and \"Drums\" mark drums.")
      .def_property_readonly(
          "messages", MessagesOf,
          "The MIDI messages as a structured array with the fields time (ticks from the start "
          "of the song), status, data1 and data2. It is the memory of the document, and "
          "cannot be written; change a copy().")
      .def("__repr__", [](const Voice& voice) {
        return Text("<zuna.Voice " + std::to_string(voice.track->track_number) + " \"" + voice.track->name +
                    "\">");
      });
}

}  // namespace

std::vector<Song> SongsOf(const Document& document) {
  std::vector<Song> songs;
  zuna_toolkit::SummariseSongs(document.content(), [&](const zuna_toolkit::SongSummary& summary) {
    songs.push_back({summary, nullptr});
  });
  if (document.content().type().is_log()) return songs;
  const auto& of_show = document.CurrentForm().As<zuna_midi::ShowData>()->songs();
  for (Song& song : songs) song.data = of_show.at(song.summary.number);
  return songs;
}

SharedDocument WithMessages(const Document& document, const py::str& song, std::uint16_t voice,
                            const py::object& messages) {
  const zuna_toolkit::Document& content = document.content();
  zuna_toolkit::RequireShow(content.type(), content.name());
  zuna_toolkit::RequireCurrent(content.type(), content.name());
  const auto& show = *content.As<zuna_midi::ShowData>();
  const std::string number = BytesOf(song);
  const auto found = show.songs().find(number);
  if (found == show.songs().end()) throw py::key_error("there is no song " + number);
  auto changed = std::make_shared<zuna_midi::SongData>(*found->second);
  changed->voice_data = WithTrack(*changed->voice_data, voice, MessagesIn(messages));
  zuna_midi::ShowData copy(show);
  copy.AddSongData(std::move(changed));
  return document.With({std::move(copy), content.type().version, content.name()});
}

void AddSongs(py::module_& module) {
  AddTimeline(module);
  AddVoice(module);
  module.attr("message_type") = MessageType();
  py::class_<Song>(
      module, "Song",
      "A song of a show, or the edits of a song in a log. The voices and the timeline are those of a show; "
      "for a log, these lists are empty, and Document.to_dict() has its edits.")
      .def_property_readonly(
          "number", [](const Song& song) { return Text(song.summary.number); }, "The song number.")
      .def_property_readonly(
          "name", [](const Song& song) { return Text(song.summary.name); }, "The title.")
      .def_property_readonly(
          "division", [](const Song& song) { return song.summary.division; },
          "Ticks of a quarter note; None in a legacy log.")
      .def_property_readonly(
          "length", [](const Song& song) { return song.summary.length; }, "In ticks.")
      .def_property_readonly(
          "attacca", [](const Song& song) { return song.summary.attacca; },
          "Of a log of a current version; None otherwise.")
      .def_property_readonly("counts", CountsOf,
                             "How many things of each kind it has, by the names of the text form.")
      .def_property_readonly("voices", VoicesOf, "By number.")
      .def_property_readonly("tempos", ListOf(&TL::Timeline::tempos), "By time.")
      .def_property_readonly("meters", ListOf(&TL::Timeline::meters), "By time.")
      .def_property_readonly("bars", ListOf(&TL::Timeline::bars_beats),
                             "The labels of bars and beats, by time.")
      .def_property_readonly("keys", ListOf(&TL::Timeline::keys), "By time.")
      .def_property_readonly("pages", ListOf(&TL::Timeline::page_numbers), "By time.")
      .def("__repr__", [](const Song& song) { return Text(ShownSong(song)); });
}

}  // namespace zuna_python
