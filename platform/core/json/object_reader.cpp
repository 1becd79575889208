// Reading JSON objects: the parser that is run.

#include "cmn/data_error.h"
#include "platform/core/json/object_handler.h"
#include "platform/core/json/parse_stream.h"
#include "zuna_json/object.h"

namespace zuna_json {

void ReadObject(std::istream& is, std::string_view prefix, const ObjectType& root, void* target) {
  boost::json::parse_options options;
  options.max_depth = kMaxDepth;
  boost::json::basic_parser<ObjectHandler> parser(options, root, target);
  const ParseEnd end = ParseStream(is, prefix, parser);
  if (!end.error) return;
  const ObjectHandler& handler = parser.handler();
  const std::string& problem = handler.problem();
  throw cmn::DataError(cmn::DataError::Parts{.field = handler.Path(),
                                             .offset = end.offset,
                                             .problem = problem.empty() ? DescribeError(end) : problem});
}

}  // namespace zuna_json
