// The commands of the tool, and what they share: options, the key, notes and the exit code.
#pragma once

#include <CLI/CLI.hpp>
#include <deque>
#include <functional>
#include <numeric>
#include <string>
#include <vector>

#include "cli/shared/keys.h"
#include "cli/shared/output.h"
#include "cli/terminal/failure.h"
#include "cli/terminal/standard_streams.h"
#include "cmn/file_format.h"
#include "cmn/file_version.h"
#include "toolkit/document/document.h"
#include "zuna_sec/cipher_key.h"

namespace zuna_cli {

/// What there is to say about an output that anybody can open.
inline constexpr const char* kEmptyKeyNote =
    "is encrypted with an empty key, which protects nothing; name a key file with --key-file or "
    "ZUNA_KEY_FILE";

/// The state of one run of the tool.
struct Context {
  KeyOptions key_options;
  std::deque<int> quiet_counts;     ///< how often each command was given --quiet
  ExitCode code = ExitCode::kDone;  ///< of a command that went through
  std::function<void()> work;       ///< of the command that the command line names
  std::vector<std::string> notes;   ///< lines to print when the command has gone through

  /// Makes `run` the work of `command`. The command line is read before it: outputs take their places at the
  /// end of the work, and from then on nothing may need memory.
  void SetWork(CLI::App& command, std::function<void()> run);

  /// 1: errors and losses only, 2: errors only.
  int quiet() const { return std::accumulate(quiet_counts.begin(), quiet_counts.end(), 0); }

  /// Reads the key files. Throws what LoadKeys() throws.
  Keys ReadKeys() const { return LoadKeys(key_options, quiet() > 0); }

  /// Tells the user about the file called `name` once the command has gone through: nothing is said about
  /// what a failed command would have dropped. Called before the output takes its place.
  void Note(const std::string& name, const std::string& text) { notes.push_back(NoteLine(name, text)); }

  /// Prints all notes, unless told to be quiet. Needs no memory.
  void PrintNotes() const;

  /// Checks before work begins that only one of `inputs` and the key files is standard input. Returns all of
  /// them, none of which may become an output. Throws Failure.
  std::vector<std::string> CheckInputs(const std::vector<std::string>& inputs) const;

  /// The same, and finds the place of the result. Throws what the constructor of Destination throws.
  Destination CheckPaths(const Output& output, const std::vector<std::string>& inputs) const;

  /// Writes a document, sealed with `key`, as the last step of a command. Throws what Destination::Write()
  /// throws, or zuna_toolkit::Error.
  void Seal(const zuna_toolkit::Document& document, const CipherKey& key, Destination& destination);

  /// Whether `key` is empty without being asked for, which kEmptyKeyNote tells.
  bool LacksKey(const CipherKey& key) const { return key.key.empty() && !key_options.empty_key; }

  /// Notes where an output was sealed with such a key.
  void NoteSealed(const CipherKey& key, const Destination& destination);
};

/// Adds "--key-file", "--empty-key" and "--quiet", which may stand before a command and after it.
void AddSharedOptions(CLI::App& app, Context& context);

/// Adds an input; "-o OUT", which is required unless `output` has a path, and "--force", which is returned;
/// "--to VERSION".
void AddInput(CLI::App& command, std::string& input);
CLI::Option* AddOutput(CLI::App& command, Output& output);
void AddTarget(CLI::App& command, cmn::FileVersion& version);

/// Throws Failure (kNoSuchVersion) for a version that files of the kind of `document` are not written in.
void RequireTarget(const zuna_toolkit::Document& document, const cmn::FileVersion& version);

/// What is wrong with `text` as the version of an output; empty for nothing.
std::string CheckTarget(const std::string& text);

/// What is wrong with a text that is no version.
std::string NotAVersion();

/// The paths of a command that makes one file of another.
struct Paths {
  std::string input;
  Output output;
};

/// Adds a command that makes one file of another, with the options for that.
CLI::App* AddFileCommand(CLI::App& app, Context& context, const std::string& name,
                         const std::string& description, Paths& paths);

/// Throws Failure (kIo) unless a folder is at `path`.
void RequireFolder(const std::string& path, const std::string& remedy);

/// Each adds its command to the tool.
void AddCheckCommand(CLI::App& app, Context& context);
void AddViewCommand(CLI::App& app, Context& context);
void AddDiffCommand(CLI::App& app, Context& context);
void AddBuildCommand(CLI::App& app, Context& context);
void AddDumpCommand(CLI::App& app, Context& context);
void AddEditCommand(CLI::App& app, Context& context);
void AddUpCommand(CLI::App& app, Context& context);
void AddDownCommand(CLI::App& app, Context& context);
void AddConvertCommand(CLI::App& app, Context& context);
void AddCopyFermatasCommand(CLI::App& app, Context& context);
void AddListCommand(CLI::App& app, Context& context);
void AddPrintCommand(CLI::App& app, Context& context);
void AddEncryptCommand(CLI::App& app, Context& context);
void AddDecryptCommand(CLI::App& app, Context& context);
void AddRescueCommand(CLI::App& app, Context& context);
void AddInfoCommand(CLI::App& app, Context& context);
void AddCompletionCommand(CLI::App& app, Context& context);
void AddExplainCommand(CLI::App& app, Context& context);
void AddHelpCommand(CLI::App& app, Context& context);
void AddMidiImportCommand(CLI::App& midi, Context& context);
void AddMidiExportCommand(CLI::App& midi, Context& context);

}  // namespace zuna_cli
