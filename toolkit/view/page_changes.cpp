// What a page marks: what changed since earlier documents, or what the legacy format does not keep.
#include "toolkit/view/internal/page_changes.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "toolkit/comparison/comparison.h"
#include "toolkit/comparison/difference_lines.h"
#include "toolkit/comparison/loss_text.h"
#include "toolkit/conversion/conversion.h"
#include "toolkit/error.h"
#include "toolkit/view/internal/markup.h"
#include "toolkit/view/internal/tables.h"
#include "toolkit/words.h"

namespace zuna_toolkit {

namespace {

constexpr MarkNames kSinceEarlier = {"added or changed", "as it was before", "before"};
constexpr MarkNames kInLegacyFormat = {"not kept in format 0.0", "what format 0.0 holds instead", "in 0.0"};

/// The song of a number; null where there is none.
template <typename Songs>
auto FindSong(const Songs& songs, const std::string& number) -> decltype(songs.begin()->second.get()) {
  const auto found = songs.find(number);
  return found == songs.end() ? nullptr : found->second.get();
}

/// A number by another one; the same one where there is none.
const std::string& NumberFor(const std::map<std::string, std::string>& numbers, const std::string& number) {
  const auto found = numbers.find(number);
  return found == numbers.end() ? number : found->second;
}

/// Finds bars in the songs of a show for differences of a log, which has none.
class BarFinder {
 public:
  explicit BarFinder(const zuna_midi::ShowData& show) : show_(show) {}

  /// The bar of a tick in the song of this number; empty where it has none.
  std::string At(const std::string& number, std::uint32_t tick) { return BarsOf(number).At(tick); }

 private:
  const BarLabels& BarsOf(const std::string& number) {
    if (number == number_) return bars_;
    number_ = number;
    const auto* song = FindSong(show_.songs(), number);
    bars_ = song == nullptr ? BarLabels() : BarLabels(*song->timeline);
    return bars_;
  }

  const zuna_midi::ShowData& show_;
  std::string number_;  ///< the song of `bars_`; empty at first
  BarLabels bars_;
};

/// Makes lines of differences and tells of which song of the page each one is.
class ChangeCollector {
 public:
  /// Takes a line and the number of its song on the page; empty for none.
  using LineSink = std::function<void(const std::string& number, const DifferenceLine& line)>;

  /// `show` has the songs of the page.
  ChangeCollector(const zuna_midi::ShowData& show, LineSink sink)
      : songs_(show.songs()), bars_(show), lines_([sink = std::move(sink), this](const DifferenceLine& line) {
          sink(line.is_about_song ? about_ : NumberFor(here_, line.song), line);
        }) {}

  void Add(Difference difference) {
    if (difference.subject == Subject::kSong || difference.subject == Subject::kSongEdits) {
      return AddSong(difference);
    }
    Place& place = difference.place;
    if (place.tick && place.bar.empty()) {
      place.bar = bars_.At(NumberFor(here_, difference.song), *place.tick);
    }
    lines_.Add(difference);
  }

  std::map<std::string, std::string> Finish() {
    lines_.Finish();
    return std::move(numbers_);
  }

 private:
  void AddSong(const Difference& difference) {
    lines_.Finish();
    if (difference.action == Action::kRenumbered) {
      here_[difference.song] = difference.after;
      numbers_[difference.after] = difference.song;
    }
    about_ = NumberFor(here_, difference.song);
    const bool is_gone = difference.subject == Subject::kSong && difference.action == Action::kDropped;
    if (is_gone || !songs_.contains(about_)) about_.clear();
    lines_.Add(difference);
    lines_.Finish();
  }

