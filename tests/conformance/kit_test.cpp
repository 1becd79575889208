// What the converter relies on in the utility library: the contracts in interfaces/kit/.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "kit/cout_buffer.h"
#include "kit/error.h"
#include "kit/format.h"
#include "kit/numeric_string_compare.h"
#include "kit/path.h"
#include "kit/uuid.h"
#include "tests/support/temporary_folder.h"

namespace {

TEST(Uuid, ItsBinaryFormIsSixteenBytes) {
  const std::string bytes("\0\1\2\3\4\5\6\7\x88\x99\xAA\xBB\xCC\xDD\xEE\xFF", 16);
  std::istringstream is(bytes + "more");
  const kit::UUID uuid(is, true);
  EXPECT_EQ(is.tellg(), 16);
  std::ostringstream os;
  uuid.WriteBinary(os, true);
  EXPECT_EQ(os.str(), bytes);
}

TEST(Uuid, ANewOneIsLikeNoOther) {
  const kit::UUID first;
  const kit::UUID second;
  const kit::UUID copy = first;
  EXPECT_TRUE(first == copy);
  EXPECT_FALSE(first == second);
}

TEST(Uuid, AShortReadFailsTheStream) {
  std::istringstream quiet("short");
  const kit::UUID uuid(quiet, true);
  EXPECT_TRUE(quiet.fail());
  std::istringstream throwing("short");
  throwing.exceptions(std::ios_base::failbit | std::ios_base::badbit);
  EXPECT_THROW(kit::UUID(throwing, true), std::ios_base::failure);
}

TEST(NumericStringCompare, OrdersNumbersByValue) {
  const std::vector<std::string> ordered = {"",    "1",   "1a", "2",  "2a",  "2b", "10",
                                            "10a", "100", "a1", "a2", "a10", "b",  "18446744073709551616"};
  const kit::NumericStringCompare less;
  EXPECT_TRUE(less("2", "10"));
  EXPECT_FALSE(less("10", "2"));
  EXPECT_TRUE(less("18446744073709551615", "18446744073709551616"));
  for (std::size_t i = 0; i + 2 < ordered.size(); ++i) {
    EXPECT_TRUE(less(ordered[i], ordered[i + 1])) << ordered[i] << " and " << ordered[i + 1];
  }
}

TEST(NumericStringCompare, IsAStrictTotalOrder) {
  const std::vector<std::string> texts = {"",  "0",  "00",  "1",   "01",   "001", "1a",   "01a", "a",
                                          "A", "a1", "a01", "1.1", "1.01", " 1",  "\xFF", "9",   "10"};
  const kit::NumericStringCompare less;
  for (const std::string& a : texts) {
    EXPECT_FALSE(less(a, a)) << a;
    for (const std::string& b : texts) {
      EXPECT_EQ(less(a, b) != less(b, a), a != b) << a << " and " << b;
      for (const std::string& c : texts) {
        EXPECT_FALSE(less(a, b) && less(b, c) && !less(a, c)) << a << ", " << b << ", " << c;
      }
    }
  }
}

TEST(Listdir, NamesEveryEntryInOrder) {
  const zuna_test::TemporaryFolder folder;
  folder.Put("b.showdata", "");
  folder.Put("a", "");
  folder.Put(".hidden", "");
  std::filesystem::create_directory(folder.path() / "c");
  EXPECT_EQ(kit::listdir(folder.path().string()),
            (std::vector<std::string>{".hidden", "a", "b.showdata", "c"}));
}

TEST(Listdir, AMissingDirectory) {
  const zuna_test::TemporaryFolder folder;
  EXPECT_THROW(kit::listdir(folder / "none"), kit::IoError);
}

TEST(Path, Extension) {
  EXPECT_EQ(kit::path::extension("folder/show.showdata"), ".showdata");
  EXPECT_EQ(kit::path::extension("a.b.showdata"), ".showdata");
  EXPECT_EQ(kit::path::extension("folder.showdata/name"), "");
  EXPECT_EQ(kit::path::extension(".showdata"), "");
}

TEST(Path, Join) {
  EXPECT_EQ(kit::path::Join("folder", "name"), "folder/name");
  EXPECT_EQ(kit::path::Join("folder/", "name"), "folder/name");
}

TEST(Format, WorksLikePrintf) {
  EXPECT_EQ(kit::format("event code %#x at %lld", 0x46, 12345678901LL), "event code 0x46 at 12345678901");
  EXPECT_EQ(kit::format("%s", std::string(100000, 'x').c_str()), std::string(100000, 'x'));
}

TEST(Errors, DeriveFromTheStandardOne) {
  const kit::IoError error("message");
  const kit::RuntimeError& base = error;
  const std::runtime_error& standard = base;
  EXPECT_STREQ(standard.what(), "message");
}

TEST(CoutBuffer, WritesToStandardOutputWhenItIsFlushedAndDestroyed) {
  testing::internal::CaptureStdout();
  {
    kit::CoutBuffer buffer;
    EXPECT_EQ(&buffer.stream(), &buffer.stream());
    buffer.stream() << "one, ";
    buffer.Flush();
    buffer.stream() << "two";
  }
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "one, two");
}

}  // namespace
