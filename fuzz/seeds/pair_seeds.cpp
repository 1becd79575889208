// Pairs of files of every kind and version.

#include "fuzz/pair.h"
#include "fuzz/seeds/sample_files.h"
#include "fuzz/seeds/seeds.h"

void fuzz::WriteSeeds(const SeedFolder& folder) {
  const std::vector<SampleFile> files = SampleFiles();
  for (std::size_t i = 0; i < files.size(); ++i) {
    const SampleFile& first = files[i];
    const SampleFile& second = files[(i + 1) % files.size()];
    folder.Write("good-" + first.name + "-twice", SeedBytes(PairInput(first.bytes, first.bytes)));
    folder.Write("good-" + first.name + "-" + second.name, SeedBytes(PairInput(first.bytes, second.bytes)));
  }
  const std::string show = SampleFileOf(cmn::FileKind::kShow, {2, 0});
  std::string changed = show;
  changed.replace(changed.find("500000"), 6, "600000");
  folder.Write("good-other-tempo", SeedBytes(PairInput(show, changed)));
  folder.Write("good-legacy-log-and-show", SeedBytes(PairInput(files[1].bytes, files[0].bytes)));
  folder.Write("bad-nothing", {});
}
