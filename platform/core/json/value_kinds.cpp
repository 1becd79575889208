// The values that members of JSON objects may have.

#include "platform/core/json/value_kinds.h"

#include <cstring>
#include <limits>

#include "kit/format.h"

namespace zuna_json {

namespace {

template <typename Integer>
constexpr IntegerRange kRangeOf{std::numeric_limits<Integer>::min(), std::numeric_limits<Integer>::max()};

}  // namespace

std::optional<IntegerRange> RangeOf(ValueKind kind) {
  switch (kind) {
    case ValueKind::kUnsigned8:
      return kRangeOf<std::uint8_t>;
    case ValueKind::kUnsigned16:
      return kRangeOf<std::uint16_t>;
    case ValueKind::kUnsigned32:
      return kRangeOf<std::uint32_t>;
    case ValueKind::kSigned8:
      return kRangeOf<std::int8_t>;
    case ValueKind::kSigned16:
      return kRangeOf<std::int16_t>;
    case ValueKind::kBits32:
      return IntegerRange{kRangeOf<std::int32_t>.min, kRangeOf<std::uint32_t>.max};
    default:
      return std::nullopt;
  }
}

void StoreInteger(const BoundMember& member, std::int64_t value) {
  switch (member.kind) {
    case ValueKind::kUnsigned8:
      *static_cast<std::uint8_t*>(member.target) = static_cast<std::uint8_t>(value);
      break;
    case ValueKind::kUnsigned16:
      *static_cast<std::uint16_t*>(member.target) = static_cast<std::uint16_t>(value);
      break;
    case ValueKind::kSigned8:
      *static_cast<std::int8_t*>(member.target) = static_cast<std::int8_t>(value);
      break;
    case ValueKind::kSigned16:
      *static_cast<std::int16_t*>(member.target) = static_cast<std::int16_t>(value);
      break;
    default:
      *static_cast<std::uint32_t*>(member.target) = static_cast<std::uint32_t>(value);
      break;
  }
}

std::string IntegerText(const IntegerRange& range) {
  return kit::format("an integer from %lld to %lld", static_cast<long long>(range.min),
                     static_cast<long long>(range.max));
}

std::string ValueText(ValueKind kind) {
  if (const std::optional<IntegerRange> range = RangeOf(kind)) return IntegerText(*range);
  switch (kind) {
    case ValueKind::kFloat:
      return "a number in the range of a single-precision float or {\"bits\": N}";
    case ValueKind::kString:
    case ValueKind::kText:
      return "a text";
    case ValueKind::kObject:
      return "an object";
    case ValueKind::kRow:
      return "a list of integers";
    default:
      return "a list";
  }
}

void StoreFloat(const BoundMember& member, std::uint32_t bits) {
  std::memcpy(member.target, &bits, sizeof bits);
}

}  // namespace zuna_json
