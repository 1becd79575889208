// Commands that make one file of each input: reading, converting, losses, reading back, writing, reporting.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/batch/input_options.h"
#include "cli/batch/outcome.h"
#include "cli/batch/output_options.h"
#include "cli/shared/context.h"
#include "toolkit/document/document.h"
#include "toolkit/document/open.h"

namespace zuna_cli {

/// Values of --fail-on: losses that may do harm, and all losses.
inline constexpr std::string_view kFailOnLoss = "loss";
inline constexpr std::string_view kFailOnAnyLoss = "any-loss";

/// What the options of such a command tell.
struct ConversionOptions {
  InputOptions inputs;
  OutputOptions outputs;
  std::string report;                 ///< the path of the report; empty for none
  bool resume = false;                ///< pass over what the report has as finished
  std::string fail_on;                ///< which losses are refused: one of the following, or empty for none
  std::vector<std::string> accepted;  ///< codes of losses that may be
};

/// Adds "IN..." and all options of a command that converts.
CLI::App* AddConversionCommand(CLI::App& app, Context& context, const std::string& name,
                               const std::string& description, ConversionOptions& options);

/// What became of one document.
struct Converted {
  zuna_toolkit::Document document;
  std::string text;                ///< what was done: "0.0 -> 1.2"
  std::vector<std::string> notes;  ///< what else there is to say
  std::string companion;           ///< the path of the companion that was read; may be empty
  std::string companion_digest;    ///< SHA-256 of its bytes; may be empty
  std::string options;             ///< those about companions that changed the result; may be empty
  bool is_restored = true;         ///< up brings back what a companion has
};

/// One of the commands.
struct Conversion {
  std::string command;  ///< with what changes the results of all inputs; for the report
  bool is_up = false;   ///< legacy inputs become current ones
  zuna_toolkit::Expected expected = zuna_toolkit::Expected::kAny;  ///< what inputs may hold
  /// Converts what `input` holds. Nothing where it has the version that was asked for.
  std::function<std::optional<Converted>(const zuna_toolkit::Document& document,
                                         const zuna_toolkit::Input& input, const Keys& keys)>
      convert;
  std::optional<std::string> companion;  ///< the one that the command line names
  CompanionPathOf companion_path;        ///< where a companion may be; may be empty
};

/// Converts all inputs. Throws what CollectInputs(), PlanOutputs() and RunAll() throw.
void ConvertAll(const ConversionOptions& options, Context& context, const Conversion& conversion);

}  // namespace zuna_cli
