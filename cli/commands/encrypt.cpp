// zuna-convert encrypt
#include <istream>
#include <memory>
#include <ostream>

#include "cli/shared/context.h"
#include "cli/shared/input.h"
#include "cli/terminal/standard_streams.h"
#include "toolkit/document/text_form.h"
#include "toolkit/words.h"
#include "zuna_sec/cipher_stream.h"

namespace zuna_cli {

namespace {

struct EncryptOptions {
  Paths paths;
  bool verify = true;
};

/// Throws Failure or zuna_toolkit::Error for what the product could not read once it is encrypted.
void CheckPlaintext(const std::vector<std::uint8_t>& bytes, const std::string& name) {
  if (zuna_toolkit::IsEncrypted(bytes)) {
    throw Failure(ErrorCode::kEncryptedAlready, name, "is encrypted already",
                  "give --no-verify to encrypt it again");
  }
  zuna_toolkit::RequireCorrectText(bytes, name);
}

/// Whether `bytes`, which are not encrypted, are a whole show or log.
bool IsShowOrLog(const std::vector<std::uint8_t>& bytes, const std::string& name) try {
  auto file = zuna_toolkit::OpenedFile::FromBytes(bytes, name, {}, zuna_toolkit::Accept::kEncryptedOrPlain);
  zuna_toolkit::ReadDocument(file);
  return true;
} catch (const zuna_toolkit::Error&) {
  return false;
}

void RunEncrypt(const EncryptOptions& options, Context& context) {
  const Paths& paths = options.paths;
  Destination destination = context.CheckPaths(paths.output, {paths.input});
  const Keys keys = context.ReadKeys();
  const CipherKey& key = keys.front().material();
  const std::string name = InputName(paths.input);
  const auto bytes = ReadInput(paths.input, zuna_toolkit::kMaxFileSize);
  if (options.verify) {
    CheckPlaintext(bytes, name);
    if (!IsShowOrLog(bytes, name)) {
      context.Note(name, "cannot be read as a show or log; check that it is whole, and the right file");
    }
  }
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
  const auto options = std::make_shared<EncryptOptions>();
  CLI::App* command = AddFileCommand(
      app, context, "encrypt", "Encrypt plaintext as it is, such as an edited text form", options->paths);
  command->add_flag("--no-verify{false}", options->verify,
                    "Encrypt a text form with errors too, and what is encrypted already");
  context.SetWork(*command, [options, &context] { RunEncrypt(*options, context); });
}

}  // namespace zuna_cli
