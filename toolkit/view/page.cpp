// A show as a page: the document around its songs.
#include "toolkit/view/page.h"

#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "toolkit/checking/checking.h"
#include "toolkit/conversion/companion.h"
#include "toolkit/conversion/conversion.h"
#include "toolkit/document/internal/complete_songs.h"
#include "toolkit/document/song_not_found.h"
#include "toolkit/document/summary.h"
#include "toolkit/error.h"
#include "toolkit/view/internal/drawing.h"
#include "toolkit/view/internal/markup.h"
#include "toolkit/view/internal/page_changes.h"
#include "toolkit/view/internal/song_view.h"
#include "toolkit/view/internal/style.h"
#include "toolkit/view/internal/tables.h"
#include "toolkit/words.h"

namespace zuna_toolkit {

namespace {

constexpr std::size_t kMostSongs = 1000;

void RequireBelongs(const Document& show, const Document& log) {
  if (!log.type().is_log()) {
    throw Error(ErrorCode::kWrongCompanion, log.name(), "is " + TypeText(log.type()) + ", no log",
                "give the log of the show");
  }
  if (FitOf(log, CompanionFrom(show)).belongs) return;
  throw Error(ErrorCode::kUnrelatedCompanion, log.name(),
              "has no song of " + show.name() + " with the same number and name", "give the log of the show");
}

/// The findings by song number; those about a whole document have none.
class FindingsBySong {
 public:
  void Add(const Document& document) {
    Check(document, [this](const Finding& finding) {
      ViewedFindings& findings = songs_[finding.song];
      if (findings.findings.size() < kMostOfAKind && left_ > 0) {
        findings.findings.push_back(finding);
        --left_;
      } else {
        ++findings.more;
      }
    });
  }

  const ViewedFindings& Of(const std::string& song) { return songs_[song]; }

 private:
  std::map<std::string, ViewedFindings> songs_;
  std::size_t left_ = 10 * kMostOfAKind;  ///< that are kept in all
};

/// Throws Error (kSongNotFound) for a song that is asked for and that the show does not have.
void RequireSong(const zuna_midi::ShowData& show, const std::string& number, const std::string& file) {
  if (!show.songs().contains(number)) ThrowSongNotFound(file, number, show.songs());
}

/// The show name, or the name of the file where there is none.
std::string TitleOf(const zuna_midi::ShowData& show, const Document* log, const Document& document) {
  if (!show.show_name.empty()) return show.show_name;
  if (log != nullptr) {
    std::string name = SummariseWhole(*log).show_name.value_or("");
    if (!name.empty()) return name;
  }
  return document.name();
}

std::string Head(const std::string& title) {
  return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
         "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src "
         "'unsafe-inline'; script-src 'unsafe-inline'\">\n"
         "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n" +
         Element("title", title) + "\n<style>" + std::string(kPictureStyle) + std::string(kPageStyle) +
         "</style>\n</head>\n";
}

std::string NameAndVersion(const Document& document) {
  return document.name() + ", version " + cmn::VersionText(document.type().version);
}

/// What the page tells about the files.
std::string FileFacts(const Document& show, const PageContent& content, std::size_t songs) {
  std::string facts = "<dl>" + Fact("Show", show.name()) +
                      Fact("Version", cmn::VersionText(show.type().version)) +
                      Fact("Songs", std::to_string(songs));
  if (content.log != nullptr) facts += Fact("Log", NameAndVersion(*content.log));
  for (const Document* earlier : {content.earlier_show, content.earlier_log}) {
    if (earlier != nullptr && !content.losses) facts += Fact("Compared with", NameAndVersion(*earlier));
  }
  if (!content.digest.empty()) facts += Fact("SHA-256", content.digest);
  return facts + "</dl>\n";
}

/// A song of the page.
struct PageSong {
  const zuna_midi::SongData* song;
  const CL::SongLog* log;  ///< null where the page has no log
  SongTime time;
  SongFacts facts;
};

/// Everything that a page is made of.
class PageModel {
 public:
  PageModel(const Document& show, const PageContent& content) : show_(show), content_(content) {
    RequireShow(show.type(), show.name());
    RequireCompleteSongs(show);
    if (content.log != nullptr) RequireBelongs(show, *content.log);
    current_ = CurrentForm(show);
    if (content.log != nullptr) current_log_ = CurrentForm(*content.log);
    if (content.song) RequireSong(model(), *content.song, show.name());
    findings_.Add(show);
    if (content.log != nullptr) findings_.Add(*content.log);
    changes_.emplace(show, model(), content);
  }

