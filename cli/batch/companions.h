// Finds the companion of a legacy file.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "cli/shared/context.h"
#include "toolkit/batch/inputs.h"
#include "toolkit/conversion/companion.h"
#include "toolkit/document/document.h"

namespace zuna_cli {

/// What the options tell about companions.
struct CompanionOptions {
  std::optional<std::string> file;        ///< of one input
  std::string folder;                     ///< where companions are looked for first; empty for none
  bool any = false;                       ///< take one that does not belong
  std::optional<std::string> show_name;   ///< in place of the log of a show
  std::optional<std::uint16_t> division;  ///< in place of the show of a log; ticks of a quarter note
  bool for_one = false;                   ///< for one file: these two stand even where its companion is there
};

/// Adds the options.
void AddCompanions(CLI::App& command, CompanionOptions& options);

/// Where the companion of `input` is, whether it is there or not: the file that was named, or the file of the
/// same stem for the other kind, in the folder of companions or else beside the input. Nothing where the name
/// of the input does not tell.
std::optional<std::string> CompanionPath(const zuna_toolkit::Input& input, const CompanionOptions& options);

/// The companion of one input.
struct FoundCompanion {
  zuna_toolkit::Companion companion;
  std::string path;                ///< of its file; empty where an option stands in for it
  std::string digest;              ///< SHA-256 of its bytes; empty where `path` is
  std::vector<std::string> notes;  ///< how its songs differ
  std::string options;             ///< those about companions that changed the result, for the report
};

/// Finds and reads the companion of `document`, which `input` holds. Throws Failure naming the input:
/// (kIo) where it is not there, (kRefused) where it does not belong, and what else keeps it from being read.
FoundCompanion FindCompanion(const zuna_toolkit::Document& document, const zuna_toolkit::Input& input,
                             const CompanionOptions& options, const Keys& keys);

/// Whether `options`, which the report has of an input, tell that an option stood in for its companion, or
/// for a part of it.
bool HasStandIn(const std::string& options);

/// What becomes of what a document loses on the way down that its companion has.
struct Restoration {
  bool is_restored = false;  ///< `up` would bring it back: the companion is beside the document and has it
  std::string note;          ///< where the companion has another name than it is looked for; may be empty
};

/// That of `document`, a current one that `input` holds. It is restored also where the name of the input does
/// not tell its companion's.
Restoration RestorationOf(const zuna_toolkit::Document& document, const zuna_toolkit::Input& input,
                          const Keys& keys);

}  // namespace zuna_cli
