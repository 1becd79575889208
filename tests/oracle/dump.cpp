// The library's side of the comparison with the readers in Python (README.md): reads the name of a reader and
// the bytes of a decrypted file in each line, and answers with what the library reads, as one line of JSON.

#include <bit>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <initializer_list>
#include <iostream>
#include <map>
#include <optional>
#include <ostream>
#include <span>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>

#include "CL/change_log.h"
#include "cmn/data_error.h"
#include "cmn/file_format.h"
#include "cmn/version_probe.h"
#include "format_converter/logdata.h"
#include "format_converter/version0/containers/change_log.h"
#include "format_converter/version0/containers/show_data.h"
#include "kit/hex.h"
#include "kit/utf8.h"
#include "toolkit/document/open.h"
#include "zuna_midi/show_data.h"

namespace {

using zuna_toolkit::OpenedFile;

/// Two hexadecimal digits for each byte.
std::string Hex(std::string_view bytes) {
  constexpr char kDigits[] = "0123456789abcdef";
  std::string hex;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    hex += kDigits[byte >> 4];
    hex += kDigits[byte & 15];
  }
  return hex;
}

/// `text` as a JSON string, or as {"bytes": "ff"} where it is not UTF-8.
std::string Quoted(std::string_view text) {
  if (!kit::IsUtf8(text)) return R"({"bytes": ")" + Hex(text) + R"("})";
  std::string json = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\' || static_cast<unsigned char>(c) < 0x20) {
      json += "\\u00" + Hex({&c, 1});
    } else {
      json += c;
    }
  }
  return json + '"';
}

/// Appends JSON to a text.
class Writer {
 public:
  explicit Writer(std::string& json) : json_(json) {}

  void Raw(std::string_view text) { json_ += text; }

  /// Begins a member of an object; its value follows.
  void Key(std::string_view key) {
    if (json_.back() != '{') Raw(", ");
    Raw(Quoted(key) + ": ");
  }
  void Text(std::string_view key, std::string_view text) {
    Key(key);
    Raw(Quoted(text));
  }
  void Number(std::string_view key, std::int64_t number) {
    Key(key);
    Raw(std::to_string(number));
  }
  void Object(const std::function<void()>& members) {
    Raw("{");
    members();
    Raw("}");
  }

  /// A member that is a list of what `write` writes for each entry.
  template <typename Entries, typename Write>
  void List(std::string_view key, const Entries& entries, Write write) {
    Key(key);
    Elements(entries, write);
  }
  void Numbers(std::initializer_list<std::int64_t> numbers) {
    Elements(numbers, [this](std::int64_t number) { Raw(std::to_string(number)); });
  }

 private:
  template <typename Entries, typename Write>
  void Elements(const Entries& entries, Write write) {
    Raw("[");
    for (const auto& entry : entries) {
      if (json_.back() != '[') Raw(", ");
      write(entry);
    }
    Raw("]");
  }

  std::string& json_;
};

std::uint32_t Bits(float value) { return std::bit_cast<std::uint32_t>(value); }

/// An entry of numbers around a text.
void TextEntry(Writer& out, std::uint32_t time, std::string_view text, const std::string& after) {
  out.Raw("[");
  out.Raw(std::to_string(time));
  out.Raw(", " + Quoted(text) + after + "]");
}

void WriteTimeline(Writer& out, const version0::Timeline& timeline) {
  out.Text("name", timeline.name);
  out.Number("songLength", timeline.song_length);
  out.List("tempos", timeline.tempos, [&](const version0::RTempo& tempo) {
    out.Numbers({tempo.time, Bits(tempo.seconds_per_tick), tempo.notated_32_per_click,
                 tempo.notated_32_per_quarter, tempo.bpm});
  });
  out.List("barsBeats", timeline.bars_beats, [&](const version0::RBarsBeats& label) {
    TextEntry(out, label.time, label.label, ", " + std::to_string(label.tag));
  });
  out.List("keys", timeline.keys, [&](const version0::RKey& key) {
    out.Numbers({key.time, key.key, key.mode});
  });
  out.List("pageNumbers", timeline.page_nums, [&](const version0::RPageNum& page) {
    out.Numbers({page.time, page.page});
  });
  out.List("meters", timeline.meters, [&](const version0::RMeter& meter) {
    out.Numbers({meter.time, meter.numerator, meter.denominator});
  });
}

/// A track of a song, with the name that the last track of its id has.
struct Track {
  std::string name;
  std::span<const version0::EventObject> events;
};

std::map<std::uint8_t, Track> TracksOf(const version0::SongData& song) {
  std::map<std::uint8_t, Track> tracks;
  for (const version0::TrackObject& track : song.tracks) tracks[track.track_id].name = track.track_name;
  for (const auto& [id, events] : song.events) {
    const auto track = tracks.find(id);
    if (track == tracks.end()) throw std::out_of_range("An event has no track");
    track->second.events = events;
  }
  return tracks;
}

void WriteSong(Writer& out, const version0::SongData& song) {
  out.Text("songNumber", song.song_number);
  out.Text("songName", song.song_name);
  out.Number("division", song.division);
  out.Number("songLength", song.song_length);
  out.List("tracks", TracksOf(song), [&](const auto& track) {
    out.Object([&] {
      out.Number("trackId", track.first);
      out.Text("name", track.second.name);
      out.List("events", track.second.events, [&](const version0::EventObject& event) {
        out.Numbers({event.delta_time, event.abs_time, event.status_high, event.data1, event.data2});
      });
    });
  });
  out.Key("timeline");
  out.Object([&] { WriteTimeline(out, song.timeline); });
}

