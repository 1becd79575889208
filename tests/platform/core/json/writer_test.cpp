// What the writer of JSON adds by itself.

#include "zuna_json/writer.h"

#include <gtest/gtest.h>

#include <array>
#include <sstream>

namespace {

using zuna_json::Writer;

TEST(Writer, LaysOutObjectsListsAndRows) {
  std::ostringstream os;
  Writer json(os);
  json.OpenObject(Writer::Style::kLines);
  json.Key("a");
  json.OpenList();
  json.Element();
  json.OpenObject(Writer::Style::kOneLine);
  json.Key("b");
  json.Number(std::int32_t{-1});
  json.Key("c");
  json.Text("\x01\xC3\xA9");
  json.CloseObject();
  json.Element();
  json.Text("\xE9");
  json.CloseList();
  json.Key("rows");
  json.OpenList();
  json.Row(std::array<std::uint32_t, 3>{1, 2, 4294967295});
  json.Row(std::array<std::uint32_t, 1>{0});
  json.CloseList();
  json.Key("none");
  json.OpenList();
  json.CloseList();
  json.CloseObject();
  EXPECT_EQ(os.str(), "");
  json.Flush();
  EXPECT_EQ(os.str(), R"({
  "a": [
    {"b": -1, "c": "\u0001é"},
    {"bytes": "e9"}
  ],
  "rows": [
[1,2,4294967295],
[0]
  ],
  "none": []
})");
}

}  // namespace
