#pragma once

#include <iosfwd>
#include <string>
#include <string_view>

#include "cmn/data_error.h"
#include "platform/core/json/feed.h"
#include "platform/core/json/schema_handler.h"

namespace zuna_core {

/// Reads a JSON document that is laid out as `root` into `builder`. Throws cmn::DataError naming the place.
template <class Builder>
void ReadJson(std::istream& is, std::string_view prefix, const Schema<Builder>& root, Builder& builder) {
  boost::json::parse_options options;
  options.max_depth = kMaxJsonDepth;
  boost::json::basic_parser<SchemaHandler<Builder>> parser(options, root, builder);
  const JsonEnd end = FeedJson(is, prefix, parser);
  if (!end.error) return;
  const SchemaHandler<Builder>& handler = parser.handler();
  const std::string path = handler.Path();
  const std::string what = handler.problem().empty() ? DescribeJsonError(end.error) : handler.problem();
  throw cmn::DataError(cmn::DataError::Parts{.field = path, .offset = end.offset, .problem = what});
}

}  // namespace zuna_core
