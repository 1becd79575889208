// The text form of logs: what is refused, by path.

#include <gtest/gtest.h>

#include <bit>
#include <string>

#include "tests/platform/core/file/kinds.h"

namespace {

using zuna_test::SampleLogFile;

constexpr cmn::FileVersion kText{2, 0};

std::string LogReadError(const std::string& bytes) { return zuna_test::ReadError<CL::ChangeLog>(bytes); }

std::string Patched(const std::string& from, const std::string& to) {
  return zuna_test::PatchedText<zuna_test::LogKind>(from, to);
}
std::string PatchedError(const std::string& from, const std::string& to) {
  return zuna_test::PatchedTextError<zuna_test::LogKind>(from, to);
}

/// The bits of the first tempo scale where its value is `text`.
std::uint32_t Scale(const std::string& text) {
  return zuna_test::Read<CL::ChangeLog>(Patched("1.5", text))
      .GetSongLog("2b")
      ->tempo_scales->events.at(0)
      .value_bits;
}

std::string ScaleError(const std::string& text) { return PatchedError("1.5", text); }

TEST(TextLog, NamesTheByte) {
  EXPECT_EQ(LogReadError(R"({"kind": "showdata"})"), "kind: this is a show, not a log (at byte 18)");
}

TEST(TextLog, KindHasToBeThatOfALog) {
  EXPECT_EQ(PatchedError("logdata", "showdata"), "kind: this is a show, not a log");
  EXPECT_EQ(PatchedError("logdata", "data"), "kind: this is not a log");
}

TEST(TextLog, VersionHasToBeOne) {
  EXPECT_EQ(PatchedError("2.0", "2"), "fileVersion: expected a version such as \"2.0\"");
}

TEST(TextLog, WhatIdentifiesTheDocumentIsAPlainString) {
  EXPECT_EQ(PatchedError("\"logdata\"", R"({"bytes": "6c6f6764617461"})"), "kind: expected a text");
  EXPECT_EQ(PatchedError("\"2.0\"", R"({"bytes": "322e30"})"), "fileVersion: expected a text");
  EXPECT_EQ(PatchedError("\"identifier\": \"", R"("identifier": {"bytes": "00"}, "was": ")"),
            "identifier: expected a text");
}

TEST(TextLog, KeysAreKnownAndThereOnce) {
  EXPECT_EQ(PatchedError("\"attacca\": 2,", ""), "songLogs[0]: missing key \"attacca\"");
  EXPECT_EQ(PatchedError("\"tagPair\": [1, 65535],", ""), "missing key \"tagPair\"");
  EXPECT_EQ(PatchedError("\"end\": 480", "\"End\": 480"),
            "songLogs[0].vamps[0]: unknown key \"End\"; did you mean \"end\"?");
  EXPECT_EQ(PatchedError("\"end\": 480", "\"end\": 480, \"end\": 480"),
            "songLogs[0].vamps[0].end: duplicate key");
  EXPECT_EQ(PatchedError("\"value\": -1", "\"text\": \"\""),
            "songLogs[0].vamps[1]: unknown key \"text\"; expected \"value\"");
  EXPECT_EQ(PatchedError("\"caesuras\": [", "\"caesuras\": [{},"),
            "songLogs[0].caesuras[0]: missing key \"position\"");
}

TEST(TextLog, NumbersStandInTheRangeOfTheirField) {
  EXPECT_EQ(PatchedError("\"attacca\": 2", "\"attacca\": 256"),
            "songLogs[0].attacca: expected an integer from 0 to 255");
  EXPECT_EQ(PatchedError("\"division\": 480", "\"division\": 65536"),
            "songLogs[0].division: expected an integer from 0 to 65535");
  EXPECT_EQ(PatchedError("7680", "-1"), "songLogs[0].songLength: expected an integer from 0 to 4294967295");
  EXPECT_EQ(PatchedError("\"end\": 480", "\"end\": 4294967296"),
            "songLogs[0].vamps[0].end: expected an integer from 0 to 4294967295");
  EXPECT_EQ(PatchedError("300", "300.0"),
            "songLogs[0].caesuras[0].secondWord: expected an integer from 0 to 4294967295");
}

TEST(TextLog, IntegerValuesAreThirtyTwoBitsSignedOrUnsigned) {
  const auto value = [](const std::string& text) {
    return zuna_test::Read<CL::ChangeLog>(Patched("\"value\": -1", "\"value\": " + text))
        .GetSongLog("2b")
        ->vamps->events.at(1)
        .value_bits;
  };
  EXPECT_EQ(value("-2147483648"), 0x80000000U);
  EXPECT_EQ(value("2147483648"), 0x80000000U);
  EXPECT_EQ(value("4294967295"), 0xFFFFFFFFU);
  for (const char* text : {"-2147483649", "4294967296", "1.5", "1e0", "{\"bits\": 1}", "\"1\""}) {
    EXPECT_EQ(PatchedError("\"value\": -1", std::string("\"value\": ") + text),
              "songLogs[0].vamps[1].value: expected an integer from -2147483648 to 4294967295");
  }
}

TEST(TextLog, FloatsAreTheNearestToTheirDecimal) {
  EXPECT_EQ(Scale("1"), 0x3F800000U);
  EXPECT_EQ(Scale("-0"), 0x80000000U);
  EXPECT_EQ(Scale("-0.0"), 0x80000000U);
  EXPECT_EQ(Scale("0.1"), std::bit_cast<std::uint32_t>(0.1F));
  EXPECT_EQ(Scale("1.00000005960464477539062500000000001"), 0x3F800001U);
  EXPECT_EQ(Scale("3.4028235e+38"), 0x7F7FFFFFU);
  EXPECT_EQ(Scale("1e-45"), 1U);
  EXPECT_EQ(Scale("1e-60"), 0U);
  EXPECT_EQ(Scale("18446744073709551616"), 0x5F800000U);
  EXPECT_EQ(Scale("9223372036854775808"), 0x5F000000U);
}

TEST(TextLog, FloatsMayBeBits) {
  EXPECT_EQ(Scale(R"({"bits": 2143289344})"), 0x7FC00000U);
  EXPECT_EQ(Scale(R"({"bits": 4294967295})"), 0xFFFFFFFFU);
  EXPECT_EQ(Scale(R"({"bits": 1069547520})"), 0x3FC00000U);
  EXPECT_EQ(Scale(R"({"bits": 0})"), 0U);
}

TEST(TextLog, FloatsAreFiniteNumbersOrBits) {
  const std::string where = "songLogs[0].tempoScales[0].value: ";
  for (const char* text : {"3.4028236e+38", "-1e39", "1e300", "\"1.5\"", "null", "true", "[]"}) {
    EXPECT_EQ(ScaleError(text),
              where + "expected a number in the range of a single-precision float or {\"bits\": N}")
        << text;
  }
  for (const char* text : {"-1", "4294967296", "1.5", "\"1\"", "{}", "[]", "18446744073709551615"}) {
    EXPECT_EQ(ScaleError("{\"bits\": " + std::string(text) + "}"),
              where + "expected an integer from 0 to 4294967295")
        << text;
  }
  EXPECT_EQ(ScaleError("{}"), where + "missing key \"bits\"");
  EXPECT_EQ(ScaleError(R"({"bits": 1, "bits": 1})"), where + "duplicate key \"bits\"");
  EXPECT_EQ(ScaleError(R"({"bytes": "00"})"), where + "unknown key \"bytes\"");
  EXPECT_NE(ScaleError("1e99999999999"), "");
  EXPECT_NE(ScaleError("NaN"), "");
}

TEST(TextLog, FloatMayStandWhereAPieceOfTheTextEnds) {
  const std::string number = "-1.00000005960464477539062500000000001e0";
  const std::string text = Patched("1.5", number);
  const std::size_t place = text.find(number);
  const std::size_t piece = std::size_t{64} * 1024;
  for (std::size_t behind = 0; behind <= number.size() + 1; ++behind) {
    std::string moved = text;
    moved.insert(1, piece - place - behind, ' ');
    EXPECT_EQ(zuna_test::Read<CL::ChangeLog>(moved).GetSongLog("2b")->tempo_scales->events.at(0).value_bits,
              0xBF800001U)
        << behind;
  }
}

TEST(TextLog, TagPairIsTwoIntegers) {
  const std::string pair = "[1, 65535]";
  EXPECT_EQ(PatchedError(pair, "[1]"), "tagPair[1]: expected 2 integers");
  EXPECT_EQ(PatchedError(pair, "[]"), "tagPair[0]: expected 2 integers");
  EXPECT_EQ(PatchedError(pair, "[1, 2, 3]"), "tagPair[2]: expected the end of the list");
  EXPECT_EQ(PatchedError(pair, "[1, 65536]"), "tagPair[1]: expected an integer from 0 to 65535");
  EXPECT_EQ(PatchedError(pair, "[[1, 2]]"), "tagPair[0]: expected an integer from 0 to 65535");
  EXPECT_EQ(PatchedError(pair, "7"), "tagPair: expected a list of integers");
  EXPECT_EQ(PatchedError(pair, "{}"), "tagPair: expected a list of integers");
}

TEST(TextLog, IdentifierIsOne) {
  const std::string identifier = "00112233-4455-6677-8899-aabbccddeeff";
  for (const char* text : {"", "00112233445566778899aabbccddeeff", "00112233-4455-6677-8899-aabbccddeefg",
                           "{00112233-4455-6677-8899-aabbccddeeff}"}) {
    EXPECT_EQ(PatchedError(identifier, text),
              "identifier: expected an identifier such as \"" + identifier + "\"");
  }
  EXPECT_EQ(PatchedError(identifier, "00112233-4455-6677-8899-AABBCCDDEEFF"), "");
}

TEST(TextLog, NothingVanishesBehindTheSameNumber) {
  std::string text = SampleLogFile(kText);
  const std::size_t begin = text.find("    {\n      \"songNumber\"");
  const std::size_t end = text.rfind("\n  ]\n}");
  const std::string song = text.substr(begin, end - begin);
  const std::string error = LogReadError(text.insert(end, ",\n" + song));
  EXPECT_EQ(error.find("songLogs[1]: the log has another song of the same number (at byte "), 0U) << error;
}

TEST(TextLog, KeysMayStandInAnyOrder) {
  const std::string text =
      R"({"songLogs": [{"caesuras": [{"secondWord": 3, "label": "c", "position": 4}], "markers": [],)"
      R"("fermatas": [], "clicks": [], "tempoScales": [{"value": 2, "label": "", "end": 5, "start": 6}],)"
      R"("transposes": [], "cuts": [], "repeats": [], "vamps": [], "attacca": 1, "songLength": 2,)"
      R"("division": 3, "songName": "n", "songNumber": "1"}], "tagPair": [1, 2],)"
      R"("identifier": "00112233-4455-6677-8899-aabbccddeeff", "logLabel": "l", "showName": "s",)"
      R"("fileVersion": "2.0", "kind": "logdata"} )";
  const CL::ChangeLog log = zuna_test::Read<CL::ChangeLog>(text);
  EXPECT_EQ(log.show_name, "s");
  EXPECT_EQ(log.GetSongLog("1")->caesuras->events.at(0).second_word, 3U);
  EXPECT_EQ(log.GetSongLog("1")->tempo_scales->events.at(0).FloatValue(), 2.0F);
}

TEST(TextLog, EmptyLogHasEveryKey) {
  EXPECT_EQ(zuna_test::Write(CL::ChangeLog(), kText),
            "{\n  \"kind\": \"logdata\",\n  \"fileVersion\": \"2.0\",\n  \"showName\": \"\",\n"
            "  \"logLabel\": \"\",\n  \"identifier\": \"00000000-0000-0000-0000-000000000000\",\n"
            "  \"tagPair\": [0, 0],\n  \"songLogs\": []\n}\n");
}

}  // namespace
