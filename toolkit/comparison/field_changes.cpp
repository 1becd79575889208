// The fields of many entries that change, in words.
#include "toolkit/comparison/internal/field_changes.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "toolkit/words.h"

namespace zuna_toolkit {

namespace {

constexpr std::string_view kPitch = "pitch";

/// "10 higher"
std::string HigherText(const std::string& amount, std::int64_t increase) {
  return amount + (increase < 0 ? " lower" : " higher");
}

std::uint64_t AmountOf(std::int64_t increase) {
  return static_cast<std::uint64_t>(increase < 0 ? -increase : increase);
}

}  // namespace

void FieldChanges::Add(const std::vector<FieldChange>& changes) {
  ++entries_;
  for (const FieldChange& change : changes) {
    const auto found = std::find_if(fields_.begin(), fields_.end(),
                                    [&](const Common& field) { return field.first.name == change.name; });
    if (found == fields_.end()) {
      fields_.push_back({change});
      continue;
    }
    ++found->entries;
    found->same_before = found->same_before && found->first.before == change.before;
    found->same_after = found->same_after && found->first.after == change.after;
    found->same_increase = found->same_increase && found->first.increase == change.increase;
  }
}

bool FieldChanges::AreLike(const std::vector<FieldChange>& changes) const {
  return std::equal(fields_.begin(), fields_.end(), changes.begin(), changes.end(),
                    [](const Common& a, const FieldChange& b) {
                      return a.first.name == b.name && (b.name != kPitch || a.first.increase == b.increase);
                    });
}

std::string FieldChanges::TextOf(const Common& field) const {
  const std::string name(field.first.name);
  const auto& increase = field.first.increase;
  if (field.entries < entries_) return name + " changes in " + std::to_string(field.entries);
  if (field.same_before && field.same_after) {
    return name + ' ' + field.first.before + " becomes " + field.first.after;
  }
  if (field.same_increase && increase) {
    return name + " is " + HigherText(std::to_string(AmountOf(*increase)), *increase);
  }
  return name + (field.same_after ? " becomes " + field.first.after : " changes");
}

std::string FieldChanges::ToString(const std::string& or_else) const {
  if (fields_.empty()) return or_else;
  const auto& [first, entries, same_before, same_after, same_increase] = fields_.front();
  if (fields_.size() == 1 && first.name == kPitch && same_increase && entries == entries_) {
    return (or_else.empty() ? " and are " : " are ") +
           HigherText(Counted(AmountOf(*first.increase), "semitone", "semitones"), *first.increase);
  }
  std::string text;
  for (const Common& field : fields_) AppendListed(text, TextOf(field));
  return or_else.empty() ? "; " + text : ": " + text;
}

}  // namespace zuna_toolkit
