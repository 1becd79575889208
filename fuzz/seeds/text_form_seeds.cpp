// Text forms of shows and logs.

#include "fuzz/seeds/sample_files.h"
#include "fuzz/seeds/seeds.h"

void fuzz::WriteSeeds(const SeedFolder& folder) {
  const std::string show = SampleFileOf(cmn::FileKind::kShow, {2, 0});
  folder.Write("good-show", SeedBytes(show));
  folder.Write("good-log", SeedBytes(SampleFileOf(cmn::FileKind::kLog, {2, 0})));
  folder.Write("good-show-without-songs",
               SeedBytes(R"({"fileVersion": "2.0", "kind": "showdata", "songs": [], "showName": "\u00e9"})"));
  folder.Write("bad-log-without-name", SeedBytes(R"({"kind": "logdata", "fileVersion": "2.0"})"));
  folder.Write("bad-byte-order-mark", SeedBytes("\xEF\xBB\xBF" + show));
  folder.Write("bad-cut", SeedBytes(show.substr(0, show.size() / 2)));
  folder.Write("bad-number", SeedBytes(R"({"kind": "showdata", "songs": [{"division": 65536}]})"));
  folder.Write("bad-depth", SeedBytes(std::string(500, '[')));
}
