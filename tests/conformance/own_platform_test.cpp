// The converter over the security library of examples/platform.

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "format_converter/logdata.h"
#include "format_converter/showdata.h"
#include "tests/support/legacy_samples.h"
#include "tests/support/temporary_folder.h"
#include "zuna_sec/cipher_stream.h"

namespace {

const CipherKey kKey{{1, 2, 3}, {4}};

template <typename Model>
std::string Bytes(const Model& model) {
  std::ostringstream os;
  model.write_binary(os);
  return os.str();
}

std::vector<std::uint8_t> Encrypted(const std::string& plaintext) {
  zuna_sec::TwoFishCipherStream stream(std::string(), kKey.key, kKey.iv);
  stream.GetStream() << plaintext;
  return stream.GetEncryptedBytes();
}

std::string Put(const zuna_test::TemporaryFolder& folder, const std::string& name,
                const std::string& plaintext) {
  const std::vector<std::uint8_t> bytes = Encrypted(plaintext);
  return folder.Put(name, {bytes.begin(), bytes.end()});
}

TEST(OwnPlatform, TakesAShowUpAndDown) {
  const zuna_test::TemporaryFolder folder;
  const std::string legacy = Bytes(zuna_test::SampleLegacyShow());
  const std::string show = Put(folder, "legacy.showdata", legacy);
  const std::string log = folder.Put("legacy.logdata", Bytes(zuna_test::SampleLegacyLog()));
  const std::string current = showdata_up(show, folder / "current.showdata", log, {1, 2}, kKey);
  EXPECT_EQ(showdata_down_vector(zuna_test::FileBytes(current), kKey.key, kKey.iv), Encrypted(legacy));
}

TEST(OwnPlatform, TakesALogUpAndDown) {
  const std::string legacy = Bytes(zuna_test::SampleLegacyLog());
  const auto current = logdata_up_vector(Encrypted(legacy), Encrypted(Bytes(zuna_test::SampleLegacyShow())),
                                         {1, 2}, kKey.key, kKey.iv);
  EXPECT_EQ(logdata_down_vector(current, kKey.key, kKey.iv), Encrypted(legacy));
}

}  // namespace
