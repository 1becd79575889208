// Bodies of binary logs.

#include "fuzz/framed.h"
#include "fuzz/round_trip.h"
#include "fuzz/seeds/seeds.h"
#include "tests/support/sample_models.h"

namespace {

std::vector<std::uint8_t> Body(const CL::ChangeLog& log, std::uint8_t minor) {
  const std::string input = fuzz::Unframed(minor, fuzz::Write(log, {1, minor}));
  return {input.begin(), input.end()};
}

}  // namespace

void fuzz::WriteSeeds(const SeedFolder& folder) {
  const CL::ChangeLog log = zuna_test::SampleLog();
  folder.Write("good-1.1", Body(log, 1));
  folder.Write("good-1.2", Body(log, 2));
  folder.Write("good-1.2-without-songs", Body({}, 2));
  std::vector<std::uint8_t> cut = Body(log, 2);
  cut.resize(cut.size() / 2);
  folder.Write("bad-1.2-cut", cut);
  std::vector<std::uint8_t> hostile = Body({}, 2);
  hostile.back() = 0xFF;  // the count of songs
  hostile.insert(hostile.end(), {0xFF, 0xFF, 0xFF, 0x0F});
  folder.Write("bad-1.2-hostile-count", hostile);
  folder.Write("bad-no-input", {});
}
