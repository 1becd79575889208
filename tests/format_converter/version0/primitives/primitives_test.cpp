#include "format_converter/version0/primitives/internal/primitives.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>

#include "tests/format_converter/support/errors.h"
#include "tests/format_converter/support/line_flushes.h"
#include "tests/support/bytes.h"

namespace {

using zuna_test::Bytes;
using zuna_test::MessageOf;

TEST(Primitives, NumbersAreLittleEndian) {
  std::ostringstream os;
  version0::put_u8(os, 0xFE);
  version0::put_u16(os, 258);
  version0::put_u32(os, 1);
  version0::put_u32(os, 0x04030201);
  version0::put_float(os, 1.5F);
  EXPECT_EQ(os.str(), Bytes({
                          0xFE,                    // 8 bits
                          0x02, 0x01,              // 258
                          0x01, 0x00, 0x00, 0x00,  // 1
                          0x01, 0x02, 0x03, 0x04,  // 0x04030201
                          0x00, 0x00, 0xC0, 0x3F,  // 1.5
                      }));
  std::istringstream is(os.str());
  EXPECT_EQ(version0::get_u8(is), 0xFE);
  EXPECT_EQ(version0::get_u16(is), 258);
  EXPECT_EQ(version0::get_u32(is), 1U);
  EXPECT_EQ(version0::get_u32(is), 0x04030201U);
  EXPECT_EQ(version0::get_float(is), 1.5F);
}

TEST(Primitives, ShortReadKeepsWhatWasDeliveredAndFailsTheStream) {
  std::istringstream is(Bytes({0x05, 0x01}));
  EXPECT_EQ(version0::get_u32(is), 0x0105U);
  EXPECT_TRUE(is.fail());
}

TEST(Primitives, StringHasOneLengthByte) {
  std::ostringstream os;
  version0::put_string(os, "Tune");
  version0::put_string(os, "");
  EXPECT_EQ(os.str(), Bytes({4, 'T', 'u', 'n', 'e', 0}));
  std::istringstream is(os.str());
  EXPECT_EQ(version0::get_string(is), "Tune");
  EXPECT_EQ(version0::get_string(is), "");
}

TEST(Primitives, StringOf255BytesRoundTripsAnd256AreRefused) {
  const std::string longest(255, 'x');
  std::ostringstream os;
  version0::put_string(os, longest);
  std::istringstream is(os.str());
  EXPECT_EQ(version0::get_string(is), longest);

  std::ostringstream refused;
  version0::put_u32(refused, 7);
  EXPECT_EQ(MessageOf<std::length_error>([&] { version0::put_string(refused, longest + "x"); }),
            "String length is limited to 256 characters");
  EXPECT_EQ(refused.str(), Bytes({7, 0, 0, 0})) << "the length byte must not be written";
}

TEST(Primitives, StringKeepsNulBytesAndPadsAShortRead) {
  std::istringstream is(Bytes({3, 'a', 0, 'b', 3, 'c'}));
  EXPECT_EQ(version0::get_string(is), std::string("a\0b", 3));
  EXPECT_EQ(version0::get_string(is), std::string("c\0\0", 3));
  EXPECT_TRUE(is.fail());
}

TEST(Primitives, StringAtTheEndOfTheStreamThrows) {
  std::istringstream is("");
  EXPECT_EQ(zuna_test::ExactMessageOf<std::length_error>([&] { version0::get_string(is); }), "basic_string");
}

TEST(Primitives, StringAtTheEndOfAThrowingStreamIsItsFailure) {
  std::istringstream is("");
  is.exceptions(std::ios_base::failbit);
  EXPECT_THROW(version0::get_string(is), std::ios_base::failure);
}

TEST(Primitives, PrintsTheReadPosition) {
  std::istringstream is("abcdef");
  is.seekg(4);
  const auto print = [&] { version0::print_istream_pos(is); };
  EXPECT_EQ(zuna_test::Print(print).text, "4\n");
  EXPECT_EQ(zuna_test::Print(print).unflushed_lines, 0);
  EXPECT_EQ(is.tellg(), 4);
  is.setstate(std::ios_base::failbit);
  EXPECT_EQ(zuna_test::Print(print).text, "-1\n");
}

TEST(Primitives, WritePositionOfAFailedStreamIsAllOnes) {
  std::ostringstream os;
  os << "abc";
  EXPECT_EQ(version0::ostream_tellp(os), 3U);
  os.setstate(std::ios_base::failbit);
  EXPECT_EQ(version0::ostream_tellp(os), 0xFFFFFFFFU);
  os.clear(std::ios_base::badbit);
  EXPECT_EQ(version0::ostream_tellp(os), 0xFFFFFFFFU);
}

/// Stands at a position beyond 32 bits.
class FarAway : public std::stringbuf {
 protected:
  pos_type seekoff(off_type, std::ios_base::seekdir, std::ios_base::openmode) override {
    return {off_type{0x1'0000'0005}};
  }
};

TEST(Primitives, WritePositionIsCountedIn32Bits) {
  FarAway buffer;
  std::ostream os(&buffer);
  EXPECT_EQ(version0::ostream_tellp(os), 5U);
}

TEST(Primitives, WritePositionNeverFlushesATiedStream) {
  zuna_test::LineFlushes buffer;
  std::ostream tied(&buffer);
  std::ostringstream os;
  os.tie(&tied);
  version0::ostream_tellp(os);
  EXPECT_EQ(buffer.flushes(), 0);
}

TEST(LengthField, IsPatchedOnceTheBodyIsWritten) {
  std::ostringstream os;
  os << "<";
  const version0::LengthField length(os);
  os << "body";
  length.patch(os);
  os << ">";
  EXPECT_EQ(os.str(), Bytes({'<', 4, 0, 0, 0, 'b', 'o', 'd', 'y', '>'}));
}

/// Takes bytes but cannot seek.
class Unseekable : public std::stringbuf {
 protected:
  pos_type seekpos(pos_type, std::ios_base::openmode) override { return pos_type(off_type(-1)); }
};

TEST(LengthField, FailsTheStreamWhereItCannotSeek) {
  Unseekable buffer;
  std::ostream os(&buffer);
  const version0::LengthField length(os);
  os << "body";
  EXPECT_TRUE(os.good());
  length.patch(os);
  EXPECT_TRUE(os.fail());
  EXPECT_EQ(buffer.str(), Bytes({0, 0, 0, 0, 'b', 'o', 'd', 'y'})) << "the number is not written elsewhere";
}

}  // namespace
