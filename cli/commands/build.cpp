// zuna-convert build
#include <memory>
#include <optional>

#include "cli/batch/sealing.h"
#include "cli/commands/finding_text.h"
#include "cli/shared/context.h"
#include "cli/shared/input.h"
#include "cli/terminal/standard_streams.h"
#include "toolkit/conversion/conversion.h"
#include "toolkit/document/text_form.h"
#include "toolkit/words.h"

namespace zuna_cli {

namespace {

using zuna_toolkit::Document;

struct BuildOptions {
  Paths paths;
  std::optional<cmn::FileVersion> target;  ///< the version that the text states where there is none
};

Document ReadText(const std::string& path) {
  const std::string name = InputName(path);
  const auto bytes = ReadInput(path, zuna_toolkit::kMaxFileSize);
  if (zuna_toolkit::IsEncrypted(bytes)) {
    throw Failure(ErrorCode::kEncryptedAlready, name, "is encrypted already",
                  "give the text that dump writes");
  }
  return zuna_toolkit::ReadTextForm({reinterpret_cast<const char*>(bytes.data()), bytes.size()}, name);
}

Document AtTarget(Document document, const std::optional<cmn::FileVersion>& target) {
  if (!target || *target == document.type().version) return document;
  zuna_toolkit::RequireCurrent(document.type(), document.name());
  RequireTarget(document, *target);
  return zuna_toolkit::Convert(document, *target);
}

/// Says so where the name of the output is that of the other kind.
void NoteOtherName(const Document& document, const std::string& name, Context& context) {
  const cmn::FileKind kind = document.type().kind;
  const cmn::FileKind other = document.type().is_log() ? cmn::FileKind::kShow : cmn::FileKind::kLog;
  if (!zuna_toolkit::LowerCase(name).ends_with("." + std::string(cmn::KindText(other)))) return;
  context.Note(name, "is a " + std::string(cmn::KindName(kind)) + ", and has the name of a " +
                         std::string(cmn::KindName(other)));
}

void RunBuild(const BuildOptions& options, Context& context) {
  Destination destination = context.CheckPaths(options.paths.output, {options.paths.input});
  const Keys keys = context.ReadKeys();
  const CipherKey& key = keys.front().material();
  const Document document = AtTarget(ReadText(options.paths.input), options.target);
  const auto bytes = Sealed(document, key, destination.name(), true);
  NoteFindings(document, destination.name(), context);
  NoteOtherName(document, destination.name(), context);
  context.NoteSealed(key, destination);
  destination.Write(bytes);
}

}  // namespace

void AddBuildCommand(CLI::App& app, Context& context) {
  const auto options = std::make_shared<BuildOptions>();
  CLI::App* command = AddFileCommand(app, context, "build",
                                     "Make the file again of the JSON text that dump wrote", options->paths);
  command
      ->add_option_function<std::string>(
          "--to", [options](const std::string& text) { options->target = cmn::ParseVersion(text); },
          "The version of the output; the one that the text states unless given")
      ->type_name("VERSION")
      ->check(CLI::Validator(CheckTarget, ""));
  context.SetWork(*command, [options, &context] { RunBuild(*options, context); });
}

}  // namespace zuna_cli
