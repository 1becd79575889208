// Reading JSON objects: the types of their members, and the parser that is run.

#include "platform/core/json/object_reader.h"

#include <limits>

#include "cmn/data_error.h"
#include "kit/format.h"
#include "platform/core/json/object_handler.h"
#include "platform/core/json/parse_stream.h"

namespace zuna_core {

namespace {

template <typename Integer>
constexpr IntegerRange kRangeOf{std::numeric_limits<Integer>::min(), std::numeric_limits<Integer>::max()};

}  // namespace

std::optional<IntegerRange> RangeOf(JsonKind kind) {
  switch (kind) {
    case JsonKind::kUnsigned8:
      return kRangeOf<std::uint8_t>;
    case JsonKind::kUnsigned16:
      return kRangeOf<std::uint16_t>;
    case JsonKind::kUnsigned32:
      return kRangeOf<std::uint32_t>;
    case JsonKind::kSigned16:
      return kRangeOf<std::int16_t>;
    case JsonKind::kBits32:
      return IntegerRange{kRangeOf<std::int32_t>.min, kRangeOf<std::uint32_t>.max};
    default:
      return std::nullopt;
  }
}

void StoreInteger(const BoundMember& member, std::int64_t value) {
  switch (member.kind) {
    case JsonKind::kUnsigned8:
      *static_cast<std::uint8_t*>(member.target) = static_cast<std::uint8_t>(value);
      break;
    case JsonKind::kUnsigned16:
      *static_cast<std::uint16_t*>(member.target) = static_cast<std::uint16_t>(value);
      break;
    case JsonKind::kSigned16:
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

std::string ValueText(JsonKind kind) {
  if (const std::optional<IntegerRange> range = RangeOf(kind)) return IntegerText(*range);
  switch (kind) {
    case JsonKind::kFloat:
      return "a number in the range of a single-precision float or {\"bits\": N}";
    case JsonKind::kString:
    case JsonKind::kText:
      return "a text";
    case JsonKind::kObject:
      return "an object";
    case JsonKind::kRow:
      return "a list of integers";
    default:
      return "a list";
  }
}

void ReadJsonObject(std::istream& is, std::string_view prefix, const ObjectType& root, void* target) {
  boost::json::parse_options options;
  options.max_depth = kMaxJsonDepth;
  boost::json::basic_parser<ObjectHandler> parser(options, root, target);
  const JsonEnd end = ParseStream(is, prefix, parser);
  if (!end.error) return;
  const ObjectHandler& handler = parser.handler();
  const std::string& problem = handler.problem();
  throw cmn::DataError(
      cmn::DataError::Parts{.field = handler.Path(),
                            .offset = end.offset,
                            .problem = problem.empty() ? DescribeJsonError(end.error) : problem});
}

}  // namespace zuna_core
