// Damaged, foreign and unsupported files of both kinds.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <sstream>
#include <stdexcept>

#include "tests/platform/core/file/kinds.h"
#include "tests/support/sanitized.h"

namespace {

using zuna_test::BodyOf;
using zuna_test::Hex;
using zuna_test::ReadError;
using zuna_test::Versions;

/// Which byte of a good file was changed, and how.
struct Change {
  std::size_t place;
  int bits;

  friend std::ostream& operator<<(std::ostream& os, const Change& change) {
    return os << "byte " << change.place << " xor " << change.bits;
  }
};

/// Calls `check(bad, change)` for the files that differ from a good one in one byte.
template <typename Check>
void ChangeEveryByte(const std::string& good, const Check& check) {
  for (std::size_t place = 0; place < good.size(); ++place) {
    for (int bits = 1; bits < 256; bits = zuna_test::NextChange(bits)) {
      std::string bad = good;
      bad[place] = static_cast<char>(bad[place] ^ bits);
      check(bad, Change{place, bits});
    }
  }
}

/// What is read is written as something that reads back the same. Whether the file was read.
template <typename Model>
bool IsReadAndReadsBack(const std::string& file, cmn::FileVersion version, const Change& change) {
  if (!ReadError<Model>(file).empty()) return false;
  const Model model = zuna_test::Read<Model>(file);
  const Model again = zuna_test::Read<Model>(zuna_test::Write(model, version));
  EXPECT_EQ(zuna_test::FirstDifference(again, model), "") << change;
  return true;
}

template <typename Kind>
class DamagedFile : public testing::Test {
 protected:
  using Model = typename Kind::Model;

  static std::string Error(const std::string& bytes) { return ReadError<Model>(bytes); }

  static std::string Name() { return std::string(cmn::KindName(Kind::kKind)); }
  static std::string OtherName() { return std::string(cmn::KindName(Kind::kOther)); }

