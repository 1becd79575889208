// An empty path names no file. The encrypted stream takes one for a new plaintext, so every entry point
// refuses it before. Files that are not encrypted, and folders, are refused when they are opened.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "format_converter/attacca_fermata.h"
#include "format_converter/errors.h"
#include "format_converter/file_version.h"
#include "format_converter/inspection.h"
#include "format_converter/logdata.h"
#include "format_converter/showdata.h"
#include "kit/error.h"
#include "tests/format_converter/support/errors.h"
#include "tests/support/bytes.h"
#include "tests/support/encrypted.h"
#include "tests/support/legacy_samples.h"
#include "tests/support/sample_models.h"
#include "tests/support/temporary_folder.h"

namespace {

constexpr cmn::FileVersion kVersion{1, 2};
constexpr const char* kRefusal = "the path of an input is empty; give the path of a file";

void ExpectRefusal(const std::function<void()>& call) {
  EXPECT_EQ(zuna_test::MessageOf<kit::IoError>(call), kRefusal);
}

TEST(EmptyPath, IsNoFileThatHasAVersion) {
  ExpectRefusal([] { GetShowdataFileVersion(""); });
  testing::internal::CaptureStdout();
  ExpectRefusal([] { print_file_version(""); });
  EXPECT_EQ(testing::internal::GetCapturedStdout(), " has file version: ");
}

TEST(EmptyPath, IsNoInputOfAConversion) {
  const zuna_test::TemporaryFolder folder;
  const std::string output = folder / "out";
  const CipherKey& key = zuna_test::kKey;
  ExpectRefusal([&] { showdata_up("", output, output, kVersion, key); });
  ExpectRefusal([&] { showdata_down("", output, key); });
  ExpectRefusal([&] { showdata_converter("", output, kVersion, key); });
  ExpectRefusal([&] { logdata_up("", output, output, kVersion, key); });
  ExpectRefusal([&] { logdata_down("", output, key); });
  ExpectRefusal([&] { logdata_converter("", output, kVersion, key); });
  EXPECT_TRUE(folder.Names().empty());
}

TEST(EmptyPath, IsNoLogWhoseAttaccasAreCopied) {
  const zuna_test::TemporaryFolder folder;
  const auto bytes = zuna_test::Encrypted(zuna_test::WrittenAt(zuna_test::SampleLog(), kVersion));
  const std::string log = folder.Put("log", std::string(bytes.begin(), bytes.end()));
  ExpectRefusal([&] { copy_attaccas_and_fermatas("", log, zuna_test::kKey); });
  ExpectRefusal([&] { copy_attaccas_and_fermatas(log, "", zuna_test::kKey); });
}

TEST(EmptyPath, IsNoCompanion) {
  const zuna_test::TemporaryFolder folder;
  const auto put = [&](const std::string& name, const std::string& plaintext) {
    const auto bytes = zuna_test::Encrypted(plaintext);
    return folder.Put(name, std::string(bytes.begin(), bytes.end()));
  };
  const std::string show = put("show", zuna_test::Written(zuna_test::SampleLegacyShow()));
  const std::string log = put("log", zuna_test::Written(zuna_test::SampleLegacyLog()));
  EXPECT_EQ(zuna_test::MessageOf<kit::IoError>(
                [&] { showdata_up(show, folder / "out", "", kVersion, zuna_test::kKey); }),
            "versionZeroLogdataFile:  does not exist!");
  EXPECT_EQ(zuna_test::MessageOf<kit::IoError>(
                [&] { logdata_up(log, folder / "out", "", kVersion, zuna_test::kKey); }),
            "Failed reading " + zuna_test::StreamFailureText());
  EXPECT_THAT(folder.Names(), testing::ElementsAre("log", "show"));
}

TEST(EmptyPath, IsNothingToPrint) {
  EXPECT_EQ(zuna_test::MessageOf<FormatConverterIOError>([] { PrintProgramChanges(""); }),
            " does not appear to be a valid input file.");
  testing::internal::CaptureStdout();
  EXPECT_EQ(zuna_test::MessageOf<kit::IoError>([] {
              filter_showdata_by_version("", {0, 0}, kVersion);
            }),
            "\"\": an empty path names no file or folder; give a path");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "Showing files matching 0.0 <= FileVersion < 1.2\n");
}

}  // namespace
