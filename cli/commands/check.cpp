// zuna-convert check
#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "cli/batch/companions.h"
#include "cli/batch/conversion_messages.h"
#include "cli/batch/report.h"
#include "cli/batch/runner.h"
#include "cli/commands/finding_text.h"
#include "cli/shared/context.h"
#include "cli/shared/input.h"
#include "cli/shared/json_text.h"
#include "cli/shared/losses.h"
#include "cli/terminal/text.h"
#include "toolkit/conversion/conversion.h"
#include "toolkit/words.h"

namespace zuna_cli {

namespace {

using zuna_toolkit::Document;

struct CheckOptions {
  InputOptions inputs;
  std::optional<cmn::FileVersion> version;  ///< 0.0 too
  bool json = false;
};

/// What a conversion to the version asked for would do.
struct Preview {
  std::optional<Losses> losses;    ///< nothing where the document is not converted
  std::vector<std::string> notes;  ///< about the companion
  bool lacks_companion = false;    ///< whether `up` would fail for its companion
  std::optional<Failure> failure;  ///< why the document cannot be converted
};

/// The companion that `up` would take. Where there is none, each song gets a division, so that not all of
/// them count as losses, and a note says that `up` needs it.
zuna_toolkit::Companion CompanionForUp(const Document& document, const zuna_toolkit::Input& input,
                                       const Keys& keys, Preview& preview) {
  zuna_toolkit::Companion without;
  without.division = 1;
  if (!CompanionPath(input, {})) return without;
  try {
    return FindCompanion(document, input, {}, keys).companion;
  } catch (const zuna_toolkit::Error& error) {
    preview.lacks_companion = true;
    preview.notes.push_back(zuna_toolkit::WithCode("up cannot take its companion: " + error.parts().problem,
                                                   zuna_toolkit::CodeText(error.code())));
    return without;
  }
}

/// Whether the document would be converted to the version asked for.
bool HasAnotherVersion(const Document& document, const CheckOptions& options) {
  return options.version && document.type().version != *options.version;
}

/// The document at the version asked for; nothing where it has that version, or none was asked for.
std::optional<Document> ConvertedForm(const Document& document, const zuna_toolkit::Input& input,
                                      const CheckOptions& options, const Keys& keys, Preview& preview) {
  if (!HasAnotherVersion(document, options)) return std::nullopt;
  const auto& version = options.version;
  if (*version == zuna_toolkit::kLegacyVersion) return zuna_toolkit::Down(document);
  RequireTarget(document, *version);
  if (!document.type().is_legacy()) return zuna_toolkit::Convert(document, *version);
  return zuna_toolkit::Up(document, CompanionForUp(document, input, keys, preview), *version);
}

Preview PreviewOf(const Document& document, const zuna_toolkit::Input& input, const CheckOptions& options,
                  const Keys& keys) {
  Preview preview;
  try {
    const std::optional<Document> converted = ConvertedForm(document, input, options, keys, preview);
    if (!converted) return preview;
    Restoration restoration{true, ""};
    if (converted->type().is_legacy()) restoration = RestorationOf(document, input, keys);
    preview.losses.emplace(document, *converted, restoration.is_restored, options.json);
    if (!restoration.note.empty()) preview.notes.push_back(restoration.note);
  } catch (const zuna_toolkit::Error& error) {
    if (error.code() == ErrorCode::kInterrupted) throw;
    preview.failure = CurrentFailure();
  }
  return preview;
}

/// "opera.showdata: show, version 1.2"
std::string Heading(const Document& document) {
  return Printable(document.name()) + ": " + std::string(cmn::KindName(document.type().kind)) + ", version " +
         cmn::VersionText(document.type().version);
}

/// How much is told about one file.
struct Detail {
  int quiet;            ///< how often --quiet was given
  bool is_one_of_many;  ///< losses that do no harm have no lines then
};

/// " with losses and without 1 show name"; `has_lines` says whether losses have lines.
std::string LossesHeading(const Losses& losses, bool has_lines, const Detail& detail) {
  if (losses.empty()) return " lossless";
  const std::string harmless = detail.is_one_of_many ? losses.HarmlessText() : "";
  std::string text = has_lines ? " with losses" : "";
  if (!harmless.empty()) text += (has_lines ? " and without " : " without ") + harmless;
  return text;
}

/// Empty where --quiet leaves nothing.
std::string AsText(const Document& document, const Findings& findings, const std::optional<Losses>& losses,
                   const CheckOptions& options, const Detail& detail) {
  const bool errors_only = detail.quiet > 1;
  std::vector<std::string> lines;
  if (losses) lines = detail.is_one_of_many ? losses->HarmfulLines() : losses->Lines();
  if (detail.quiet > 0 && findings.empty() && lines.empty()) return "";
  if (errors_only && !findings.has_errors()) return "";
  std::string text = Heading(document) + (findings.empty() ? ", no findings" : "");
  if (losses) {
    text += ", to " + cmn::VersionText(*options.version) + LossesHeading(*losses, !lines.empty(), detail);
  }
  text += '\n' + findings.Text(errors_only);
  if (errors_only) return text;
  for (const std::string& line : lines) text += "  loss: " + Printable(line) + '\n';
  return text;
}

std::string AsJson(const std::string& path, const Document& document, const Findings& findings,
                   const Preview& preview, const CheckOptions& options) {
  std::string json = "{\"schemaVersion\": 1, " + PathJson("path", path) + ", \"kind\": \"" +
                     std::string(cmn::KindName(document.type().kind)) + "data\", \"fileVersion\": \"" +
                     cmn::VersionText(document.type().version) + "\", \"findings\": [" + findings.Json() +
                     "]";
  if (HasAnotherVersion(document, options)) {
    json +=
        ", \"to\": \"" + cmn::VersionText(*options.version) + "\", \"notes\": " + JsonStrings(preview.notes);
  }
  if (preview.losses) json += ", \"losses\": [" + preview.losses->json() + "]";
  if (preview.failure) json += ", " + FailureMembersJson(*preview.failure);
  return json + "}\n";
}

/// The groups of files in the summary.
enum Group : std::size_t { kClean, kWithWarnings, kWithErrors, kWithoutCompanion };

Group GroupOf(const Findings& findings, const Preview& preview) {
  if (findings.has_errors()) return kWithErrors;
  if (preview.lacks_companion) return kWithoutCompanion;
  return findings.empty() ? kClean : kWithWarnings;
}

Outcome CheckOne(const zuna_toolkit::Input& input, const CheckOptions& options, const Keys& keys,
                 const Detail& detail) {
  const std::string& path = input.path;
  const Document document = ReadEncryptedOrPlain(path, keys).document;
  const Findings findings(document, options.json);
  const Preview preview = PreviewOf(document, input, options, keys);
  Outcome outcome;
  outcome.group = GroupOf(findings, preview);
  outcome.is_negative = findings.has_errors();
  for (const std::string& note : preview.notes) Say(outcome, document.name(), note);
  if (preview.losses) outcome.losses = preview.losses->Kinds();
  if (preview.failure) outcome.status = Status::kFailed;
  outcome.failure = preview.failure;
  outcome.text = options.json ? AsJson(path, document, findings, preview, options)
                              : AsText(document, findings, preview.losses, options, detail);
  return outcome;
}

void RunCheck(const CheckOptions& options, Context& context) {
  const Reading reading = PrepareReading(options.inputs, context, options.json);
  const std::vector<zuna_toolkit::Input>& inputs = reading.inputs;
  const Detail detail{context.quiet(), inputs.size() > 1};
  Batch batch;
  batch.work = [&](std::size_t number) {
    const auto check = [&] { return CheckOne(inputs[number], options, reading.keys, detail); };
    return options.json ? WithFailureJson(inputs[number].path, check) : check();
  };
  batch.done = {"clean", "with warnings", "with errors"};  // in the order of Group
  if (options.version && *options.version != zuna_toolkit::kLegacyVersion) {
    batch.done.emplace_back("without the companion that up needs");
  }
  RunAll(inputs.size(), options.inputs, context, batch);
}

std::string CheckVersion(const std::string& text) {
  const auto version = cmn::ParseVersion(text);
  if (!version) return NotAVersion();
  return *version == zuna_toolkit::kLegacyVersion ? "" : CheckTarget(text);
}

}  // namespace

void AddCheckCommand(CLI::App& app, Context& context) {
  CLI::App* command = app.add_subcommand(
      "check", "Tell whether shows and logs are whole and sensible, and what a conversion would lose");
  AddSharedOptions(*command, context);
  const auto options = std::make_shared<CheckOptions>();
  AddInputs(*command, options->inputs);
  command
      ->add_option_function<std::string>(
          "--to", [options](const std::string& text) { options->version = cmn::ParseVersion(text); },
          "Tell what a conversion to this version would lose, too; 0.0 for the legacy format")
      ->type_name("VERSION")
      ->check(CLI::Validator(CheckVersion, ""));
  command->add_flag(
      "--json", options->json,
      "Write a line of JSON for each input, failed ones too, with all findings and losses; --quiet "
      "leaves none out");
  context.SetWork(*command, [options, &context] { RunCheck(*options, context); });
}

}  // namespace zuna_cli
