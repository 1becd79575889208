// zuna-convert down
#include <memory>

#include "cli/batch/companions.h"
#include "cli/batch/conversions.h"
#include "toolkit/conversion/conversion.h"

namespace zuna_cli {

namespace {

std::optional<Converted> DownOne(const zuna_toolkit::Document& document, const zuna_toolkit::Input& input,
                                 const Keys& keys) {
  if (document.type().is_legacy()) return std::nullopt;
  const Restoration restoration = RestorationOf(document, input, keys);
  Converted converted{
      zuna_toolkit::Down(document), cmn::VersionText(document.type().version) + " -> 0.0", {}, {}, {}, {},
      restoration.is_restored};
  if (!restoration.note.empty()) converted.notes.push_back(restoration.note);
  return converted;
}

void RunDown(const ConversionOptions& options, Context& context) {
  Conversion conversion;
  conversion.command = "down";
  conversion.convert = DownOne;
  ConvertAll(options, context, conversion);
}

}  // namespace

void AddDownCommand(CLI::App& app, Context& context) {
  const auto options = std::make_shared<ConversionOptions>();
  CLI::App* command = AddConversionCommand(app, context, "down",
                                           "Bring shows and logs of any version to version 0.0", *options);
  context.SetWork(*command, [options, &context] { RunDown(*options, context); });
}

}  // namespace zuna_cli
