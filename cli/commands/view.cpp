// zuna-convert view
#include <memory>
#include <optional>

#include "cli/shared/context.h"
#include "cli/shared/input.h"
#include "toolkit/view/page.h"
#include "zuna_sec/digest.h"

namespace zuna_cli {

namespace {

struct ViewOptions {
  std::string show;
  std::string log;  ///< empty for none
  Output output;
};

std::optional<zuna_toolkit::Document> ReadLog(const std::string& path, const Keys& keys) {
  if (path.empty()) return std::nullopt;
  return ReadEncryptedOrPlain(path, keys).document;
}

void RunView(const ViewOptions& options, Context& context) {
  std::vector<std::string> inputs = {options.show};
  if (!options.log.empty()) inputs.push_back(options.log);
  Destination destination = context.CheckPaths(options.output, inputs);
  const Keys keys = context.ReadKeys();
  const auto bytes = ReadInput(options.show, zuna_toolkit::kMaxFileSize);
  const zuna_toolkit::Document show =
      ReadEncryptedOrPlain(bytes, InputName(options.show), keys,
                           [](zuna_toolkit::OpenedFile& file) { return zuna_toolkit::ReadDocument(file); });
  const std::optional<zuna_toolkit::Document> log = ReadLog(options.log, keys);
  const std::string page = zuna_toolkit::ShowPage(show, log ? &*log : nullptr, zuna_sec::Sha256Text(bytes));
  destination.Write({reinterpret_cast<const std::uint8_t*>(page.data()), page.size()});
}

}  // namespace

void AddViewCommand(CLI::App& app, Context& context) {
  const auto options = std::make_shared<ViewOptions>();
  options->output.is_text = true;
  CLI::App* command =
      app.add_subcommand("view", "Draw a show, and the edits of its log, as a page to look at in a browser");
  AddSharedOptions(*command, context);
  command->add_option("SHOW", options->show, "The show, encrypted or not; - for standard input")->required();
  command->add_option("LOG", options->log, "The log whose edits are drawn; - for standard input");
  AddOutput(*command, options->output);
  context.SetWork(*command, [options, &context] { RunView(*options, context); });
}

}  // namespace zuna_cli
