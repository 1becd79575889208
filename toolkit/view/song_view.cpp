// One song of a page: its facts, its findings, its picture, and the same as tables.
#include "toolkit/view/internal/song_view.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "toolkit/view/internal/drawing.h"
#include "toolkit/view/internal/markup.h"
#include "toolkit/view/internal/style.h"
#include "toolkit/view/internal/tables.h"
#include "toolkit/words.h"

namespace zuna_toolkit {

namespace {

std::size_t BarsOf(const zuna_midi::SongData& song) { return song.timeline->bars_beats.size(); }

/// How wide and how long the picture is: as much as the bars need to be read, of both songs.
Scale ScaleOf(const ViewedSong& song) {
  constexpr std::size_t kBar = 56;
  constexpr std::size_t kLeast = 1000;
  constexpr std::size_t kMost = 12000;
  const zuna_midi::SongData& other = song.other.song != nullptr ? *song.other.song : song.song;
  const std::size_t bars = std::max(BarsOf(song.song), BarsOf(other));
  return {std::max({song.song.song_length, other.song_length, std::uint32_t{1}}),
          static_cast<int>(std::clamp(bars * kBar, kLeast, kMost))};
}

/// Draws all rows; the heading is a row of its own in a picture that stands alone.
Drawing Draw(const ViewedSong& song, std::string_view heading) {
  Drawing drawing;
  drawing.scale = ScaleOf(song);
  if (!heading.empty()) {
    const int top = drawing.AddRow(kRowHeight, "", "");
    drawing.rows += TextAt(Scale::kNames, top + kTextBaseline, "heading", heading);
  }
  DrawLegend(song, drawing);
  DrawEdits(song, drawing);
  DrawRuler(song, drawing);
  DrawTempos(song, drawing);
  DrawVoices(song, drawing);
  return drawing;
}

/// The elements of a picture in their order. The names come last, so that they lie over what moves under
/// them.
std::string Elements(const Drawing& drawing) {
  PathData lines;
  for (const int x : drawing.bar_lines) lines.MoveTo(x, 0).DownTo(drawing.height);
  PathData cuts;
  for (const auto& [x, end] : drawing.cuts) {
    cuts.MoveTo(x, 0).AcrossTo(end).DownTo(drawing.height).AcrossTo(x);
  }
  return lines.Element("bars") + drawing.rows + cuts.Element("left-out") +
         "<g class=\"names\"><rect width=\"" + std::to_string(Scale::kNames - 4) + "\" height=\"" +
         std::to_string(drawing.height) + "\"/>" + drawing.names + "</g>";
}

/// The attributes that every picture has.
std::string PictureAttributes(const ViewedSong& song, const Drawing& drawing) {
  const std::string width = std::to_string(Scale::kNames + drawing.scale.width + 1);
  return " viewBox=\"0 0 " + width + " " + std::to_string(drawing.height) + "\" width=\"" + width + "\"" +
         (song.is_compared() ? " class=\"compared\"" : "") + " role=\"img\"";
}

std::string Picture(const ViewedSong& song, const SongFacts& facts) {
  const Drawing drawing = Draw(song, "");
  const std::string width = std::to_string(Scale::kNames + drawing.scale.width + 1);
  return "<div class=\"scroll\" tabindex=\"0\" role=\"region\"" +
         Attribute("aria-label", "Picture of " + facts.heading) + "><svg" + PictureAttributes(song, drawing) +
         " data-width=\"" + width + "\"" +
         Attribute("aria-label",
                   facts.heading + ": bars, tempos, edits and voices; the tables below hold them") +
         ">" + Elements(drawing) + "</svg></div>\n";
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

std::string SongSection(const ViewedSong& song, const SongFacts& facts, const std::string& notes) {
  return "<section" + Attribute("id", facts.anchor) + ">" + Element("h2", facts.heading) + "\n" +
         FactList(song, facts) + notes + Picture(song, facts) + EditTable(song) + TimelineTable(song) +
         VoiceTable(song) + "</section>\n";
}

std::string SongDrawing(const ViewedSong& song, const SongFacts& facts) {
  const Drawing drawing = Draw(song, facts.heading);
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\"" +
         PictureAttributes(song, drawing) + " height=\"" + std::to_string(drawing.height) + "\">" +
         Element("title", facts.heading) + "<style>" + std::string(kPictureStyle) + "</style>" +
         Elements(drawing) + "</svg>\n";
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
