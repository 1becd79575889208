// zuna-convert convert
#include <memory>

#include "cli/batch/conversions.h"
#include "toolkit/conversion/conversion.h"

namespace zuna_cli {

namespace {

struct ConvertOptions : ConversionOptions {
  cmn::FileVersion version;
};

std::optional<Converted> ConvertOne(const zuna_toolkit::Document& document, const cmn::FileVersion& version) {
  RequireTarget(document, version);
  if (document.type().version == version) return std::nullopt;
  return Converted{zuna_toolkit::Convert(document, version),
                   cmn::VersionText(document.type().version) + " -> " + cmn::VersionText(version),
                   {},
                   {},
                   {},
                   {}};
}

void RunConvert(const ConvertOptions& options, Context& context) {
  Conversion conversion;
  conversion.command = "convert --to " + cmn::VersionText(options.version);
  conversion.expected = zuna_toolkit::Expected::kCurrent;
  conversion.convert = [&](const zuna_toolkit::Document& document, const zuna_toolkit::Input&, const Keys&) {
    return ConvertOne(document, options.version);
  };
  ConvertAll(options, context, conversion);
}

}  // namespace

void AddConvertCommand(CLI::App& app, Context& context) {
  const auto options = std::make_shared<ConvertOptions>();
  CLI::App* command = AddConversionCommand(
      app, context, "convert", "Write shows and logs of a current version at another one", *options);
  AddTarget(*command, options->version);
  context.SetWork(*command, [options, &context] { RunConvert(*options, context); });
}

}  // namespace zuna_cli
