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
#include "toolkit/document/summary.h"
#include "toolkit/error.h"
#include "toolkit/view/internal/drawing.h"
#include "toolkit/view/internal/markup.h"
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
         Element("title", title) + "\n<style>" + std::string(kPageStyle) + "</style>\n</head>\n";
}

/// What the page tells about the files.
std::string FileFacts(const Document& show, const Document* log, std::size_t songs,
                      const std::string& digest) {
  std::string facts = "<dl>" + Fact("Show", show.name()) +
                      Fact("Version", cmn::VersionText(show.type().version)) +
                      Fact("Songs", std::to_string(songs));
  if (log != nullptr) {
    facts += Fact("Log", log->name() + ", version " + cmn::VersionText(log->type().version));
  }
  if (!digest.empty()) facts += Fact("SHA-256", digest);
  return facts + "</dl>\n";
}

/// A song of the page.
struct PageSong {
  const zuna_midi::SongData* song;
  const CL::SongLog* log;  ///< null where there is none
  SongTime time;
  SongFacts facts;
};

std::vector<PageSong> SongsOf(const zuna_midi::ShowData& show, const CL::ChangeLog* log) {
  std::vector<PageSong> songs;
  for (const auto& [number, song] : show.songs()) {
    if (songs.size() == kMostSongs) break;
    const CL::SongLog* edits = nullptr;
    if (log != nullptr) {
      const auto found = log->song_logs().find(number);
      if (found != log->song_logs().end()) edits = found->second.get();
    }
    SongTime time(*song);
    SongFacts facts = FactsOf(*song, time, songs.size());
    songs.push_back({song.get(), edits, std::move(time), std::move(facts)});
  }
  return songs;
}

std::string Navigation(const std::vector<PageSong>& songs) {
  std::string list = "<nav aria-label=\"Songs\"><ol>";
  for (const PageSong& song : songs) {
    list += "<li><a href=\"#" + song.facts.anchor + "\">" + Escaped(song.facts.heading) + "</a> " +
            Element("span", song.facts.duration) + "</li>\n";
  }
  return list + "</ol></nav>\n";
}

}  // namespace

std::string ShowPage(const Document& show, const Document* log, const std::string& digest) {
  RequireShow(show.type(), show.name());
  RequireCompleteSongs(show);
  if (log != nullptr) RequireBelongs(show, *log);
  const Document current = CurrentForm(show);
  const std::optional<Document> current_log = log ? std::optional(CurrentForm(*log)) : std::nullopt;
  const auto& model = *current.As<zuna_midi::ShowData>();
  FindingsBySong findings;
  findings.Add(show);
  if (log != nullptr) findings.Add(*log);

  std::vector<PageSong> songs = SongsOf(model, current_log ? current_log->As<CL::ChangeLog>() : nullptr);
  const std::string title = TitleOf(model, log, show);
  std::string page = Head(title) + "<body>\n<header>" + Element("h1", title) + "\n" +
                     FileFacts(show, log, model.songs().size(), digest) + FindingsList(findings.Of("")) +
                     Navigation(songs) + "</header>\n<main>\n";
  for (PageSong& song : songs) {
    page += SongSection(*song.song, song.log, std::move(song.time), song.facts,
                        findings.Of(song.song->song_number));
  }
  page += MoreText(model.songs().size() - songs.size(), "song", "songs");
  return page + "</main>\n<script>" + std::string(kPageScript) + "</script>\n</body>\n</html>\n";
}

}  // namespace zuna_toolkit
