// What a page marks: what changed since earlier documents, and what the legacy format does not keep. Pictures
// of single songs.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "tests/support/legacy_samples.h"
#include "tests/support/random_log.h"
#include "tests/support/random_show.h"
#include "tests/support/sample_models.h"
#include "toolkit/error.h"
#include "toolkit/view/page.h"

namespace zuna_toolkit {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr cmn::FileVersion kCurrent{1, 2};

Document ShowDocument(const zuna_midi::ShowData& show, const std::string& name = "a.showdata") {
  return Document(show, kCurrent, name);
}

std::size_t CountOf(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

zuna_midi::SongData& SongOf(const zuna_midi::ShowData& show) { return *show.songs().begin()->second; }

std::string Since(const zuna_midi::ShowData& earlier, const zuna_midi::ShowData& show) {
  const Document before = ShowDocument(earlier, "earlier.showdata");
  PageContent content;
  content.earlier_show = &before;
  return ShowPage(ShowDocument(show), content);
}

std::string Since(const CL::ChangeLog& earlier, const CL::ChangeLog& log,
                  const zuna_midi::ShowData& show = zuna_test::SampleShow()) {
  const Document before(earlier, kCurrent, "earlier.logdata");
  const Document after(log, kCurrent, "a.logdata");
  PageContent content;
  content.log = &after;
  content.earlier_log = &before;
  return ShowPage(ShowDocument(show), content);
}

/// The sample show with a song 3, whose bar B begins at tick 1920.
zuna_midi::ShowData ShowOfTwoSongs() {
  zuna_midi::ShowData show = zuna_test::SampleShow();
  auto song = std::make_shared<zuna_midi::SongData>("3", "Second", static_cast<unsigned short>(480), 3840U);
  TL::BarsBeats second_bar;
  second_bar.time = 1920;
  second_bar.bar_number("B");
  song->timeline->bars_beats.push_back(second_bar);
  show.AddSongData(song);
  return show;
}

/// A log with one vamp for song 3.
CL::ChangeLog LogOfSecondSong(unsigned short value = 2) {
  CL::ChangeLog log = zuna_test::SampleLog();
  auto edits = std::make_shared<CL::SongLog>("3", "Second", static_cast<unsigned short>(480), 3840U);
  edits->vamps->events.push_back({1920, 2880, "", value});
  log.AddSongLog(edits);
  return log;
}

std::string LossesPage(const zuna_midi::ShowData& show, const Document* log) {
  PageContent content;
  content.log = log;
  content.losses = true;
  return ShowPage(ShowDocument(show), content);
}

/// Without the legend and the style, which have the names of the marks too.
std::size_t MarksIn(const std::string& page) {
  const std::size_t songs = CountOf(page, "<section ");
  std::size_t marks = 0;
  for (const std::string name : {"here", "there"}) {
    EXPECT_EQ(CountOf(page, "class=\"mark " + name + "\""), songs);
    for (const std::string before : {"class=\"", "class=\"edit ", "class=\"tempo "}) {
      marks += CountOf(page, before + name + '"');
    }
  }
  return marks - 2 * songs;  // the texts of the legend
}

TEST(PageSince, MarksNothingWhereNothingChanged) {
  const std::string page = Since(zuna_test::SampleShow(), zuna_test::SampleShow());
  EXPECT_EQ(MarksIn(page), 0U);
  EXPECT_THAT(page, HasSubstr("no changes</span>"));
  EXPECT_THAT(page, HasSubstr("<dt>Compared with</dt><dd>earlier.showdata, version 1.2</dd>"));
  EXPECT_THAT(page, Not(HasSubstr("<details class=\"changes\"")));
  EXPECT_EQ(MarksIn(Since(zuna_test::SampleLog(), zuna_test::SampleLog())), 0U);
}

TEST(PageSince, MarksTheTimeline) {
  zuna_midi::ShowData show = zuna_test::SampleShow();
  TL::Timeline& timeline = *SongOf(show).timeline;
  timeline.tempos[1].microseconds = 600000;
  timeline.bars_beats[1].bar_number("13");
  timeline.keys.clear();
  timeline.meters.push_back({1920, 3, 4, 24, 8});
  const std::string page = Since(zuna_test::SampleShow(), show);
  EXPECT_THAT(page, HasSubstr("<summary>4 changes</summary>"));
  EXPECT_THAT(
      page, HasSubstr("<li>tempo at bar 1 (tick 960): 545455 us (110 bpm) becomes 600000 us (100 bpm)</li>"));
  EXPECT_THAT(page, HasSubstr("<path class=\"tempo there\""));
  EXPECT_THAT(page, HasSubstr(">Tempo (bpm) before</text>"));
  EXPECT_THAT(page, HasSubstr("<title>110 from bar 1, 0:01.0, tick 960</title><text class=\"there\""));
  EXPECT_THAT(page, HasSubstr("<title>100 bpm from bar 1, 0:01.0, tick 960</title><text class=\"here\""));
  EXPECT_THAT(page, HasSubstr("<title>12a from bar 13, "));
  EXPECT_THAT(page, HasSubstr(">13</text>"));
  EXPECT_THAT(page, HasSubstr(">Key before</text>"));
  EXPECT_THAT(page, Not(HasSubstr(">Key</text>")));
  EXPECT_THAT(page, HasSubstr("<title>3/4 from bar 13, 0:02.2, tick 1920</title><text class=\"here\""));
  EXPECT_THAT(page, Not(HasSubstr(">Meter before</text>")));
  EXPECT_EQ(MarksIn(page), 10U);  // names of rows too
}

TEST(PageSince, MarksNotesAndVoices) {
  zuna_midi::ShowData show = zuna_test::SampleShow();
  zuna_midi::VoiceData& voices = *SongOf(show).voice_data;
  voices.GetTrack(1)->messages = {{0, {0x90, 64, 100}}, {480, {0x90, 64, 0}}, {960, {0xC1, 5, 0}}};
  auto added = std::make_shared<zuna_midi::VoiceTrack>();
  added->track_number = 2;
  added->name = "Oboe";
  added->messages = {{480, {0x90, 70, 1}}, {960, {0x80, 70, 0}}};
  voices.AddTrack(added);
  const std::string page = Since(zuna_test::SampleShow(), show);
  EXPECT_THAT(page, HasSubstr("<li>voice 2 &quot;Oboe&quot; is added</li>"));
  EXPECT_EQ(MarksIn(page), 2U + 2U + 1U);  // the note, the program change, the note of the oboe
  const std::string back = Since(show, zuna_test::SampleShow());
  EXPECT_THAT(back, HasSubstr(">Oboe before</text>"));
  EXPECT_EQ(CountOf(back, "<g class=\"voice\">"), 3U);
}

TEST(PageSince, DrawsStrokesWhereTooManyNotesChanged) {
  zuna_midi::ShowData show = zuna_test::SampleShow();
  zuna_midi::SongData& song = SongOf(show);
  song.song_length = 100000;
  auto& messages = song.voice_data->GetTrack(1)->messages;
  for (std::uint32_t tick = 1000; tick < 100000; tick += 20) {
    messages.push_back({tick, {0x90, 60, 100}});
    messages.push_back({tick + 10, {0x80, 60, 0}});
  }
  const std::string page = Since(zuna_test::SampleShow(), show);
  EXPECT_EQ(CountOf(page, "<path class=\"here\""), 1U);
  EXPECT_LT(page.size(), 100000U);
}

TEST(PageSince, TellsOfChannelsInWordsAlone) {
  zuna_midi::ShowData show = zuna_test::SampleShow();
  SongOf(show).voice_data->GetTrack(1)->messages = {
      {0, {0x95, 60, 100}}, {480, {0x95, 60, 0}}, {480, {0xC1, 5, 0}}};
  const std::string page = Since(zuna_test::SampleShow(), show);
  EXPECT_EQ(MarksIn(page), 0U);
  EXPECT_THAT(page, HasSubstr("channel 1 becomes channel 6"));
}

TEST(PageSince, MarksTheEdits) {
  CL::ChangeLog log = zuna_test::SampleLog();
  CL::SongLog& edits = *log.song_logs().at("2b");
  edits.vamps->events.push_back({1920, 2880, "", 7});
  edits.repeats->events.clear();
  edits.transposes->events[0].SetIntValue(3);
  const std::string page = Since(zuna_test::SampleLog(), log);
  EXPECT_THAT(page, HasSubstr("<g class=\"here\"><title>Vamp 7 from"));
  EXPECT_THAT(page, HasSubstr(">Repeats before</text><"));
  EXPECT_THAT(page, HasSubstr("<g class=\"edit there\"><g><title>Repeat ×3 from"));
  EXPECT_THAT(page, HasSubstr("<g class=\"here\"><title>Transposition +3 from"));
  EXPECT_THAT(page, HasSubstr("<g class=\"edit there\"><g><title>Transposition -2 from"));
  EXPECT_THAT(page, HasSubstr("<li>repeat at bar 1 (tick 480) is removed: to tick 960, value 3</li>"));
}

TEST(PageSince, TakesEveryEditAsAddedWhereTheEarlierLogLacksTheSong) {
  EXPECT_THAT(Since(CL::ChangeLog(), zuna_test::SampleLog()),
              HasSubstr("<g class=\"here\"><title>Vamp 2 from"));
}

TEST(PageSince, DrawsTheFormerEditsOfASongThatTheLogLacks) {
  const std::string page = Since(LogOfSecondSong(), zuna_test::SampleLog(), ShowOfTwoSongs());
  EXPECT_THAT(page.substr(0, page.find("<main>")), Not(HasSubstr("removed")));
  const std::string song = page.substr(page.find("<h2>3 Second"));
  EXPECT_THAT(song, HasSubstr("<li>edits of song 3 &quot;Second&quot; are removed</li>"));
  EXPECT_THAT(song, HasSubstr("<g class=\"edit there\"><g><title>Vamp 2 from bar B, "));
}

TEST(PageSince, TellsOfEditsThatTheLogHasNowForASong) {
  const std::string page = Since(zuna_test::SampleLog(), LogOfSecondSong(), ShowOfTwoSongs());
  const std::string song = page.substr(page.find("<h2>3 Second"));
  EXPECT_THAT(song, HasSubstr("<li>edits of song 3 &quot;Second&quot; are added</li>"));
  EXPECT_THAT(song, HasSubstr("<g class=\"here\"><title>Vamp 2 from bar B, "));
}

TEST(PageSince, TellsTheBarsOfTheSongThatEditsBelongToNow) {
  CL::ChangeLog earlier = zuna_test::SampleLog();
  auto edits = std::make_shared<CL::SongLog>("4", "Second", static_cast<unsigned short>(480), 3840U);
  edits->vamps->events.push_back({1920, 2880, "", 2});
  earlier.AddSongLog(edits);
  zuna_midi::ShowData show = ShowOfTwoSongs();
  show.AddSongData(
      std::make_shared<zuna_midi::SongData>("4", "Other", static_cast<unsigned short>(480), 3840U));
  const std::string page = Since(earlier, LogOfSecondSong(5), show);
  const std::string song = page.substr(page.find("<h2>3 Second"), page.find("<h2>4 Other"));
  EXPECT_THAT(song, HasSubstr("<li>edits of song 4 &quot;Second&quot; become those of song 3</li>"));
  EXPECT_THAT(song, HasSubstr("<li>vamp at bar B (tick 1920): value 2 becomes 5</li>"));
}

TEST(PageSince, TellsWhatBecameOfSongs) {
  zuna_midi::ShowData earlier = zuna_test::SampleShow();
  const auto add = [](zuna_midi::ShowData& show, const std::string& number, const std::string& name) {
    auto song = std::make_shared<zuna_midi::SongData>(*zuna_test::SampleShow().songs().at("2b"));
    song->song_number = number;
    song->song_name = name;
    song->song_length += static_cast<std::uint32_t>(name.size());
    show.AddSongData(song);
  };
  add(earlier, "3", "Gone");
  add(earlier, "4", "Moves");
  zuna_midi::ShowData show = zuna_test::SampleShow();
  add(show, "3", "Something new");
  add(show, "5", "Moves");
  SongOf(show).song_name = "Went";
  const std::string page = Since(earlier, show);
  const std::string head = page.substr(0, page.find("<main>"));
  EXPECT_THAT(page, HasSubstr("<li>song 4 &quot;Moves&quot; becomes song 5</li>"));
  EXPECT_THAT(page, HasSubstr("<li>name: &quot;Go&quot; becomes &quot;Went&quot;</li>"));
  EXPECT_THAT(head, Not(HasSubstr("becomes")));
  const std::string moved = page.substr(page.find("<h2>5 Moves"));
  EXPECT_THAT(moved, HasSubstr("<summary>1 change</summary>"));
  EXPECT_THAT(moved, Not(HasSubstr("class=\"here\" x=\"2\"")));
}

TEST(PageSince, TellsOfSongsThatAreNotOnThePageAtItsHead) {
  zuna_midi::ShowData earlier = zuna_test::SampleShow();
  auto gone = std::make_shared<zuna_midi::SongData>("7", "Gone", static_cast<unsigned short>(480), 1U);
  earlier.AddSongData(gone);
  const std::string page = Since(earlier, zuna_test::SampleShow());
  EXPECT_THAT(page.substr(0, page.find("<main>")), HasSubstr("<li>song 7 &quot;Gone&quot; is removed</li>"));
  CL::ChangeLog log = zuna_test::SampleLog();
  auto other = std::make_shared<CL::SongLog>("8", "Other", static_cast<unsigned short>(480), 7680U);
  log.AddSongLog(other);
  CL::ChangeLog changed = zuna_test::SampleLog();
  auto later = std::make_shared<CL::SongLog>("8", "Other", static_cast<unsigned short>(480), 7680U);
  later->attacca = 1;
  changed.AddSongLog(later);
  EXPECT_THAT(Since(log, changed), HasSubstr("<li>song 8: attacca is added: 1</li>"));
}

TEST(PageSince, RefusesOtherKinds) {
  const Document log(zuna_test::SampleLog(), kCurrent, "a.logdata");
  PageContent content;
  content.earlier_show = &log;
  EXPECT_THROW(ShowPage(ShowDocument(zuna_test::SampleShow()), content), Error);
}

TEST(PageSince, HasNoMarkInAnyDocumentComparedWithItself) {
  std::mt19937 random(7);
  for (int i = 0; i < 50; ++i) {
    const zuna_midi::ShowData show = zuna_test::RandomShow(random);
    EXPECT_EQ(MarksIn(Since(show, show)), 0U);
  }
}

TEST(PageSince, IsMadeOfAnyTwoDocuments) {
  std::mt19937 random(8);
  for (int i = 0; i < 50; ++i) {
    const zuna_midi::ShowData show = zuna_test::RandomShow(random);
    const std::string page = Since(zuna_test::RandomShow(random), show);
    EXPECT_EQ(CountOf(page, "<section "), show.songs().size());
    EXPECT_EQ(CountOf(page, "<g"), CountOf(page, "</g>"));
  }
}

TEST(PageOfLosses, MarksWhatTheLegacyFormatDoesNotKeep) {
  const Document log(zuna_test::SampleLog(), kCurrent, "a.logdata");
  const std::string page = LossesPage(zuna_test::SampleShow(), &log);
  EXPECT_THAT(page, HasSubstr(">not kept in format 0.0</text>"));
  EXPECT_THAT(page, HasSubstr("<g class=\"here\"><title>Fermata 4 from"));
  EXPECT_THAT(page, HasSubstr("[fermata-dropped]</li>"));
  EXPECT_THAT(page,
              HasSubstr("<li>format 0.0 does not keep 1 show name (&quot;Hä&quot;; up takes it from the log) "
                        "[show-name-dropped]</li>"));
  EXPECT_THAT(page, HasSubstr("kinds of losses</span>"));
  EXPECT_THAT(LossesPage(zuna_test::SampleShow(), nullptr), HasSubstr("; no log beside it has this"));
}

TEST(PageOfLosses, RefusesLegacyDocuments) {
  PageContent content;
  content.losses = true;
  const Document legacy(LegacyShow{zuna_test::SampleLegacyShow()}, kLegacyVersion, "old.showdata");
  try {
    ShowPage(legacy, content);
    FAIL() << "it was taken";
  } catch (const Error& error) {
    EXPECT_EQ(error.code(), ErrorCode::kCurrentWanted);
    EXPECT_STREQ(error.what(), "old.showdata: is a show of version 0.0, not a current one; use up first");
  }
}

TEST(SongPicture, IsOneSongAsSvg) {
  const std::string picture = SongPicture(ShowDocument(zuna_test::SampleShow()));
  EXPECT_THAT(
      picture,
      StartsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\""));
  EXPECT_THAT(picture, HasSubstr("<title>2b Go</title><style>"));
  EXPECT_EQ(CountOf(picture, "<g class=\"voice\">"), 2U);
  EXPECT_THAT(picture, Not(HasSubstr("<script")));
}

TEST(SongPicture, HasTextThatXmlAllows) {
  zuna_midi::ShowData show = zuna_test::SampleShow();
  SongOf(show).song_name = "a\uFFFF\uFFFE\x01<b>&";
  EXPECT_THAT(SongPicture(ShowDocument(show)),
              HasSubstr("<title>2b a\uFFFD\uFFFD\uFFFD&lt;b&gt;&amp;</title>"));
}

TEST(SongPicture, NeedsOneSong) {
  const auto error_of = [](const zuna_midi::ShowData& show, const std::optional<std::string>& number) {
    PageContent content;
    content.song = number;
    try {
      SongPicture(ShowDocument(show), content);
    } catch (const Error& error) {
      EXPECT_EQ(error.code(), ErrorCode::kSongNotFound);
      return std::string(error.what());
    }
    return std::string("nothing was thrown");
  };
  zuna_midi::ShowData show = zuna_test::SampleShow();
  show.AddSongData(std::make_shared<zuna_midi::SongData>("3", "", static_cast<unsigned short>(480), 1U));
  EXPECT_EQ(error_of(show, std::nullopt),
            "a.showdata: does not have just one song; name one of its songs, which are 2b, 3");
  EXPECT_EQ(error_of(show, "4"), "a.showdata: has no song 4; its songs are 2b, 3");
  EXPECT_EQ(error_of(show, "3"), "nothing was thrown");
}

TEST(ShowPage, ShowsOneSong) {
  zuna_midi::ShowData show = zuna_test::SampleShow();
  show.AddSongData(std::make_shared<zuna_midi::SongData>("3", "", static_cast<unsigned short>(480), 1U));
  PageContent content;
  content.song = "3";
  const std::string page = ShowPage(ShowDocument(show), content);
  EXPECT_EQ(CountOf(page, "<section "), 1U);
  EXPECT_THAT(page, HasSubstr("<h2>3</h2>"));
  EXPECT_THAT(page, Not(HasSubstr("not shown")));
}

}  // namespace
}  // namespace zuna_toolkit
