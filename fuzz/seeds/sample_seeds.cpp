// Files of every kind and version, decrypted.

#include "fuzz/seeds/sample_files.h"
#include "fuzz/seeds/seeds.h"

void fuzz::WriteSeeds(const SeedFolder& folder) {
  for (const SampleFile& file : SampleFiles()) folder.Write("good-" + file.name, SeedBytes(file.bytes));
  folder.Write("bad-nothing", {});
}
