#include "format_converter/version0/containers/change_log_header.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "format_converter/version0/primitives/errors.h"
#include "tests/support/bytes.h"

namespace {

using version0::ChangeLogHeader;
using zuna_test::Bytes;
using zuna_test::MessageOf;
using zuna_test::Read;

const std::string kHeader = Bytes({
    'Z', 'U', 'N', 'A',                                                // magic
    36,  0,   0,   0,                                                  // log length
    0,   1,   2,   3,   4,   5,   6, 7, 8, 9, 10, 11, 12, 13, 14, 15,  // identifier
    5,   'F', 'i', 'r', 's', 't',                                      // log label
    5,   'O', 'p', 'e', 'r', 'a',                                      // show name
    1,   0,   2,   0,                                                  // log tag pair (1, 2)
});

TEST(ChangeLogHeader, Bytes) {
  const auto header = Read<ChangeLogHeader>(kHeader);
  EXPECT_EQ(header.identifier,
            kit::UUID(kit::UUID::Bytes{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15}));
  EXPECT_EQ(header.log_label, "First");
  EXPECT_EQ(header.show_name, "Opera");
  EXPECT_EQ(header.log_tag_pair, 0x00020001U);
  EXPECT_EQ(header.end_position, 8U + 36);
}

TEST(ChangeLogHeader, ReadsFromWhereTheStreamStands) {
  std::istringstream is("xx" + kHeader + "songs");
  is.seekg(2);
  EXPECT_EQ(version0::get_show_name(is), "Opera");
  EXPECT_EQ(is.tellg(), static_cast<std::streamoff>(2 + kHeader.size()));
  std::istringstream again("xx" + kHeader);
  again.seekg(2);
  EXPECT_EQ(ChangeLogHeader(again).end_position, 2U + 8 + 36);
}

TEST(ChangeLogHeader, NamesTheBytesThatAreNotItsMagic) {
  EXPECT_EQ(MessageOf<version0::IDError>([] { Read<ChangeLogHeader>("ZUNOabcd"); }),
            "Version0 ChangeLog must begin with ZUNA. Begins with ZUNO at 4");
  EXPECT_EQ(MessageOf<version0::IDError>([] { Read<ChangeLogHeader>("ZU"); }),
            "Version0 ChangeLog must begin with ZUNA. Begins with ZU at -1");
}

TEST(ChangeLogHeader, EveryTruncationIsRefused) {
  for (std::size_t length = 0; length < kHeader.size(); ++length) {
    std::istringstream throwing(kHeader.substr(0, length));
    throwing.exceptions(std::ios_base::failbit);
    EXPECT_THROW(version0::get_show_name(throwing), std::ios_base::failure) << length;
  }
  EXPECT_EQ(MessageOf<std::length_error>([] { Read<ChangeLogHeader>(kHeader.substr(0, 24)); }),
            "basic_string");
}

}  // namespace
