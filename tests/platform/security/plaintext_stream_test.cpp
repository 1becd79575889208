// The stream over a plaintext, compared with std::stringstream.

#include "platform/security/plaintext_stream.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <random>
#include <sstream>

namespace {

using std::ios_base;
using zuna_sec::PlaintextStream;

std::string Text(PlaintextStream& stream) {
  const zuna_security::Bytes bytes = stream.buffer().Contents();
  return {bytes.begin(), bytes.end()};
}

std::string ReadAll(std::istream& stream) { return {std::istreambuf_iterator<char>(stream), {}}; }

TEST(PlaintextStream, BeginsEmpty) {
  PlaintextStream stream;
  EXPECT_TRUE(stream.good());
  EXPECT_EQ(stream.exceptions(), ios_base::goodbit);
  EXPECT_EQ(stream.tellg(), 0);
  EXPECT_EQ(stream.tellp(), 0);
  EXPECT_EQ(Text(stream), "");
  EXPECT_EQ(stream.peek(), std::char_traits<char>::eof());
  stream.clear();
  stream.seekg(0);
  stream.seekp(0, ios_base::end);
  EXPECT_TRUE(stream.good());
}

TEST(PlaintextStream, ReadsWhatWasWrittenMeanwhile) {
  PlaintextStream stream;
  stream << "one ";
  std::string word;
  stream >> word;
  EXPECT_EQ(word, "one");
  stream << "two " << std::string(100000, 'x') << ' ';
  stream >> word;
  EXPECT_EQ(word, "two");
  stream >> word;
  EXPECT_EQ(word, std::string(100000, 'x'));
}

TEST(PlaintextStream, HasTwoPositions) {
  PlaintextStream stream;
  stream << "0123456789";
  stream.seekg(3);
  EXPECT_EQ(stream.tellg(), 3);
  EXPECT_EQ(stream.tellp(), 10);
  EXPECT_EQ(stream.get(), '3');
  stream.seekp(-4, ios_base::cur);
  EXPECT_EQ(stream.tellp(), 6);
  EXPECT_EQ(stream.tellg(), 4);
}

TEST(PlaintextStream, OverwritesAndComesBackToTheEnd) {
  PlaintextStream stream;
  stream << "length:____ body";
  stream.seekp(7);
  stream << "0005";
  EXPECT_EQ(Text(stream), "length:0005 body");
  stream.seekp(0, ios_base::end);
  stream << "!";
  EXPECT_EQ(Text(stream), "length:0005 body!");
}

TEST(PlaintextStream, OverwritesAcrossTheEnd) {
  PlaintextStream stream;
  stream << "abcdef";
  stream.seekp(4);
  stream << "EFGH";
  EXPECT_EQ(Text(stream), "abcdEFGH");
  EXPECT_EQ(ReadAll(stream), "abcdEFGH");
}

TEST(PlaintextStream, SeeksOutsideFailAndMoveNothing) {
  PlaintextStream stream;
  stream << "abc";
  for (const auto& seek : std::initializer_list<std::pair<int, ios_base::seekdir>>{{4, ios_base::beg},
                                                                                   {-1, ios_base::beg},
                                                                                   {1, ios_base::end},
                                                                                   {-4, ios_base::end},
                                                                                   {4, ios_base::cur}}) {
    stream.seekg(seek.first, seek.second);
    EXPECT_TRUE(stream.fail());
    stream.clear();
    stream.seekp(seek.first, seek.second);
    EXPECT_TRUE(stream.fail());
    stream.clear();
    EXPECT_EQ(stream.tellg(), 0);
    EXPECT_EQ(stream.tellp(), 3);
  }
  auto& buffer = stream.buffer();
  EXPECT_EQ(buffer.pubseekoff(0, ios_base::cur), -1) << "which of the two positions?";
  EXPECT_EQ(buffer.pubseekoff(0, ios_base::beg, ios_base::openmode()), -1);
  EXPECT_EQ(buffer.pubseekoff(std::numeric_limits<std::streamoff>::max(), ios_base::end), -1);
  EXPECT_EQ(buffer.pubseekoff(std::numeric_limits<std::streamoff>::min(), ios_base::end), -1);
  EXPECT_EQ(buffer.pubseekoff(1, ios_base::beg), 1) << "both";
  EXPECT_EQ(stream.tellg(), 1);
  EXPECT_EQ(stream.tellp(), 1);
}

TEST(PlaintextStream, TellsHowMuchIsLeft) {
  PlaintextStream stream;
  EXPECT_EQ(stream.buffer().in_avail(), -1);
  stream << "abc";
  EXPECT_EQ(stream.buffer().in_avail(), 3);
  stream.get();
  stream << "de";
  EXPECT_GE(stream.buffer().in_avail(), 2);
  char some[8];
  EXPECT_EQ(stream.readsome(some, 2), 2);
  EXPECT_EQ(stream.readsome(some, 8), 2);
  EXPECT_EQ(std::string(some, 2), "de");
}

TEST(PlaintextStream, ShortReadsTakeWhatIsThere) {
  PlaintextStream stream;
  stream << "abc";
  char some[8];
  stream.read(some, 8);
  EXPECT_EQ(stream.gcount(), 3);
  EXPECT_TRUE(stream.eof());
  stream.clear();
  stream.read(some, 1);
  EXPECT_EQ(stream.gcount(), 0);
}

TEST(PlaintextStream, PutsBack) {
  PlaintextStream stream;
  stream << "abc";
  stream.get();
  stream.unget();
  EXPECT_EQ(stream.get(), 'a');
  stream.putback('A');
  EXPECT_EQ(ReadAll(stream), "Abc");
  stream.clear();
  stream.seekg(0);
  stream.unget();
  EXPECT_TRUE(stream.bad());
}

TEST(PlaintextStream, WriteThatNoMemoryHoldsMakesItBadAndKeepsWhatWasThere) {
  PlaintextStream stream;
  stream << "kept";
  const char byte = 'x';
  stream.write(&byte, std::numeric_limits<std::streamsize>::max());
  EXPECT_TRUE(stream.bad());
  EXPECT_EQ(Text(stream), "kept");
}

/// The functions that a stream calls, which take the end of the file for "no character".
struct Opened : std::streambuf {
  using std::streambuf::overflow;
  using std::streambuf::pbackfail;
};

TEST(PlaintextBuffer, TakesNoCharacterForACharacter) {
  constexpr int kEnd = std::char_traits<char>::eof();
  PlaintextStream stream;
  std::streambuf& buffer = stream.buffer();
  stream << "ab";
  EXPECT_NE((buffer.*&Opened::overflow)(kEnd), kEnd);
  EXPECT_EQ(Text(stream), "ab");
  EXPECT_EQ((buffer.*&Opened::pbackfail)(kEnd), kEnd) << "there is nothing before the beginning";
  EXPECT_EQ(stream.get(), 'a');
  EXPECT_NE((buffer.*&Opened::pbackfail)(kEnd), kEnd);
  EXPECT_EQ(stream.tellg(), 0);
  EXPECT_EQ(Text(stream), "ab");
}

TEST(PlaintextStream, TakesOverABlock) {
  kit::MemoryBlock block(10);
  std::memcpy(block.data(), "header:abc", 10);
  const std::uint8_t* const where = block.data();
  PlaintextStream stream;
  stream << "what was there before";
  stream.buffer().Assign(std::move(block), 7, 3);
  EXPECT_EQ(stream.buffer().Contents().data(), where + 7) << "was copied";
  EXPECT_EQ(stream.tellp(), 0);
  EXPECT_EQ(ReadAll(stream), "abc");
  stream.clear();
  stream << "ABCdef";
  EXPECT_EQ(Text(stream), "ABCdef");
  EXPECT_EQ(ReadAll(stream), "def");
}

/// One random operation on both streams; what they answer has to be the same.
void DoTheSame(std::mt19937& random, std::iostream& ours, std::iostream& standard) {
  const auto offset = static_cast<std::streamoff>(random() % 300) - 100;
  const ios_base::seekdir from = std::array{ios_base::beg, ios_base::cur, ios_base::end}[random() % 3];
  std::string text(random() % 40, static_cast<char>('a' + random() % 26));
  char read[2][40];
  switch (random() % 7) {
    case 0:
      ours << text;
      standard << text;
      break;
    case 1:
      ours.put(text.empty() ? '.' : text[0]);
      standard.put(text.empty() ? '.' : text[0]);
      break;
    case 2:
      ours.seekg(offset, from);
      standard.seekg(offset, from);
      break;
    case 3:
      ours.seekp(offset, from);
      standard.seekp(offset, from);
      break;
    case 4:
      ours.read(read[0], static_cast<std::streamsize>(text.size()));
      standard.read(read[1], static_cast<std::streamsize>(text.size()));
      ASSERT_EQ(ours.gcount(), standard.gcount());
      ASSERT_EQ(std::string(read[0], static_cast<std::size_t>(ours.gcount())),
                std::string(read[1], static_cast<std::size_t>(standard.gcount())));
      break;
    case 5:
      ASSERT_EQ(ours.get(), standard.get());
      break;
    default:
      ASSERT_EQ(ours.peek(), standard.peek());
  }
  ASSERT_EQ(ours.rdstate(), standard.rdstate());
  ours.clear();
  standard.clear();
  ASSERT_EQ(ours.tellg(), standard.tellg());
  ASSERT_EQ(ours.tellp(), standard.tellp());
}

TEST(PlaintextStream, BehavesLikeAStringStream) {
  for (unsigned seed = 0; seed < 200; ++seed) {
    std::mt19937 random(seed);
    PlaintextStream ours;
    std::stringstream standard;
    ours << "b";  // where nothing was ever written, standard libraries differ in what a seek does
    standard << "b";
    for (int step = 0; step < 300; ++step) DoTheSame(random, ours, standard);
    ASSERT_EQ(Text(ours), standard.str()) << "seed " << seed;
    if (HasFatalFailure()) return;
  }
}

}  // namespace