  const zuna_midi::ShowData& model() const { return *current_->As<zuna_midi::ShowData>(); }
  std::string title() const { return TitleOf(model(), content_.log, show_); }
  const ViewedFindings& FindingsOf(const std::string& number) { return findings_.Of(number); }
  PageChanges& changes() { return *changes_; }

  /// The songs that are shown.
  std::vector<PageSong> Songs() const {
    std::vector<PageSong> songs;
    for (const auto& [number, song] : model().songs()) {
      if (songs.size() == kMostSongs) break;
      if (content_.song && *content_.song != number) continue;
      SongTime time(*song);
      SongFacts facts = FactsOf(*song, time, songs.size());
      const CL::SongLog* log = current_log_ ? &SongLogIn(*current_log_, number) : nullptr;
      songs.push_back({song.get(), log, std::move(time), std::move(facts)});
    }
    return songs;
  }

  ViewedSong Viewed(PageSong& song) const {
    OtherSong other = changes_->Of(*song.song);
    std::vector<EditKind> edits;
    if (song.log != nullptr) edits = EditsOf(*song.log, other.log);
    return {*song.song,       song.log,        std::move(song.time), BarLabels(*song.song->timeline),
            std::move(edits), std::move(other)};
  }

 private:
  const Document& show_;
  const PageContent& content_;
  std::optional<Document> current_;
  std::optional<Document> current_log_;
  FindingsBySong findings_;
  std::optional<PageChanges> changes_;
};

std::string Navigation(const std::vector<PageSong>& songs, PageChanges& changes) {
  std::string list = "<nav aria-label=\"Songs\"><ol>";
  for (const PageSong& song : songs) {
    std::string told = song.facts.duration;
    if (changes.any()) AppendListed(told, changes.CountText(changes.ChangesOf(song.song->song_number)));
    list += "<li><a href=\"#" + song.facts.anchor + "\">" + Escaped(song.facts.heading) + "</a> " +
            Element("span", told) + "</li>\n";
  }
  return list + "</ol></nav>\n";
}

}  // namespace

std::string ShowPage(const Document& show, const PageContent& content) {
  PageModel page(show, content);
  std::vector<PageSong> songs = page.Songs();
  const std::size_t all = content.song ? 1 : page.model().songs().size();
  std::string text = Head(page.title()) + "<body>\n<header>" + Element("h1", page.title()) + "\n" +
                     FileFacts(show, content, page.model().songs().size()) +
                     FindingsList(page.FindingsOf("")) +
                     ChangesList(page.changes(), page.changes().ChangesOf("")) +
                     Navigation(songs, page.changes()) + "</header>\n<main>\n";
  for (PageSong& song : songs) {
    const std::string& number = song.song->song_number;
    text += SongSection(page.Viewed(song), song.facts,
                        FindingsList(page.FindingsOf(number)) +
                            ChangesList(page.changes(), page.changes().ChangesOf(number)));
  }
  text += MoreText(all - songs.size(), "song", "songs");
  return text + "</main>\n<script>" + std::string(kPageScript) + "</script>\n</body>\n</html>\n";
}

std::string SongPicture(const Document& show, const PageContent& content) {
  PageModel page(show, content);
  std::vector<PageSong> songs = page.Songs();
  if (songs.size() != 1) ThrowSongNotFound(show.name(), "", page.model().songs());
  return SongDrawing(page.Viewed(songs.front()), songs.front().facts);
}

}  // namespace zuna_toolkit
