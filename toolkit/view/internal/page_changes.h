// What a page marks: what changed since earlier documents, or what the legacy format does not keep.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "CL/change_log.h"
#include "toolkit/comparison/difference.h"
#include "toolkit/document/document.h"
#include "toolkit/view/internal/drawing.h"
#include "toolkit/view/page.h"

namespace zuna_toolkit {

/// The changes or losses of one song, or of the documents as a whole, in words.
struct ViewedChanges {
  std::vector<std::string> lines;  ///< kMostOfAKind at most
  std::size_t more = 0;            ///< how many there are besides
  bool is_added = false;           ///< the other show does not have the song
};

/// What the documents of a page are compared with.
class PageChanges {
 public:
  /// Compares what `content` asks for: nothing, the earlier documents or the legacy format. `model` is the
  /// current form of `show`. Throws Error where
  /// documents are not of the kinds that they should be and where one cannot be converted.
  PageChanges(const Document& show, const zuna_midi::ShowData& model, const PageContent& content);

  /// Whether anything is compared.
  bool any() const { return !names_.row.empty(); }

  /// What a song of the page and its edits are compared with.
  OtherSong Of(const zuna_midi::SongData& song) const;

  /// Of the song of this number; of the documents as a whole for an empty one.
  const ViewedChanges& ChangesOf(const std::string& number) { return changes_[number]; }

  /// "3 changes", "no losses"
  std::string CountText(const ViewedChanges& changes) const;

 private:
  /// A document that one of the page is compared with.
  struct Other {
    std::optional<Document> current;             ///< in its current form; none where nothing is compared
    std::optional<Document> legacy;              ///< what that comes from, of losses
    std::map<std::string, std::string> numbers;  ///< its numbers of songs that have another one on the page
  };

  void AddChanges(const Document& before, const Document& after, const zuna_midi::ShowData& model,
                  Other& other);
  void AddLosses(const Document& document, bool has_companion, Other& other);
  void AddLine(const std::string& number, const std::string& text);

  /// What is about songs that are not on the page is about the documents as a whole.
  void MoveOthersToWhole(const zuna_midi::ShowData& model);

  MarkNames names_;
  Other show_;
  Other log_;
  std::map<std::string, ViewedChanges> changes_;  ///< by the number of the song
};

/// The edits of a song in a current log; none where the log does not have the song.
const CL::SongLog& SongLogIn(const Document& log, const std::string& number);

/// The changes as a list; empty for none.
std::string ChangesList(const PageChanges& changes, const ViewedChanges& of_song);

}  // namespace zuna_toolkit
