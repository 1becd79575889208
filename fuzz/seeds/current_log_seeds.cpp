// Logs of every current version.

#include "fuzz/round_trip.h"
#include "fuzz/seeds/seeds.h"
#include "tests/support/sample_models.h"

namespace {

std::vector<std::uint8_t> Bytes(const std::string& text) { return {text.begin(), text.end()}; }

}  // namespace

void fuzz::WriteSeeds(const SeedFolder& folder) {
  const CL::ChangeLog log = zuna_test::SampleLog();
  const std::string text = Write(log, {2, 0});
  const std::string compact = Write(log, {1, 2});
  std::string unknown = compact;
  unknown[9] = 0;

  folder.Write("good-1.1", Bytes(Write(log, {1, 1})));
  folder.Write("good-1.2", Bytes(compact));
  folder.Write("good-2.0", Bytes(text));
  folder.Write("good-2.0-without-songs", Bytes(Write(CL::ChangeLog(), {2, 0})));
  folder.Write("good-2.0-version-last",
               Bytes(R"({"songLogs": [], "tagPair": [0, 1], "logLabel": {"bytes": "ff"}, "showName": "",)"
                     R"("identifier": "00112233-4455-6677-8899-aabbccddeeff", "kind": "logdata",)"
                     R"("fileVersion": "2.0"})"));
  folder.Write("unsupported-1.0", Bytes(unknown));
  folder.Write("unsupported-2.1", Bytes(R"({"kind": "logdata", "fileVersion": "2.1"})"));
  folder.Write("bad-1.2-cut", Bytes(compact.substr(0, compact.size() / 2)));
  folder.Write("bad-2.0-cut", Bytes(text.substr(0, text.size() / 2)));
  folder.Write(
      "bad-2.0-float-too-large",
      Bytes(R"({"songLogs": [{"tempoScales": [{"start": 0, "end": 1, "label": "", "value": 1e39}]}]})"));
}
