// Song numbers and song names.

#include <string>

#include "fuzz/seeds/seeds.h"

namespace {

std::vector<std::uint8_t> Lines(const std::string& lines) { return {lines.begin(), lines.end()}; }

}  // namespace

void fuzz::WriteSeeds(const SeedFolder& folder) {
  folder.Write("good-two-songs", Lines("1\nTune\n12a\nH\xC3\xA4\n"));
  folder.Write("good-same-names", Lines("1\nTune\n1\nTUNE\n1\nTune (2)\n1\nTune\n"));
  folder.Write("good-separators", Lines("1/2\n..\\a:b?\n"));
  folder.Write("good-long-name", Lines("1\n" + std::string(300, 'x') + "\n2\n" + std::string(300, 'x')));
  folder.Write("good-no-names", Lines("\n\n\n\n"));
  folder.Write("good-hidden", Lines(".\n.\n-\n-\n"));
  folder.Write("bad-text", Lines("\x01\n\xFF\xC3\n\x7F\n\xC2\x85"));
}
