// zuna-convert rescue
#include <memory>
#include <utility>

#include "cli/batch/report.h"
#include "cli/commands/rescue_text.h"
#include "cli/shared/context.h"
#include "cli/shared/input.h"
#include "cli/terminal/standard_streams.h"
#include "toolkit/rescue/rescue.h"

namespace zuna_cli {

namespace {

using zuna_toolkit::Error;
using zuna_toolkit::Rescued;

struct RescueOptions {
  Paths paths;
  bool json = false;
};

/// What is left of a file, and the key that opened it.
struct OpenedRescue {
  Rescued rescued;
  const CipherKey* key;
};

/// Whether `error` may not occur under another key: a file with a damaged beginning looks like another kind
/// of file under a wrong key.
bool MayOtherKeyHelp(const Error& error) {
  const ErrorCode code = error.code();
  return error.kind() == zuna_toolkit::ErrorKind::kWrongKey || code == ErrorCode::kNotEncrypted ||
         code == ErrorCode::kUnsupportedEnvelope || code == ErrorCode::kChangedInTransfer;
}

/// Takes the first key that the file was encrypted with. A file that is not encrypted under any key is taken
/// as it is, and goes with the first key.
OpenedRescue RescueWith(const std::vector<std::uint8_t>& bytes, const std::string& name, const Keys& keys) {
  std::optional<Error> failure;
  for (const zuna_toolkit::SecretKey& key : keys) {
    try {
      return {zuna_toolkit::Rescue(bytes, name, key.material()), &key.material()};
    } catch (const Error& error) {
      if (!MayOtherKeyHelp(error)) throw;
      failure = error;
    }
  }
  if (failure->code() == ErrorCode::kWrongKey) RefuseKeys(bytes, name, keys, *failure);
  if (failure->code() != ErrorCode::kNotEncrypted) throw Failure(*failure);
  const CipherKey& first = keys.front().material();
  return {zuna_toolkit::Rescue(bytes, name, first, zuna_toolkit::Accept::kEncryptedOrPlain), &first};
}

void RunRescue(const RescueOptions& options, Context& context) {
  const std::string& input = options.paths.input;
  if (options.json && options.paths.output.path == kStandardStream) {
    throw Failure(ErrorCode::kUsage, "command line",
                  "--json and the output cannot both go to standard output", "give -o a file");
  }
  Destination place = context.CheckPaths(options.paths.output, {input});
  const Keys keys = context.ReadKeys();
  const auto [rescued, key] =
      RescueWith(ReadInput(input, zuna_toolkit::kMaxFileSize), InputName(input), keys);
  const std::vector<std::string> problems = ProblemLines(rescued);
  const std::string json = options.json ? RescueJson(rescued) : "";
  context.Note(place.name(), SavedText(rescued.report));
  context.Seal(rescued.document, *key, place);
  if (options.json) WriteStandardOutput(json);
  if (context.quiet() < 2 && !options.json) {
    for (const std::string& line : problems) PrintLine(line);
  }
  if (!rescued.report.complete()) context.code = ExitCode::kPartFailed;
}

}  // namespace

void AddRescueCommand(CLI::App& app, Context& context) {
  const auto options = std::make_shared<RescueOptions>();
  CLI::App* command = AddFileCommand(app, context, "rescue",
                                     "Save what can still be read of a damaged or cut file", options->paths);
  command->add_flag(
      "--json", options->json,
      "Write a line of JSON about every song, about missing bytes and about failures to standard "
      "output");
  context.SetWork(*command, [options, &context] {
    TellingInJson(options->json, options->paths.input, [&] { RunRescue(*options, context); });
  });
}

}  // namespace zuna_cli
