// Songs that a program built without one of their parts: every function of documents refuses them.
#include <gtest/gtest.h>

#include <functional>
#include <sstream>
#include <vector>

#include "tests/support/encrypted.h"
#include "tests/support/sample_models.h"
#include "toolkit/comparison/comparison.h"
#include "toolkit/conversion/conversion.h"
#include "toolkit/conversion/copy_fermatas.h"
#include "toolkit/document/summary.h"
#include "toolkit/document/text_form.h"
#include "toolkit/document/write.h"
#include "toolkit/error.h"
#include "toolkit/midi/songs.h"
#include "toolkit/view/page.h"

namespace zuna_toolkit {
namespace {

std::string RefusalOf(const std::function<void()>& call) {
  try {
    call();
  } catch (const Error& error) {
    EXPECT_EQ(error.code(), ErrorCode::kIncompleteSong);
    return error.what();
  }
  return "nothing was thrown";
}

const std::string kRefusal = "made: song 2b lacks a part; give every song all its lists";

std::vector<Document> IncompleteShows() {
  std::vector<Document> shows;
  for (const bool has_timeline : {false, true}) {
    zuna_midi::ShowData show;
    const auto song = std::make_shared<zuna_midi::SongData>(*zuna_test::SampleShow().songs().at("2b"));
    if (has_timeline) {
      song->voice_data = nullptr;
    } else {
      song->timeline = nullptr;
    }
    show.AddSongData(song);
    shows.emplace_back(show, cmn::FileVersion{1, 2}, "made");
  }
  return shows;
}

std::vector<Document> IncompleteLogs() {
  CL::ChangeLog without_list = zuna_test::SampleLog();
  without_list.song_logs().at("2b")->vamps = nullptr;
  CL::ChangeLog without_song = zuna_test::SampleLog();
  without_song.song_logs().at("2b") = nullptr;
  const cmn::FileVersion version{1, 2};
  return {Document(without_list, version, "made"), Document(without_song, version, "made")};
}

TEST(IncompleteSongs, AreRefused) {
  const Document whole_log(zuna_test::SampleLog(), {1, 2}, "whole");
  std::vector<Document> documents = IncompleteShows();
  for (const Document& log : IncompleteLogs()) {
    documents.push_back(log);
    EXPECT_EQ(RefusalOf([&] { CopyFermatas(log, whole_log); }), kRefusal);
    EXPECT_EQ(RefusalOf([&] { CopyFermatas(whole_log, log); }), kRefusal);
  }
  for (const Document& document : documents) {
    std::ostringstream text;
    EXPECT_EQ(RefusalOf([&] { SummariseSongs(document, [](const SongSummary&) {}); }), kRefusal);
    EXPECT_EQ(RefusalOf([&] { Down(document); }), kRefusal);
    EXPECT_EQ(RefusalOf([&] { CompanionFrom(document); }), kRefusal);
    EXPECT_EQ(RefusalOf([&] { Compare(document, document); }), kRefusal);
    EXPECT_EQ(RefusalOf([&] { WriteTextForm(document, text); }), kRefusal);
    EXPECT_EQ(RefusalOf([&] { CipherStreamOf(document, zuna_test::kKey); }), kRefusal);
  }
  for (const Document& show : IncompleteShows()) {
    EXPECT_EQ(RefusalOf([&] { ShowPage(show); }), kRefusal);
    const auto& songs = show.As<zuna_midi::ShowData>()->songs();
    midi::Report report;
    EXPECT_EQ(RefusalOf([&] { midi::ExportSong(*songs.at("2b"), report); }),
              "it lacks its timeline or its voices; give both");
  }
}

TEST(Sinks, KeepTheirOwnExceptions) {
  class OwnError : public std::runtime_error {
    using std::runtime_error::runtime_error;
  };
  const Document show(zuna_test::SampleShow(), {1, 2}, "show");
  const Document log(zuna_test::SampleLog(), {1, 2}, "log");
  for (const Document& current : {show, log}) {
    const auto fail = [](const Difference&) { throw OwnError("own"); };
    EXPECT_THROW(LossesOfDown(current, Down(current), fail), OwnError);
  }
}

TEST(TextForms, SayThatTheStreamCannotBeWritten) {
  for (const bool throws : {false, true}) {
    std::ostringstream os;
    os.setstate(std::ios_base::badbit);
    const Document show(zuna_test::SampleShow(), {1, 2}, "show");
    try {
      if (throws) os.exceptions(std::ios_base::badbit);
    } catch (const std::ios_base::failure&) {
      // The mask is set all the same.
    }
    try {
      WriteTextForm(show, os);
      ADD_FAILURE() << "nothing was thrown";
    } catch (const Error& error) {
      EXPECT_EQ(error.code(), ErrorCode::kIo);
      EXPECT_STREQ(error.what(), "The output stream cannot be written; check the free space");
    }
  }
}

}  // namespace
}  // namespace zuna_toolkit
