// Files of every kind and version, plain and encrypted.

#include "fuzz/seeds/sample_files.h"
#include "fuzz/seeds/seeds.h"

void fuzz::WriteSeeds(const SeedFolder& folder) {
  for (const SampleFile& file : SampleFiles()) {
    folder.Write("good-" + file.name, SeedBytes(file.bytes));
    folder.Write("good-encrypted-" + file.name, zuna_test::Encrypted(file.bytes, {}));
    folder.Write("bad-cut-" + file.name, SeedBytes(file.bytes.substr(0, file.bytes.size() / 2)));
  }
  folder.Write("bad-blank-before-a-text", SeedBytes(" {\"kind\": \"showdata\"}"));
  folder.Write("bad-wrong-key", zuna_test::Encrypted("content"));
  folder.Write("bad-nothing", {});
}
