// Which fields of two entries differ.
#pragma once

#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "kit/format.h"
#include "toolkit/comparison/difference.h"

namespace zuna_toolkit {

/// A field of an entry, as text and, where it has one, as a number.
struct Field {
  std::string_view name;
  std::string text;
  std::optional<std::int64_t> number;

  template <std::integral Number>
  Field(std::string_view field, Number value)
      : name(field), text(std::to_string(value)), number(static_cast<std::int64_t>(value)) {}
  Field(std::string_view field, double value) : name(field), text(kit::format("%.9g", value)) {}
  Field(std::string_view field, std::string_view value) : name(field), text('"' + std::string(value) + '"') {}
};

/// The fields that differ, of two lists of the same fields.
inline std::vector<FieldChange> ChangesOf(const std::vector<Field>& before, const std::vector<Field>& after) {
  std::vector<FieldChange> changes;
  for (std::size_t i = 0; i < before.size(); ++i) {
    const Field& a = before[i];
    const Field& b = after[i];
    if (a.text == b.text) continue;
    FieldChange change{a.name, a.text, b.text, std::nullopt};
    if (a.number && b.number) change.increase = *b.number - *a.number;
    changes.push_back(change);
  }
  return changes;
}

}  // namespace zuna_toolkit
