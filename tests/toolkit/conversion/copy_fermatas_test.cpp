#include "toolkit/conversion/copy_fermatas.h"

#include <gtest/gtest.h>

#include "tests/support/bytes.h"
#include "toolkit/error.h"

namespace zuna_toolkit {
namespace {

using zuna_test::MessageOf;

std::shared_ptr<CL::SongLog> AddSong(CL::ChangeLog& log, const std::string& number) {
  auto song = std::make_shared<CL::SongLog>(number, "Name", std::uint16_t{0}, 1920U);
  log.AddSongLog(song);
  return song;
}

TEST(CopyFermatas, CopiesAndCountsThem) {
  CL::ChangeLog source;
  CL::ChangeLog destination;
  AddSong(source, "1")->fermatas->events.emplace_back(1U, 2U, "", 3);
  AddSong(source, "2")->attacca = 1;
  AddSong(source, "3");
  const auto old = AddSong(destination, "1");
  old->fermatas->events = {CL::Fermata(1, 2, "label", 3), CL::Fermata(5, 6, "", 3)};
  AddSong(destination, "2")->attacca = 1;
  AddSong(destination, "3")->attacca = 7;
  AddSong(destination, "4")->attacca = 8;
  const FermataCopy copy = CopyFermatas({source, {1, 1}, "a"}, {destination, {2, 0}, "b"});
  EXPECT_EQ(copy.fermatas, 1U);
  EXPECT_EQ(copy.attaccas, 1U);
  EXPECT_EQ(copy.songs, 2U);
  EXPECT_EQ(copy.erased_fermatas, 2U);
  EXPECT_EQ(copy.erased_attaccas, 1U);
  EXPECT_EQ(copy.erased_in, (std::vector<std::string>{"1", "3"}));
  EXPECT_EQ(copy.document.name(), "b");
  EXPECT_EQ(copy.document.type(), (FileType{cmn::FileKind::kLog, {2, 0}}));
  const CL::ChangeLog& result = *copy.document.As<CL::ChangeLog>();
  ASSERT_EQ(result.GetSongLog("1")->fermatas->events.size(), 1U);
  EXPECT_EQ(result.GetSongLog("1")->fermatas->events[0].label, "");
  EXPECT_EQ(result.GetSongLog("2")->attacca, 1);
  EXPECT_EQ(result.GetSongLog("3")->attacca, 0);
  EXPECT_EQ(result.GetSongLog("4")->attacca, 8);
  EXPECT_EQ(old->fermatas->events.size(), 2U);  // The destination itself has not changed.
  EXPECT_EQ(destination.GetSongLog("3")->attacca, 7);
}

/// How many of the destination's fermatas are erased where the song of the source has these.
std::size_t Erased(const std::vector<CL::Fermata>& source, const std::vector<CL::Fermata>& destination) {
  CL::ChangeLog from;
  CL::ChangeLog to;
  AddSong(from, "1")->fermatas->events = source;
  AddSong(to, "1")->fermatas->events = destination;
  const FermataCopy copy = CopyFermatas({from, {1, 2}, "a"}, {to, {1, 2}, "b"});
  EXPECT_EQ(copy.erased_in.size(), copy.erased_fermatas > 0 ? 1U : 0U);
  return copy.erased_fermatas;
}

TEST(CopyFermatas, TellsFermatasApartByEveryField) {
  const CL::Fermata fermata(1, 2, "label", 3);
  EXPECT_EQ(Erased({fermata}, {fermata}), 0U);
  for (const CL::Fermata& other : {CL::Fermata(0, 2, "label", 3), CL::Fermata(1, 0, "label", 3),
                                   CL::Fermata(1, 2, "", 3), CL::Fermata(1, 2, "label", 0)}) {
    EXPECT_EQ(Erased({fermata}, {other}), 1U);
    EXPECT_EQ(Erased({fermata, other}, {other}), 0U);
    EXPECT_EQ(Erased({fermata, other}, {other, fermata}), 0U);
    EXPECT_EQ(Erased({fermata, other}, {other, other}), 1U);
    EXPECT_EQ(Erased({}, {other, other}), 2U);
  }
}

TEST(CopyFermatas, NeedsTwoCurrentLogsOfTheSameSongs) {
  CL::ChangeLog source;
  CL::ChangeLog destination;
  AddSong(source, "1");
  AddSong(source, "2");
  const Document log(source, {1, 2}, "log");
  const Document empty(destination, {1, 2}, "empty");
  const Document legacy(LegacyLog(), {}, "old");
  const Document show(zuna_midi::ShowData(), {1, 2}, "show");
  const std::string what = "old: is a log of version 0.0, which holds no attaccas and fermatas; ";
  EXPECT_EQ(MessageOf<Error>([&] { CopyFermatas(log, empty); }),
            "empty: lacks songs of log: 1, 2; give a log of the same songs");
  EXPECT_EQ(MessageOf<Error>([&] { CopyFermatas(legacy, log); }),
            what + "give the log from before it went down");
  EXPECT_EQ(MessageOf<Error>([&] { CopyFermatas(log, legacy); }), what + "use up first");
  EXPECT_EQ(MessageOf<Error>([&] { CopyFermatas(show, log); }),
            "show: is a show, and this command takes logs; give a log");
}

}  // namespace
}  // namespace zuna_toolkit