template <typename Pairs>
void WritePairs(Writer& out, std::string_view key, const Pairs& pairs) {
  out.List(key, pairs, [&](const auto& pair) { out.Numbers({pair.start, pair.end, pair.value}); });
}

void WriteSongLog(Writer& out, const version0::SongLogV0& log) {
  out.Text("songNumber", log.songNumber_);
  out.Text("songName", log.songName_);
  out.Number("songLength", log.songLength_);
  WritePairs(out, "vamps", log.vamps);
  WritePairs(out, "repeats", log.repeats);
  WritePairs(out, "cuts", log.cuts);
  WritePairs(out, "transposes", log.transposes);
  WritePairs(out, "clicks", log.clicks);
  out.List("tempoScales", log.tempo_scales, [&](const version0::TempoScaleV0& scale) {
    out.Numbers({scale.start, scale.end, Bits(scale.value)});
  });
  out.List("caesuras", log.caesuras,
           [&](const version0::XCaesura& caesura) { out.Raw(std::to_string(caesura.time)); });
  out.List("scoreMarkers", log.score_markers,
           [&](const version0::XScoreMarker& marker) { TextEntry(out, marker.time, marker.text, ""); });
}

void WriteLegacyShow(Writer& out, OpenedFile& file) {
  const version0::ShowData show(file.stream());
  out.Object([&] {
    out.List("songs", show.songs,
             [&](const auto& song) { out.Object([&] { WriteSong(out, song.second); }); });
  });
}

void WriteLegacyLog(Writer& out, OpenedFile& file) {
  file.stream().exceptions(std::ios_base::failbit | std::ios_base::badbit);
  if (!check_log_size(file.cipher())) throw std::runtime_error("The log has another length than it states");
  file.stream().seekg(0);
  const version0::ChangeLogV0 log(file.stream());
  out.Object([&] {
    out.Text("identifier", log.identifier.ToString());
    out.Text("logLabel", log.log_label);
    out.Text("showName", log.show_name);
    out.Key("logTagPair");
    out.Numbers({log.log_tag_pair.first, log.log_tag_pair.second});
    out.List("songLogs", log.songs,
             [&](const auto& song) { out.Object([&] { WriteSongLog(out, song.second); }); });
  });
}

template <typename Model>
void WriteCurrent(Writer& out, OpenedFile& file) {
  std::ostringstream text;
  Model(file.stream()).WriteBinary(text, cmn::FileVersion{2, 0});
  out.Raw(text.str());
}

void WriteProbed(Writer& out, std::string_view key, OpenedFile& file,
                 cmn::FileVersion (*probe)(std::istream&)) {
  out.Key(key);
  try {
    out.Raw('"' + cmn::VersionText(probe(file.stream())) + '"');
  } catch (const std::exception&) {
    out.Raw("null");
  }
}

void WriteProbe(Writer& out, OpenedFile& file) {
  out.Object([&] {
    WriteProbed(out, "showdata", file, &cmn::get_showdata_version);
    WriteProbed(out, "logdata", file, &cmn::get_logdata_version);
  });
}

using Reader = void (*)(Writer&, OpenedFile&);
const std::map<std::string, Reader, std::less<>> kReaders = {
    {"show", &WriteCurrent<zuna_midi::ShowData>},
    {"log", &WriteCurrent<CL::ChangeLog>},
    {"legacy-show", &WriteLegacyShow},
    {"legacy-log", &WriteLegacyLog},
    {"probe", &WriteProbe},
};

std::string Refused(std::string_view error_class, const std::exception& error) {
  std::string answer;
  Writer out(answer);
  out.Object([&] {
    out.Key("ok");
    out.Raw("false");
    out.Text("class", error_class);
    out.Text("error", error.what());
  });
  return answer;
}

std::string Answer(Reader reader, const std::string& bytes) {
  try {
    OpenedFile file = OpenedFile::FromBytes({bytes.begin(), bytes.end()}, "input", {},
                                            zuna_toolkit::Accept::kEncryptedOrPlain);
    std::string answer;
    Writer out(answer);
    out.Raw(R"({"ok": true, "model": )");
    reader(out, file);
    out.Raw("}");
    return answer;
  } catch (const cmn::UnsupportedVersionError& error) {
    return Refused("UnsupportedVersionError", error);
  } catch (const cmn::DataError& error) {
    return Refused("DataError", error);
  } catch (const std::exception& error) {
    return Refused("other", error);
  }
}

}  // namespace

int main() {
  for (std::string line; std::getline(std::cin, line);) {
    const std::size_t blank = line.find(' ');
    const auto reader = kReaders.find(line.substr(0, blank));
    const auto bytes =
        blank == std::string::npos ? std::nullopt : kit::DecodeHex(std::string_view(line).substr(blank + 1));
    if (reader == kReaders.end() || !bytes) {
      std::cerr << "dump: a line is not the name of a reader and hexadecimal digits\n";
      return 2;
    }
    std::string answer = Answer(reader->second, *bytes);
    std::erase(answer, '\n');
    std::cout << answer << std::endl;
  }
  return 0;
}
