// Songs from and to Standard MIDI Files.
#include <filesystem>
#include <utility>

#include "cmn/file_format.h"
#include "kit/file.h"
#include "python/src/song.h"
#include "toolkit/document/open.h"
#include "toolkit/error.h"
#include "toolkit/midi/songs.h"
#include "toolkit/smf/file.h"
#include "zuna_midi/show_data.h"

namespace zuna_python {

namespace {

using zuna_toolkit::midi::Report;
namespace smf = zuna_toolkit::smf;

std::pair<py::bytes, Report> ToMidi(const Song& song) {
  if (!song.data) throw py::type_error("the song of a log has no MIDI messages");
  Report report;
  const std::string bytes =
      Unlocked([&] { return smf::Write(zuna_toolkit::midi::ExportSong(*song.data, report)); });
  return {py::bytes(bytes), std::move(report)};
}

std::shared_ptr<zuna_midi::SongData> Import(const Source& source, const std::string& number,
                                            Report& report) try {
  smf::ReadNotes notes;
  const std::string title = source.bytes ? "" : std::filesystem::path(source.name).stem().string();
  if (source.bytes) {
    return zuna_toolkit::midi::ImportSong(smf::Read(*source.bytes, notes), number, title, report);
  }
  const kit::FileBytes file = kit::ReadWholeFile(source.name, zuna_toolkit::kMaxFileSize);
  return zuna_toolkit::midi::ImportSong(smf::Read(file.bytes(), notes), number, title, report);
} catch (const zuna_toolkit::Error& error) {
  throw error.WithFile(source.name);
}

/// The numbers that were given, one a file, or "1", "2", "3".
std::vector<std::string> NumbersOf(const py::object& given, std::size_t count) {
  std::vector<std::string> numbers;
  if (given.is_none()) {
    for (std::size_t i = 1; i <= count; ++i) numbers.push_back(std::to_string(i));
    return numbers;
  }
  for (const py::handle number : given) numbers.push_back(BytesOf(py::reinterpret_borrow<py::str>(number)));
  if (numbers.size() != count) throw py::value_error("give as many song numbers as files");
  return numbers;
}

zuna_midi::ShowData ImportAll(const std::vector<Source>& sources, const std::vector<std::string>& numbers,
                              std::vector<Report>& reports) {
  zuna_midi::ShowData show;
  for (std::size_t i = 0; i < sources.size(); ++i) {
    if (show.songs().contains(numbers[i])) throw py::value_error("song " + numbers[i] + " is there twice");
    show.AddSongData(Import(sources[i], numbers[i], reports.emplace_back()));
  }
  return show;
}

std::pair<SharedDocument, std::vector<Report>> FromMidi(const py::iterable& files, const py::str& show_name,
                                                        const py::object& song_numbers,
                                                        const std::string& version, const py::bytes& key,
                                                        const py::bytes& iv, const py::object& key_file) {
  std::vector<Source> sources;
  for (const py::handle file : files) sources.push_back(SourceOf(py::reinterpret_borrow<py::object>(file)));
  const std::vector<std::string> numbers = NumbersOf(song_numbers, sources.size());
  const cmn::FileVersion to = VersionOf(version);
  const SharedKey material = KeyOf(key, iv, key_file);
  std::vector<Report> reports;
  zuna_midi::ShowData show = Unlocked([&] { return ImportAll(sources, numbers, reports); });
  show.show_name = BytesOf(show_name);
  return {std::make_shared<Document>(zuna_toolkit::Document(std::move(show), to, "MIDI"), material),
          std::move(reports)};
}

}  // namespace

void AddMidi(py::module_& module) {
  const py::bytes nothing("");
  py::class_<Report>(module, "MidiReport", "What a conversion from or to MIDI did not keep.")
      .def_property_readonly(
          "not_kept", [](const Report& report) { return Text(report.not_kept.ToString()); },
          "Counts by kind, such as \"17 bar labels, 2 page numbers\"; empty for nothing.")
      .def_property_readonly(
          "remarks",
          [](const Report& report) {
            py::list remarks;
            for (const std::string& remark : report.remarks) remarks.append(Text(remark));
            return remarks;
          },
          "What else its user should know: sentences.");
  py::setattr(
      module.attr("Song"), "to_midi",
      py::cpp_function(ToMidi, py::name("to_midi"), py::is_method(module.attr("Song")),
                       "The song of a show as the bytes of a MIDI file of format 1, and a MidiReport."));
  module.def("from_midi", FromMidi, py::arg("files"), py::arg("show_name") = "", py::kw_only(),
             py::arg("song_numbers") = py::none(),
             py::arg("version") = cmn::VersionText(cmn::kDefaultVersion), py::arg("key") = nothing,
             py::arg("iv") = nothing, py::arg("key_file") = py::none(),
             "A show of MIDI files (paths or bytes), one song each, and a list with a MidiReport for each. "
             "The songs "
             "are numbered from 1 unless numbers are given. The key is what the show is written with.");
}

}  // namespace zuna_python
