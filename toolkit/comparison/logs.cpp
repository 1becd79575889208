// Compares current logs song by song.
#include <algorithm>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "toolkit/comparison/internal/compare_models.h"
#include "toolkit/comparison/internal/edit_entries.h"
#include "toolkit/comparison/internal/song_differences.h"

namespace zuna_toolkit {

namespace {

template <typename Event>
bool AreSameEdits(const CL::EventList<Event>& before, const CL::EventList<Event>& after) {
  using Traits = EntryTraits<Event>;
  const auto equal = [](const Event& a, const Event& b) {
    return Traits::Tick(a) == Traits::Tick(b) && Traits::Values(a) == Traits::Values(b);
  };
  return std::equal(before.events.begin(), before.events.end(), after.events.begin(), after.events.end(),
                    equal);
}

/// Compares one list of edits of two songs.
template <typename Event>
class EditComparison {
 public:
  EditComparison(Subject subject, std::string_view list, const SongDifferences& differences)
      : subject_(subject), list_(list), differences_(differences) {}

  void Compare(const CL::EventList<Event>& before, const CL::EventList<Event>& after) const {
    if (AreSameEdits(before, after)) return;
    const std::vector<Event>& a = before.events;
    const std::vector<Event>& b = after.events;
    if (differences_.are_losses()) {
      const auto pairs = PairsInOrder(a, b, [](const Event& event) { return IsKept(event); });
      if (pairs) {
        for (const EntryPair<Event>& pair : *pairs) AddPair(pair);
        return;
      }
    }
    const ListComparison<Event> comparison(a, b);
    for (const EntryPair<Event>& pair : comparison.pairs()) AddPair(pair);
    if (!comparison.reordered()) return;
    Difference difference;
    difference.subject = subject_;
    difference.action = Action::kReordered;
    difference.place.list = list_;
    differences_.Add(std::move(difference));
  }

 private:
  void AddPair(const EntryPair<Event>& pair) const {
    if (pair.before.entry == nullptr) return Add(subject_, Action::kAdded, pair);
    if (pair.after.entry == nullptr) return Add(subject_, Action::kDropped, pair);
    const Event& before = *pair.before.entry;
    const Event& after = *pair.after.entry;
    if (!SamePlace(before, after)) Add(subject_, Action::kChanged, pair);
    if (before.label != after.label) Add(Subject::kEditLabel, LabelAction(before, after), pair);
    if constexpr (!std::is_same_v<Event, CL::Marker>) {
      const Action action = differences_.are_losses() ? LossOfValue(before) : Action::kChanged;
      if (!SameValue(before, after)) Add(ValueSubject(before), action, pair);
    }
  }

  static Action LabelAction(const Event& before, const Event& after) {
    if (after.label.empty()) return Action::kDropped;
    return before.label.empty() ? Action::kAdded : Action::kChanged;
  }

  void Add(Subject subject, Action action, const EntryPair<Event>& pair) const {
    Difference difference = EntryDifference(subject, list_, pair);
    difference.action = action;
    if (!differences_.are_losses()) TellInWords(difference, pair);
    differences_.Add(std::move(difference));
  }

  static void TellInWords(Difference& difference, const EntryPair<Event>& pair) {
    const Event* before = pair.before.entry;
    const Event* after = pair.after.entry;
    if (before != nullptr) difference.before = WordsOf(*before);
    if (after != nullptr) difference.after = WordsOf(*after);
    if (before == nullptr || after == nullptr) return;
    difference.changes =
        ChangesOf({FieldOf(difference.subject, *before)}, {FieldOf(difference.subject, *after)});
  }