  /// The header of a file of this kind that states `size` bytes and this version.
  static std::string Header(const std::string& size, const std::string& version) {
    return std::string(cmn::BinaryMagic(Kind::kKind)) + Hex(size) + Hex(version);
  }
};

class KindNames {
 public:
  template <typename Kind>
  static std::string GetName(int) {
    return std::string(cmn::KindName(Kind::kKind));
  }
};
using Kinds = testing::Types<zuna_test::ShowKind, zuna_test::LogKind>;
TYPED_TEST_SUITE(DamagedFile, Kinds, KindNames);

constexpr const char* kRemedy = "; get an undamaged copy of the file";
constexpr const char* kCompleteCopy = "; get a complete copy of the file";

/// The error that reading `bytes` gives, which is of this class.
template <typename Model, typename Error>
Error ErrorAs(const std::string& bytes) {
  std::istringstream is(bytes);
  try {
    const Model model(is);
  } catch (const Error& error) {
    return error;
  }
  throw std::logic_error("nothing was thrown");
}

TYPED_TEST(DamagedFile, EveryTruncationIsRefused) {
  for (const cmn::FileVersion& version : Versions<TypeParam>()) {
    const std::string good = TypeParam::SampleFile(version);
    // The last byte of a text is the end of its last line; the text is whole without it.
    const std::size_t whole = version.major == 2 ? good.size() - 1 : good.size();
    for (std::size_t size = 0; size < whole; ++size) {
      EXPECT_NE(this->Error(good.substr(0, size)), "") << size;
    }
  }
}

TYPED_TEST(DamagedFile, EveryChangedByteIsFoundWhereThereIsAChecksum) {
  for (const cmn::FileVersion& version : {cmn::FileVersion{1, 1}, {1, 2}}) {
    ChangeEveryByte(TypeParam::SampleFile(version), [](const std::string& bad, const Change& change) {
      ASSERT_NE(ReadError<typename TypeParam::Model>(bad), "") << change;
    });
  }
}

TYPED_TEST(DamagedFile, EveryChangedByteOfATextIsRefusedOrReadAsWhatItSays) {
  int read = 0;
  std::string good = TypeParam::SampleFile({2, 0});
  const auto is_blank = [](char c) { return c == ' ' || c == '\n'; };
  good.erase(std::remove_if(good.begin(), good.end(), is_blank), good.end());
  ChangeEveryByte(good, [&](const std::string& bad, const Change& change) {
    if (IsReadAndReadsBack<typename TypeParam::Model>(bad, {2, 0}, change)) ++read;
  });
  EXPECT_GT(read, 0);
}

TYPED_TEST(DamagedFile, EveryChangedByteOfABodyIsRefusedOrReadAsWhatItSays) {
  for (const cmn::FileVersion& version : zuna_test::BinaryVersions<TypeParam>()) {
    int read = 0;
    ChangeEveryByte(BodyOf(TypeParam::SampleFile(version)),
                    [&](const std::string& bad, const Change& change) {
                      const std::string file = zuna_test::BinaryFile(TypeParam::kKind, version, bad);
                      if (IsReadAndReadsBack<typename TypeParam::Model>(file, version, change)) ++read;
                    });
    EXPECT_GT(read, 0);
  }
}

TEST(FileWithoutChecksum, EveryChangedByteIsRefusedOrReadAsWhatItSays) {
  int read = 0;
  ChangeEveryByte(zuna_test::SampleShowFile({1, 0}), [&](const std::string& bad, const Change& change) {
    if (IsReadAndReadsBack<zuna_midi::ShowData>(bad, {1, 0}, change)) ++read;
  });
  EXPECT_GT(read, 0);
}

TYPED_TEST(DamagedFile, IsToldFromAFileWithWrongFields) {
  for (const cmn::FileVersion& version : {cmn::FileVersion{1, 1}, {1, 2}}) {
    std::string bad = TypeParam::SampleFile(version);
    bad[10] = '\x7F';  // the length of the show's name
    EXPECT_THAT(this->Error(bad),
                testing::AllOf(
                    testing::HasSubstr(", and the checksum is wrong: the damage is here or before (at byte "),
                    testing::EndsWith(kRemedy)));
  }
}

TYPED_TEST(DamagedFile, SaysWhereReadingStops) {
  const auto error = [](const std::string& bytes) {
    return ErrorAs<typename TypeParam::Model, cmn::DataError>(bytes);
  };
  for (const cmn::FileVersion& version : {cmn::FileVersion{1, 1}, {1, 2}}) {
    const std::string good = TypeParam::SampleFile(version);
    std::string bad = good;
    bad.back() = static_cast<char>(bad.back() ^ 1);  // the checksum
    EXPECT_EQ(this->Error(bad),
              "The " + this->Name() +
                  " file is damaged: its checksum is wrong, though every field can be read, so "
                  "nothing tells which bytes were changed" +
                  kRemedy);
    EXPECT_EQ(error(bad).offset(), std::nullopt);
    bool is_song_told = false;
    for (std::size_t place = 10; place < good.size() - 4; ++place) {
      bad = good;
      bad[place] = static_cast<char>(bad[place] ^ 0x80);
      const cmn::DataError told = error(bad);
      is_song_told = is_song_told || (told.song() && told.offset());
      EXPECT_EQ(told.offset().has_value(), !told.field().empty()) << told.what();
      EXPECT_LT(told.offset().value_or(0), good.size());
    }
    EXPECT_TRUE(is_song_told);
  }
}

TYPED_TEST(DamagedFile, CutOffFileSaysInWhichSongItEnds) {
  for (const cmn::FileVersion& version : zuna_test::BinaryVersions<TypeParam>()) {
    const std::string good = TypeParam::SampleFile(version);
    const std::string cut = good.substr(0, good.size() - 6);
    const auto error = ErrorAs<typename TypeParam::Model, cmn::CutOffError>(cut);
    EXPECT_TRUE(error.song());
    EXPECT_EQ(error.offset(), cut.size());
    EXPECT_NE(error.field(), "");
  }
}

TYPED_TEST(DamagedFile, CutOffFileSaysHowMuchIsPresent) {
  const std::string good = TypeParam::SampleFile({1, 1});
  const std::string cut_off = "The " + this->Name() + " file is cut off: ";
  EXPECT_THAT(this->Error(good.substr(0, 100)),
              testing::EndsWith(cut_off + "its header states " + std::to_string(good.size()) +
                                " bytes, only 100 are present (at byte 100)" + kCompleteCopy));
  EXPECT_EQ(this->Error(good.substr(0, 9)),
            cut_off + "it has 9 bytes and its header needs 10 (at byte 9)" + kCompleteCopy);
  EXPECT_EQ(this->Error(""), cut_off + "it has 0 bytes and its header needs 10 (at byte 0)" + kCompleteCopy);
}

TYPED_TEST(DamagedFile, BytesAfterTheEndAreRefused) {
  for (const cmn::FileVersion& version : zuna_test::BinaryVersions<TypeParam>()) {
    const std::string good = TypeParam::SampleFile(version);
    EXPECT_EQ(this->Error(good + "x"), "The " + this->Name() + " file has extra bytes after the " +
                                           std::to_string(good.size()) + " that its header states (at byte " +
                                           std::to_string(good.size()) + "); get another copy of the file");
    EXPECT_EQ((ErrorAs<typename TypeParam::Model, cmn::BytesAfterEndError>(good + "x").offset()),
              good.size());
  }
  EXPECT_NE(this->Error(TypeParam::SampleFile({2, 0}) + "x"), "");
}

TYPED_TEST(DamagedFile, HeaderThatStatesMoreThanIsPresentCostsNoMemory) {
  EXPECT_EQ(this->Error(this->Header("FFFFFFFF", "0102")),
            "showName: The " + this->Name() +
                " file is cut off: its header states 4294967303 bytes, only 10 are present (at byte 10)" +
                kCompleteCopy);
}

TYPED_TEST(DamagedFile, HeaderThatStatesFewerBytesThanItHas) {
  const auto expected = [this](const std::string& size) {
    return "The " + this->Name() + " file is damaged: its header states " + size +
           " bytes, fewer than any file has" + kRemedy;
  };
  EXPECT_EQ(this->Error(this->Header("05000000", "0101") + Hex("000000")), expected("13"));
  if (TypeParam::kKind == cmn::FileKind::kShow) {
    EXPECT_EQ(this->Error(this->Header("01000000", "0100")), expected("9"));
  }
}

TYPED_TEST(DamagedFile, ForeignFileIsNamed) {
  const std::string foreign = "This is not a current " + this->Name() + " file: it has no header; a legacy " +
                              this->Name() + " (version 0.0) must be converted up first";
  EXPECT_EQ(this->Error("\x01\x03 a legacy file"), foreign);
  EXPECT_EQ(this->Error("\x14\x01\x01\x01 a legacy file"), foreign);
  EXPECT_EQ(this->Error("x"), foreign);
  EXPECT_EQ(this->Error(std::string("\0ZXX\0\0\0\0\0\0\0", 11)), foreign);
  EXPECT_EQ(this->Error(std::string(cmn::BinaryMagic(TypeParam::kOther)) + Hex("02000000 0102")),
            "This is a current " + this->OtherName() + " file, not a " + this->Name() + " file");
}

TYPED_TEST(DamagedFile, UnsupportedVersionNamesTheSupportedOnes) {
  const bool show = TypeParam::kKind == cmn::FileKind::kShow;
  const auto expected = [&](const std::string& version, const std::string& where) {
    return (show ? "Show" : "Log") + (" file version " + version + " is not supported " + where) +
           "; the supported versions are " + (show ? "1.0, 1.1 and 1.2" : "1.1 and 1.2") +
           " (binary) and 2.0 (text)";
  };
  EXPECT_EQ(this->Error(this->Header("02000000", "0103")), expected("1.3", "in binary files"));
  EXPECT_EQ(this->Error(this->Header("02000000", "0200")), expected("2.0", "in binary files"));
  if (!show) {
    EXPECT_EQ(this->Error(this->Header("02000000", "0100")), expected("1.0", "in binary files"));
  }
  const std::string kind = show ? "showdata" : "logdata";
  for (const char* version : {"1.1", "1.2", "3.0"}) {
    const std::string text = R"({"kind": ")" + kind + R"(", "fileVersion": ")" + version + R"(", )";
    EXPECT_EQ(this->Error(text),
              "fileVersion: " + expected(version, "in the text form (at byte " +
                                                      std::to_string(text.find(version) + 3) + ")"));
  }
}

}  // namespace
