// What people call the edits of a log.
#include "toolkit/view/internal/edit_words.h"

#include <algorithm>
#include <utility>

#include "kit/format.h"
#include "toolkit/comparison/internal/edit_entries.h"
#include "toolkit/view/internal/marks.h"

namespace zuna_toolkit {

namespace {

std::string ValueText(const CL::PairedEvent& event) { return std::to_string(event.IntValue()); }

std::string TextOf(const CL::Vamp& vamp) { return ValueText(vamp); }
std::string TextOf(const CL::Repeat& repeat) { return "×" + ValueText(repeat); }
std::string TextOf(const CL::Cut& /*cut*/) { return ""; }
std::string TextOf(const CL::Click& click) { return ValueText(click); }
std::string TextOf(const CL::Fermata& fermata) { return ValueText(fermata); }
std::string TextOf(const CL::Transpose& transpose) { return kit::format("%+d", transpose.IntValue()); }
std::string TextOf(const CL::TempoScale& scale) { return kit::format("×%.4g", scale.value()); }
std::string TextOf(const CL::Marker& marker) { return marker.text; }
std::string TextOf(const CL::Caesura& /*caesura*/) { return ""; }

ViewedEdit Viewed(const CL::PairedEvent& event, std::string text) {
  return {event.start, event.end, std::move(text), event.label};
}
ViewedEdit Viewed(const CL::PointEvent& event, std::string text) {
  return {event.position, event.position, std::move(text), event.label};
}

void SortByStart(std::vector<ViewedEdit>& edits) {
  const auto earlier = [](const ViewedEdit& a, const ViewedEdit& b) { return a.start < b.start; };
  std::stable_sort(edits.begin(), edits.end(), earlier);
}

/// A list of edits in a log.
template <typename Event>
using ListOfLog = CL::SongLog::SharedList<Event> CL::SongLog::*;

/// Adds the kinds that have edits in one of two logs.
class KindCollector {
 public:
  KindCollector(const CL::SongLog& log, const CL::SongLog* other) : log_(log), other_(other) {}

  template <typename Event>
  void Add(ListOfLog<Event> list, EditKind kind) {
    const std::vector<Event>& events = EventsOf(log_, list);
    const std::vector<Event>* others = other_ == nullptr ? nullptr : &EventsOf(*other_, list);
    const Marks<Event> marks = MarksOf(events, others);
    for (std::size_t i = 0; i < std::min(events.size(), kMostOfAKind); ++i) {
      kind.edits.push_back(Viewed(events[i], TextOf(events[i])));
      kind.edits.back().only_here = marks.only_here[i];
    }
    kind.more = events.size() - kind.edits.size();
    for (const Event* event : marks.only_there) {
      if (kind.only_there.size() == kMostOfAKind) break;
      kind.only_there.push_back(Viewed(*event, TextOf(*event)));
    }
    if (kind.edits.empty() && kind.only_there.empty()) return;
    SortByStart(kind.edits);
    kinds_.push_back(std::move(kind));
  }

  std::vector<EditKind> Take() { return std::move(kinds_); }

 private:
  template <typename Event>
  static const std::vector<Event>& EventsOf(const CL::SongLog& log, ListOfLog<Event> list) {
    static const std::vector<Event> kNone;
    return log.*list ? (log.*list)->events : kNone;
  }

  const CL::SongLog& log_;
  const CL::SongLog* other_;
  std::vector<EditKind> kinds_;
};

}  // namespace

std::vector<EditKind> EditsOf(const CL::SongLog& log, const CL::SongLog* other) {
  KindCollector kinds(log, other);
  kinds.Add(&CL::SongLog::markers, {"Marker", "Markers", "marker", EditShape::kLetter, {}});
  kinds.Add(&CL::SongLog::vamps, {"Vamp", "Vamps", "vamp", EditShape::kBracket, {}});
  kinds.Add(&CL::SongLog::repeats, {"Repeat", "Repeats", "repeat", EditShape::kBracket, {}});
  kinds.Add(&CL::SongLog::cuts, {"Cut", "Cuts", "cut", EditShape::kCut, {}});
  kinds.Add(&CL::SongLog::clicks, {"Click", "Clicks", "click", EditShape::kBracket, {}});
  kinds.Add(&CL::SongLog::transposes, {"Transposition", "Transpositions", "transpose", EditShape::kSpan, {}});
  kinds.Add(&CL::SongLog::tempo_scales, {"Tempo scale", "Tempo scales", "tempo-scale", EditShape::kSpan, {}});
  kinds.Add(&CL::SongLog::fermatas, {"Fermata", "Fermatas", "fermata", EditShape::kFermata, {}});
  kinds.Add(&CL::SongLog::caesuras, {"Caesura", "Caesuras", "caesura", EditShape::kCaesura, {}});
  return kinds.Take();
}

}  // namespace zuna_toolkit
