// Files of every kind and version, with a position in them.

#include "fuzz/seeds/sample_files.h"
#include "fuzz/seeds/seeds.h"

void fuzz::WriteSeeds(const SeedFolder& folder) {
  for (const SampleFile& file : SampleFiles()) {
    folder.Write("good-" + file.name, SeedBytes('\5' + file.bytes));
  }
  folder.Write("good-version-last",
               SeedBytes(R"(0{"songs": [1], "kind": "showdata", "fileVersion": "2.0"})"));
  folder.Write("unsupported-version", SeedBytes(std::string("\0\0ZSH\2\0\0\0\1\3", 11)));
  folder.Write("bad-nothing", {0});
}
