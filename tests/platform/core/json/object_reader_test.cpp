// What JSON objects are read into, and what is no such object.

#include "zuna_json/object.h"

#include <gtest/gtest.h>

#include <sstream>

#include "cmn/data_error.h"
#include "tests/support/bytes.h"

namespace {

using zuna_test::MessageOf;

void BindNumber(void* target, zuna_json::BoundObject& object) {
  object.Add({"n", zuna_json::ValueKind::kUnsigned8, target});
}

constexpr zuna_json::ObjectType kNumber{&BindNumber, nullptr};

std::uint8_t ReadNumber(const std::string& text) {
  std::istringstream is(text);
  std::uint8_t number = 0;
  zuna_json::ReadObject(is, "", kNumber, &number);
  return number;
}

TEST(ReadObject, StoresWhatIsBound) { EXPECT_EQ(ReadNumber(R"( {"n": 255} )"), 255); }

std::int8_t ReadSigned(const std::string& text) {
  const zuna_json::ObjectType type{[](void* target, zuna_json::BoundObject& object) {
                                     object.Add({"n", zuna_json::ValueKind::kSigned8, target});
                                   },
                                   nullptr};
  std::istringstream is(text);
  std::int8_t number = 0;
  zuna_json::ReadObject(is, "", type, &number);
  return number;
}

TEST(ReadObject, StoresASignedByte) {
  EXPECT_EQ(ReadSigned(R"({"n": -128})"), -128);
  EXPECT_EQ(ReadSigned(R"({"n": 127})"), 127);
  const auto refused = [](const char* text) { return MessageOf<cmn::DataError>([&] { ReadSigned(text); }); };
  EXPECT_EQ(refused(R"({"n": -129})"), "n: expected an integer from -128 to 127 (at byte 10)");
  EXPECT_EQ(refused(R"({"n": 128})"), "n: expected an integer from -128 to 127 (at byte 9)");
}

TEST(ReadObject, RefusesAValueThatIsNoObject) {
  const auto refused = [](const char* text) { return MessageOf<cmn::DataError>([&] { ReadNumber(text); }); };
  EXPECT_EQ(refused(R"([{"n": 1}])"), "expected an object (at byte 0)");
  EXPECT_EQ(refused(R"("n")"), "expected an object (at byte 2)");
  EXPECT_EQ(refused("17 "), "expected an object (at byte 2)");
  EXPECT_EQ(refused("1.5 "), "expected an object (at byte 3)");
  EXPECT_EQ(refused("null"), "expected an object (at byte 0)");
}

}  // namespace
