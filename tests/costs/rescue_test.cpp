// What a rescue takes of the worst inputs: those of all readers, damaged, and files that are made to keep it
// looking for songs.

#include <gtest/gtest.h>

#include <ctime>
#include <string>
#include <vector>

#include "tests/costs/worst_inputs.h"
#include "tests/support/cost_bounds.h"
#include "tests/support/encrypted.h"
#include "tests/support/heap_peak.h"
#include "tests/support/sample_models.h"
#include "tests/support/sanitized.h"
#include "toolkit/error.h"
#include "toolkit/rescue/rescue.h"

namespace {

using namespace std::string_literals;

constexpr double kMostSeconds = 10;  // of the processor, for some hundred KiB, with sanitizers

void ExpectCheap(const std::string& name, const std::string& plaintext) {
  const std::vector<std::uint8_t> bytes(plaintext.begin(), plaintext.end());
  const zuna_test::HeapPeak peak;
  const std::clock_t begin = std::clock();
  try {
    zuna_toolkit::Rescue(bytes, name, {}, zuna_toolkit::Accept::kEncryptedOrPlain);
  } catch (const zuna_toolkit::Error&) {
    // It may hold nothing to save.
  }
  const double seconds = static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
  EXPECT_LE(peak.bytes(), zuna_test::CommandHeapBound(bytes.size()))
      << name << ", " << bytes.size() << " bytes";
  EXPECT_LE(seconds, kMostSeconds) << name << ", " << bytes.size() << " bytes";
}

TEST(CostsOfRescue, OfTheWorstFiles) {
  constexpr std::size_t kStep = zuna_test::kSanitized ? 6 : 1;  // all of them would take minutes there
  std::size_t i = 0;
  for (const auto& [name, bytes] : zuna_test::WorstFiles()) {
    if (i++ % kStep != 0) continue;
    ExpectCheap(name + ", cut", bytes.substr(0, bytes.size() - 1));
    std::string damaged = bytes;
    damaged[damaged.size() / 2] = static_cast<char>(damaged[damaged.size() / 2] ^ 0x55);
    ExpectCheap(name + ", damaged", damaged);
  }
}

std::string Repeated(const std::string& part, std::size_t size) {
  std::string text;
  while (text.size() < size) text += part;
  return text;
}

constexpr std::size_t kSize = 300'000;  // bytes

TEST(CostsOfRescue, OfManyTimelines) {
  // Each states a body that lasts nearly to the end.
  ExpectCheap("timelines", "\x01" + Repeated("TLMN\0\0\0\0\0\0\0\2\0F\0\0\2\0"s, kSize));
  // Each length of a record leads to one of them.
  ExpectCheap("lengths to timelines", "\x01" + Repeated("\x04\0\0\0\1\0\0\0TLMN"s, kSize));
}

TEST(CostsOfRescue, OfManyRecordsBehindManyLengths) {
  std::string log = "ZUNA" + std::string(28, '\0');
  log += Repeated("\0\1\0\0\0\0\0\0\0\0"s, kSize / 2) +
         Repeated("B\xC\0\0\0B\x9\0\0\0\0\0\0\0\0\0\0"s, kSize / 2);
  ExpectCheap("lengths and edits", log);
}

TEST(CostsOfRescue, OfManyMarkers) {
  const std::string head = "ZUNA" + std::string(26, '\0');
  const std::string markers = "E\0\0\2\0"s;  // 131072 bytes of markers without a text follow
  ExpectCheap("markers", head + Repeated(markers, kSize / 2) + std::string(kSize / 2, '\0'));
  ExpectCheap("lists of markers", head + Repeated("E\0\0\0\0"s, kSize));
  // Each song log states as many bytes, and begins with such a list.
  const std::string song = "\0\0\2\0\1a\0\0\0\0\0"s + markers;
  ExpectCheap("songs with markers", head + Repeated(song, kSize / 2) + std::string(kSize / 2, '\0'));
}

TEST(CostsOfRescue, OfManySlipsAmongEvents) {
  // A song without voices that states more events than there are. A byte stands between every four of them.
  const std::string event = "\0\0\0\0\0\0\0\0\x90\x3C\x64\1"s;
  const std::string song = "\0\0\0\0\1a\1b\1\0\0\0\0\0\0\xFF\xFF\xFF\0"s;
  const std::string timeline = "TLMN\0\0\0\0\0\5\0\0\0F\0\0\0\0"s;
  ExpectCheap("slips", "\x01" + song + Repeated(event + event + event + event + "x", kSize) + timeline);
  ExpectCheap("events", "\x02" + song + Repeated("\x90\x3C\x64\1"s, kSize) + timeline + song + timeline);
  // Zeros where a head was, and events up to the timeline.
  ExpectCheap("no head", "\x01" + std::string(kSize, '\0') + Repeated(event, kSize) + timeline);
}

TEST(CostsOfRescue, OfManyJoinedFiles) {
  const std::string show = "\0ZSH\7\0\0\0\1\2\0\0"s;
  ExpectCheap("joined shows", Repeated(show, kSize));
  ExpectCheap("joined whole shows", Repeated(zuna_test::WrittenAt(zuna_test::SampleShow(), {1, 2}), kSize));
  ExpectCheap("joined texts", Repeated(R"({"kind": )", kSize));
  ExpectCheap("joined logs", "x" + Repeated("ZUNA", kSize));
}

/// A song of version 1.2 that has no more than its number, which has at most 127 bytes.
std::string SmallSong(const std::string& number) {
  return static_cast<char>(number.size()) + number + "\1b\1\0\0\0\0\0\0\0"s;
}

TEST(CostsOfRescue, OfManySongsOfOneNumber) {
  const std::string head = "\0ZSH\xFF\xFF\0\0\1\2\0\x7F"s;
  std::string counted;  // songs that have the numbers already which others of their number would get
  for (int i = 2; counted.size() < kSize / 2; ++i) counted += SmallSong("1 (" + std::to_string(i) + ")");
  ExpectCheap("songs of one number", head + Repeated(SmallSong("1"), kSize));
  ExpectCheap("songs of counted numbers", head + counted + Repeated(SmallSong("1"), kSize / 2));
  ExpectCheap("songs of one counted number", head + Repeated(SmallSong("1 (2)"), kSize));
  ExpectCheap(
      "songs of two long numbers",
      head + Repeated(SmallSong(std::string(120, '7')) + SmallSong(std::string(120, '7') + " (2)"), kSize));
}

TEST(CostsOfRescue, OfManyBeginningsOfSongs) {
  // A number, a name, and counts that lead far.
  ExpectCheap("songs of version 1.2",
              "\0ZSH\xFF\xFF\0\0\1\2\0\x7F"s + Repeated("\1a\1b\1\1\0\0\0\0\0\1\0\0\0\x7F"s, kSize));
  ExpectCheap("voices of version 1.2", "\0ZSH\xFF\xFF\0\0\1\2\0\x7F"s + Repeated("\1a\1b"s, kSize));
  ExpectCheap("songs of version 1.1",
              "\0ZSH\xFF\xFF\0\0\1\1\0\0\0\0\xFF\0\0\0"s + Repeated("\1\0\0\0a\1\0\0\0b"s, kSize));
}

TEST(CostsOfRescue, OfManySongsThatEndFarAway) {
  // No number, no name, and 75009 tempos, after which there is no count of bar labels.
  const std::string far = "\0\0\1\0\x81\xCA\x04"s;
  const std::string song = "\1a\1b\1\0\0\0\0\0\0\0"s;
  ExpectCheap("songs with far ends", "\0ZSH\xFF\xFF\0\0\1\2\0\x7F"s + Repeated(far + song + song, 3 * kSize));
}

TEST(CostsOfRescue, OfManyObjectsOfText) {
  const std::string front = R"({"songs": [)";
  ExpectCheap("empty objects", front + Repeated("{},", kSize));
  ExpectCheap("keys", front + Repeated("{\"songNumber\":},", kSize));
  ExpectCheap("open objects", front + Repeated("{\"songNumber\"", kSize));
  ExpectCheap("strings", front + Repeated("{\"songNumber\": \"", kSize));
  ExpectCheap("blanks before keys",
              front + std::string(kSize / 2, ' ') + Repeated("\"songNumber\"", kSize / 2));
}

}  // namespace
