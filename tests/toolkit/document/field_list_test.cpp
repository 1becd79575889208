// The fields of files with the bytes that they take.
#include "toolkit/document/field_list.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <random>
#include <sstream>
#include <vector>

#include "tests/support/bytes.h"
#include "tests/support/encrypted.h"
#include "tests/support/legacy_samples.h"
#include "tests/support/random_legacy_log.h"
#include "tests/support/random_legacy_show.h"
#include "tests/support/random_log.h"
#include "tests/support/random_show.h"
#include "tests/support/sample_models.h"
#include "zuna_json/writer.h"

namespace zuna_toolkit {
namespace {

using testing::ElementsAre;
using zuna_test::Bytes;
using zuna_test::Written;
using zuna_test::WrittenAt;

constexpr cmn::FileVersion kText{2, 0};

std::string ValueText(const cmn::FieldValue& value) {
  if (std::holds_alternative<std::monostate>(value)) return "";
  if (const auto* json = std::get_if<cmn::JsonText>(&value)) return std::string(json->text);
  std::ostringstream os;
  zuna_json::Writer json(os);
  if (const auto* number = std::get_if<std::uint32_t>(&value)) json.Number(*number);
  if (const auto* number = std::get_if<std::int32_t>(&value)) json.Number(*number);
  if (const auto* number = std::get_if<float>(&value)) json.Float(*number);
  if (const auto* text = std::get_if<std::string_view>(&value)) json.Text(*text);
  json.Flush();
  return os.str();
}

std::string PathOf(const cmn::PlacedField& field) {
  return std::string(field.record) + (field.record.empty() ? "" : ".") + std::string(field.key);
}

FieldSource SourceOf(const std::string& plaintext) {
  OpenedFile file = OpenedFile::FromBytes(zuna_test::Encrypted(plaintext, {}), "file", {});
  return FieldSourceOf(file);
}

/// "0..4 songs 3"
using Lines = std::vector<std::string>;

/// The fields. Their ranges have to follow one another from the first byte to the last.
Lines FieldsOf(const FieldSource& source) {
  Lines lines;
  std::uint64_t end = 0;
  ListFields(source, [&](const cmn::PlacedField& field) {
    EXPECT_EQ(field.begin, end);
    EXPECT_LT(field.begin, field.end);
    end = field.end;
    const std::string value = ValueText(field.value);
    lines.push_back(std::to_string(field.begin) + ".." + std::to_string(end) + ' ' + PathOf(field) +
                    (value.empty() ? "" : ' ' + value));
  });
  EXPECT_EQ(end, source.plaintext.size());
  return lines;
}
Lines FieldsOf(const std::string& plaintext) { return FieldsOf(SourceOf(plaintext)); }

/// The fields of a file that can be read, of which each byte is in a field.
Lines WholeFieldsOf(const std::string& plaintext, const FileType& type) {
  const FieldSource source = SourceOf(plaintext);
  EXPECT_FALSE(source.damage);
  EXPECT_EQ(source.type, type);
  Lines lines = FieldsOf(source);
  EXPECT_EQ(lines.back().find("unread"), std::string::npos) << lines.back();
  return lines;
}

/// The values that every version of a file has, by their paths.
std::map<std::string, std::string> ValuesOf(const std::string& plaintext) {
  std::map<std::string, std::string> values;
  ListFields(SourceOf(plaintext),
             [&](const cmn::PlacedField& field) { values[PathOf(field)] = ValueText(field.value); });
  for (const char* own : {"magic", "size", "major", "minor", "crc32", "kind", "fileVersion", "end"}) {
    values.erase(own);
  }
  return values;
}

/// Requires that the file has every value of the text form `text`; lists are counted instead.
void ExpectValuesOf(const std::string& text, const std::string& file) {
  const auto values = ValuesOf(file);
  for (const auto& [path, value] : ValuesOf(text)) {
    const auto found = values.find(path);
    if (found == values.end()) {
      EXPECT_TRUE(path.ends_with("].status")) << path;  // running status
      continue;
    }
    EXPECT_EQ(found->second, value == "[]" ? "0" : value) << path;
  }
}

std::string Word(std::size_t value) {
  const int low = static_cast<int>(value);
  return Bytes({low & 0xFF, low >> 8 & 0xFF, low >> 16 & 0xFF, low >> 24 & 0xFF});
}
std::string Text(const std::string& text) { return Bytes({static_cast<int>(text.size())}) + text; }

const std::string kTempos = 'F' + Word(15) + Bytes({'F', 12, 0, 0, 0, 0, 0, 0, 0, 0x80, 0x3F, 8, 8, 120, 0});

/// A legacy show of one song with these sequences in its timeline.
std::string ShowOf(const std::string& sequences) {
  return Bytes({1}) + Word(33) + Text("2b") + Text("Go") + Bytes({224, 1}) + Word(960) + Bytes({1, 17}) +
         Text("A") + Word(1) + Word(0) + Word(5) + Bytes({0x90, 60, 100, 17}) + "TLMN" + Text("") +
         Word(960) + Word(sequences.size()) + sequences;
}

/// A legacy log of one song with these sequences.
std::string LogOf(const std::string& sequences) {
  const std::string song = Word(sequences.size() - 4) + Text("1") + Text("S") + Word(1920) + sequences;
  const std::string body = std::string(16, '\1') + Text("") + Text("Show") + Bytes({1, 0, 255, 255}) + song;
  return "ZUNA" + Word(body.size()) + body;
}

const std::string kMarkers = 'E' + Word(6) + Bytes({7, 0, 0, 0, 1, 'A'});
const std::string kVamps = '@' + Word(12) + Bytes({'@', 9, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0xFF});

TEST(FieldList, OfALegacyShow) {
  EXPECT_THAT(
      FieldsOf(ShowOf(kTempos) + "ab"),
      ElementsAre(
          "0..1 songs 1", "1..5 songs[0].recordLength 33", "5..8 songs[0].songNumber \"2b\"",
          "8..11 songs[0].songName \"Go\"", "11..13 songs[0].division 480", "13..17 songs[0].songLength 960",
          "17..18 songs[0].tracks 1", "18..19 songs[0].tracks[0].trackId 17",
          "19..21 songs[0].tracks[0].name \"A\"", "21..25 songs[0].events 1",
          "25..29 songs[0].events[0].deltaTime 0", "29..33 songs[0].events[0].absoluteTime 5",
          "33..34 songs[0].events[0].statusHigh 144", "34..35 songs[0].events[0].data1 60",
          "35..36 songs[0].events[0].data2 100", "36..37 songs[0].events[0].trackId 17",
          "37..41 songs[0].timeline.magic \"TLMN\"", "41..42 songs[0].timeline.name \"\"",
          "42..46 songs[0].timeline.songLength 960", "46..50 songs[0].timeline.bodyLength 20",
          "50..51 songs[0].timeline.tempos.eventCode \"F\"", "51..55 songs[0].timeline.tempos.bodyLength 15",
          "55..56 songs[0].timeline.tempos[0].eventCode \"F\"",
          "56..58 songs[0].timeline.tempos[0].payloadLength 12", "58..62 songs[0].timeline.tempos[0].time 0",
          "62..66 songs[0].timeline.tempos[0].secondsPerTick 1",
          "66..67 songs[0].timeline.tempos[0].notated32PerClick 8",
          "67..68 songs[0].timeline.tempos[0].notated32PerQuarter 8",
          "68..70 songs[0].timeline.tempos[0].bpm 120", "70..72 ignored"));
}

TEST(FieldList, OfALegacyLog) {
  EXPECT_THAT(
      FieldsOf(LogOf(kMarkers + kVamps)),
      ElementsAre("0..4 magic \"ZUNA\"", "4..8 logLength 66",
                  "8..24 identifier \"01010101-0101-0101-0101-010101010101\"", "24..25 logLabel \"\"",
                  "25..30 showName \"Show\"", "30..32 tagPair[0] 1", "32..34 tagPair[1] 65535",
                  "34..38 songLogs[0].recordLength 24", "38..40 songLogs[0].songNumber \"1\"",
                  "40..42 songLogs[0].songName \"S\"", "42..46 songLogs[0].songLength 1920",
                  "46..47 songLogs[0].markers.eventCode \"E\"", "47..51 songLogs[0].markers.bodyLength 6",
                  "51..55 songLogs[0].markers[0].time 7", "55..57 songLogs[0].markers[0].text \"A\"",
                  "57..58 songLogs[0].vamps.eventCode \"@\"", "58..62 songLogs[0].vamps.bodyLength 12",
                  "62..63 songLogs[0].vamps[0].eventCode \"@\"",
                  "63..65 songLogs[0].vamps[0].payloadLength 9", "65..69 songLogs[0].vamps[0].start 0",
                  "69..73 songLogs[0].vamps[0].end 1", "73..74 songLogs[0].vamps[0].value -1"));
}

zuna_midi::ShowData SmallShow() {
  zuna_midi::ShowData show;
  show.show_name = "S";
  auto song = std::make_shared<zuna_midi::SongData>("2b", "", static_cast<unsigned short>(480), 7680U);
  song->timeline->keys = {{300, -3, 1}};
  auto voice = std::make_shared<zuna_midi::VoiceTrack>();
  voice->track_number = 3;
  voice->messages = {{0, {0x90, 60, 100}}, {480, {0x90, 60, 0}}};
  song->voice_data->AddTrack(voice);
  show.AddSongData(song);
  return show;
}

TEST(FieldList, OfAShowInTheCompactLayout) {
  EXPECT_THAT(
      FieldsOf(WrittenAt(SmallShow(), {1, 2})),
      ElementsAre(
          "0..4 magic \"\\u0000ZSH\"", "4..8 size 41", "8..9 major 1", "9..10 minor 2",
          "10..12 showName \"S\"", "12..13 songs 1", "13..16 songs[0].songNumber \"2b\"",
          "16..17 songs[0].songName \"\"", "17..19 songs[0].division 480", "19..21 songs[0].songLength 7680",
          "21..22 songs[0].timeline.tempos 0", "22..23 songs[0].timeline.barsBeats 0",
          "23..24 songs[0].timeline.keys 1", "24..26 songs[0].timeline.keys[0].time 300",
          "26..27 songs[0].timeline.keys[0].key -3", "27..28 songs[0].timeline.keys[0].mode 1",
          "28..29 songs[0].timeline.pageNumbers 0", "29..30 songs[0].timeline.meters 0",
          "30..31 songs[0].voices 1", "31..32 songs[0].voices[0].trackNumber 3",
          "32..33 songs[0].voices[0].name \"\"", "33..36 songs[0].voices[0].reserved 65535",
          "36..37 songs[0].voices[0].messages 2", "37..38 songs[0].voices[0].messages[0].time 0",
          "38..39 songs[0].voices[0].messages[0].status 144",
          "39..40 songs[0].voices[0].messages[0].data1 60", "40..41 songs[0].voices[0].messages[0].data2 100",
          "41..43 songs[0].voices[0].messages[1].time 480", "43..44 songs[0].voices[0].messages[1].data1 60",
          "44..45 songs[0].voices[0].messages[1].data2 0", testing::StartsWith("45..49 crc32 ")));
}

TEST(FieldList, OfATextHasWhatStandsBeforeAValueInItsRange) {
  const std::string text = R"({"kind": "logdata", "fileVersion": "2.0", "showName": {"bytes": "ff"},
 "logLabel": "a\"b", "identifier": "00000000-0000-0000-0000-000000000000", "tagPair": [0, 1],
 "songLogs": [ ]}
)";
  EXPECT_THAT(
      FieldsOf(text),
      ElementsAre("0..18 kind \"logdata\"", "18..40 fileVersion \"2.0\"", "40..68 showName.bytes \"ff\"",
                  "68..90 logLabel \"a\\\"b\"", "90..144 identifier \"00000000-0000-0000-0000-000000000000\"",
                  "144..159 tagPair[0] 0", "159..162 tagPair[1] 1", "162..181 songLogs []", "181..183 end"));
}

