// The parts of a page of a show: text in markup, the time of a song, and the page as a whole.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <string>

#include "tests/support/legacy_samples.h"
#include "tests/support/random_legacy_log.h"
#include "tests/support/random_legacy_show.h"
#include "tests/support/random_log.h"
#include "tests/support/random_show.h"
#include "tests/support/sample_models.h"
#include "toolkit/error.h"
#include "toolkit/view/internal/markup.h"
#include "toolkit/view/internal/song_time.h"
#include "toolkit/view/internal/timeline_words.h"
#include "toolkit/view/page.h"

namespace zuna_toolkit {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr cmn::FileVersion kCurrent{1, 2};

PageContent With(const Document* log, const std::string& digest = "") {
  PageContent content;
  content.log = log;
  content.digest = digest;
  return content;
}

std::string PageOf(const zuna_midi::ShowData& show) {
  return ShowPage(Document(show, kCurrent, "a.showdata"));
}

std::string PageOf(const zuna_midi::ShowData& show, const CL::ChangeLog& log) {
  const Document log_document(log, kCurrent, "a.logdata");
  return ShowPage(Document(show, kCurrent, "a.showdata"), With(&log_document));
}

std::size_t CountOf(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

/// The sample's song, which tests change.
zuna_midi::SongData& SongOf(const zuna_midi::ShowData& show) { return *show.songs().begin()->second; }

TEST(Escaped, MakesTextOfEverything) {
  EXPECT_EQ(Escaped("a<b>&\"'"), "a&lt;b&gt;&amp;&quot;&#39;");
  EXPECT_EQ(Escaped("Hä ♯"), "Hä ♯");
  EXPECT_EQ(Escaped(std::string("\xFF\x00\n", 3)), "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");
  EXPECT_EQ(Escaped("\u202Eright"), "\xEF\xBF\xBDright");
  EXPECT_EQ(Escaped(""), "");
}

TEST(Shortened, CutsBetweenCharacters) {
  EXPECT_EQ(Shortened("Fiddle", 6), "Fiddle");
  EXPECT_EQ(Shortened("Fiddle", 3), "Fid…");
  EXPECT_EQ(Shortened("äöü", 2), "äö…");
  EXPECT_EQ(Shortened("\xFF\xFE", 1), "\xFF…");
}

TEST(SongTime, GoesThroughTheTempos) {
  zuna_midi::SongData song("1", "", 100, 1000);
  song.timeline->tempos = {{0, 500000}, {200, 1000000}};
  const SongTime time(song);
  EXPECT_DOUBLE_EQ(time.SecondsAt(0), 0);
  EXPECT_DOUBLE_EQ(time.SecondsAt(200), 1);
  EXPECT_DOUBLE_EQ(time.SecondsAt(1000), 9);
}

TEST(SongTime, BeginsAtTheDefaultTempoAndTakesTemposInDisorder) {
  zuna_midi::SongData song("1", "", 100, 1000);
  song.timeline->tempos = {{400, 250000}, {200, 1000000}};
  const SongTime time(song);
  EXPECT_DOUBLE_EQ(time.SecondsAt(200), 1);
  EXPECT_DOUBLE_EQ(time.SecondsAt(400), 3);
  EXPECT_DOUBLE_EQ(time.SecondsAt(800), 4);
}

TEST(SongTime, IsNotKnownWithoutADivision) {
  const SongTime time(zuna_midi::SongData("1", "", 0, 1000));
  EXPECT_FALSE(time.is_known());
  EXPECT_EQ(time.SecondsAt(500), 0);
}

TEST(PlayedSeconds, CountsCutsRepeatsAndTempoScales) {
  zuna_midi::SongData song("1", "", 100, 1000);  // 5 seconds
  song.timeline->tempos = {{0, 500000}};
  const SongTime time(song);
  CL::SongLog log("1", "", 100, 1000);
  EXPECT_DOUBLE_EQ(time.PlayedSeconds(log), 5);
  log.cuts->events = {{0, 200, "", 0}};
  EXPECT_DOUBLE_EQ(time.PlayedSeconds(log), 4);
  log.repeats->events = {{400, 600, "", 3}};
  EXPECT_DOUBLE_EQ(time.PlayedSeconds(log), 6);
  log.tempo_scales->events = {{800, 1000, "", 0.5F}};
  EXPECT_DOUBLE_EQ(time.PlayedSeconds(log), 7);
  log.cuts->events = {{0, 200, "", 0}, {100, 400, "", 0}};  // one over the end of the other
  EXPECT_DOUBLE_EQ(time.PlayedSeconds(log), 6);
}

TEST(PlayedSeconds, PassesOverEditsThatMakeNoSense) {
  zuna_midi::SongData song("1", "", 100, 1000);
  song.timeline->tempos = {{0, 500000}};
  CL::SongLog log("1", "", 100, 1000);
  log.repeats->events = {{0, 500, "", 0}, {0, 500, "", -2}, {500, 0, "", 9}};
  log.tempo_scales->events = {{0, 500, "", 0.0F}, {0, 500, "", std::numeric_limits<float>::quiet_NaN()}};
  log.cuts->events = {{900, std::numeric_limits<std::uint32_t>::max(), "", 0}};
  log.vamps = nullptr;
  log.fermatas = nullptr;
  EXPECT_NEAR(SongTime(song).PlayedSeconds(log), 4.5, 1e-9);
}

TEST(ClockText, HasHoursWhereItNeedsThem) {
  EXPECT_EQ(ClockText(0), "0:00.0");
  EXPECT_EQ(ClockText(83.44), "1:23.4");
  EXPECT_EQ(ClockText(59.96), "1:00.0");
  EXPECT_EQ(ClockText(3723.4), "1:02:03.4");
  EXPECT_EQ(ClockText(std::numeric_limits<double>::quiet_NaN()), "0:00.0");
  EXPECT_EQ(ClockText(-1), "0:00.0");
  EXPECT_EQ(ClockText(std::numeric_limits<double>::infinity()), ClockText(1e9));
}

TEST(TimelineWords, AreThoseOfMusicians) {
  EXPECT_EQ(TempoText({0, 500000}), "120");
  EXPECT_EQ(TempoText({0, 480000}), "125");
  EXPECT_EQ(TempoText({0, 548000}), "109.5");
  EXPECT_EQ(TempoText({0, 0}), "0");
  EXPECT_EQ(MeterText({0, 6, 8, 36, 8}), "6/8");
  EXPECT_EQ(KeyText({0, 0, 0}), "C major");
  EXPECT_EQ(KeyText({0, 1, 1}), "E minor");
  EXPECT_EQ(KeyText({0, -3, 0}), "E♭ major");
  EXPECT_EQ(KeyText({0, 7, 1}), "A♯ minor");
  EXPECT_EQ(KeyText({0, -7, 1}), "A♭ minor");
  EXPECT_EQ(KeyText({0, 8, 0}), "8 sharps, mode 0");
  EXPECT_EQ(KeyText({0, -32768, 2}), "32768 flats, mode 2");
  EXPECT_EQ(PageText({0, 12}), "p. 12");
}

TEST(ShowPage, HasWhatTheShowHas) {
  const std::string page = PageOf(zuna_test::SampleShow());
  EXPECT_THAT(page, HasSubstr("<title>Hä</title>"));
  EXPECT_THAT(page, HasSubstr("<h2>2b Go</h2>"));
  EXPECT_EQ(CountOf(page, "<section "), 1U);
  EXPECT_EQ(CountOf(page, "<g class=\"voice\">"), 2U);
  EXPECT_EQ(CountOf(page, "<rect class=\"bar\""), 2U);
  EXPECT_THAT(page, HasSubstr("<title>bar 12a, 0:02.1, tick 1920</title>"));
  EXPECT_THAT(page, HasSubstr("<title>110 bpm from bar 1, 0:01.0, tick 960</title>"));
  EXPECT_THAT(page, HasSubstr("<title>D minor from bar 1, 0:00.0, tick 0</title>"));
  EXPECT_THAT(page, HasSubstr("<title>6/8 from bar 1, 0:00.0, tick 0</title>"));
  EXPECT_THAT(page, HasSubstr("<title>p. 300 from bar 1, 0:00.5, tick 480</title>"));
  EXPECT_THAT(page,
              HasSubstr("<title>Voice 1: Piano, 3 events, channels 1, 2, 1 note from C4 to C4</title>"));
  EXPECT_THAT(page, HasSubstr("<title>program 6 from bar 1, 0:00.5, tick 480</title>"));
  EXPECT_THAT(page, Not(HasSubstr("<g class=\"edit ")));
}

TEST(ShowPage, HasTheEditsOfTheLog) {
  const std::string page = PageOf(zuna_test::SampleShow(), zuna_test::SampleLog());
  EXPECT_THAT(page, HasSubstr("<title>Vamp -1 &quot;til cue&quot; from bar 1, 0:01.0, tick 960 to bar 1, "
                              "0:01.5, tick 1440</title>"));
  EXPECT_THAT(page, HasSubstr("<title>Repeat ×3 from"));
  EXPECT_THAT(page, HasSubstr("<title>Cut &quot;\xEF\xBF\xBD&quot; from bar 12a"));
  EXPECT_THAT(page, HasSubstr("<title>Transposition -2 from"));
  EXPECT_THAT(page, HasSubstr("<title>Tempo scale ×1.5 from"));
  EXPECT_THAT(page, HasSubstr("<title>Click 1 from"));
  EXPECT_THAT(page, HasSubstr("<title>Fermata 4 from"));
  EXPECT_THAT(page, HasSubstr("<title>Marker B♭ &quot;x&quot; at bar 12a"));
  EXPECT_THAT(page, HasSubstr("<title>Caesura"));
  EXPECT_THAT(page, HasSubstr("<path class=\"left-out\""));
  EXPECT_THAT(page, HasSubstr("<dt>Attacca</dt><dd>2: goes on into the next song</dd>"));
  EXPECT_THAT(page, HasSubstr("<dt>Log</dt><dd>a.logdata, version 1.2</dd>"));
}

TEST(ShowPage, HasTheFindingsAtTheirSongs) {
  zuna_midi::ShowData show = zuna_test::SampleShow();
  SongOf(show).timeline->tempos = {{0, 0}};
  EXPECT_THAT(PageOf(show),
              HasSubstr("<li class=\"error\"><strong>Error</strong>: bar 1: the tempo at 0 is 0 us; "));
  EXPECT_THAT(PageOf(zuna_midi::ShowData()), HasSubstr(": there are no songs"));
}

TEST(ShowPage, CountsFindingsThatItDoesNotShow) {
  zuna_midi::ShowData show;
  for (int number = 10; number < 22; ++number) {
    auto song = std::make_shared<zuna_midi::SongData>(*zuna_test::SampleShow().songs().at("2b"));
    song->song_number = std::to_string(number);
    song->timeline->tempos.assign(600, {0, 0});
    show.AddSongData(song);
  }
  const std::string page = PageOf(show);
  const std::string last = page.substr(page.find("<h2>21 "));
  EXPECT_EQ(CountOf(last, "<li class="), 0U);  // others have taken the place
  EXPECT_THAT(last, HasSubstr(" more findings are not shown.</p>"));
}

TEST(ShowPage, FramesTheWholeTextOfAMarker) {
  CL::ChangeLog log = zuna_test::SampleLog();
  log.song_logs().at("2b")->markers->events = {{0, "", std::string(1000, 'm')}};
  EXPECT_THAT(PageOf(zuna_test::SampleShow(), log), HasSubstr("<rect x=\"150\" y=\"2\" width=\"7016\""));
}

TEST(ShowPage, TakesNamesAsText) {
  const std::string name = "</h2><script>alert(1)</script>\" onload='x";
  zuna_midi::ShowData show = zuna_test::SampleShow();
  show.show_name = name;
  zuna_midi::SongData& song = SongOf(show);
  song.song_name = name;
  song.voice_data->GetTrack(1)->name = name;
  song.timeline->bars_beats[0].bar_number("<b>\"'");
  CL::ChangeLog log = zuna_test::SampleLog();
  CL::SongLog& edits = *log.song_logs().at("2b");
  edits.song_name = name;
  edits.markers->events = {{0, name, name}};
  edits.vamps->events = {{0, 480, name, 2}};
  const std::string page = PageOf(show, log);
  EXPECT_EQ(CountOf(page, "<script>"), 1U);  // its own
  EXPECT_EQ(CountOf(page, "</h2>"), 1U);
  EXPECT_THAT(page, Not(HasSubstr("onload='")));
  EXPECT_THAT(page, Not(HasSubstr("<b>")));
}

TEST(ShowPage, AsksForNothingElse) {
  const std::string page = PageOf(zuna_test::SampleShow(), zuna_test::SampleLog());
  for (const char* outside : {"http:", "https:", "url(", "src=", "@import", "href=\"//"})
    EXPECT_THAT(page, Not(HasSubstr(outside)));
  EXPECT_THAT(
      page,
      HasSubstr("content=\"default-src 'none'; style-src 'unsafe-inline'; script-src 'unsafe-inline'\""));
}

TEST(ShowPage, TakesLegacyDocuments) {
  const Document show(LegacyShow{zuna_test::SampleLegacyShow()}, kLegacyVersion, "old.showdata");
  const Document log(LegacyLog{zuna_test::SampleLegacyLog()}, kLegacyVersion, "old.logdata");
  const std::string page = ShowPage(show, With(&log, "d1935"));
  EXPECT_THAT(page, HasSubstr("<h1>Opera</h1>"));  // by its log
  EXPECT_THAT(page, HasSubstr("<dt>SHA-256</dt><dd>d1935</dd>"));
  EXPECT_THAT(page, HasSubstr("<g class=\"edit vamp\">"));
  EXPECT_EQ(CountOf(page, "<section "), 2U);
  EXPECT_THAT(ShowPage(show), HasSubstr("<h1>old.showdata</h1>"));
}

TEST(ShowPage, RefusesWhatDoesNotBelong) {
  const auto error_of = [](const Document& show, const Document* log) {
    try {
      ShowPage(show, With(log));
    } catch (const Error& error) {
      return std::pair(error.code(), std::string(error.what()));
    }
    return std::pair(ErrorCode::kInternal, std::string("nothing was thrown"));
  };
  const Document show(zuna_test::SampleShow(), kCurrent, "a.showdata");
  const Document log(zuna_test::SampleLog(), kCurrent, "a.logdata");
  EXPECT_EQ(error_of(log, nullptr).first, ErrorCode::kWrongKind);
  EXPECT_EQ(error_of(show, &show),
            std::pair(ErrorCode::kWrongCompanion,
                      std::string("a.showdata: is a show of version 1.2, no log; give the log of the show")));
  zuna_midi::ShowData other;
  other.AddSongData(
      std::make_shared<zuna_midi::SongData>("2b", "Other", static_cast<unsigned short>(480), 1U));
  EXPECT_EQ(error_of(Document(other, kCurrent, "b.showdata"), &log),
            std::pair(ErrorCode::kUnrelatedCompanion,
                      std::string("a.logdata: has no song of b.showdata with the same "
                                  "number and name; give the log of the show")));
}

TEST(ShowPage, DrawsHowManyNotesThereAreWhereTheyDoNotFit) {
  zuna_midi::ShowData show = zuna_test::SampleShow();
  auto& messages = show.songs().begin()->second->voice_data->GetTrack(1)->messages;
  messages.clear();
  const std::uint32_t length = SongOf(show).song_length = 1000000;
  for (std::uint32_t tick = 0; tick < length; tick += 10) {
    messages.push_back({tick, {0x90, 60, 100}});
    messages.push_back({tick + 5, {0x80, 60, 0}});
    messages.push_back({tick + 5, {0xB0, 7, 0}});
  }
  const std::string page = PageOf(show);
  EXPECT_EQ(CountOf(page, "<path class=\"density\""), 1U);
  EXPECT_LT(page.size(), 100000U);
}

TEST(ShowPage, CountsWhatIsTooMuch) {
  zuna_midi::ShowData show = zuna_test::SampleShow();
  CL::ChangeLog log = zuna_test::SampleLog();
  CL::SongLog& edits = *log.song_logs().at("2b");
  edits.vamps->events.assign(502, CL::Vamp(0, 480, "", 2));
  EXPECT_THAT(PageOf(show, log), HasSubstr("<p>2 more edits are not shown.</p>"));
  for (unsigned number = 0; number < 1000; ++number) {
    show.AddSongData(std::make_shared<zuna_midi::SongData>(std::to_string(number), "",
                                                           static_cast<unsigned short>(480), 1U));
  }
  const std::string page = PageOf(show, log);
  EXPECT_EQ(CountOf(page, "<section "), 1000U);
  EXPECT_THAT(page, HasSubstr("<p>1 more song is not shown.</p>"));
}

TEST(ShowPage, StaysInsideItsPictureWithAnyNumbers) {
  constexpr auto kMost = std::numeric_limits<std::uint32_t>::max();
  zuna_midi::ShowData show = zuna_test::SampleShow();
  CL::ChangeLog log = zuna_test::SampleLog();
  CL::SongLog& edits = *log.song_logs().at("2b");
  zuna_midi::SongData& song = SongOf(show);
  song.timeline->tempos = {{kMost, 1}, {0, kMost}, {5, 0}};
  song.timeline->bars_beats.push_back(zuna_test::SampleLabel(kMost, "end", 0));
  song.timeline->bars_beats.push_back(zuna_test::SampleLabel(0, "again", 0));
  song.timeline->keys = {{kMost, -32768, 65535}};
  song.voice_data->GetTrack(1)->messages = {
      {kMost, {0x90, 127, 1}}, {0, {0x90, 127, 1}}, {7, {0xFF, 255, 255}}};
  edits.cuts->events = {{kMost, 0, "", 1}, {0, kMost, "", 1}};
  edits.repeats->events = {{0, kMost, "", std::numeric_limits<std::int32_t>::max()}};
  for (const std::uint16_t division : {std::uint16_t{0}, std::uint16_t{1}, std::uint16_t{65535}}) {
    for (const std::uint32_t length : {std::uint32_t{0}, std::uint32_t{1}, kMost}) {
      song.division = division;
      song.song_length = length;
      const std::string page = PageOf(show, log);
      EXPECT_THAT(page, HasSubstr("viewBox=\"0 0 1151 "));
      for (const char* wrong : {"\"-", "H-", "M-", "V-"})
        EXPECT_THAT(page.substr(page.find("<main>")), Not(HasSubstr(wrong)));
    }
  }
}

TEST(ShowPage, IsMadeOfEveryDocument) {
  std::mt19937 random(1);
  for (int i = 0; i < 50; ++i) {
    const Document show(zuna_test::RandomShow(random), kCurrent, "show");
    const std::string page = ShowPage(show);
    EXPECT_EQ(CountOf(page, "<section "), show.As<zuna_midi::ShowData>()->songs().size());
    EXPECT_EQ(CountOf(page, "<section "), CountOf(page, "</section>"));
  }
}

}  // namespace
}  // namespace zuna_toolkit
