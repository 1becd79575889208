// zuna-convert up
#include <filesystem>
#include <memory>

#include "cli/batch/companions.h"
#include "cli/batch/conversions.h"
#include "cli/terminal/standard_streams.h"
#include "toolkit/conversion/conversion.h"

namespace zuna_cli {

namespace {

using zuna_toolkit::Document;
using zuna_toolkit::Input;

struct UpOptions : ConversionOptions {
  CompanionOptions companions;
  cmn::FileVersion version;
};

std::string VersionsText(const Document& document, const cmn::FileVersion& version) {
  return cmn::VersionText(document.type().version) + " -> " + cmn::VersionText(version);
}

/// What a conversion took from the companion.
std::string TakenText(const FoundCompanion& found, bool is_log) {
  if (!is_log) {
    return ", named \"" + found.companion.show_name + "\"" + (found.path.empty() ? "" : " by its log");
  }
  if (found.path.empty()) return ", division " + std::to_string(found.companion.division);
  return ", divisions from " + found.companion.name;
}

Converted UpLegacy(const Document& legacy, const Input& input, const cmn::FileVersion& version,
                   const CompanionOptions& companions, const Keys& keys) {
  FoundCompanion found = FindCompanion(legacy, input, companions, keys);
  return {zuna_toolkit::Up(legacy, found.companion, version),
          VersionsText(legacy, version) + TakenText(found, legacy.type().is_log()),
          std::move(found.notes),
          std::move(found.path),
          std::move(found.digest),
          std::move(found.options)};
}

std::optional<Converted> UpOne(const Document& document, const Input& input, const cmn::FileVersion& version,
                               const CompanionOptions& companions, const Keys& keys) {
  RequireTarget(document, version);
  if (document.type().is_legacy()) return UpLegacy(document, input, version, companions, keys);
  if (document.type().version == version) return std::nullopt;
  return Converted{zuna_toolkit::Convert(document, version), VersionsText(document, version), {}, {}, {}, {}};
}

/// Whether one file was named, and not a folder or a list.
bool IsOneFile(const InputOptions& inputs) {
  std::error_code ignored;
  return inputs.files_from.empty() && inputs.paths.size() == 1 &&
         !std::filesystem::is_directory(inputs.paths.front(), ignored);
}

void RunUp(const UpOptions& options, Context& context) {
  if (!options.companions.folder.empty()) {
    RequireFolder(options.companions.folder, "give a folder to --companions");
  }
  CompanionOptions companions = options.companions;
  companions.for_one = IsOneFile(options.inputs);
  Conversion conversion;
  conversion.command = "up --to " + cmn::VersionText(options.version);
  conversion.is_up = true;
  conversion.convert = [&](const Document& document, const Input& input, const Keys& keys) {
    return UpOne(document, input, options.version, companions, keys);
  };
  conversion.companion = options.companions.file;
  conversion.companion_path = [&](const Input& input) { return CompanionPath(input, options.companions); };
  ConvertAll(options, context, conversion);
}

}  // namespace

void AddUpCommand(CLI::App& app, Context& context) {
  const auto options = std::make_shared<UpOptions>();
  CLI::App* command = AddConversionCommand(app, context, "up",
                                           "Bring shows and logs of any version to a current one", *options);
  AddTarget(*command, options->version);
  AddCompanions(*command, options->companions);
  context.SetWork(*command, [options, &context] { RunUp(*options, context); });
}

}  // namespace zuna_cli
