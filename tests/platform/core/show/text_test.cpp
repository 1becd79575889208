// The text form of shows: what is refused, by path.

#include <gtest/gtest.h>

#include <string>

#include "tests/platform/core/file/kinds.h"

namespace {

std::string ReadError(const std::string& bytes) { return zuna_test::ReadError<zuna_midi::ShowData>(bytes); }

std::string PatchedError(const std::string& from, const std::string& to) {
  return zuna_test::PatchedTextError<zuna_test::ShowKind>(from, to);
}

TEST(TextShow, NamesTheByte) {
  EXPECT_EQ(ReadError(R"({"kind": "logdata"})"), "kind: this is a log, not a show (at byte 17)");
}

TEST(TextShow, KindHasToBeThatOfAShow) {
  EXPECT_EQ(PatchedError("showdata", "logdata"), "kind: this is a log, not a show");
  EXPECT_EQ(PatchedError("showdata", "data"), "kind: this is not a show");
}

TEST(TextShow, VersionHasToBeOne) {
  for (const char* text : {"", "2", "2.", ".0", "02.0", "2.00", "2.0 ", "256.0", "-2.0", "2.0.0"}) {
    EXPECT_EQ(PatchedError("2.0", text), "fileVersion: expected a version such as \"2.0\"") << text;
  }
}

TEST(TextShow, KeysAreKnownAndThereOnce) {
  EXPECT_EQ(PatchedError("\"songName\"", "\"songname\""),
            "songs[0]: unknown key \"songname\"; did you mean \"songName\"?");
  EXPECT_EQ(PatchedError("\"division\": 480,", ""), "songs[0]: missing key \"division\"");
  EXPECT_EQ(PatchedError("\"division\": 480,", "\"division\": 480, \"division\": 480,"),
            "songs[0].division: duplicate key");
  EXPECT_EQ(PatchedError("\"keys\": [", "\"keys\": [{},"), "songs[0].timeline.keys[0]: missing key \"time\"");
  EXPECT_EQ(PatchedError("\"page\": 300", "\"page\": 300, \"\": 1"),
            "songs[0].timeline.pageNumbers[0]: unknown key \"\"");
  EXPECT_EQ(PatchedError("\"showName\"", "\"" + std::string(100000, 'k') + "\""),
            "unknown key \"" + std::string(40, 'k') + "\"…; expected \"showName\", \"songs\"");
  EXPECT_EQ(PatchedError("\"microseconds\"", "\"bpm\""),
            "songs[0].timeline.tempos[0]: unknown key \"bpm\"; expected \"microseconds\"");
}

TEST(TextShow, IntegersStandInTheRangeOfTheirField) {
  const std::string where = "songs[0].division: ";
  const std::string expected = "expected an integer from 0 to 65535";
  for (const char* value : {"-1", "65536", "480.0", "4.8e2", "1e400", "\"480\"", "true", "null", "[]", "{}",
                            "9223372036854775808", "18446744073709551616", "-9223372036854775809"}) {
    EXPECT_EQ(PatchedError("480", value), where + expected) << value;
  }
  EXPECT_EQ(PatchedError("480", "65535"), "");
  EXPECT_EQ(PatchedError("7680", "4294967296"),
            "songs[0].songLength: expected an integer from 0 to 4294967295");
  EXPECT_EQ(PatchedError("\"key\": -1", "\"key\": -32769"),
            "songs[0].timeline.keys[0].key: expected an integer from -32768 to 32767");
  EXPECT_EQ(PatchedError("\"tag\": 3", "\"tag\": 256"),
            "songs[0].timeline.barsBeats[1].tag: expected an integer from 0 to 255");
}

TEST(TextShow, TextsObjectsAndListsStandInTheirPlaces) {
  for (const char* value : {"1", "1.5", "null", "false", "[]"}) {
    EXPECT_EQ(PatchedError("\"Go\"", value), "songs[0].songName: expected a text") << value;
  }
  EXPECT_EQ(PatchedError("\"songs\": [", "\"songs\": [[],"), "songs[0]: expected an object");
  EXPECT_EQ(PatchedError("\"songs\": [", "\"songs\": [\"x\","), "songs[0]: expected an object");
  EXPECT_EQ(ReadError(R"({"songs": {}})"), "songs: expected a list (at byte 10)");
  EXPECT_EQ(ReadError(R"({"songs": 7})"), "songs: expected a list (at byte 11)");
  EXPECT_EQ(ReadError(R"({"songs": [{"timeline": []}]})"),
            "songs[0].timeline: expected an object (at byte 24)");
}

TEST(TextShow, MessagesAreFourIntegers) {
  const std::string where = "songs[0].voices[0].messages[1]";
  const std::string row = "[480,144,60,0]";
  EXPECT_EQ(PatchedError(row, "[480,144,60]"), where + "[3]: expected 4 integers");
  EXPECT_EQ(PatchedError(row, "[]"), where + "[0]: expected 4 integers");
  EXPECT_EQ(PatchedError(row, "[480,144,60,0,0]"), where + "[4]: expected the end of the list");
  EXPECT_EQ(PatchedError(row, "[480,256,60,0]"), where + "[1]: expected an integer from 0 to 255");
  EXPECT_EQ(PatchedError(row, "[4294967296,0,60,0]"),
            where + "[0]: expected an integer from 0 to 4294967295");
  EXPECT_EQ(PatchedError(row, "[480,144,[],0]"), where + "[2]: expected an integer from 0 to 255");
  EXPECT_EQ(PatchedError(row, "[480,144,{},0]"), where + "[2]: expected an integer from 0 to 255");
  EXPECT_EQ(PatchedError(row, "480"), where + ": expected a list of integers");
  EXPECT_EQ(PatchedError(row, "{}"), where + ": expected a list of integers");
  EXPECT_EQ(PatchedError("\"messages\": [", "\"messages\": 3, \"x\": ["),
            "songs[0].voices[0].messages: expected a list");
}

TEST(TextShow, TextMayBeBytes) {
  const auto name = [](const std::string& value) {
    std::string text = zuna_test::SampleShowFile({2, 0});
    return zuna_test::Read<zuna_midi::ShowData>(text.replace(text.find("\"Hä\""), 5, value)).show_name;
  };
  EXPECT_EQ(name(R"({"bytes": "ff00Ab"})"), std::string("\xFF\0\xAB", 3));
  EXPECT_EQ(name(R"({"bytes": ""})"), "");
  EXPECT_EQ(name(R"("\u0000\u00e9\ud834\udd1e\/")"), std::string("\0é𝄞/", 8));
}

TEST(TextShow, BytesArePairsOfDigits) {
  for (const char* digits : {"0", "0g", "x0", " 00", "000"}) {
    EXPECT_EQ(PatchedError("\"Hä\"", "{\"bytes\": \"" + std::string(digits) + "\"}"),
              "showName: expected pairs of hexadecimal digits");
  }
  EXPECT_EQ(PatchedError("\"Hä\"", "{}"), "showName: missing key \"bytes\"");
  EXPECT_EQ(PatchedError("\"Hä\"", R"({"bytes": "41", "bytes": "42"})"), "showName: duplicate key \"bytes\"");
  EXPECT_EQ(PatchedError("\"showdata\"", R"({"bytes": "73686f7764617461"})"), "kind: expected a text");
  EXPECT_EQ(PatchedError("\"2.0\"", R"({"bytes": "322e30"})"), "fileVersion: expected a text");
  EXPECT_EQ(PatchedError("\"Hä\"", R"({"hex": ""})"), "showName: unknown key \"hex\"");
  EXPECT_EQ(PatchedError("\"Hä\"", R"({"bytes": 7})"), "showName: expected a text");
  EXPECT_EQ(PatchedError("\"Hä\"", R"({"bytes": {}})"), "showName: expected a text");
}

TEST(TextShow, BarNumbersFitTheirEntry) {
  const std::string where = "songs[0].timeline.barsBeats[1].barNumber: ";
  EXPECT_EQ(PatchedError("12a", "1234567"), "");
  EXPECT_EQ(PatchedError("12a", "12345678"), where + "a bar number has at most 7 bytes");
  EXPECT_EQ(PatchedError("12a", "12\\u0000"), where + "a bar number cannot contain a NUL byte");
}

TEST(TextShow, NothingVanishesBehindTheSameNumber) {
  EXPECT_EQ(PatchedError("\"trackNumber\": 300", "\"trackNumber\": 1"),
            "songs[0].voices[1]: the song has another voice of the same number");
  std::string text = zuna_test::SampleShowFile({2, 0});
  const std::size_t begin = text.find("    {\n      \"songNumber\"");
  const std::size_t end = text.rfind("\n  ]\n}");
  const std::string song = text.substr(begin, end - begin);
  const std::string error = ReadError(text.insert(end, ",\n" + song));
  EXPECT_EQ(error.find("songs[1]: the show has another song of the same number (at byte "), 0U) << error;
}

TEST(TextShow, MalformedTextIsRefused) {
  EXPECT_EQ(PatchedError("\"songName\":", "\"songName\"").find("songs[0].songName: this is not JSON ("), 0U);
  EXPECT_EQ(PatchedError("Go", "G\xFF").find("songs[0].songName: this is not JSON ("), 0U);
  EXPECT_EQ(PatchedError("Go", "G\n").find("songs[0].songName: this is not JSON ("), 0U);
  EXPECT_EQ(ReadError("{"), "the text ends before its JSON value does (at byte 1)");
  EXPECT_EQ(ReadError(zuna_test::SampleShowFile({2, 0}) + " \n {")
                .find("more text follows the JSON value (at byte "),
            0U);
}

TEST(TextShow, DeepNestingIsRefused) {
  EXPECT_EQ(ReadError("{\"showName\": " + std::string(100000, '[')),
            "showName: expected a text (at byte 13)");
}

TEST(TextShow, KeysMayStandInAnyOrder) {
  const std::string text =
      R"({"songs": [{"voices": [], "timeline": {"meters": [], "pageNumbers": [], "keys": [], "barsBeats": [],)"
      R"("tempos": [{"microseconds": 7, "time": 1}]}, "songLength": 1, "division": 2, "songName": "n",)"
      R"("songNumber": "1"}], "showName": "s", "fileVersion": "2.0", "kind": "showdata"} )";
  const zuna_midi::ShowData show = zuna_test::Read<zuna_midi::ShowData>(text);
  EXPECT_EQ(show.show_name, "s");
  EXPECT_EQ(show.songs().at("1")->timeline->tempos.at(0), (TL::Tempo{1, 7}));
}

TEST(TextShow, EscapesWhatHasTo) {
  zuna_midi::ShowData show;
  show.show_name = std::string("\"\\/\b\f\n\r\t\x01\x1F\x7F\0é", 14);
  const std::string text = zuna_test::Write(show, {2, 0});
  EXPECT_EQ(text,
            "{\n  \"kind\": \"showdata\",\n  \"fileVersion\": \"2.0\",\n"
            "  \"showName\": \"\\\"\\\\/\\b\\f\\n\\r\\t\\u0001\\u001f\x7F\\u0000é\",\n  \"songs\": []\n}\n");
  show.show_name = "a\xC3";
  EXPECT_NE(zuna_test::Write(show, {2, 0}).find("\"showName\": {\"bytes\": \"61c3\"},"), std::string::npos);
}

}  // namespace
