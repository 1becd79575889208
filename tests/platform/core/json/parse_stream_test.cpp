// What is wrong with a text that is not JSON.

#include "platform/core/json/parse_stream.h"

#include <gtest/gtest.h>

#include <boost/json/error.hpp>
#include <string>
#include <utility>

namespace {

using boost::json::error;

std::string Described(const boost::json::error_code& code) {
  return zuna_json::DescribeError({code, 0, 0, ""});
}

/// What is said where a parser stops after `read` at `rest`.
std::string SyntaxError(const std::string& read, const std::string& rest) {
  zuna_json::ParseEnd end{error::syntax, read.size(), 0, ""};
  zuna_json::KeepPlace(read + rest, read.size(), end);
  return zuna_json::DescribeError(end);
}

TEST(JsonError, IsDescribed) {
  EXPECT_EQ(Described(error::incomplete), "the text ends before its JSON value does");
  EXPECT_EQ(Described(error::extra_data), "more text follows the JSON value");
  EXPECT_EQ(Described(error::too_deep), "lists and objects are nested too deeply");
  const boost::json::error_code other = error::syntax;
  EXPECT_EQ(Described(other), "this is not JSON (" + other.message() + ")");
}

TEST(JsonError, NamesWhatIsEasilyMistyped) {
  const std::string comma = "this is not JSON (a comma or a colon is missing before this)";
  for (const char* read : {"[1 ", "[\"a\"\n", "[{}", "[[]\t", "[true\r\n", "[null"}) {
    for (const char* rest : {"1", "\"b\"", "{", "[", "-1"})
      EXPECT_EQ(SyntaxError(read, rest), comma) << read << rest;
  }
  const std::string trailing = "this is not JSON (remove the comma before this)";
  EXPECT_EQ(SyntaxError("[1,", "]"), trailing);
  EXPECT_EQ(SyntaxError("{\"a\": 1, ", "}"), trailing);
  for (const char* rest : {"// why", "/* why", "# why"}) {
    EXPECT_EQ(SyntaxError("[1, ", rest), "this is not JSON (there are no comments in JSON)");
  }
  for (const char* rest : {"\u2018a", "\u2019", "\u201Ca", "\u201D"}) {
    EXPECT_EQ(SyntaxError("[", rest),
              "this is not JSON (a curly quotation mark stands where a straight one belongs)");
  }
  for (const char* rest : {"<<<<<<< 2.json", "=======", ">>>>>>> 3.json"}) {
    EXPECT_EQ(SyntaxError("[1, ", rest), "this is not JSON (a merge has left a conflict here)");
  }
  EXPECT_EQ(SyntaxError("[", "'a'"), "this is not JSON (strings need double quotation marks)");
  EXPECT_EQ(SyntaxError("[\"M",
                        "\xFC"
                        "ller\"]"),
            "this is not JSON (these bytes are not UTF-8)");
  EXPECT_EQ(SyntaxError("", "\xEF\xBB\xBF{}"), "this is not JSON (it begins with a byte order mark)");
}

TEST(JsonError, SaysNoMoreWhereNothingIsKnown) {
  const std::string other = Described(error::syntax);
  for (const auto& [read, rest] : {std::pair("[", "]"),
                                   {"[", "\"a\""},
                                   {"", "1"},
                                   {"[", "x"},
                                   {" ", "oops"},
                                   {"[1", ""},
                                   {"[1 ", "\uFEFF"}}) {
    EXPECT_EQ(SyntaxError(read, rest), other) << read << rest;
  }
}

}  // namespace
