// One song of a page: its facts, its findings, its picture, and the same as tables.
#include "toolkit/view/internal/song_view.h"

#include <utility>

#include "toolkit/view/internal/drawing.h"
#include "toolkit/view/internal/markup.h"
#include "toolkit/view/internal/tables.h"
#include "toolkit/words.h"

namespace zuna_toolkit {

namespace {

/// The width of the picture without the names, in units: as much as the bars need to be read.
int WidthOf(const zuna_midi::SongData& song) {
  constexpr std::size_t kBar = 56;
  constexpr std::size_t kLeast = 1000;
  constexpr std::size_t kMost = 12000;
  return static_cast<int>(std::clamp(song.timeline->bars_beats.size() * kBar, kLeast, kMost));
}

std::string Picture(const ViewedSong& song, const SongFacts& facts) {
  Drawing drawing;
  drawing.scale = {std::max<std::uint32_t>(song.song.song_length, 1), WidthOf(song.song)};
  DrawEdits(song, drawing);
  DrawRuler(song, drawing);
  DrawTempos(song, drawing);
  DrawVoices(song, drawing);
  const std::string width = std::to_string(Scale::kNames + drawing.scale.width + 1);
  const std::string height = std::to_string(drawing.height);
  PathData lines;
  for (const int x : drawing.bar_lines) lines.MoveTo(x, 0).DownTo(drawing.height);
  PathData cuts;
  for (const auto& [x, end] : drawing.cuts) {
    cuts.MoveTo(x, 0).AcrossTo(end).DownTo(drawing.height).AcrossTo(x);
  }
  // The names come last, so that they lie over what moves under them.
  return "<div class=\"scroll\" tabindex=\"0\" role=\"region\"" +
         Attribute("aria-label", "Picture of " + facts.heading) + "><svg viewBox=\"0 0 " + width + " " +
         height + "\" data-width=\"" + width + "\" width=\"" + width + "\" role=\"img\"" +
         Attribute("aria-label",
                   facts.heading + ": bars, tempos, edits and voices; the tables below hold them") +
         ">" + lines.Element("bars") + drawing.rows + cuts.Element("left-out") +
         "<g class=\"names\"><rect width=\"" + std::to_string(Scale::kNames - 4) + "\" height=\"" + height +
         "\"/>" + drawing.names + "</g></svg></div>\n";
}

std::string FactList(const ViewedSong& song, const SongFacts& facts) {
  std::string list = "<dl>";
  if (!facts.duration.empty()) list += Fact("Duration", facts.duration);
  if (song.log != nullptr && song.time.is_known()) {
    list += Fact("With the edits", ClockText(song.time.PlayedSeconds(*song.log)));
  }
  list += Fact("Length", Counted(song.song.song_length, "tick", "ticks"));
  list += Fact("Division", std::to_string(song.song.division));
  list += Fact("Bars", std::to_string(song.song.timeline->bars_beats.size()));
  list += Fact("Voices", std::to_string(song.song.voice_data->tracks().size()));
  if (song.log != nullptr && song.log->attacca != 0) {
    list += Fact("Attacca", std::to_string(song.log->attacca) + ": goes on into the next song");
  }
  return list + "</dl>\n";
}

}  // namespace

SongFacts FactsOf(const zuna_midi::SongData& song, const SongTime& time, std::size_t index) {
  std::string heading = NumberText(song.song_number);
  if (!song.song_name.empty()) heading += (heading.empty() ? "" : " ") + song.song_name;
  return {"song-" + std::to_string(index + 1), heading.empty() ? "(no number)" : heading,
          time.is_known() ? ClockText(time.SecondsAt(song.song_length)) : ""};
}

std::string SongSection(const zuna_midi::SongData& song, const CL::SongLog* log, SongTime time,
                        const SongFacts& facts, const ViewedFindings& findings) {
  const ViewedSong viewed{song, log, std::move(time), BarLabels(*song.timeline),
                          log != nullptr ? EditsOf(*log) : std::vector<EditKind>()};
  return "<section" + Attribute("id", facts.anchor) + ">" + Element("h2", facts.heading) + "\n" +
         FactList(viewed, facts) + FindingsList(findings) + Picture(viewed, facts) + EditTable(viewed) +
         TimelineTable(viewed) + VoiceTable(viewed) + "</section>\n";
}

std::string FindingsList(const ViewedFindings& findings) {
  if (findings.findings.empty()) return MoreText(findings.more, "finding", "findings");
  std::string list = "<ul class=\"findings\">";
  for (const Finding& finding : findings.findings) {
    const bool is_error = finding.severity == Severity::kError;
    const std::string bar = finding.place.bar.empty() ? "" : "bar " + finding.place.bar + ": ";
    list += std::string("<li class=\"") + (is_error ? "error" : "warning") + "\">" +
            Element("strong", is_error ? "Error" : "Warning") +
            Escaped(": " + bar + finding.problem + "; " + finding.remedy) + "</li>\n";
  }
  return list + "</ul>\n" + MoreText(findings.more, "finding", "findings");
}

}  // namespace zuna_toolkit
