// What is said about companions that are not there.
#include "cli/batch/missing_companion.h"

#include "cli/batch/similar_names.h"
#include "toolkit/words.h"

namespace zuna_cli {

namespace {

using zuna_toolkit::Document;

// An accent, say, may be a character of its own.
constexpr const char* kOtherCharacters = " is, in other characters";

bool HasSameLetters(const std::string& path, const std::string& other) {
  return zuna_toolkit::LowerCase(path) == zuna_toolkit::LowerCase(other);
}

/// ", and in/opera.logdata is not there"
std::string NotThereText(const std::vector<std::string>& paths) {
  if (paths.empty()) return "";
  if (paths.size() == 1) return ", and " + paths.front() + " is not there";
  return ", and neither " + paths.front() + " nor " + paths.back() + " is there";
}

/// The same for all files of a kind.
std::string PlacesText(bool is_log, const std::string& folder) {
  const std::string name = is_log ? "NAME.showdata" : "NAME.logdata";
  if (folder.empty()) return ", and there is no " + name + " beside it";
  return ", and there is no " + name + " below " + folder + " or beside it";
}

/// ", but in/Opera.LOGDATA is": a file beside one of `paths`, which are not there, whose name looks alike.
/// Empty where there is none. Several threads may call it at a time.
std::string SimilarText(const std::vector<std::string>& paths) {
  static SimilarNames names;
  for (const std::string& path : paths) {
    const auto similar = names.Find(path);
    if (similar) return ", but " + *similar + (HasSameLetters(path, *similar) ? " is" : kOtherCharacters);
  }
  return "";
}

}  // namespace

Failure MissingCompanion(const Document& document, const std::vector<std::string>& paths,
                         const std::string& folder) {
  const bool is_log = document.type().is_log();
  const std::string need = is_log ? "needs its show, which has the divisions of the songs"
                                  : "needs its log, which has the name of the show";
  Failure failure(ErrorCode::kCompanionMissing, document.name(),
                  need + NotThereText(paths) + SimilarText(paths),
                  std::string("give --companion or --companions, or ") +
                      (is_log ? "--division TICKS" : "--show-name NAME"));
  failure.SetCommonProblem(need + (paths.empty() ? "" : PlacesText(is_log, folder)));
  return failure;
}

std::string SimilarNote(const Document& document, const std::string& path) {
  const std::string similar = SimilarText({path});
  if (similar.empty()) return "";
  const std::string companion = document.type().is_log() ? "its show " : "its log ";
  return companion + path + " is not there" + similar + "; give both files the same name";
}

}  // namespace zuna_cli
