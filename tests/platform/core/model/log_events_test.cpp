// The events of a log.

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <sstream>

#include "CL/paired_events.h"
#include "CL/point_events.h"

namespace {

constexpr std::uint32_t kMax = 0xFFFFFFFF;

std::string Text(const cmn::ZunaEvent& event) {
  std::ostringstream os;
  os << std::hex;
  event.WriteString(os);
  return os.str();
}

template <typename Event>
void ExpectIntegerEvent(std::uint8_t code, const std::string& name) {
  const Event event(480, 960, "cue", -2);
  EXPECT_EQ(Event::evt_code, code);
  EXPECT_EQ(event.EventCode(), code);
  EXPECT_EQ(codes::editNameByZunaEventCode.at(code), name);
  EXPECT_EQ(event.Position(), 480U);
  EXPECT_EQ(event.EndPosition(), 960U);
  EXPECT_EQ(event.label, "cue");
  EXPECT_EQ(event.value_bits, 0xFFFFFFFEU);
  EXPECT_EQ(event.IntValue(), -2);
  EXPECT_EQ(event.value(), -2.0);
  EXPECT_EQ(Text(event), name + "(480, 960, -2) \"cue\"");
}

TEST(LogEvents, HaveTheirCodesNamesAndValues) {
  ExpectIntegerEvent<CL::Vamp>('@', "Vamp");
  ExpectIntegerEvent<CL::Repeat>('A', "Repeat");
  ExpectIntegerEvent<CL::Cut>('B', "Cut");
  ExpectIntegerEvent<CL::Transpose>('C', "Transpose");
  ExpectIntegerEvent<CL::Click>('L', "Click");
  ExpectIntegerEvent<CL::Fermata>('M', "Fermata");
  EXPECT_EQ(codes::editNameByZunaEventCode.size(), 9U);
}

TEST(LogEvents, TempoScaleHasAFloat) {
  const CL::TempoScale event(0, 480, "", 1.5F);
  EXPECT_EQ(event.EventCode(), 'D');
  EXPECT_EQ(event.value_bits, 0x3FC00000U);
  EXPECT_EQ(event.FloatValue(), 1.5F);
  EXPECT_EQ(event.value(), 1.5);
  EXPECT_EQ(Text(event), "TempoScale(0, 480, 1.5)");
  EXPECT_EQ(Text(CL::TempoScale(0, 480, "", 0.1F)), "TempoScale(0, 480, 0.1)");
  EXPECT_EQ(Text(CL::TempoScale(0, kMax, "slow", 1.0F / 3)),
            "TempoScale(0, 4294967295, 0.33333334) \"slow\"");
  EXPECT_EQ(Text(CL::TempoScale(0, 0, "", std::numeric_limits<float>::infinity())), "TempoScale(0, 0, inf)");
}

TEST(LogEvents, MarkerAndCaesuraStandAtOnePosition) {
  const CL::Marker marker(kMax, "", "A 1");
  EXPECT_EQ(marker.EventCode(), 'E');
  EXPECT_EQ(marker.Position(), kMax);
  EXPECT_EQ(marker.text, "A 1");
  EXPECT_EQ(Text(marker), "Marker(4294967295, A 1)");
  CL::Caesura caesura(1920, "breath");
  EXPECT_EQ(caesura.EventCode(), 'N');
  EXPECT_EQ(caesura.Position(), 1920U);
  EXPECT_EQ(caesura.second_word, 0U);
  EXPECT_EQ(Text(caesura), "Caesura(1920, 0) \"breath\"");
  caesura.second_word = kMax;
  EXPECT_EQ(Text(caesura), "Caesura(1920, 4294967295) \"breath\"");
}

TEST(LogEvents, PrintToTheConsole) {
  testing::internal::CaptureStdout();
  {
    kit::CoutBuffer buffer;
    const CL::Vamp vamp(0, 480, "", 2);
    const cmn::ZunaEvent& event = vamp;
    event.WriteString(buffer);
    CL::TempoScale(0, 480, "", 2.0F).WriteString(buffer);
  }
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "Vamp(0, 480, 2)TempoScale(0, 480, 2)");
}

