// zuna-convert view (docs/view.md)
#include <memory>
#include <optional>
#include <utility>

#include "cli/shared/context.h"
#include "cli/shared/input.h"
#include "toolkit/view/page.h"
#include "zuna_sec/digest.h"

namespace zuna_cli {

namespace {

using zuna_toolkit::Document;

struct ViewOptions {
  std::string show;
  std::string log;  ///< empty for none
  std::optional<std::string> song;
  std::vector<std::string> earlier;  ///< a show, a log or both
  std::string losses_in;             ///< a version; empty for none
  bool svg = false;
  Output output;
};

/// The documents that the page is compared with.
struct EarlierDocuments {
  std::optional<Document> show;
  std::optional<Document> log;

  /// Throws Failure where there is one of its kind.
  void Add(Document document) {
    const bool is_log = document.type().is_log();
    std::optional<Document>& place = is_log ? log : show;
    if (place) {
      throw Failure(ErrorCode::kUsage, document.name(), is_log ? "is a second log" : "is a second show",
                    "give --diff one show, one log or both");
    }
    place = std::move(document);
  }
};

std::optional<Document> ReadLog(const std::string& path, const Keys& keys) {
  if (path.empty()) return std::nullopt;
  return ReadEncryptedOrPlain(path, keys).document;
}

EarlierDocuments ReadEarlier(const ViewOptions& options, const Keys& keys) {
  EarlierDocuments earlier;
  for (const std::string& path : options.earlier) earlier.Add(ReadEncryptedOrPlain(path, keys).document);
  if (earlier.log && options.log.empty()) {
    throw Failure(ErrorCode::kUsage, earlier.log->name(), "is a log, and no log is drawn",
                  "give the log to draw after the show");
  }
  return earlier;
}

const Document* PointerTo(const std::optional<Document>& document) { return document ? &*document : nullptr; }

void RunView(const ViewOptions& options, Context& context) {
  if (!options.earlier.empty() && !options.losses_in.empty()) {
    throw Failure(ErrorCode::kUsage, "command line", "--diff and --losses contradict each other",
                  "give one of them");
  }
  std::vector<std::string> inputs = {options.show};
  if (!options.log.empty()) inputs.push_back(options.log);
  inputs.insert(inputs.end(), options.earlier.begin(), options.earlier.end());
  Destination destination = context.CheckPaths(options.output, inputs);
  const Keys keys = context.ReadKeys();
  const auto bytes = ReadInput(options.show, zuna_toolkit::kMaxFileSize);
  const Document show =
      ReadEncryptedOrPlain(bytes, InputName(options.show), keys,
                           [](zuna_toolkit::OpenedFile& file) { return zuna_toolkit::ReadDocument(file); });
  const std::optional<Document> log = ReadLog(options.log, keys);
  const EarlierDocuments earlier = ReadEarlier(options, keys);
  const zuna_toolkit::PageContent content{PointerTo(log),
                                          options.song,
                                          PointerTo(earlier.show),
                                          PointerTo(earlier.log),
                                          !options.losses_in.empty(),
                                          zuna_sec::Sha256Text(bytes)};
  const std::string page = options.svg ? SongPicture(show, content) : ShowPage(show, content);
  destination.Write({reinterpret_cast<const std::uint8_t*>(page.data()), page.size()});
}

/// What is wrong with `text` as a version that loses something; empty for nothing.
std::string CheckLossyVersion(const std::string& text) {
  const auto version = cmn::ParseVersion(text);
  if (!version) return NotAVersion();
  return *version == zuna_toolkit::kLegacyVersion ? "" : "only 0.0 loses anything of a current show";
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
  command->add_option("--song", options->song, "Only the song of this number")->type_name("NUMBER");
  command->add_flag("--svg", options->svg, "Write the picture of one song as SVG instead of a page");
  command
      ->add_option("--diff", options->earlier,
                   "Mark what changed since this show; once more with a log, what changed in the edits")
      ->type_name("EARLIER")
      ->expected(1)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
      ->allow_extra_args(false);
  command->add_option("--losses", options->losses_in, "Mark what this version would lose: 0.0")
      ->type_name("VERSION")
      ->check(CLI::Validator(CheckLossyVersion, ""));
  AddOutput(*command, options->output);
  context.SetWork(*command, [options, &context] { RunView(*options, context); });
}

}  // namespace zuna_cli