TEST(FieldList, TakesEveryByteOfRandomFilesOfEveryVersion) {
  std::mt19937 random(1);
  for (int i = 0; i < 60; ++i) {
    WholeFieldsOf(Written(zuna_test::RandomLegacyShow(random)), {cmn::FileKind::kShow, {}});
    WholeFieldsOf(Written(zuna_test::RandomLegacyLog(random)), {cmn::FileKind::kLog, {}});
    const bool wild = i % 2 != 0;
    const zuna_midi::ShowData show = zuna_test::RandomShow(random, {.wild = wild});
    for (const cmn::FileVersion version : cmn::SupportedVersions(cmn::FileKind::kShow)) {
      WholeFieldsOf(WrittenAt(show, version), {cmn::FileKind::kShow, version});
    }
    const CL::ChangeLog log = zuna_test::RandomLog(random, {.wild = wild});
    for (const cmn::FileVersion version : cmn::SupportedVersions(cmn::FileKind::kLog)) {
      WholeFieldsOf(WrittenAt(log, version), {cmn::FileKind::kLog, version});
    }
  }
}

TEST(FieldList, HasTheSameValuesInEveryCurrentVersion) {
  std::mt19937 random(2);
  for (int i = 0; i < 20; ++i) {
    const zuna_midi::ShowData show = zuna_test::RandomShow(random);
    const CL::ChangeLog log = zuna_test::RandomLog(random, {.wild = false});
    for (const cmn::FileVersion version : {cmn::FileVersion{1, 0}, {1, 1}, {1, 2}}) {
      ExpectValuesOf(WrittenAt(show, kText), WrittenAt(show, version));
      if (version.minor > 0) ExpectValuesOf(WrittenAt(log, kText), WrittenAt(log, version));
    }
  }
}

