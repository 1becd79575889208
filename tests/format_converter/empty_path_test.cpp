// An empty path names no file. The encrypted stream takes one for a new plaintext, so every entry point
// refuses it before.

#include <gtest/gtest.h>

#include <functional>

#include "format_converter/attacca_fermata.h"
#include "format_converter/file_version.h"
#include "format_converter/logdata.h"
#include "format_converter/showdata.h"
#include "kit/error.h"
#include "tests/support/bytes.h"
#include "tests/support/encrypted.h"
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

}  // namespace
