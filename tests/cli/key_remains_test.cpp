// Nothing of a key file stays in memory once its key is no longer needed.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "cli/shared/keys.h"
#include "tests/support/remains.h"
#include "tests/support/temporary_folder.h"
#include "toolkit/error.h"

namespace zuna_cli {
namespace {

constexpr const char* kHex = "5EC8E75E11223344A0A1A2A3A4A5A6A7B0B1B2B3B4B5B6B7";
const std::vector<std::uint8_t> kBytes = {0x5E, 0xC8, 0xE7, 0x5E, 0x11, 0x22, 0x33, 0x44,
                                          0xA0, 0xA1, 0xA2, 0xA3, 0xA4, 0xA5, 0xA6, 0xA7,
                                          0xB0, 0xB1, 0xB2, 0xB3, 0xB4, 0xB5, 0xB6, 0xB7};

remains::Secret SecretOf(std::vector<std::uint8_t> bytes) {
  for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(~byte);
  return remains::Secret(std::move(bytes));
}

/// Reads the key file `text` and lets the key go; looks for the bytes of the key and for their text.
void ExpectNothingRemains(const std::string& text) {
  const zuna_test::TemporaryFolder folder;
  const KeyOptions options{{folder.Put("key", text)}, false};
  const std::string hex = kHex;
  for (const auto& secret : {SecretOf(kBytes), SecretOf({hex.begin(), hex.end()})}) {
    const auto work = [&options] {
      try {
        EXPECT_EQ(LoadKeys(options, true).front().material().key, kBytes);
      } catch (const zuna_toolkit::Error&) {
        return;  // what is left behind by a failure is looked for too
      }
    };
    remains::WatchFreedMemory(&secret);
    work();
    EXPECT_EQ(remains::FoundInFreedMemory(), 0) << text;
    remains::WatchFreedMemory(nullptr);
    EXPECT_FALSE(secret.IsIn(remains::StackAfter(work))) << text;
  }
}

TEST(KeyRemains, NoneOfAKeyFile) { ExpectNothingRemains(std::string("key = ") + kHex + "\niv = 00\n"); }

TEST(KeyRemains, NoneOfAKeyFileWithAnError) {
  ExpectNothingRemains(std::string("key = ") + kHex + "\n");
  ExpectNothingRemains(std::string("key = ") + kHex + "0\niv = 00\n");
  ExpectNothingRemains(std::string("key = ") + kHex + "\niv = 0g\n");
}

}  // namespace
}  // namespace zuna_cli
