// Compares current logs song by song.
#include <algorithm>
#include <sstream>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "toolkit/comparison/internal/compare_models.h"
#include "toolkit/comparison/internal/list_comparison.h"
#include "toolkit/comparison/internal/song_differences.h"

namespace zuna_toolkit {

namespace {

std::string TextOf(const cmn::ZunaEvent& event) {
  std::ostringstream text;
  text.exceptions(std::ios_base::badbit);  // it would drop what it has no memory for
  event.WriteString(text);
  return text.str();
}

/// Edits that reach from one position to another and have a value.
struct PairedTraits {
  static std::uint32_t Tick(const CL::PairedEvent& event) { return event.start; }
  static auto Values(const CL::PairedEvent& event) {
    return std::tuple(event.end, event.value_bits, std::string_view(event.label));
  }
  static std::string Text(const CL::PairedEvent& event) { return TextOf(event); }
};

}  // namespace

template <>
struct EntryTraits<CL::Vamp> : PairedTraits {};
template <>
struct EntryTraits<CL::Repeat> : PairedTraits {};
template <>
struct EntryTraits<CL::Cut> : PairedTraits {};
template <>
struct EntryTraits<CL::Transpose> : PairedTraits {};
template <>
struct EntryTraits<CL::TempoScale> : PairedTraits {};
template <>
struct EntryTraits<CL::Click> : PairedTraits {};
template <>
struct EntryTraits<CL::Fermata> : PairedTraits {};

template <>
struct EntryTraits<CL::Marker> {
  static std::uint32_t Tick(const CL::Marker& marker) { return marker.position; }
  static auto Values(const CL::Marker& marker) {
    return std::tuple(std::string_view(marker.text), std::string_view(marker.label));
  }
  static std::string Text(const CL::Marker& marker) { return TextOf(marker); }
};

template <>
struct EntryTraits<CL::Caesura> {
  static std::uint32_t Tick(const CL::Caesura& caesura) { return caesura.position; }
  static auto Values(const CL::Caesura& caesura) {
    return std::tuple(caesura.second_word, std::string_view(caesura.label));
  }
  static std::string Text(const CL::Caesura& caesura) { return TextOf(caesura); }
};

namespace {

/// Whether two edits stand at the same place; their labels and values may differ.
bool SamePlace(const CL::PairedEvent& a, const CL::PairedEvent& b) {
  return a.start == b.start && a.end == b.end;
}
bool SamePlace(const CL::Marker& a, const CL::Marker& b) {
  return a.position == b.position && a.text == b.text;
}
bool SamePlace(const CL::Caesura& a, const CL::Caesura& b) { return a.position == b.position; }

/// The field of an edit besides its place and its label.
Subject ValueSubject(const CL::PairedEvent&) { return Subject::kEditValue; }
Subject ValueSubject(const CL::Caesura&) { return Subject::kSecondWord; }

bool SameValue(const CL::PairedEvent& a, const CL::PairedEvent& b) { return a.value_bits == b.value_bits; }
bool SameValue(const CL::Caesura& a, const CL::Caesura& b) { return a.second_word == b.second_word; }

/// Whether an edit comes back from the legacy format.
bool IsKept(const CL::PairedEvent&) { return true; }
bool IsKept(const CL::Marker&) { return true; }
bool IsKept(const CL::Fermata&) { return false; }
bool IsKept(const CL::Caesura& caesura) { return caesura.second_word <= 1; }

/// What the legacy format does to a value.
Action LossOfValue(const CL::PairedEvent&) { return Action::kCut; }
Action LossOfValue(const CL::Caesura&) { return Action::kDefaulted; }

/// Compares one list of edits of two songs.
template <typename Event>
class EditComparison {
 public:
  EditComparison(Subject subject, std::string_view list, const SongDifferences& differences)
      : subject_(subject), list_(list), differences_(differences) {}

  void Compare(const CL::EventList<Event>& before, const CL::EventList<Event>& after) const {
    using Traits = EntryTraits<Event>;
    const auto equal = [](const Event& a, const Event& b) {
      return Traits::Tick(a) == Traits::Tick(b) && Traits::Values(a) == Traits::Values(b);
    };
    const std::vector<Event>& a = before.events;
    const std::vector<Event>& b = after.events;
    if (std::equal(a.begin(), a.end(), b.begin(), b.end(), equal)) return;
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
    differences_.Add(std::move(difference));
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

bool IsSameSongLog(const CL::SongLog& a, const CL::SongLog& b) {
  bool same = true;
  const DifferenceSink sink = [&](const Difference&) { same = false; };
  CompareSongLogs(SongDifferences("", sink, Purpose::kDifferences), a, b);
  return same;
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
      before.song_logs(), after.song_logs(), sink, Purpose::kDifferences,
      [](const SongDifferences& differences, const auto& a, const auto& b) {
        CompareSongLogs(differences, *a, *b);
      },
      FindRenumbered(before.song_logs(), after.song_logs(), IsSameSongLog));
}

void CompareWithUpAgain(const CL::ChangeLog& log, const version0::ChangeLogV0& legacy,
                        const DifferenceSink& sink) {
  CompareHeaders(log, legacy, sink, Purpose::kLosses);
  CompareSongs(log.song_logs(), legacy.songs, sink, Purpose::kLosses,
               [](const SongDifferences& differences, const auto& song, const auto& old_form) {
                 // one song at a time, for the sake of memory
                 CompareSongLogs(differences, *song, *old_form.get_version_1_0());
               });
}

}  // namespace zuna_toolkit
