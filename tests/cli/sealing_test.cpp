#include "cli/batch/sealing.h"

#include <gtest/gtest.h>

#include "cli/terminal/failure.h"
#include "tests/support/bytes.h"
#include "tests/support/legacy_samples.h"

namespace zuna_cli {
namespace {

/// A show with 257 songs, of which a legacy file counts one.
zuna_toolkit::Document NotReadBack() {
  const version0::SongData song = zuna_test::SampleLegacyShow().songs.at("12a");
  zuna_toolkit::LegacyShow legacy;
  for (int i = 0; i < 257; ++i) {
    const std::string number = std::to_string(i);
    legacy.show.songs[number] = song;
    legacy.show.songs[number].song_number = number;
  }
  return {std::move(legacy), {}, "in"};
}

TEST(Sealed, IsReadBackAndCompared) {
  const zuna_toolkit::Document document = NotReadBack();
  EXPECT_EQ(zuna_test::MessageOf<Failure>([&] { Sealed(document, {}, "out", true); }),
            "out: would not read back as it is written, and is not written; please report it");
  EXPECT_FALSE(Sealed(document, {}, "out", false).empty());
}

}  // namespace
}  // namespace zuna_cli