/// Requires that every beginning of a file of more than `head` bytes, which tell what it is, is listed as far
/// as the file itself is.
void ExpectCutFilesAreListed(const std::string& plaintext, std::size_t head) {
  const Lines whole = FieldsOf(plaintext);
  for (std::size_t size = head; size < plaintext.size(); ++size) {
    const FieldSource source = SourceOf(plaintext.substr(0, size));
    EXPECT_TRUE(source.damage) << size;
    Lines lines = FieldsOf(source);
    if (lines.back().find("unread") != std::string::npos) lines.pop_back();
    ASSERT_LT(lines.size(), whole.size());
    EXPECT_TRUE(std::equal(lines.begin(), lines.end(), whole.begin())) << size;
  }
}

TEST(FieldList, OfACutFileEndsWithTheUnreadBytes) {
  ExpectCutFilesAreListed(ShowOf(kTempos), 1);
  ExpectCutFilesAreListed(LogOf(kMarkers + kVamps), 4);
  for (const cmn::FileVersion version : {cmn::FileVersion{1, 1}, {1, 2}}) {
    ExpectCutFilesAreListed(WrittenAt(zuna_test::SampleShow(), version), 10);
    ExpectCutFilesAreListed(WrittenAt(zuna_test::SampleLog(), version), 10);
  }
  std::string text = WrittenAt(zuna_test::SampleLog(), kText);
  text.pop_back();  // the line break at its end
  ExpectCutFilesAreListed(text, 1);
  EXPECT_EQ(FieldsOf(ShowOf(kTempos).substr(0, 60)).back(), "58..60 unread");
}

