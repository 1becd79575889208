// How the edits of a song log are compared and described.
#pragma once

#include <cstdint>
#include <sstream>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>

#include "CL/change_log.h"
#include "toolkit/comparison/internal/fields.h"
#include "toolkit/comparison/internal/list_comparison.h"

namespace zuna_toolkit {

inline std::string EditText(const cmn::ZunaEvent& event) {
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
  static std::string Text(const CL::PairedEvent& event) { return EditText(event); }
};

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
  static std::string Text(const CL::Marker& marker) { return EditText(marker); }
};

template <>
struct EntryTraits<CL::Caesura> {
  static std::uint32_t Tick(const CL::Caesura& caesura) { return caesura.position; }
  static auto Values(const CL::Caesura& caesura) {
    return std::tuple(caesura.second_word, std::string_view(caesura.label));
  }
  static std::string Text(const CL::Caesura& caesura) { return EditText(caesura); }
};

/// Whether two edits stand at the same place; their labels and values may differ.
inline bool SamePlace(const CL::PairedEvent& a, const CL::PairedEvent& b) {
  return a.start == b.start && a.end == b.end;
}
inline bool SamePlace(const CL::Marker& a, const CL::Marker& b) {
  return a.position == b.position && a.text == b.text;
}
inline bool SamePlace(const CL::Caesura& a, const CL::Caesura& b) { return a.position == b.position; }

/// The field of an edit besides its place and its label.
inline Subject ValueSubject(const CL::PairedEvent&) { return Subject::kEditValue; }
inline Subject ValueSubject(const CL::Caesura&) { return Subject::kSecondWord; }

inline bool SameValue(const CL::PairedEvent& a, const CL::PairedEvent& b) {
  return a.value_bits == b.value_bits;
}
inline bool SameValue(const CL::Caesura& a, const CL::Caesura& b) { return a.second_word == b.second_word; }

inline std::string LabelPart(const std::string& label) {
  return label.empty() ? "" : ", label \"" + label + '"';
}

/// An edit in words, without its position.
///@{
template <typename Event>
Field ValueOf(const Event& edit) {
  if constexpr (std::is_same_v<Event, CL::TempoScale>) return {"value", double{edit.FloatValue()}};
  if constexpr (!std::is_same_v<Event, CL::TempoScale>) return {"value", edit.IntValue()};
}
template <typename Event>
std::string WordsOf(const Event& edit) {
  return "to tick " + std::to_string(edit.end) + ", value " + ValueOf(edit).text + LabelPart(edit.label);
}
inline std::string WordsOf(const CL::Marker& marker) {
  return '"' + marker.text + '"' + LabelPart(marker.label);
}
inline std::string WordsOf(const CL::Caesura& caesura) {
  return "second word " + std::to_string(caesura.second_word) + LabelPart(caesura.label);
}
///@}

/// What else than position, label and value places an edit.
///@{
inline Field PlaceOf(const CL::PairedEvent& edit) { return {"end", edit.end}; }
inline Field PlaceOf(const CL::Marker& marker) { return {"text", std::string_view(marker.text)}; }
inline Field PlaceOf(const CL::Caesura& caesura) { return {"position", caesura.position}; }
///@}

inline Field ValueOf(const CL::Caesura& caesura) { return {"second word", caesura.second_word}; }
inline Field ValueOf(const CL::Marker& marker) { return PlaceOf(marker); }

/// The field that a difference of this subject is about.
template <typename Event>
Field FieldOf(Subject subject, const Event& edit) {
  if (subject == Subject::kEditLabel) return {"label", std::string_view(edit.label)};
  const bool is_value = subject == Subject::kEditValue || subject == Subject::kSecondWord;
  return is_value ? ValueOf(edit) : PlaceOf(edit);
}

/// Whether an edit comes back from the legacy format.
inline bool IsKept(const CL::PairedEvent&) { return true; }
inline bool IsKept(const CL::Marker&) { return true; }
inline bool IsKept(const CL::Fermata&) { return false; }
inline bool IsKept(const CL::Caesura& caesura) { return caesura.second_word <= 1; }

/// What the legacy format does to a value.
inline Action LossOfValue(const CL::PairedEvent&) { return Action::kCut; }
inline Action LossOfValue(const CL::Caesura&) { return Action::kDefaulted; }

}  // namespace zuna_toolkit
