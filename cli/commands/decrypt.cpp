// zuna-convert decrypt
#include <istream>
#include <iterator>
#include <memory>

#include "cli/shared/context.h"
#include "cli/shared/input.h"
#include "toolkit/words.h"

namespace zuna_cli {

namespace {

void RunDecrypt(const Paths& paths, Context& context) {
  Destination destination = context.CheckPaths(paths.output, {paths.input});
  const Keys keys = context.ReadKeys();
  zuna_toolkit::OpenedFile file = OpenInput(paths.input, keys).file;
  const std::string plaintext{std::istreambuf_iterator<char>(file.stream()), {}};
  context.Note(file.name(), zuna_toolkit::Counted(plaintext.size(), "byte", "bytes") + " decrypted");
  destination.Write({reinterpret_cast<const std::uint8_t*>(plaintext.data()), plaintext.size()});
}

}  // namespace

void AddDecryptCommand(CLI::App& app, Context& context) {
  const auto paths = std::make_shared<Paths>();
  CLI::App* command =
      AddFileCommand(app, context, "decrypt", "Write the plaintext of an encrypted file as it is", *paths);
  context.SetWork(*command, [paths, &context] { RunDecrypt(*paths, context); });
}

}  // namespace zuna_cli
