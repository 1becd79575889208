// zuna-convert encrypt
#include <istream>
#include <memory>
#include <ostream>

#include "cli/shared/context.h"
#include "cli/shared/input.h"
#include "cli/terminal/standard_streams.h"
#include "toolkit/words.h"
#include "zuna_sec/cipher_stream.h"

namespace zuna_cli {

namespace {

void CheckPlaintext(const std::vector<std::uint8_t>& bytes, const std::string& name) {
  if (zuna_toolkit::IsEncrypted(bytes)) {
    throw Failure(ErrorCode::kEncryptedAlready, name, "is encrypted already",
                  "give --force to encrypt it again");
  }
  zuna_toolkit::RequireCorrectText(bytes, name);
}

void RunEncrypt(const Paths& paths, Context& context) {
  Destination destination = context.CheckPaths(paths.output, {paths.input});
  const Keys keys = context.ReadKeys();
  const CipherKey& key = keys.front().material();
  const std::string name = InputName(paths.input);
  const auto bytes = ReadInput(paths.input, zuna_toolkit::kMaxFileSize);
  if (!paths.output.force) CheckPlaintext(bytes, name);
  zuna_sec::TwoFishCipherStream cipher("", key.key, key.iv);
  cipher.GetStream().exceptions(std::ios_base::failbit | std::ios_base::badbit);
  cipher.GetStream().write(reinterpret_cast<const char*>(bytes.data()),
                           static_cast<std::streamsize>(bytes.size()));
  context.NoteSealed(key, destination);
  context.Note(name, zuna_toolkit::Counted(bytes.size(), "byte", "bytes") + " encrypted");
  destination.WriteEncrypted(cipher);
}

}  // namespace

void AddEncryptCommand(CLI::App& app, Context& context) {
  const auto paths = std::make_shared<Paths>();
  CLI::App* command =
      app.add_subcommand("encrypt", "Encrypt plaintext as it is, such as an edited text form");
  AddSharedOptions(*command, context);
  AddInput(*command, paths->input);
  AddOutput(*command, paths->output)
      ->description(
          "Replace the output when it exists; encrypt what is encrypted already, or a text form with errors");
  context.SetWork(*command, [paths, &context] { RunEncrypt(*paths, context); });
}

}  // namespace zuna_cli
