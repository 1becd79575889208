// Single events as they are stored in log files.

#include <gtest/gtest.h>

#include <limits>
#include <sstream>

#include "CL/paired_events.h"
#include "CL/point_events.h"
#include "tests/platform/core/file/binary_file.h"

namespace {

using zuna_test::Hex;

template <typename Event>
std::string Written(const Event& event, cmn::FileVersion version) {
  std::ostringstream os;
  event.WriteBinary(os, version);
  return os.str();
}

TEST(EventBinary, PairedEventStandsAtTheFrontOfItsList) {
  const CL::Repeat repeat(480, 960, "ab", -2);
  const CL::PairedEvent& event = repeat;
  EXPECT_EQ(Written(event, {1, 1}), Hex("E0 01 00 00"         // start 480
                                        "C0 03 00 00"         // end 960
                                        "02 00 00 00  61 62"  // label "ab"
                                        "FE FF FF FF"));      // value -2
  EXPECT_EQ(Written(event, {1, 2}), Hex("E0 03"               // start 480
                                        "E0 03"               // end, 480 behind the start
                                        "02  61 62"           // label "ab"
                                        "03"));               // value -2
  EXPECT_EQ(Written(event, {2, 0}), R"({"start": 480, "end": 960, "label": "ab", "value": -2})");
}

TEST(EventBinary, TempoScaleIsWrittenWithItsFloat) {
  const CL::TempoScale scale(0, 1, "", 1.5F);
  const CL::PairedEvent& event = scale;
  EXPECT_EQ(Written(event, {1, 1}), Hex("00 00 00 00"     // start 0
                                        "01 00 00 00"     // end 1
                                        "00 00 00 00"     // label ""
                                        "00 00 C0 3F"));  // value 1.5
  EXPECT_EQ(Written(event, {1, 2}), Hex("00"              // start 0
                                        "01"              // end, 1 behind the start
                                        "00"              // label ""
                                        "00 00 C0 3F"));  // value 1.5
  EXPECT_EQ(Written(event, {2, 0}), R"({"start": 0, "end": 1, "label": "", "value": 1.5})");
  EXPECT_EQ(Written(CL::TempoScale(0, 1, "", -std::numeric_limits<float>::infinity()), {2, 0}),
            R"({"start": 0, "end": 1, "label": "", "value": {"bits": 4286578688}})");
}

TEST(EventBinary, MarkerAndCaesura) {
  const CL::Marker marker(300, "", "A");
  EXPECT_EQ(Written(marker, {1, 1}), Hex("2C 01 00 00"         // position 300
                                         "00 00 00 00"         // label ""
                                         "01 00 00 00  41"));  // text "A"
  EXPECT_EQ(Written(marker, {1, 2}), Hex("AC 02"               // position 300
                                         "00"                  // label ""
                                         "01  41"));           // text "A"
  EXPECT_EQ(Written(marker, {2, 0}), R"({"position": 300, "label": "", "text": "A"})");
  CL::Caesura caesura(300, "x");
  caesura.second_word = 0xFFFFFFFF;
  EXPECT_EQ(Written(caesura, {1, 1}), Hex("2C 01 00 00"        // position 300
                                          "01 00 00 00  78"    // label "x"
                                          "FF FF FF FF"));     // second word 4294967295
  EXPECT_EQ(Written(caesura, {1, 2}), Hex("AC 02"              // position 300
                                          "01  78"             // label "x"
                                          "FF FF FF FF 0F"));  // second word 4294967295
  EXPECT_EQ(Written(caesura, {2, 0}), R"({"position": 300, "label": "x", "secondWord": 4294967295})");
}

}  // namespace