  Subject subject_;
  std::string_view list_;
  const SongDifferences& differences_;
};

template <typename Event>
void CompareEdits(Subject subject, std::string_view list, const std::shared_ptr<CL::EventList<Event>>& before,
                  const std::shared_ptr<CL::EventList<Event>>& after, const SongDifferences& differences) {
  EditComparison<Event>(subject, list, differences).Compare(*before, *after);
}

void CompareSongLogs(const SongDifferences& differences, const CL::SongLog& a, const CL::SongLog& b) {
  CompareEdits(Subject::kFermata, "fermatas", a.fermatas, b.fermatas, differences);
  differences.AddNumber(Subject::kAttacca, a.attacca, b.attacca);
  differences.AddNumber(Subject::kDivision, a.division, b.division);
  differences.AddField(Subject::kSongName, a.song_name, b.song_name);
  differences.AddNumber(Subject::kSongLength, a.song_length, b.song_length);
  CompareEdits(Subject::kVamp, "vamps", a.vamps, b.vamps, differences);
  CompareEdits(Subject::kRepeat, "repeats", a.repeats, b.repeats, differences);
  CompareEdits(Subject::kCut, "cuts", a.cuts, b.cuts, differences);
  CompareEdits(Subject::kTranspose, "transposes", a.transposes, b.transposes, differences);
  CompareEdits(Subject::kTempoScale, "tempoScales", a.tempo_scales, b.tempo_scales, differences);
  CompareEdits(Subject::kClick, "clicks", a.clicks, b.clicks, differences);
  CompareEdits(Subject::kMarker, "markers", a.markers, b.markers, differences);
  CompareEdits(Subject::kCaesura, "caesuras", a.caesuras, b.caesuras, differences);
}

/// Whether two song logs of one length have the same content.
bool IsSameSongLog(const CL::SongLog& a, const CL::SongLog& b) {
  return a.attacca == b.attacca && a.division == b.division && AreSameEdits(*a.fermatas, *b.fermatas) &&
         AreSameEdits(*a.vamps, *b.vamps) && AreSameEdits(*a.repeats, *b.repeats) &&
         AreSameEdits(*a.cuts, *b.cuts) && AreSameEdits(*a.transposes, *b.transposes) &&
         AreSameEdits(*a.tempo_scales, *b.tempo_scales) && AreSameEdits(*a.clicks, *b.clicks) &&
         AreSameEdits(*a.markers, *b.markers) && AreSameEdits(*a.caesuras, *b.caesuras);
}

template <typename Log>
std::string TagPairText(const Log& log) {
  return std::to_string(log.log_tag_pair.first) + ", " + std::to_string(log.log_tag_pair.second);
}

template <typename Log>
void CompareHeaders(const CL::ChangeLog& before, const Log& after, const DifferenceSink& sink,
                    Purpose purpose) {
  const SongDifferences whole("", sink, purpose);
  whole.AddField(Subject::kShowName, before.show_name, after.show_name);
  whole.AddField(Subject::kLogLabel, before.log_label, after.log_label);
  whole.AddField(Subject::kIdentifier, before.identifier.ToString(), after.identifier.ToString());
  whole.AddField(Subject::kTagPair, TagPairText(before), TagPairText(after));
}

}  // namespace

void CompareLogs(const CL::ChangeLog& before, const CL::ChangeLog& after, const DifferenceSink& sink) {
  CompareHeaders(before, after, sink, Purpose::kDifferences);
  CompareSongs(
      Subject::kSongEdits, before.song_logs(), after.song_logs(), sink, Purpose::kDifferences,
      [](const SongDifferences& differences, const auto& a, const auto& b) {
        CompareSongLogs(differences, *a, *b);
      },
      FindRenumbered(before.song_logs(), after.song_logs(), IsSameSongLog));
}

void CompareWithUpAgain(const CL::ChangeLog& log, const version0::ChangeLogV0& legacy,
                        const DifferenceSink& sink) {
  CompareHeaders(log, legacy, sink, Purpose::kLosses);
  CompareSongs(Subject::kSongEdits, log.song_logs(), legacy.songs, sink, Purpose::kLosses,
               [](const SongDifferences& differences, const auto& song, const auto& old_form) {
                 // one song at a time, for the sake of memory
                 CompareSongLogs(differences, *song, *old_form.get_version_1_0());
               });
}

}  // namespace zuna_toolkit
