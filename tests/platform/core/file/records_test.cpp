// The records of binary files one by one.

#include <gtest/gtest.h>

#include <stdexcept>

#include "CL/log_records.h"
#include "cmn/data_error.h"
#include "tests/support/encrypted.h"
#include "tests/support/sample_models.h"
#include "zuna_midi/show_records.h"

namespace {

constexpr std::size_t kHeader = 4 + 4 + 1 + 1;
constexpr std::size_t kChecksum = 4;
constexpr cmn::FileVersion kText{2, 0};

class Records : public testing::TestWithParam<cmn::FileVersion> {
 protected:
  static std::size_t ChecksumSize() { return GetParam() == cmn::FileVersion{1, 0} ? 0 : kChecksum; }
};

TEST_P(Records, OfAShow) {
  const zuna_midi::ShowData sample = zuna_test::SampleShow();
  const std::string bytes = zuna_test::WrittenAt(sample, GetParam());
  std::size_t offset = kHeader;
  zuna_midi::ShowHead head = zuna_midi::ReadShowHead(bytes, offset, GetParam());
  EXPECT_EQ(head.show.show_name, "Hä");
  EXPECT_EQ(head.songs, 1U);
  const bool is_compact = GetParam() == cmn::FileVersion{1, 2};
  EXPECT_EQ(offset, is_compact ? kHeader + 1 + 3 + 1 : kHeader + 4 + 3 + 4);
  head.show.AddSongData(zuna_midi::ReadSong(bytes, offset, GetParam()));
  EXPECT_EQ(offset + ChecksumSize(), bytes.size());
  EXPECT_EQ(zuna_test::WrittenAt(head.show, kText), zuna_test::WrittenAt(sample, kText));
}

TEST_P(Records, OfALog) {
  if (GetParam() == cmn::FileVersion{1, 0}) return;  // which has no logs
  const CL::ChangeLog sample = zuna_test::SampleLog();
  const std::string bytes = zuna_test::WrittenAt(sample, GetParam());
  std::size_t offset = kHeader;
  CL::LogHead head = CL::ReadLogHead(bytes, offset, GetParam());
  EXPECT_EQ(head.log.identifier, sample.identifier);
  EXPECT_EQ(head.songs, 1U);
  head.log.AddSongLog(CL::ReadSongLog(bytes, offset, GetParam()));
  EXPECT_EQ(offset + ChecksumSize(), bytes.size());
  EXPECT_EQ(zuna_test::WrittenAt(head.log, kText), zuna_test::WrittenAt(sample, kText));
}

TEST_P(Records, ThatAreCutOff) {
  const std::string bytes = zuna_test::WrittenAt(zuna_test::SampleShow(), GetParam());
  std::size_t song = kHeader;
  zuna_midi::ReadShowHead(bytes, song, GetParam());
  for (std::size_t size = song; size < bytes.size() - ChecksumSize(); ++size) {
    std::size_t offset = song;
    EXPECT_THROW(zuna_midi::ReadSong(bytes.substr(0, size), offset, GetParam()), cmn::DataError);
    EXPECT_EQ(offset, song);
  }
}

/// How many entries of lists and messages there are.
std::size_t EntriesOf(const zuna_midi::SongData& song) {
  const TL::Timeline& timeline = *song.timeline;
  std::size_t count = timeline.tempos.size() + timeline.bars_beats.size() + timeline.keys.size() +
                      timeline.page_numbers.size() + timeline.meters.size();
  for (const auto& [number, voice] : song.voice_data->tracks()) count += voice->messages.size();
  return count;
}
std::size_t EntriesOf(const CL::SongLog& song) {
  const auto count = [](const auto&... lists) { return (lists->events.size() + ...); };
  return count(song.vamps, song.repeats, song.cuts, song.transposes, song.tempo_scales, song.markers,
               song.clicks, song.fermatas, song.caesuras);
}

/// Every cut between `begin` and `end` gives as many entries as a shorter one or more, and all of them at
/// last.
template <typename ReadBeginning>
void ExpectMoreAndMore(const std::string& bytes, std::size_t begin, std::size_t end, ReadBeginning read) {
  std::size_t entries = 0;
  for (std::size_t size = begin; size <= end; ++size) {
    std::size_t stop = begin;
    const std::size_t found = EntriesOf(*read(std::string_view(bytes).substr(0, size), stop));
    EXPECT_LE(stop, size);
    EXPECT_GE(found, entries) << size;
    EXPECT_LE(found, entries + 1) << size;
    entries = found;
  }
  std::size_t stop = begin;
  EXPECT_EQ(entries, EntriesOf(*read(bytes, stop)));
  EXPECT_EQ(stop, end);
  EXPECT_GT(entries, 0U);
}

TEST_P(Records, AreReadUpToACut) {
  const std::string bytes = zuna_test::WrittenAt(zuna_test::SampleShow(), GetParam());
  std::size_t song = kHeader;
  zuna_midi::ReadShowHead(bytes, song, GetParam());
  ExpectMoreAndMore(bytes, song, bytes.size() - ChecksumSize(),
                    [](std::string_view file, std::size_t& offset) {
                      return zuna_midi::ReadBeginningOfSong(file, offset, GetParam());
                    });
}

TEST_P(Records, OfACutSongHaveNoVoicesThatWereNotThere) {
  zuna_midi::ShowData show = zuna_test::SampleShow();
  const auto second = std::make_shared<zuna_midi::VoiceTrack>();
  second->track_number = 7;
  second->name = "Second";
  second->messages = {{1, {0x90, 60, 100}}};
  const auto& sample = show.songs().begin()->second->voice_data;
  sample->AddTrack(second);
  const std::string bytes = zuna_test::WrittenAt(show, GetParam());
  std::size_t song = kHeader;
  zuna_midi::ReadShowHead(bytes, song, GetParam());
  for (std::size_t size = song; size <= bytes.size() - ChecksumSize(); ++size) {
    std::size_t stop = song;
    const auto read =
        zuna_midi::ReadBeginningOfSong(std::string_view(bytes).substr(0, size), stop, GetParam());
    for (const auto& [number, voice] : read->voice_data->tracks()) {
      ASSERT_TRUE(sample->tracks().contains(number)) << size;
      EXPECT_EQ(voice->name, sample->tracks().at(number)->name) << size;
      EXPECT_EQ(voice->reserved, sample->tracks().at(number)->reserved) << size;
      EXPECT_EQ(voice->messages.empty(), sample->tracks().at(number)->messages.empty()) << size;
    }
  }
}

TEST_P(Records, OfALogAreReadUpToACut) {
  if (GetParam() == cmn::FileVersion{1, 0}) return;  // which has no logs
  const std::string bytes = zuna_test::WrittenAt(zuna_test::SampleLog(), GetParam());
  std::size_t song = kHeader;
  CL::ReadLogHead(bytes, song, GetParam());
  ExpectMoreAndMore(bytes, song, bytes.size() - ChecksumSize(),
                    [](std::string_view file, std::size_t& offset) {
                      return CL::ReadBeginningOfSongLog(file, offset, GetParam());
                    });
}

TEST_P(Records, AreReadUpToAMessageThatIsNoneOfMidi) {
  const std::string bytes = zuna_test::WrittenAt(zuna_test::SampleShow(), GetParam());
  const std::size_t last = bytes.find("\xC1\x05");  // the status of the third message
  const std::size_t begin = last - (GetParam() == cmn::FileVersion{1, 2} ? 1 : 4);
  const auto expect_two = [&](const std::string& damaged) {
    std::size_t offset = kHeader;
    zuna_midi::ReadShowHead(damaged, offset, GetParam());
    const auto song = zuna_midi::ReadBeginningOfSong(damaged, offset, GetParam());
    EXPECT_EQ(song->voice_data->tracks().at(1)->messages.size(), 2U);
    EXPECT_EQ(offset, begin);
  };
  for (const auto& [status, data1, data2] : {std::tuple{'\x05', '\5', '\0'},
                                             {'\xF1', '\5', '\0'},
                                             {'\xC1', '\x80', '\0'},
                                             {'\xB1', '\5', '\x80'}}) {
    std::string damaged = bytes;
    damaged.replace(last, 3, {status, data1, data2});
    expect_two(damaged);
  }
  expect_two(bytes.substr(0, last + 2));  // cut inside of the message
}

TEST_P(Records, MayHaveAnyByteThatAMessageDoesNotUse) {
  std::string bytes = zuna_test::WrittenAt(zuna_test::SampleShow(), GetParam());
  bytes[bytes.find("\xC1\x05") + 2] = '\xC8';
  std::size_t begin = kHeader;
  zuna_midi::ReadShowHead(bytes, begin, GetParam());
  std::size_t end = begin;
  const auto whole = zuna_midi::ReadSong(bytes, end, GetParam());
  std::size_t stop = begin;
  const auto song = zuna_midi::ReadBeginningOfSong(bytes, stop, GetParam());
  EXPECT_EQ(stop, end);
  EXPECT_EQ(song->voice_data->tracks().at(1)->messages, whole->voice_data->tracks().at(1)->messages);
}

TEST_P(Records, GiveASecondVoiceOfANumberAFreeOne) {
  zuna_midi::ShowData show = zuna_test::SampleShow();
  for (const std::uint16_t number : {std::uint16_t{2}, std::uint16_t{3}}) {
    const auto voice = std::make_shared<zuna_midi::VoiceTrack>();
    voice->track_number = number;
    voice->name = "Voice " + std::to_string(number);
    voice->messages = {{number, {0x90, 60, 100}}};
    show.songs().begin()->second->voice_data->AddTrack(voice);
  }
  std::string bytes = zuna_test::WrittenAt(show, GetParam());
  const std::size_t before_name = GetParam() == cmn::FileVersion{1, 2} ? 1 + 1 : 2 + 4;
  bytes[bytes.find("Voice 2") - before_name] = '\1';
  std::size_t offset = kHeader;
  zuna_midi::ReadShowHead(bytes, offset, GetParam());
  const auto song = zuna_midi::ReadBeginningOfSong(bytes, offset, GetParam());
  EXPECT_EQ(offset, bytes.size() - ChecksumSize());
  EXPECT_EQ(song->voice_data->tracks().size(), show.songs().begin()->second->voice_data->tracks().size());
  for (const auto& [number, voice] : show.songs().begin()->second->voice_data->tracks()) {
    EXPECT_EQ(*song->voice_data->tracks().at(number), *voice);
  }
}

TEST_P(Records, AreReadUpToAVoiceThatGetsNoNumber) {
  zuna_midi::ShowData show;
  show.AddSongData(std::make_shared<zuna_midi::SongData>("1", "One", static_cast<unsigned short>(480), 480U));
  for (const std::uint16_t number : {std::uint16_t{65534}, std::uint16_t{65535}}) {
    const auto voice = std::make_shared<zuna_midi::VoiceTrack>();
    voice->track_number = number;
    voice->name = "Voice " + std::to_string(number);
    voice->messages = {{0, {0x90, 60, 100}}, {1, {0x80, 60, 0}}};
    show.songs().at("1")->voice_data->AddTrack(voice);
  }
  std::string bytes = zuna_test::WrittenAt(show, GetParam());
  const std::size_t before_name = GetParam() == cmn::FileVersion{1, 2} ? 3 + 1 : 2 + 4;
  bytes[bytes.find("Voice 65534") - before_name] = '\xFF';
  const std::size_t second = bytes.find("Voice 65535") - before_name;
  std::size_t song = kHeader;
  zuna_midi::ReadShowHead(bytes, song, GetParam());
  for (const std::size_t cut : {ChecksumSize(), ChecksumSize() + 1}) {  // the second one whole, and cut
    std::size_t stop = song;
    const auto read = zuna_midi::ReadBeginningOfSong(bytes.substr(0, bytes.size() - cut), stop, GetParam());
    EXPECT_EQ(stop, second);
    ASSERT_EQ(read->voice_data->tracks().size(), 1U);
    EXPECT_EQ(read->voice_data->tracks().at(65535)->name, "Voice 65534");
  }
}

TEST(RecordsOfATextForm, AreNotRead) {
  std::size_t offset = 0;
  EXPECT_THROW(zuna_midi::ReadShowHead("{}", offset, kText), std::invalid_argument);
  EXPECT_THROW(zuna_midi::ReadSong("{}", offset, kText), std::invalid_argument);
  EXPECT_THROW(CL::ReadLogHead("{}", offset, kText), std::invalid_argument);
  EXPECT_THROW(CL::ReadSongLog("{}", offset, kText), std::invalid_argument);
  EXPECT_THROW(zuna_midi::ReadBeginningOfSong("{}", offset, kText), std::invalid_argument);
  EXPECT_THROW(CL::ReadBeginningOfSongLog("{}", offset, kText), std::invalid_argument);
}

/// The number of bytes in the fields of a file, which have to follow one another.
template <typename List>
std::size_t BytesInFields(List list, const std::string& file) {
  std::uint64_t end = 0;
  list(file, [&](const cmn::PlacedField& field) {
    EXPECT_EQ(field.begin, end);
    EXPECT_LT(field.begin, field.end);
    end = field.end;
  });
  return static_cast<std::size_t>(end);
}

/// Requires that the fields of a file are all its bytes, and those of its beginnings a part.
template <typename List>
void ExpectFieldsTakeAllBytes(List list, const std::string& file) {
  EXPECT_EQ(BytesInFields(list, file), file.size());
  for (std::size_t size = 0; size < file.size(); ++size) {
    EXPECT_LE(BytesInFields(list, file.substr(0, size)), size);
  }
}

TEST_P(Records, HaveAllBytesInTheirFields) {
  ExpectFieldsTakeAllBytes(zuna_midi::ListFields, zuna_test::WrittenAt(zuna_test::SampleShow(), GetParam()));
  if (GetParam() == cmn::FileVersion{1, 0}) return;  // which has no logs
  ExpectFieldsTakeAllBytes(CL::ListFields, zuna_test::WrittenAt(zuna_test::SampleLog(), GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Versions, Records,
                         testing::Values(cmn::FileVersion{1, 0}, cmn::FileVersion{1, 1},
                                         cmn::FileVersion{1, 2}));

std::string ShowFields(const std::string& file) {
  std::string keys;
  zuna_midi::ListFields(file, [&](const cmn::PlacedField& field) {
    keys.append(field.record).append(field.record.empty() ? "" : ".").append(field.key) += ' ';
  });
  return keys;
}

TEST(FieldsOfAFile, AreThoseBeforeTheFirstThatCannotBeRead) {
  const std::string file = zuna_test::WrittenAt(zuna_midi::ShowData(), {1, 2});
  EXPECT_EQ(ShowFields(file), "magic size major minor showName songs crc32 ");
  EXPECT_EQ(ShowFields(file + "x"), "magic size major minor showName songs crc32 ");
  EXPECT_EQ(ShowFields(file.substr(0, file.size() - 1)), "magic size major minor showName songs ");
  EXPECT_EQ(ShowFields(file.substr(0, kHeader + 1)), "magic size major minor showName ");
  EXPECT_EQ(ShowFields(zuna_test::WrittenAt(zuna_midi::ShowData(), {1, 0})),
            "magic size major minor showName songs ");
  EXPECT_EQ(ShowFields(file.substr(0, kHeader - 1)), "");
  EXPECT_EQ(ShowFields(zuna_test::WrittenAt(CL::ChangeLog(), {1, 2})), "");
  EXPECT_EQ(ShowFields(zuna_test::WrittenAt(zuna_midi::ShowData(), kText)), "");
}

TEST(FieldsOfAFile, AreThoseOfTheHeaderWhereItIsDamaged) {
  std::string file = zuna_test::WrittenAt(zuna_midi::ShowData(), {1, 2});
  file[4] = 5;  // the size, which is less than that of version and checksum
  EXPECT_EQ(ShowFields(file), "magic size major minor ");
  file[8] = 2;  // the version 2.2
  EXPECT_EQ(ShowFields(file), "magic size major minor ");
}

TEST(FieldsOfAFile, EndAtASecondRecordOfTheSameNumber) {
  zuna_midi::ShowData show = zuna_test::SampleShow();
  std::string file = zuna_test::WrittenAt(show, {1, 1});
  const std::string song = file.substr(kHeader + 4 + 3 + 4, file.size() - kHeader - 4 - 3 - 4 - kChecksum);
  file[kHeader + 4 + 3] = 2;  // songs
  const std::string body = file.substr(8, file.size() - 8 - kChecksum) + song + "CRC!";
  const std::string twice = file.substr(0, 4) + static_cast<char>(body.size() & 0xFF) +
                            static_cast<char>(body.size() >> 8) + std::string(2, '\0') + body;
  const std::string keys = ShowFields(twice);
  EXPECT_NE(keys.find("songs[1].voices[1].messages "), std::string::npos);
  EXPECT_EQ(keys.find("crc32"), std::string::npos);
}

}  // namespace
