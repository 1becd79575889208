#include "toolkit/document/write.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "tests/support/bytes.h"
#include "tests/support/encrypted.h"
#include "tests/support/random_legacy_log.h"
#include "tests/support/random_legacy_show.h"
#include "tests/support/random_log.h"
#include "tests/support/random_show.h"
#include "tests/support/temporary_folder.h"
#include "toolkit/error.h"

namespace zuna_toolkit {
namespace {

using zuna_test::kKey;
using zuna_test::MessageOf;
using zuna_test::Written;

std::string PlaintextOf(const Document& document) {
  return zuna_test::Decrypted(CipherStreamOf(document, kKey)->GetEncryptedBytes());
}

TEST(CipherStreamOf, WritesEachModelAtItsVersion) {
  std::mt19937 random(1);
  const version0::ShowData legacy_show = zuna_test::RandomLegacyShow(random);
  EXPECT_EQ(PlaintextOf({LegacyShow{legacy_show}, {}, "name"}), Written(legacy_show));
  const version0::ChangeLogV0 legacy_log = zuna_test::RandomLegacyLog(random);
  EXPECT_EQ(PlaintextOf({LegacyLog{legacy_log}, {}, "name"}), Written(legacy_log));
  const zuna_midi::ShowData show = zuna_test::RandomShow(random);
  EXPECT_EQ(PlaintextOf({show, {1, 1}, "name"}), zuna_test::WrittenAt(show, {1, 1}));
  const CL::ChangeLog log = zuna_test::RandomLog(random);
  EXPECT_EQ(PlaintextOf({log, {2, 0}, "name"}), zuna_test::WrittenAt(log, {2, 0}));
}

TEST(CipherStreamOf, NamesTheDocumentThatItsVersionCannotHold) {
  version0::ShowData show;
  show.songs["1"].song_name = std::string(256, 'x');
  EXPECT_THAT(MessageOf<Error>([&] {
                CipherStreamOf({LegacyShow{show}, {}, "name"}, kKey);
              }),
              testing::StartsWith("name: String length is limited to 256 characters"));
}

TEST(WriteDocument, PutsTheFileInItsPlace) {
  std::mt19937 random(2);
  const zuna_test::TemporaryFolder folder;
  const zuna_midi::ShowData show = zuna_test::RandomShow(random);
  WriteDocument({show, {1, 2}, "name"}, folder / "out", kKey);
  EXPECT_EQ(zuna_test::Decrypted(folder / "out"), zuna_test::WrittenAt(show, {1, 2}));
  const std::string message = MessageOf<Error>([&] {
    WriteDocument({show, {1, 2}, "name"}, folder / "no/such/folder", kKey);
  });
  EXPECT_THAT(message, testing::StartsWith((folder / "no/such/folder") + ": "));
}

TEST(Document, HasOnlyVersionsThatItsModelIsWrittenIn) {
  EXPECT_EQ(MessageOf<Error>([] {
              Document(CL::ChangeLog(), {1, 0}, "name");
            }),
            "name: logs have no version 1.0; use one of 1.1, 1.2, 2.0");
  EXPECT_EQ(MessageOf<Error>([] {
              Document(zuna_midi::ShowData(), {0, 0}, "name");
            }),
            "name: shows have no version 0.0; use one of 1.0, 1.1, 1.2, 2.0");
  EXPECT_EQ(MessageOf<Error>([] {
              Document(LegacyShow(), {1, 2}, "name");
            }),
            "name: shows have no version 1.2; use one of 1.0, 1.1, 1.2, 2.0");
  EXPECT_EQ(TypeText(Document(LegacyLog(), {}, "name").type()), "a log of version 0.0");
}

}  // namespace
}  // namespace zuna_toolkit
