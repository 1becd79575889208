#pragma once

// The values that members may have: their ranges, how messages name them, and how they are stored.

#include <cstdint>
#include <optional>
#include <string>

#include "zuna_json/object.h"

namespace zuna_json {

/// The integers from `min` to `max`.
struct IntegerRange {
  std::int64_t min;
  std::int64_t max;
};

/// The range of {"bits": N}.
inline constexpr IntegerRange kBitsRange{0, 0xFFFFFFFF};

inline bool Holds(const IntegerRange& range, std::int64_t value) {
  return value >= range.min && value <= range.max;
}

/// The integers that a value of this kind may be; none for other kinds.
std::optional<IntegerRange> RangeOf(ValueKind kind);

/// What an integer, or the value of a member of this kind, must be, for a message.
std::string IntegerText(const IntegerRange& range);
std::string ValueText(ValueKind kind);

/// Stores an integer, which is in the range of its member.
void StoreInteger(const BoundMember& member, std::int64_t value);

/// Stores the bits of a float as the value of a member that is one.
void StoreFloat(const BoundMember& member, std::uint32_t bits);

}  // namespace zuna_json
