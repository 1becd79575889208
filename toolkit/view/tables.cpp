// What the picture of a song shows, as tables.
#include "toolkit/view/internal/tables.h"

#include "toolkit/view/internal/markup.h"
#include "toolkit/view/internal/timeline_words.h"
#include "toolkit/words.h"

namespace zuna_toolkit {

namespace {

std::string Cell(std::string_view text) { return Element("td", text); }

/// `head` and `rows` are markup.
std::string Table(std::string_view css_class, const std::string& summary, std::string_view head,
                  const std::string& rows) {
  return "<details" + Attribute("class", css_class) + ">" + Element("summary", summary) +
         "<table><thead><tr>" + std::string(head) + "</tr></thead><tbody>\n" + rows +
         "</tbody></table></details>\n";
}

/// The rows of some entries of a timeline, and how many were left out.
class TimelineRows {
 public:
  explicit TimelineRows(const ViewedSong& song) : song_(song) {}

  template <typename Entry>
  void Add(std::string_view one, const std::vector<Entry>& entries, std::string (*text_of)(const Entry&)) {
    count_ += entries.size();
    for (std::size_t i = 0; i < entries.size() && i < kMostOfAKind; ++i) {
      rows_ +=
          "<tr>" + Cell(one) + Cell(text_of(entries[i])) + Cell(song_.PlaceText(entries[i].time)) + "</tr>\n";
    }
    more_ += entries.size() - std::min(entries.size(), kMostOfAKind);
  }

  std::string Take() const {
    if (count_ == 0) return "";
    return Table("timeline", Counted(count_, "tempo, meter, key or page", "tempos, meters, keys and pages"),
                 "<th>What<th>Value<th>From", rows_) +
           MoreText(more_, "entry", "entries");
  }

 private:
  const ViewedSong& song_;
  std::string rows_;
  std::size_t count_ = 0;
  std::size_t more_ = 0;
};

}  // namespace

std::string MoreText(std::size_t more, const std::string& one, const std::string& many) {
  if (more == 0) return "";
  return Element("p", Counted(more, "more " + one + " is", "more " + many + " are") + " not shown.") + "\n";
}

std::string EditTable(const ViewedSong& song) {
  if (song.log == nullptr) return "";
  std::string rows;
  std::size_t count = 0;
  std::size_t more = 0;
  for (const EditKind& kind : song.edits) {
    count += kind.edits.size();
    more += kind.more;
    for (const ViewedEdit& edit : kind.edits) {
      rows += "<tr>" + Cell(kind.one) + Cell(edit.text) + Cell(song.PlaceText(edit.start)) +
              Cell(edit.end == edit.start ? "" : song.PlaceText(edit.end)) + Cell(edit.label) + "</tr>\n";
    }
  }
  if (count == 0) return Element("p", "The log has no edits of this song.") + "\n";
  return Table("edits", Counted(count + more, "edit", "edits"), "<th>Edit<th>Value<th>From<th>To<th>Label",
               rows) +
         MoreText(more, "edit", "edits");
}

std::string TimelineTable(const ViewedSong& song) {
  const TL::Timeline& timeline = *song.song.timeline;
  TimelineRows rows(song);
  rows.Add("Tempo (bpm)", timeline.tempos, TempoText);
  rows.Add("Meter", timeline.meters, MeterText);
  rows.Add("Key", timeline.keys, KeyText);
  rows.Add("Page", timeline.page_numbers, PageText);
  return rows.Take();
}

std::string VoiceTable(const ViewedSong& song) {
  const auto& tracks = song.song.voice_data->tracks();
  if (tracks.empty()) return "";
  std::string rows;
  std::size_t left = kMostOfAKind;
  for (const auto& [number, voice] : tracks) {
    if (left-- == 0) break;
    rows += "<tr>" + Cell(std::to_string(number)) + Cell(voice->name) +
            Cell(std::to_string(voice->messages.size())) + "</tr>\n";
  }
  const std::size_t more = tracks.size() - std::min(tracks.size(), kMostOfAKind);
  return Table("voices", Counted(tracks.size(), "voice", "voices"), "<th>Voice<th>Name<th>Events", rows) +
         MoreText(more, "voice", "voices");
}

}  // namespace zuna_toolkit
