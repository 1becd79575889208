// Key files.

#include <string>

#include "fuzz/seeds/seeds.h"

namespace {

std::vector<std::uint8_t> Text(const std::string& text) { return {text.begin(), text.end()}; }

}  // namespace

void fuzz::WriteSeeds(const SeedFolder& folder) {
  folder.Write("good-key-and-iv", Text("# a comment\nkey = 00112233445566778899aabbccddeeff\niv = 0011\n"));
  folder.Write("good-other-order", Text("iv=\nkey=AABBccdd # a comment\n"));
  folder.Write("good-mark-and-returns", Text("\xEF\xBB\xBFKEY = 0a\r\n\r\nIv = 0b\r\n"));
  folder.Write("good-empty-key", Text("key =\niv =\n"));
  folder.Write("bad-no-iv", Text("key = 0123456789abcdef"));
  folder.Write("bad-half-a-byte", Text("key = 012\niv = 01\n"));
  folder.Write("bad-digit", Text("key = 0123456789abcdefgh\niv = 01\n"));
  folder.Write("bad-second-key", Text("key = 0123456789\nkey = 9876543210\niv =\n"));
  folder.Write("bad-other-line", Text("password = 0123456789abcdef\n"));
}
