// What JSON objects are read into, and what is no such object.

#include "platform/core/json/object_reader.h"

#include <gtest/gtest.h>

#include <sstream>

#include "cmn/data_error.h"
#include "tests/support/bytes.h"

namespace {

using zuna_test::MessageOf;

void BindNumber(void* target, zuna_core::BoundObject& object) {
  object.Add({"n", zuna_core::JsonKind::kUnsigned8, target});
}

constexpr zuna_core::ObjectType kNumber{&BindNumber, nullptr};

std::uint8_t ReadNumber(const std::string& text) {
  std::istringstream is(text);
  std::uint8_t number = 0;
  zuna_core::ReadJsonObject(is, "", kNumber, &number);
  return number;
}

TEST(ReadJsonObject, StoresWhatIsBound) { EXPECT_EQ(ReadNumber(R"( {"n": 255} )"), 255); }

TEST(ReadJsonObject, RefusesAValueThatIsNoObject) {
  const auto refused = [](const char* text) { return MessageOf<cmn::DataError>([&] { ReadNumber(text); }); };
  EXPECT_EQ(refused(R"([{"n": 1}])"), "expected an object (at byte 0)");
  EXPECT_EQ(refused(R"("n")"), "expected an object (at byte 2)");
  EXPECT_EQ(refused("17 "), "expected an object (at byte 2)");
  EXPECT_EQ(refused("1.5 "), "expected an object (at byte 3)");
  EXPECT_EQ(refused("null"), "expected an object (at byte 0)");
}

}  // namespace
