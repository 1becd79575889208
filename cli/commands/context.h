#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "cli/base/errors.h"
#include "cli/base/output.h"
#include "cmn/file_version.h"
#include "zuna_sec/cipher_key.h"

namespace zuna_cli {

/// What all commands share.
struct Context {
  std::string key_file;  ///< as the command line gives it; may be empty
  bool quiet = false;
  ExitCode code = ExitCode::kDone;  ///< of a command that went through

  /// The key material. Throws Failure.
  CipherKey Key() const;

  /// Tells the user about the file called `name`, unless told to be quiet.
  void Note(const std::string& name, const std::string& text) const;

  /// Checks what can be checked before work begins: `output` as Output::Check does, and that only one of
  /// `inputs` is standard input. Throws Failure.
  void CheckPaths(const Output& output, std::vector<std::string> inputs) const;
};

/// Adds an input, "-o OUT" and "--force"; "--to VERSION".
void AddInput(CLI::App& command, std::string& input);
void AddOutput(CLI::App& command, Output& output);
void AddTarget(CLI::App& command, cmn::FileVersion& version);

/// Throws Failure (kUsage) where one of `inputs` is empty, or more than one of them is "-".
void RequireUsableInputs(const std::vector<std::string>& inputs);

/// Each adds its command to the tool.
void AddUpCommand(CLI::App& app, Context& context);
void AddDownCommand(CLI::App& app, Context& context);
void AddConvertCommand(CLI::App& app, Context& context);
void AddEncryptCommand(CLI::App& app, Context& context);
void AddDecryptCommand(CLI::App& app, Context& context);
void AddInfoCommand(CLI::App& app, Context& context);
void AddMidiImportCommand(CLI::App& midi, Context& context);
void AddMidiExportCommand(CLI::App& midi, Context& context);

}  // namespace zuna_cli
