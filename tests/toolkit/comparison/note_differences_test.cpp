// How the voices of two songs differ, note by note.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/sanitized.h"
#include "tests/toolkit/comparison/describe.h"
#include "toolkit/comparison/comparison.h"

namespace zuna_toolkit {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using Messages = decltype(zuna_midi::VoiceTrack::messages);

constexpr std::uint32_t kBeat = 480;  // ticks

struct TestNote {
  std::uint32_t tick;
  std::uint8_t pitch;
  std::uint8_t velocity = 100;
  std::uint32_t length = 240;
};

/// In the order of time, note-offs first.
Messages VoiceOf(const std::vector<TestNote>& notes) {
  Messages messages;
  for (const TestNote& note : notes) {
    messages.emplace_back(note.tick, std_midi::VoiceMessage(0x90, note.pitch, note.velocity));
    messages.emplace_back(note.tick + note.length, std_midi::VoiceMessage(0x80, note.pitch, 0));
  }
  std::stable_sort(messages.begin(), messages.end(), [](const auto& a, const auto& b) {
    return std::pair(a.first, a.second.status) < std::pair(b.first, b.second.status);
  });
  return messages;
}

Document ShowOf(const Messages& messages) {
  zuna_midi::ShowData show;
  const auto song = std::make_shared<zuna_midi::SongData>("1", "Song", std::uint16_t{480}, 1920U);
  const auto voice = std::make_shared<zuna_midi::VoiceTrack>();
  voice->track_number = 1;
  voice->name = "Piano";
  voice->messages = messages;
  song->voice_data->AddTrack(voice);
  show.AddSongData(song);
  return {show, {1, 2}, "show"};
}

/// Without what is the same in all of them.
std::vector<std::string> Compared(const Messages& before, const Messages& after) {
  std::vector<std::string> texts;
  for (const Difference& difference : Compare(ShowOf(before), ShowOf(after))) {
    std::string text = CodeText(difference);
    if (difference.place.tick) text += " at " + std::to_string(*difference.place.tick);
    if (difference.action == Action::kMoved) text += " to " + std::to_string(*difference.place.after_tick);
    texts.push_back(text + ": " + difference.before + " -> " + difference.after);
    EXPECT_EQ(difference.place.voice, 1);
    EXPECT_EQ(difference.where, "voice 1 \"Piano\"");
  }
  return texts;
}

std::vector<std::string> Compared(const std::vector<TestNote>& before, const std::vector<TestNote>& after) {
  return Compared(VoiceOf(before), VoiceOf(after));
}

/// How many differences there are of each code.
std::map<std::string, std::size_t> Counts(const std::vector<TestNote>& before,
                                          const std::vector<TestNote>& after) {
  std::map<std::string, std::size_t> counts;
  for (const Difference& difference : Compare(ShowOf(VoiceOf(before)), ShowOf(VoiceOf(after)))) {
    ++counts[CodeText(difference)];
  }
  return counts;
}

/// A note on each beat; neighbours differ.
std::vector<TestNote> Melody(std::size_t notes) {
  std::vector<TestNote> melody;
  for (std::size_t i = 0; i < notes; ++i) {
    melody.push_back({static_cast<std::uint32_t>(i) * kBeat, static_cast<std::uint8_t>(40 + i * i % 31)});
  }
  return melody;
}

TEST(NoteDifferences, AreNoneBetweenEqualVoices) {
  EXPECT_THAT(Compared(Melody(20), Melody(20)), IsEmpty());
  EXPECT_THAT(Compared(Messages{}, Messages{}), IsEmpty());
}

TEST(NoteDifferences, NameNotesThatCameAndWent) {
  EXPECT_THAT(Compared({{0, 60}, {480, 61}}, {{0, 60}, {500, 66}}),
              ElementsAre("note-dropped at 480: C#4 (61) velocity 100 length 240 channel 1 release 0 -> ",
                          "note-added at 500:  -> F#4 (66) velocity 100 length 240 channel 1 release 0"));
}

TEST(NoteDifferences, NameWhatChangedOfANote) {
  EXPECT_THAT(Compared({{0, 0}, {480, 127}}, {{0, 0, 90}, {480, 127, 100, 120}}),
              ElementsAre("note-changed at 0: C-1 (0) velocity 100 -> C-1 (0) velocity 90",
                          "note-changed at 480: G9 (127) length 240 -> G9 (127) length 120"));
}

TEST(NoteDifferences, NameWhatEndsANote) {
  const Messages before = {{0, {0x93, 60, 1}}, {9, {0x83, 60, 5}}};
  EXPECT_THAT(Compared(before, {{0, {0x93, 60, 1}}, {9, {0x83, 60, 6}}}),
              ElementsAre("note-changed at 0: C4 (60) release 5 -> C4 (60) release 6"));
  EXPECT_THAT(Compared(before, {{0, {0x93, 60, 1}}, {9, {0x93, 60, 0}}}),
              ElementsAre("note-changed at 0: C4 (60) ended by a note-off -> C4 (60) ended by a note-on"));
}

TEST(NoteDifferences, NameNotesThatMoved) {
  EXPECT_THAT(Compared({{0, 60}, {480, 61}, {960, 62}}, {{0, 60}, {500, 61, 90}, {960, 62}}),
              ElementsAre("note-moved at 480 to 500: C#4 (61) velocity 100 -> C#4 (61) velocity 90"));
  // Those that stayed count first.
  EXPECT_THAT(Compared({{0, 60}, {480, 60}, {960, 60}, {1440, 60}}, {{0, 60}, {480, 60}, {1440, 60}}),
              ElementsAre("note-dropped at 960: C4 (60) velocity 100 length 240 channel 1 release 0 -> "));
}

TEST(NoteDifferences, KeepTheOrderOfNotesThatMoved) {
  EXPECT_THAT(
      Compared({{0, 60}, {480, 62}, {9999, 1}}, {{10, 62}, {490, 60}, {9999, 1}}),
      ElementsAre(HasSubstr("note-moved at "), HasSubstr("note-dropped at "), HasSubstr("note-added at ")));
}

TEST(NoteDifferences, NameTheRestOfAVoiceAfterTimeThatWasInserted) {
  const std::vector<TestNote> before = Melody(40);
  std::vector<TestNote> after = before;
  for (std::size_t i = 16; i < after.size(); ++i) after[i].tick += 4 * kBeat;
  EXPECT_EQ(Counts(before, after), (std::map<std::string, std::size_t>{{"note-moved", 24}}));
  EXPECT_EQ(Counts(after, before), (std::map<std::string, std::size_t>{{"note-moved", 24}}));
  after[3].velocity = 1;
  after.insert(after.begin() + 16, {17 * kBeat, 90});
  const std::map<std::string, std::size_t> three = {
      {"note-moved", 24}, {"note-changed", 1}, {"note-added", 1}};
  EXPECT_EQ(Counts(before, after), three);
}

TEST(NoteDifferences, DoNotMoveWhatStaysWhereItWas) {
  std::vector<TestNote> before;
  for (std::uint32_t i = 0; i < 50; ++i) before.push_back({i * kBeat, 36});
  std::vector<TestNote> after = before;
  after.push_back({50 * kBeat, 36});
  EXPECT_EQ(Counts(before, after), (std::map<std::string, std::size_t>{{"note-added", 1}}));
}

TEST(NoteDifferences, TakeOtherMessagesOneByOne) {
  const Messages before = {{0, {0xC0, 5, 0}}, {0, {0xB0, 7, 100}}, {10, {0x90, 60, 1}}};
  const Messages after = {{0, {0xC0, 6, 0}}, {5, {0xB0, 7, 100}}, {20, {0x80, 60, 1}}};
  EXPECT_THAT(
      Compared(before, after),
      ElementsAre("message-changed at 0: Program Change(channel 1, 5) -> Program Change(channel 1, 6)",
                  "message-moved at 0 to 5: Control Change(channel 1, 7, 100) -> "
                  "Control Change(channel 1, 7, 100)",
                  "message-dropped at 10: Note On(channel 1, 60, 1) -> ",
                  "message-added at 20:  -> Note Off(channel 1, 60, 1)"));
}

TEST(NoteDifferences, GiveOtherMessagesTheirPlacesInTheVoice) {
  const Messages before = {{0, {0x90, 60, 1}}, {5, {0x80, 60, 0}}, {5, {0xB0, 7, 1}}};
  const Messages after = {{0, {0x90, 60, 1}}, {0, {0x90, 61, 1}}, {5, {0x80, 60, 0}},
                          {5, {0x80, 61, 0}}, {5, {0xB0, 7, 1}},  {9, {0xB0, 7, 2}}};
  const std::vector<Difference> differences = Compare(ShowOf(before), ShowOf(after));
  ASSERT_EQ(differences.size(), 2U);
  EXPECT_EQ(differences[0].place.index, 1U);
  EXPECT_EQ(differences[1].place.index, 5U);
}

TEST(NoteDifferences, NameAnotherOrderAtOneTime) {
  const Messages before = {{0, {0x90, 60, 1}}, {0, {0x90, 62, 1}}, {5, {0x80, 60, 0}}, {5, {0x80, 62, 0}}};
  const Messages after = {{0, {0x90, 62, 1}}, {0, {0x90, 60, 1}}, {5, {0x80, 60, 0}}, {5, {0x80, 62, 0}}};
  EXPECT_THAT(Compared(before, after), ElementsAre("message-reordered:  -> "));
}

TEST(NoteDifferences, PairNoteOnsAndNoteOffsOfOnePitchInTheirOrder) {
  const Messages before = {{0, {0x90, 60, 1}}, {5, {0x90, 60, 2}}, {10, {0x80, 60, 0}}, {30, {0x80, 60, 0}}};
  const Messages after = {{0, {0x90, 60, 1}}, {5, {0x90, 60, 2}}, {10, {0x80, 60, 0}}, {40, {0x80, 60, 0}}};
  EXPECT_THAT(Compared(before, after),
              ElementsAre("note-changed at 5: C4 (60) length 25 -> C4 (60) length 35"));
  // A note-off that stands before its note-on in time ends nothing.
  EXPECT_THAT(Compared(Messages{{9, {0x90, 60, 1}}, {3, {0x80, 60, 0}}}, Messages{{9, {0x90, 60, 1}}}),
              ElementsAre("message-dropped at 3: Note Off(channel 1, 60, 0) -> "));
}

/// Notes that all move by odd ways, so that each pair would have to be looked at.
std::vector<TestNote> Scattered(std::size_t notes, std::uint32_t step) {
  std::vector<TestNote> scattered = Melody(notes);
  for (std::size_t i = 0; i < notes; ++i) scattered[i].tick += static_cast<std::uint32_t>(1 + i * step % 97);
  return scattered;
}

TEST(NoteDifferences, AreFoundInPartsOfVoicesWithVeryMany) {
  EXPECT_EQ(Counts(Melody(127), Scattered(127, 7)),
            (std::map<std::string, std::size_t>{{"note-moved", 127}}));
  const std::map<std::string, std::size_t> counts = Counts(Melody(2000), Scattered(2000, 7));
  EXPECT_EQ(counts.at("voice-rewritten"), 1U);
  EXPECT_GT(counts.at("note-moved"), 1900U);
}

TEST(NoteDifferences, NameOtherPitches) {
  EXPECT_THAT(Compared({{0, 60}, {480, 61}}, {{0, 60}, {480, 66}}),
              ElementsAre("note-changed at 480: C#4 (61) -> F#4 (66)"));
  EXPECT_THAT(
      Compared({{0, 60}, {480, 62}, {960, 64}}, {{0, 60}, {480, 64}, {960, 66}}),
      ElementsAre("note-changed at 480: D4 (62) -> E4 (64)", "note-changed at 960: E4 (64) -> F#4 (66)"));
}

TEST(NoteDifferences, OfATransposedVoiceAreAllOfOneInterval) {
  // Chords that have notes in common with themselves 4 semitones higher.
  std::vector<TestNote> before = Melody(40);
  for (std::uint32_t i = 0; i < 40; ++i) {
    before.push_back({i * kBeat, static_cast<std::uint8_t>(before[i].pitch + 4)});
    before.push_back({i * kBeat, static_cast<std::uint8_t>(before[i].pitch + 8)});
  }
  std::vector<TestNote> after = before;
  for (TestNote& note : after) note.pitch = static_cast<std::uint8_t>(note.pitch + 4);
  const std::vector<Difference> differences = Compare(ShowOf(VoiceOf(before)), ShowOf(VoiceOf(after)));
  EXPECT_EQ(differences.size(), 120U);
  for (const Difference& difference : differences) {
    ASSERT_EQ(CodeText(difference), "note-changed");
    ASSERT_EQ(difference.changes.size(), 1U);
    EXPECT_EQ(difference.changes[0].name, "pitch");
    EXPECT_EQ(difference.changes[0].increase, 4);
  }
}

TEST(NoteDifferences, OfANoteThatIsTransposedAndLouderAreOneChange) {
  EXPECT_THAT(Compared({{0, 60}, {480, 61}}, {{0, 60}, {480, 66, 110, 120}}),
              ElementsAre("note-changed at 480: C#4 (61) velocity 100 length 240 -> "
                          "F#4 (66) velocity 110 length 120"));
  // Where a chord has more notes than before, it cannot be told which note became which.
  EXPECT_EQ(Counts({{480, 60}, {960, 70}}, {{480, 62, 110}, {480, 64, 110}, {960, 70}}),
            (std::map<std::string, std::size_t>{{"note-added", 2}, {"note-dropped", 1}}));
}

TEST(NoteDifferences, OfAVoiceThatIsTransposedAndLouderAreOneChangeEach) {
  const std::vector<TestNote> before = Melody(40);
  std::vector<TestNote> after = before;
  for (std::size_t i = 0; i < after.size(); ++i) {
    after[i].pitch = static_cast<std::uint8_t>(after[i].pitch + 2);
    after[i].velocity = static_cast<std::uint8_t>(80 + i);
    after[i].length = 200;
  }
  const std::vector<Difference> differences = Compare(ShowOf(VoiceOf(before)), ShowOf(VoiceOf(after)));
  EXPECT_EQ(differences.size(), 40U);
  for (const Difference& difference : differences) {
    ASSERT_EQ(CodeText(difference), "note-changed");
    EXPECT_EQ(difference.changes.front().increase, 2);
  }
}

TEST(NoteDifferences, OfAnEndThatMovesAndIsTransposedAndLouderAreMoves) {
  const std::vector<TestNote> before = Melody(40);
  std::vector<TestNote> after = before;
  for (std::size_t i = 16; i < after.size(); ++i) {
    after[i].tick += 4 * kBeat + 30;
    after[i].pitch = static_cast<std::uint8_t>(after[i].pitch + 5);
    after[i].velocity = 120;
  }
  EXPECT_EQ(Counts(before, after), (std::map<std::string, std::size_t>{{"note-moved", 24}}));
  EXPECT_EQ(Counts(after, before), (std::map<std::string, std::size_t>{{"note-moved", 24}}));
}

TEST(NoteDifferences, OfNotesThatMoveToThePlacesOfOthersAreMoves) {
  // A note is inserted, another one taken out later: between them, each note stands where another one stood.
  // Two neighbours have one pitch.
  const std::vector<TestNote> before = Melody(40);
  std::vector<TestNote> after = before;
  for (std::size_t i = 10; i < 30; ++i) after[i].tick += kBeat;
  after[30] = {10 * kBeat, 99};
  EXPECT_EQ(Counts(before, after),
            (std::map<std::string, std::size_t>{{"note-moved", 19}, {"note-dropped", 1}, {"note-added", 1}}));
}

TEST(NoteDifferences, OfManyNotesAtOneTimeHaveNoneThatMoved) {
  std::vector<TestNote> before;
  std::vector<TestNote> after;
  for (int i = 0; i < 200; ++i) {
    before.push_back({480, static_cast<std::uint8_t>(i % 60)});
    after.push_back({480, static_cast<std::uint8_t>(60 + i % 60)});
  }
  EXPECT_EQ(Counts(before, after), (std::map<std::string, std::size_t>{{"note-changed", 200}}));
}

TEST(NoteDifferences, GrowWithTheVoiceAndNotWithItsSquare) {
  constexpr std::size_t kNotes = zuna_test::kSanitized ? 40'000 : 200'000;  // its square would take minutes
  const std::map<std::string, std::size_t> counts = Counts(Melody(kNotes), Scattered(kNotes, 11));
  EXPECT_GT(counts.at("note-moved"), kNotes * 9 / 10);
  // All at one time, after those of many times.
  const std::vector<TestNote> chord(kNotes, {static_cast<std::uint32_t>(2 * kNotes * kBeat), 90});
  EXPECT_EQ(Counts(Melody(kNotes), chord),
            (std::map<std::string, std::size_t>{
                {"note-dropped", kNotes}, {"note-added", kNotes}, {"voice-rewritten", 1}}));
}

}  // namespace
}  // namespace zuna_toolkit