TEST(FieldList, OfACutFileHasEveryMessageThatIsThere) {
  const std::string fixed = WrittenAt(SmallShow(), {1, 0});
  EXPECT_THAT(FieldsOf(fixed.substr(0, fixed.size() - 1)),
              testing::Contains(testing::HasSubstr("messages[0].data2 100")));
  const std::string compact = WrittenAt(SmallShow(), {1, 2});
  EXPECT_THAT(FieldsOf(compact.substr(0, 43)),
              testing::Contains("40..41 songs[0].voices[0].messages[0].data2 100"));
}

TEST(FieldList, OfADamagedFileEndsBeforeTheDamage) {
  std::string show = ShowOf(kTempos);
  show[50] = 'Z';
  EXPECT_EQ(FieldsOf(show).back(), "50..70 unread");
  show = ShowOf(kTempos);
  show[37] = 'X';
  EXPECT_EQ(FieldsOf(show).back(), "37..70 unread");
  std::string log = LogOf(kMarkers + kVamps);
  log[62] = 'B';
  EXPECT_EQ(FieldsOf(log).back(), "62..74 unread");
  std::string compact = WrittenAt(SmallShow(), {1, 2});
  compact.back() = static_cast<char>(compact.back() ^ 1);
  const FieldSource source = SourceOf(compact);
  EXPECT_THAT(source.damage->what(), testing::HasSubstr("its checksum is wrong"));
  EXPECT_THAT(FieldsOf(source).back(), testing::StartsWith("45..49 crc32 "));
  compact[9] = 7;
  EXPECT_EQ(FieldsOf(compact).back(), "10..49 unread");
}

