#include "format_converter/version0/records/event_object.h"

#include <gtest/gtest.h>

#include <ios>
#include <sstream>

#include "format_converter/version0/primitives/errors.h"
#include "tests/format_converter/support/errors.h"
#include "tests/support/bytes.h"

namespace {

using version0::EventObject;
using version0::Version0Error;
using zuna_test::Bytes;
using zuna_test::ExactMessageOf;
using zuna_test::Read;

std::string Text(const EventObject& event) {
  std::ostringstream os;
  os << event;
  return os.str();
}

TEST(EventObject, ReadsItsTwelveBytes) {
  const auto event = Read<EventObject>(Bytes({1, 0, 0, 0, 2, 1, 0, 0, 0x90, 60, 100, 18}));
  EXPECT_EQ(event.delta_time, 1U);
  EXPECT_EQ(event, EventObject(0, 258, 0x90, 60, 100, 18));
}

TEST(EventObject, NamesTheFirstFieldThatDiffers) {
  const EventObject event(0, 1, 0x90, 60, 100, 1);
  const auto message = [&](const EventObject& other) {
    EXPECT_EQ(ExactMessageOf<Version0Error>([&] { static_cast<void>(event == other); }),
              ExactMessageOf<Version0Error>([&] { static_cast<void>(event != other); }));
    return ExactMessageOf<Version0Error>([&] { static_cast<void>(event == other); });
  };
  EXPECT_EQ(message({0, 2, 0x80, 61, 101, 2}), "EventObject abs_time not equal");
  EXPECT_EQ(message({0, 1, 0x80, 61, 101, 2}), "EventObject status_high not equal");
  EXPECT_EQ(message({0, 1, 0x90, 61, 101, 2}), "EventObject data1 not equal");
  EXPECT_EQ(message({0, 1, 0x90, 60, 101, 2}), "EventObject data2 not equal");
  EXPECT_EQ(message({0, 1, 0x90, 60, 100, 2}), "EventObject track_id not equal");
  EXPECT_TRUE(event == EventObject(99, 1, 0x90, 60, 100, 1)) << "delta_time does not count";
  EXPECT_FALSE(event != EventObject(99, 1, 0x90, 60, 100, 1));
}

TEST(EventObject, StartsWithZeros) {
  const EventObject event;
  EXPECT_TRUE(event == EventObject(0, 0, 0, 0, 0, 0));
  EXPECT_EQ(event.delta_time, 0U);
}

TEST(EventObject, OrderIsTheOneThatItAlwaysWas) {
  EXPECT_TRUE(EventObject(5, 100, 0x90, 60, 100, 1) < EventObject(0, 100, 0x80, 60, 0, 1))
      << "larger delta first";
  EXPECT_FALSE(EventObject(0, 10, 0x90, 60, 100, 1) < EventObject(0, 20, 0x80, 60, 0, 1)) << "larger status";
  EXPECT_FALSE(EventObject(0, 10, 0x90, 60, 0, 1) < EventObject(0, 20, 0x80, 60, 100, 1)) << "larger status";
  EXPECT_FALSE(EventObject(0, 10, 0x80, 61, 0, 1) < EventObject(0, 20, 0x80, 60, 100, 1)) << "larger data1";
  EXPECT_FALSE(EventObject(0, 20, 0x80, 60, 0, 1) < EventObject(0, 10, 0x90, 60, 100, 1)) << "later";
  EXPECT_FALSE(EventObject(0, 10, 0x90, 61, 0, 1) < EventObject(0, 20, 0x90, 60, 100, 1)) << "larger data1";
  EXPECT_TRUE(EventObject(0, 10, 0x90, 60, 0, 1) < EventObject(0, 20, 0x90, 60, 100, 1));
  EXPECT_TRUE(EventObject(0, 10, 0x90, 60, 0, 1) < EventObject(0, 10, 0x90, 60, 100, 1))
      << "both times equal";
  EXPECT_FALSE(EventObject(0, 10, 0x90, 60, 100, 1) < EventObject(0, 20, 0x90, 60, 100, 1))
      << "data2 decides";
}

TEST(EventObject, PrintsItsStatusInHexadecimal) {
  EXPECT_EQ(Text({0, 480, 144, 60, 100, 1}), "EventObject(0, 480, 0x90, 60, 100, 1)");
  std::ostringstream os;
  os << std::hex << std::showbase << EventObject(10, 11, 0x80, 12, 13, 14) << ' ' << 255;
  EXPECT_EQ(os.str(), "EventObject(10, 11, 0x80, 12, 13, 14) 255");
  EXPECT_FALSE(os.flags() & std::ios_base::showbase);
}

}  // namespace
