// Shows of every current version.

#include "fuzz/round_trip.h"
#include "fuzz/seeds/seeds.h"
#include "tests/support/sample_models.h"

namespace {

std::vector<std::uint8_t> Bytes(const std::string& text) { return {text.begin(), text.end()}; }

}  // namespace

void fuzz::WriteSeeds(const SeedFolder& folder) {
  const zuna_midi::ShowData show = zuna_test::SampleShow();
  const std::string text = Write(show, {2, 0});
  const std::string compact = Write(show, {1, 2});
  std::string unknown = compact;
  unknown[9] = 3;

  folder.Write("good-1.0", Bytes(Write(show, {1, 0})));
  folder.Write("good-1.1", Bytes(Write(show, {1, 1})));
  folder.Write("good-1.2", Bytes(compact));
  folder.Write("good-2.0", Bytes(text));
  folder.Write("good-2.0-without-songs", Bytes(Write(zuna_midi::ShowData(), {2, 0})));
  folder.Write(
      "good-2.0-version-last",
      Bytes(R"({"songs": [], "showName": {"bytes": "ff"}, "kind": "showdata", "fileVersion": "2.0"})"));
  folder.Write("unsupported-1.3", Bytes(unknown));
  folder.Write("unsupported-2.1", Bytes(R"({"kind": "showdata", "fileVersion": "2.1"})"));
  folder.Write("bad-1.2-cut", Bytes(compact.substr(0, compact.size() / 2)));
  folder.Write("bad-2.0-cut", Bytes(text.substr(0, text.size() / 2)));
  folder.Write("bad-2.0-duplicate-key", Bytes(R"({"kind": "showdata", "kind": "showdata"})"));
}
