// What people call the edits of a log.
#include "toolkit/view/internal/edit_words.h"

#include <algorithm>

#include "kit/format.h"

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

template <typename Event>
void AddKind(const CL::SongLog::SharedList<Event>& list, EditKind kind, std::vector<EditKind>& kinds) {
  if (!list || list->events.empty()) return;
  for (const Event& event : list->events) {
    if (kind.edits.size() == kMostOfAKind) break;
    kind.edits.push_back(Viewed(event, TextOf(event)));
  }
  kind.more = list->events.size() - kind.edits.size();
  const auto earlier = [](const ViewedEdit& a, const ViewedEdit& b) { return a.start < b.start; };
  std::stable_sort(kind.edits.begin(), kind.edits.end(), earlier);
  kinds.push_back(std::move(kind));
}

}  // namespace

std::vector<EditKind> EditsOf(const CL::SongLog& log) {
  std::vector<EditKind> kinds;
  AddKind(log.markers, {"Marker", "Markers", "marker", EditShape::kLetter, {}}, kinds);
  AddKind(log.vamps, {"Vamp", "Vamps", "vamp", EditShape::kBracket, {}}, kinds);
  AddKind(log.repeats, {"Repeat", "Repeats", "repeat", EditShape::kBracket, {}}, kinds);
  AddKind(log.cuts, {"Cut", "Cuts", "cut", EditShape::kCut, {}}, kinds);
  AddKind(log.clicks, {"Click", "Clicks", "click", EditShape::kBracket, {}}, kinds);
  AddKind(log.transposes, {"Transposition", "Transpositions", "transpose", EditShape::kSpan, {}}, kinds);
  AddKind(log.tempo_scales, {"Tempo scale", "Tempo scales", "tempo-scale", EditShape::kSpan, {}}, kinds);
  AddKind(log.fermatas, {"Fermata", "Fermatas", "fermata", EditShape::kFermata, {}}, kinds);
  AddKind(log.caesuras, {"Caesura", "Caesuras", "caesura", EditShape::kCaesura, {}}, kinds);
  return kinds;
}

}  // namespace zuna_toolkit