  const zuna_midi::ShowData::Songs& songs_;
  BarFinder bars_;
  std::string about_;                           ///< the song of the page that a line names
  std::map<std::string, std::string> here_;     ///< numbers on the page, by the earlier ones
  std::map<std::string, std::string> numbers_;  ///< the other way round
  DifferenceLines lines_;
};

}  // namespace

const CL::SongLog& SongLogIn(const Document& log, const std::string& number) {
  static const CL::SongLog kNoEdits("", "", 0, 0);
  const CL::SongLog* edits = FindSong(log.As<CL::ChangeLog>()->song_logs(), number);
  return edits == nullptr ? kNoEdits : *edits;
}

PageChanges::PageChanges(const Document& show, const zuna_midi::ShowData& model, const PageContent& content) {
  if (content.losses) {
    names_ = kInLegacyFormat;
    AddLosses(show, content.log != nullptr, show_);
    if (content.log != nullptr) AddLosses(*content.log, true, log_);
  } else {
    if (content.earlier_show != nullptr || content.earlier_log != nullptr) names_ = kSinceEarlier;
    if (content.earlier_show != nullptr) AddChanges(*content.earlier_show, show, model, show_);
    if (content.earlier_log != nullptr) AddChanges(*content.earlier_log, *content.log, model, log_);
  }
  MoveOthersToWhole(model);
}

void PageChanges::MoveOthersToWhole(const zuna_midi::ShowData& model) {
  for (auto i = changes_.begin(); i != changes_.end();) {
    const auto current = i++;
    if (current->first.empty() || model.songs().contains(current->first)) continue;
    for (const std::string& line : current->second.lines) {
      AddLine("", "song " + NumberText(current->first) + ": " + line);
    }
    changes_[""].more += current->second.more;
    changes_.erase(current);
  }
}

void PageChanges::AddLine(const std::string& number, const std::string& text) {
  ViewedChanges& changes = changes_[number];
  if (changes.lines.size() < kMostOfAKind) {
    changes.lines.push_back(text);
  } else {
    ++changes.more;
  }
}

void PageChanges::AddChanges(const Document& before, const Document& after, const zuna_midi::ShowData& model,
                             Other& other) {
  ChangeCollector collector(model, [this](const std::string& number, const DifferenceLine& line) {
    const std::vector<std::string>& lines = changes_[number].lines;
    // Show and log both tell what became of a song.
    const bool is_told =
        line.is_about_song && std::find(lines.begin(), lines.end(), line.text) != lines.end();
    if (!is_told) AddLine(number, line.text);
  });
  Compare(before, after, [&](const Difference& difference) {
    const bool is_added = difference.subject == Subject::kSong && difference.action == Action::kAdded;
    if (is_added) changes_[difference.song].is_added = true;
    collector.Add(difference);
  });
  other.numbers = collector.Finish();
  other.current = CurrentForm(before);
}

void PageChanges::AddLosses(const Document& document, bool has_companion, Other& other) {
  RequireCurrent(document.type(), document.name());
  other.legacy = Down(document);
  std::map<std::string, DifferenceGroups> groups;
  LossesOfDown(document, *other.legacy, [&](const Difference& loss) { groups[loss.song].Add(loss); });
  for (const auto& [number, songs_groups] : groups) {
    for (const DifferenceGroups::Group& group : songs_groups.groups()) {
      Difference first = group.first;
      first.song.clear();  // the page tells it
      const bool is_harmless = IsHarmless(first) && (has_companion || !IsInCompanion(first.subject));
      const LossKind kind{CodeText(first), first.subject, first.action, false, is_harmless, group.count};
      AddLine(number, KindLine(kind, first));
    }
  }
  other.current = CurrentForm(*other.legacy);
}

OtherSong PageChanges::Of(const zuna_midi::SongData& song) const {
  OtherSong other;
  other.names = names_;
  const std::string& number = song.song_number;
  const auto changes = changes_.find(number);
  const bool is_added = changes != changes_.end() && changes->second.is_added;
  if (show_.current && !is_added) {
    other.song =
        FindSong(show_.current->As<zuna_midi::ShowData>()->songs(), NumberFor(show_.numbers, number));
  }
  if (other.song != nullptr) {
    other.voices = show_.legacy
                       ? PairByTrack(*song.voice_data, show_.legacy->As<LegacyShow>()->show.songs.at(number),
                                     *other.song->voice_data)
                       : PairByName(*song.voice_data, *other.song->voice_data);
  }
  if (log_.current) other.log = &SongLogIn(*log_.current, NumberFor(log_.numbers, number));
  return other;
}

std::string PageChanges::CountText(const ViewedChanges& changes) const {
  const std::size_t count = changes.lines.size() + changes.more;
  const bool are_losses = names_.row == kInLegacyFormat.row;
  if (count == 0) return are_losses ? "no losses" : "no changes";
  return are_losses ? Counted(count, "kind of loss", "kinds of losses") : Counted(count, "change", "changes");
}

std::string ChangesList(const PageChanges& changes, const ViewedChanges& of_song) {
  if (of_song.lines.empty()) return "";
  std::string list =
      "<details class=\"changes\" open>" + Element("summary", changes.CountText(of_song)) + "<ul>\n";
  for (const std::string& line : of_song.lines) list += Element("li", line) + "\n";
  return list + "</ul></details>\n" + MoreText(of_song.more, "change", "changes");
}

}  // namespace zuna_toolkit
