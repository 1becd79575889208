// Bodies of binary shows.

#include "fuzz/framed.h"
#include "fuzz/round_trip.h"
#include "fuzz/seeds/seeds.h"
#include "tests/support/sample_models.h"

namespace {

std::vector<std::uint8_t> Body(const zuna_midi::ShowData& show, std::uint8_t minor) {
  const std::string input = fuzz::Unframed(minor, fuzz::Write(show, {1, minor}));
  return {input.begin(), input.end()};
}

}  // namespace

void fuzz::WriteSeeds(const SeedFolder& folder) {
  const zuna_midi::ShowData show = zuna_test::SampleShow();
  folder.Write("good-1.0", Body(show, 0));
  folder.Write("good-1.1", Body(show, 1));
  folder.Write("good-1.2", Body(show, 2));
  folder.Write("good-1.2-without-songs", Body({}, 2));
  std::vector<std::uint8_t> cut = Body(show, 2);
  cut.resize(cut.size() / 2);
  folder.Write("bad-1.2-cut", cut);
  folder.Write("bad-1.2-hostile-count", {2, 0, 0xFF, 0xFF, 0xFF, 0xFF, 0x0F});
  folder.Write("bad-no-input", {});
}