TEST(FieldList, IsNotThatOfBytesWithoutAMark) {
  OpenedFile file =
      OpenedFile::FromBytes(zuna_test::FromText("hello world"), "file", {}, Accept::kEncryptedOrPlain);
  try {
    FieldSourceOf(file);
    FAIL() << "nothing was thrown";
  } catch (const Error& error) {
    EXPECT_EQ(error.code(), ErrorCode::kNotEncrypted);
  }
}

TEST(FieldList, OfADamagedTextEndsWhereItsReaderStops) {
  const std::string text =
      R"({"kind": "showdata", "fileVersion": "2.0", "showName": "S", "songs": [{"x": 1}]})";
  const FieldSource source = SourceOf(text);
  EXPECT_EQ(source.type, (FileType{cmn::FileKind::kShow, kText}));
  EXPECT_EQ(source.damage->parts().offset, 73U);
  EXPECT_THAT(FieldsOf(source), ElementsAre("0..19 kind \"showdata\"", "19..41 fileVersion \"2.0\"",
                                            "41..58 showName \"S\"", "58..80 unread"));
  EXPECT_EQ(FieldsOf(std::string(R"({"kind": "logdata", "fileVersion": "3.0"})")).back(), "18..41 unread");
}

TEST(FieldList, OfATextWithAByteOrderMarkIsUnread) {
  for (const auto& [text, kind] : {std::pair{WrittenAt(zuna_test::SampleShow(), kText), cmn::FileKind::kShow},
                                   {WrittenAt(zuna_test::SampleLog(), kText), cmn::FileKind::kLog}}) {
    for (const std::string front : {"\xEF\xBB\xBF", "\xEF\xBB\xBF\r\n"}) {
      const FieldSource source = SourceOf(front + text);
      EXPECT_EQ(source.type, (FileType{kind, kText}));
      EXPECT_THAT(source.damage->what(), testing::HasSubstr("a byte order mark stands before the text"));
      EXPECT_THAT(FieldsOf(source),
                  ElementsAre("0.." + std::to_string(front.size() + text.size()) + " unread"));
    }
  }
}

TEST(FieldList, IsRefusedForWhatIsNoShowAndNoLog) { EXPECT_THROW(SourceOf(std::string(5, '\0')), Error); }

}  // namespace
}  // namespace zuna_toolkit
