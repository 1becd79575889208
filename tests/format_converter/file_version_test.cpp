#include "format_converter/file_version.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "cmn/version_probe.h"
#include "format_converter/errors.h"
#include "format_converter/version0/primitives/errors.h"
#include "kit/error.h"
#include "tests/format_converter/support/line_flushes.h"
#include "tests/support/bytes.h"
#include "tests/support/encrypted.h"
#include "tests/support/temporary_folder.h"
#include "zuna_sec/errors.h"

namespace {

using zuna_test::Bytes;
using zuna_test::MessageOf;
using Version = cmn::FileVersion;

/// The header of a current file.
std::string Header(const std::string& magic, int major, int minor) {
  return magic + Bytes({2, 0, 0, 0, major, minor});
}

const std::string kShowMagic = Bytes({0x00, 'Z', 'S', 'H'});
const std::string kLogMagic = Bytes({0x00, 'Z', 'L', 'G'});

std::string Put(const zuna_test::TemporaryFolder& folder, const std::string& plaintext,
                const CipherKey& key) {
  const auto bytes = zuna_test::Encrypted(plaintext, key);
  return folder.Put("a.showdata", std::string(bytes.begin(), bytes.end()));
}

TEST(FileVersion, IsProbedWhereverTheStreamStands) {
  std::istringstream show(Header(kShowMagic, 1, 10));
  show.seekg(5);
  EXPECT_EQ(WrapGetShowdataVersion(show), (Version{1, 10}));
  EXPECT_EQ(show.tellg(), 5) << "the wrapper does not reposition the stream";
  std::istringstream log(Header(kLogMagic, 2, 1));
  EXPECT_EQ(WrapGetLogdataVersion(log), (Version{2, 1}));
}

TEST(FileVersion, OfALegacyLogIsZeroAfterItsFirstEightBytes) {
  std::istringstream log("ZUNA" + Bytes({30, 0, 0, 0}) + std::string(30, '\0'));
  log.seekg(8);
  EXPECT_EQ(WrapGetLogdataVersion(log), (Version{0, 0}));
}

TEST(FileVersion, ShortDataOnAClearStreamIsTheProbesAffair) {
  std::istringstream is("ab");
  EXPECT_EQ(WrapGetShowdataVersion(is), (Version{0, 0}));
  EXPECT_EQ(WrapGetLogdataVersion(is), (Version{0, 0}));
}

TEST(FileVersion, StreamFailureBecomesAnIoError) {
  std::istringstream is("");
  is.exceptions(std::ios_base::failbit);
  const std::string text = MessageOf<std::ios_base::failure>([&] { cmn::get_showdata_version(is); });
  EXPECT_EQ(MessageOf<kit::IoError>([&] { WrapGetShowdataVersion(is); }), "Failed reading istream" + text);
  EXPECT_EQ(MessageOf<kit::IoError>([&] { WrapGetLogdataVersion(is); }), "Failed reading istream" + text);
}

TEST(FileVersion, IsReadFromAFileEncryptedWithAnEmptyKey) {
  const zuna_test::TemporaryFolder folder;
  EXPECT_EQ(GetShowdataFileVersion(Put(folder, Header(kShowMagic, 1, 2), {})), (Version{1, 2}));
  const std::string other = Put(folder, Header(kShowMagic, 1, 2), zuna_test::kKey);
  EXPECT_THROW(GetShowdataFileVersion(other), zuna_sec::WrongKeyError);
}

TEST(FileVersion, IsPrintedMajorFirst) {
  const zuna_test::TemporaryFolder folder;
  const std::string path = Put(folder, Header(kShowMagic, 1, 10), {});
  const auto printed = zuna_test::Print([&] { print_file_version(path); });
  EXPECT_EQ(printed.text, path + " has file version: 1.10\n");
  EXPECT_EQ(printed.unflushed_lines, 0);
}

TEST(FileVersion, OfALegacyShowIsPrintedAsZero) {
  const zuna_test::TemporaryFolder folder;
  const std::string path = Put(folder, Bytes({1, 40, 0, 0, 0}), {});
  testing::internal::CaptureStdout();
  print_file_version(path);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), path + " has file version: 0.0\n");
}

TEST(FileVersion, OfACurrentLogIsPrintedAsZero) {
  // The file is probed as a show, which it does not begin like.
  const zuna_test::TemporaryFolder folder;
  const std::string path = Put(folder, Header(kLogMagic, 1, 2), {});
  EXPECT_EQ(zuna_test::Print([&] { print_file_version(path); }).text, path + " has file version: 0.0\n");
}

TEST(FileVersion, LabelIsPrintedBeforeTheFileIsOpened) {
  testing::internal::CaptureStdout();
  EXPECT_THROW(print_file_version("/no/such/file"), kit::IoError);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "/no/such/file has file version: ");
}

template <typename Caught, typename Thrown>
bool Catches() {
  try {
    throw Thrown("text");
  } catch (const Caught& error) {
    return std::string(error.what()) == "text";
  } catch (...) {
    return false;
  }
}

TEST(ErrorTypes, AreCaughtByTheirBasesOnly) {
  EXPECT_TRUE((Catches<std::logic_error, FormatConverterError>()));
  EXPECT_FALSE((Catches<std::runtime_error, FormatConverterError>()));
  EXPECT_FALSE((Catches<FormatConverterError, std::logic_error>()));
  EXPECT_TRUE((Catches<std::runtime_error, FormatConverterIOError>()));
  EXPECT_FALSE((Catches<kit::RuntimeError, FormatConverterIOError>()));
  EXPECT_TRUE((Catches<kit::RuntimeError, kit::IoError>()));
  EXPECT_TRUE((Catches<std::runtime_error, kit::IoError>()));
  EXPECT_FALSE((Catches<FormatConverterError, kit::IoError>()));
  EXPECT_TRUE((Catches<version0::Version0Error, version0::IDError>()));
  EXPECT_TRUE((Catches<version0::Version0Error, version0::EventCodeError>()));
  EXPECT_TRUE((Catches<version0::Version0Error, version0::TrackCountError>()));
  EXPECT_TRUE((Catches<std::runtime_error, version0::IDError>()));
}

}  // namespace
