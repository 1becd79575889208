// The differences between two documents, and what a conversion loses: the differences between a document and
// what comes back of it.
#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <vector>

#include "kit/api.h"
#include "toolkit/comparison/difference.h"
#include "toolkit/document/document.h"
#include "toolkit/document/open.h"
#include "toolkit/explanation.h"

namespace zuna_toolkit {

/// Takes differences one by one, so that they need not all be held in memory.
using DifferenceSink = std::function<void(const Difference&)>;

/// The differences between two shows or two logs of any versions, song by song. Two legacy documents are
/// compared in everything that they hold. A legacy document and a current one are compared in their current
/// forms, and what up takes from the companion is no difference: the name of a show, and the divisions of a
/// log. A song that is the same under another
/// number, or alone has its name on both sides, is renumbered and compared. Voices of one name are compared
/// with each other, note by note: a note has moved where it begins at another time, and has changed where
/// only its length or velocity differs. Memory is linear in the documents, besides the differences that are
/// kept: each holds its song number. Time is O(n log n). Throws Error (ErrorKind::kBadInput) for a show and a
/// log, and for a legacy document that cannot be converted.
///@{
ZUNA_API void Compare(const Document& before, const Document& after, const DifferenceSink& sink);
ZUNA_API std::vector<Difference> Compare(const Document& before, const Document& after);
///@}

/// The same for what two files hold, either of which may be a text form of any version that WriteTextForm()
/// wrote. Where two files of one version and form have no other difference and not the same plaintext, there
/// is one of the subject kOtherBytes. Throws Error where a file cannot be read.
ZUNA_API void Compare(OpenedFile& before, OpenedFile& after, const DifferenceSink& sink);

/// What `current` loses in `legacy`, which Down() made of it: the differences between it and what comes back
/// up. Throws Error (ErrorKind::kBadInput) where that conversion fails, and where the two are not forms of
/// one document.
ZUNA_API void LossesOfDown(const Document& current, const Document& legacy, const DifferenceSink& sink);

/// What `legacy` loses in `current`, which Up() made of it: what of its songs does not come back down,
/// what its file has besides, and songs of a log that get no division. A channel in a status counts where the
/// voice has another one. Tempos and meters that are in disorder are compared by their times, microseconds
/// and signatures. Throws Error (ErrorKind::kBadInput) where the two are not forms of one document.
ZUNA_API void LossesOfUp(const Document& legacy, const Document& current, const DifferenceSink& sink);

/// Whether a loss of this kind does no harm: the music is the same without it, or `up` brings it back out of
/// the companion.
ZUNA_API bool IsHarmless(const Difference& loss);

/// The codes of all losses that LossesOfDown() and LossesOfUp() report for what Down() and Up() make.
ZUNA_API std::span<const Explanation> LossExplanations();

/// Differences grouped by code.
class ZUNA_API DifferenceGroups {
 public:
  /// All differences of one code.
  struct Group {
    Difference first;       ///< the one that was added first
    std::size_t count = 0;  ///< of all of them
  };

  /// Adds a difference to the group of its code.
  void Add(const Difference& difference);

  /// In the order of their first differences.
  const std::vector<Group>& groups() const { return groups_; }

 private:
  std::vector<Group> groups_;
};

}  // namespace zuna_toolkit
