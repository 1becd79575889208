// What is wrong with a text that is not JSON.

#include "platform/core/json/parse_stream.h"

#include <gtest/gtest.h>

#include <boost/json/error.hpp>

namespace {

using boost::json::error;

TEST(JsonError, IsDescribed) {
  EXPECT_EQ(zuna_json::DescribeError(error::incomplete), "the text ends before its JSON value does");
  EXPECT_EQ(zuna_json::DescribeError(error::extra_data), "more text follows the JSON value");
  EXPECT_EQ(zuna_json::DescribeError(error::too_deep), "lists and objects are nested too deeply");
  const boost::json::error_code other = error::syntax;
  EXPECT_EQ(zuna_json::DescribeError(other), "this is not JSON (" + other.message() + ")");
}

}  // namespace