TEST(LogEvents, AreOrderedByPositionThenByCode) {
  const CL::Vamp vamp(480, 960, "a", 1);
  const CL::Vamp same(480, 0, "b", 2);
  const CL::Repeat repeat(480, 960, "a", 1);
  const CL::Fermata earlier(479, 960, "a", 1);
  EXPECT_TRUE(vamp == same);
  EXPECT_FALSE(vamp != same);
  EXPECT_FALSE(vamp < same);
  EXPECT_FALSE(vamp == repeat);
  EXPECT_TRUE(vamp != repeat);
  EXPECT_TRUE(vamp < repeat);
  EXPECT_FALSE(repeat < vamp);
  EXPECT_TRUE(earlier < vamp);
  EXPECT_FALSE(vamp < earlier);
  EXPECT_TRUE(vamp != earlier);
}

TEST(LogEvents, ComparePositions) {
  const CL::Cut event(480, 960, "", 1);
  for (const std::uint32_t position : {0U, 479U, 480U, 481U, kMax}) {
    EXPECT_EQ(event.PositionLess(position), 480 < position);
    EXPECT_EQ(event.PositionGreater(position), 480 > position);
    EXPECT_EQ(event.PositionEqual(position), 480 == position);
    EXPECT_EQ(event.PositionNotLess(position), 480 >= position);
    EXPECT_EQ(event.PositionNotGreater(position), 480 <= position);
  }
}

TEST(PairedEvent, MovesItsEnds) {
  CL::Click event(480, 960, "", 1);
  event.SetStartPosition(kMax);
  event.SetEndPosition(7);
  EXPECT_EQ(event.StartPosition(), kMax);
  EXPECT_EQ(event.Position(), kMax);
  EXPECT_EQ(event.EndPosition(), 7U);
}

TEST(PairedEvent, SpansWhatLiesBetweenItsEnds) {
  EXPECT_EQ(CL::Cut(480, 960, "", 1).Span(), 480U);
  EXPECT_EQ(CL::Cut(480, 480, "", 1).Span(), 0U);
  EXPECT_EQ(CL::Cut(960, 480, "", 1).Span(), 0U);
  EXPECT_EQ(CL::Cut(0, kMax, "", 1).Span(), kMax);
}

TEST(PairedEvent, KeepsIntegerAndFloatInTheSameBits) {
  CL::Vamp event(0, 0, "", std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(event.value_bits, 0x80000000U);
  EXPECT_TRUE(std::signbit(event.FloatValue()));
  EXPECT_EQ(event.FloatValue(), 0.0F);
  event.SetIntValue(0x3F800000);
  EXPECT_EQ(event.FloatValue(), 1.0F);
  event.SetFloatValue(-2.0F);
  EXPECT_EQ(event.value_bits, 0xC0000000U);
  EXPECT_EQ(event.value(), -1073741824.0);
}

TEST(PairedEvent, RoundsADoubleToAFloat) {
  CL::TempoScale event(0, 0, "", 0);
  event.SetFloatValue(0.1);
  EXPECT_EQ(event.FloatValue(), 0.1F);
  event.SetFloatValue(1e300);
  EXPECT_TRUE(std::isinf(event.FloatValue()));
  event.SetFloatValue(std::numeric_limits<double>::quiet_NaN());
  EXPECT_TRUE(std::isnan(event.FloatValue()));
}

TEST(PairedEvent, IsNotLaidOut) {
  const CL::Vamp event(1, 2, "", 3);
  CL::DisplayRecord record{1, 2, 3, 4, 5, 6};
  event.FillDisplayRecord(record);
  EXPECT_EQ(record.x, 0.0F);
  EXPECT_EQ(record.y, 0.0F);
  EXPECT_EQ(record.width, 0.0F);
  EXPECT_EQ(record.height, 0.0F);
  EXPECT_EQ(record.anchor_x, 0.5F);
  EXPECT_EQ(record.anchor_y, 0.5F);
  CL::DisplayWords words{1, 2, 3, 4, 5, 6};
  event.ClearDisplayWords(words);
  EXPECT_EQ(words, CL::DisplayWords{});
}

TEST(PairedEvent, ReservedOperationsDoNothing) {
  CL::Vamp event(1, 2, "label", 3);
  event.Reserved1();
  event.Reserved2();
  event.Reserved3();
  EXPECT_EQ(event.Reserved4(), 0);
  EXPECT_TRUE(event.Reserved5());
  EXPECT_EQ(Text(event), "Vamp(1, 2, 3) \"label\"");
}

}  // namespace
