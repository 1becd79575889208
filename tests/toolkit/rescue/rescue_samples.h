// Shows and logs of many songs, and what comes back of them.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "tests/support/bytes.h"
#include "tests/support/encrypted.h"
#include "tests/support/sanitized.h"
#include "toolkit/rescue/rescue.h"

namespace zuna_test {

/// A part of a file.
struct Part {
  std::string number;
  std::size_t begin;
  std::size_t end;
  std::string bytes;  ///< of the song, or what its writer writes for a file with this song alone
};

/// What is left of a plain file.
inline zuna_toolkit::Rescued RescuedOf(const std::string& plaintext) {
  return zuna_toolkit::Rescue(FromText(plaintext), "file", {}, zuna_toolkit::Accept::kEncryptedOrPlain);
}

/// `bytes` with so many bytes changed, whose offsets are in `offsets` then.
inline std::string Damaged(std::string bytes, std::size_t count, std::mt19937& random,
                           std::set<std::size_t>& offsets) {
  while (offsets.size() < count) {
    const std::size_t offset = random() % bytes.size();
    if (!offsets.insert(offset).second) continue;
    bytes[offset] = static_cast<char>(static_cast<unsigned>(bytes[offset]) ^ (1 + random() % 255));
  }
  return bytes;
}

/// Whether one of the offsets is in `part`.
inline bool Touches(const std::set<std::size_t>& offsets, const Part& part) {
  const auto first = offsets.lower_bound(part.begin);
  return first != offsets.end() && *first < part.end;
}

/// A legacy show or log, and where its songs are.
struct Sample {
  std::string bytes;
  std::vector<Part> parts;
};

/// The bytes of a legacy song, but for those of its number.
inline std::string WithoutNumber(const std::string& song) {
  constexpr std::size_t kNumber = 4;  // after the length of the record
  return song.substr(kNumber + 1 + static_cast<unsigned char>(song[kNumber]));
}

/// Whether a legacy song came back whole; of songs of one number, one gets another.
inline bool CameBack(const Part& part, const std::vector<std::string>& songs) {
  return std::any_of(songs.begin(), songs.end(), [&](const std::string& song) {
    return WithoutNumber(song) == WithoutNumber(part.bytes);
  });
}

/// Damages 1, 2, 8 and 64 bytes of so many samples that `make_sample` makes. Each song that is not touched
/// must be among those that `songs_of` finds in what is left.
template <typename MakeSample, typename SongsOf>
void ExpectUntouchedSongs(std::mt19937& random, int rounds, MakeSample make_sample, SongsOf songs_of) {
  for (const std::size_t count : {1U, 2U, 8U, 64U}) {
    for (int round = 0; round < Rounds(rounds); ++round) {
      const Sample sample = make_sample(random);
      std::set<std::size_t> offsets;
      const std::string damaged = Damaged(sample.bytes, count, random, offsets);
      const std::vector<std::string> songs = songs_of(damaged);
      for (const Part& part : sample.parts) {
        if (Touches(offsets, part)) continue;
        ASSERT_TRUE(CameBack(part, songs))
            << "song " << part.number << " of round " << round << ", " << count << " bytes damaged";
      }
    }
  }
}

}  // namespace zuna_test
