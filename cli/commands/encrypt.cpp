#include <algorithm>
#include <istream>
#include <memory>
#include <sstream>

#include "cli/base/errors.h"
#include "cli/base/file_io.h"
#include "cli/commands/context.h"
#include "cli/files/file_type.h"
#include "cli/files/text_form.h"
#include "cmn/data_error.h"
#include "zuna_sec/cipher_stream.h"
#include "zuna_sec/errors.h"

namespace zuna_cli {

namespace {

constexpr std::size_t kProbe = 64;         // bytes
constexpr std::size_t kSmallestProbe = 8;  // bytes; fewer may be anything

/// Whether `bytes` begin like an encrypted file.
bool IsEncrypted(const std::vector<std::uint8_t>& bytes) {
  if (bytes.size() < kSmallestProbe) return false;
  const auto size = static_cast<std::ptrdiff_t>(std::min(bytes.size(), kProbe));
  try {
    const zuna_sec::TwoFishCipherStream probe(std::vector<std::uint8_t>(bytes.begin(), bytes.begin() + size),
                                              {}, {});
  } catch (const zuna_sec::NotEncryptedError&) {
    return false;
  } catch (const zuna_sec::CipherError&) {
    // A part of an encrypted file cannot be read, and is one nevertheless.
  }
  return true;
}

/// Reads a text form once, so that an error in it is found where it can be corrected.
void RequireCorrectText(std::string_view text, const std::string& name) {
  if (!BeginsLikeTextForm(text)) return;
  std::istringstream stream{std::string(text)};
  try {
    RequireReadableText(stream, name);
  } catch (const cmn::DataError& error) {
    throw Failure(ExitCode::kBadInput, name, error.what() + std::string("; correct the text"));
  }
}

void CheckPlaintext(const std::vector<std::uint8_t>& bytes, const std::string& name) {
  if (IsEncrypted(bytes)) {
    throw Failure(ExitCode::kRefused, name, "is encrypted already; give --force to encrypt it again");
  }
  OnFile(name, [&] { RequireCorrectText(AsText(bytes), name); });
}

void Run(const Paths& paths, Context& context) {
  context.CheckPaths(paths.output, {paths.input});
  const CipherKey key = context.Key();
  zuna_sec::TwoFishCipherStream cipher("", key.key, key.iv);
  const auto bytes = ReadBytes(paths.input, kMaxFileSize);
  const std::string name = InputName(paths.input);
  if (!paths.output.force) CheckPlaintext(bytes, name);
  cipher.GetStream().write(reinterpret_cast<const char*>(bytes.data()),
                           static_cast<std::streamsize>(bytes.size()));
  paths.output.Write(cipher);
  context.Note(name, Counted(bytes.size(), "byte", "bytes") + " encrypted");
}

}  // namespace

void AddEncryptCommand(CLI::App& app, Context& context) {
  const auto paths = std::make_shared<Paths>();
  CLI::App* command = AddFileCommand(app, context, "encrypt",
                                     "Encrypt plaintext as it is, such as an edited text form", *paths);
  command->get_option("--force")->description(
      "Replace the output when it exists; encrypt what is encrypted already, or a text form with errors");
  command->callback([paths, &context] { Run(*paths, context); });
}

}  // namespace zuna_cli
