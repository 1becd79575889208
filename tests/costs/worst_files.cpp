// The worst models as files, and MIDI files.

#include <sstream>
#include <utility>

#include "cmn/file_format.h"
#include "tests/costs/worst_inputs.h"

namespace zuna_test {

namespace {

using File = Named<std::string>;

std::string BigEndian(unsigned value, unsigned bytes) {
  std::string text;
  for (; bytes > 0; --bytes) text += static_cast<char>(value >> (8 * (bytes - 1)) & 0xFF);
  return text;
}

std::string Repeated(const std::string& text, unsigned times) {
  std::string all;
  for (unsigned i = 0; i < times; ++i) all += text;
  return all;
}

std::string Track(const std::string& events) {
  return "MTrk" + BigEndian(static_cast<unsigned>(events.size()), 4) + events;
}

/// A MIDI file of `count` such tracks.
std::string MidiFile(const std::string& track, unsigned count) {
  return "MThd" + BigEndian(6, 4) + BigEndian(1, 2) + BigEndian(count, 2) + BigEndian(96, 2) +
         Repeated(track, count);
}

template <typename Model>
void AddVersions(const std::vector<Named<Model>>& models, cmn::FileKind kind, std::vector<File>& files) {
  for (const auto& [name, model] : models) {
    for (const cmn::FileVersion& version : cmn::SupportedVersions(kind)) {
      std::ostringstream os;
      model.WriteBinary(os, version);
      files.push_back({name + "-" + cmn::VersionText(version), os.str()});
    }
  }
}

template <typename Model>
void AddLegacy(const std::vector<Named<Model>>& models, std::vector<File>& files) {
  for (const auto& [name, model] : models) {
    std::ostringstream os;
    model.write_binary(os);
    files.push_back({name + "-0.0", os.str()});
  }
}

}  // namespace

std::vector<File> WorstMidiFiles() {
  using namespace std::string_literals;
  const std::string all_channels = [] {
    std::string events;
    for (unsigned i = 0; i < 16; ++i) events += "\0"s + static_cast<char>(0xC0 + i) + "\0"s;
    return events;
  }();
  std::vector<File> files;
  files.push_back({"tracks", MidiFile(Track(""), 65'535)});
  files.push_back({"voices", MidiFile(Track("\0\xC0\0"s), 20'000)});
  files.push_back({"channels", MidiFile(Track(all_channels), 2'000)});
  files.push_back({"drums", MidiFile(Track("\0\xFF\x03\x05"
                                           "Drums\0\xC0\0"s),
                                     10'000)});
  files.push_back({"texts", MidiFile(Track(Repeated("\0\xFF\x01\0"s, 50'000)), 1)});
  files.push_back({"names", MidiFile(Track(Repeated("\0\xFF\x03\0"s, 50'000)), 1)});
  files.push_back({"programs", MidiFile(Track("\0\xC0\0"s + Repeated("\0\0"s, 75'000)), 1)});
  files.push_back({"tempos", MidiFile(Track(Repeated("\0\xFF\x51\x03\0\0\1"s, 30'000)), 1)});
  files.push_back({"meters", MidiFile(Track(Repeated("\1\xFF\x58\x04\1\0\1\1"s, 30'000)), 1)});
  files.push_back({"late", MidiFile(Track("\xFF\xFF\xFF\x7F\xC0\0"s), 1)});
  return files;
}

std::vector<File> WorstFiles() {
  std::vector<File> files;
  AddVersions(WorstShows(), cmn::FileKind::kShow, files);
  AddVersions(WorstShowsForDown(), cmn::FileKind::kShow, files);
  AddVersions(WorstLogs(), cmn::FileKind::kLog, files);
  AddLegacy(WorstLegacyShows(), files);
  AddLegacy(WorstLegacyLogs(), files);
  for (File& file : WorstMidiFiles()) files.push_back({file.name + ".mid", std::move(file.model)});
  return files;
}

}  // namespace zuna_test
