// zuna-convert edit
#include <unistd.h>

#include <exception>
#include <iostream>
#include <memory>
#include <optional>
#include <sstream>

#include "cli/batch/output_options.h"
#include "cli/batch/sealing.h"
#include "cli/commands/finding_text.h"
#include "cli/shared/context.h"
#include "cli/shared/document_text.h"
#include "cli/shared/input.h"
#include "cli/terminal/editor.h"
#include "cli/terminal/standard_streams.h"
#include "cmn/file_format.h"
#include "toolkit/document/summary.h"
#include "toolkit/document/text_form.h"
#include "toolkit/words.h"

namespace zuna_cli {

namespace {

using zuna_toolkit::Document;

/// A text of another kind or version has other keys, so that is told before it is read.
void RequireSameType(const std::string& text, const Document& before) {
  std::istringstream is{std::string(zuna_toolkit::WithoutByteOrderMark(text))};
  const cmn::StatedType stated = cmn::StatedInText(is);
  const std::string kind(cmn::KindText(before.type().kind));
  const std::string version = cmn::VersionText(before.type().version);
  if (stated.kind.value_or(kind) == kind && stated.version.value_or(version) == version) return;
  throw Failure(ErrorCode::kTextError, before.name(),
                "is " + TypeText(before.type()) + ", and the text states \"" + stated.kind.value_or(kind) +
                    "\" and \"" + stated.version.value_or(version) + '"',
                "leave \"kind\" and \"fileVersion\" as they are");
}

/// The document that the edited text holds. Throws zuna_toolkit::Error or Failure.
Document ReadEdited(const std::string& text, const Document& before) {
  RequireSameType(text, before);
  return zuna_toolkit::ReadTextForm(text, before.name());
}

/// Whether the user, who is asked on a terminal, wants to go on editing.
bool WantsToEditAgain() {
  PrintLine("zuna-convert: edit the text again? [Y/n] ");
  std::string answer;
  return std::getline(std::cin, answer) && (answer.empty() || answer[0] == 'y' || answer[0] == 'Y');
}

/// The text when the editor has ended. It is kept from then on unless it is `text`, as it was: also where the
/// editor fails after it has written.
std::string TextAfterEditor(EditedText& edited, const std::string& text) {
  edited.Keep();
  std::exception_ptr failure;
  try {
    edited.OpenInEditor();
  } catch (...) {
    failure = std::current_exception();
  }
  std::string now = edited.Read();
  if (now == text) edited.Remove();
  if (failure) std::rethrow_exception(failure);
  return now;
}

/// Lets the user edit the text of `before` until it is correct. None where nothing was changed. Throws
/// Failure, zuna_toolkit::Error or kit::IoError; the text is kept then unless it is as it was.
std::optional<Document> Edit(EditedText& edited, const std::string& text, const Document& before) {
  while (true) {
    const std::string now = TextAfterEditor(edited, text);
    if (now == text) return std::nullopt;
    try {
      return ReadEdited(now, before);
    } catch (const zuna_toolkit::Error& error) {
      if (isatty(STDIN_FILENO) == 0) throw;
      PrintError(Failure(error));
      if (!WantsToEditAgain())
        throw Failure(ErrorCode::kTextError, before.name(), "is left as it was",
                      "correct the text, and give it to build");
    }
  }
}

void RequireUnchanged(const std::string& path, const std::vector<std::uint8_t>& before) {
  if (ReadInput(path, zuna_toolkit::kMaxFileSize) == before) return;
  throw Failure(ErrorCode::kChangedMeanwhile, path,
                "was changed by another program meanwhile, and is not replaced",
                "compare both, and make a file of the kept text with build");
}

std::size_t SongsOf(const Document& document) {
  std::size_t songs = 0;
  zuna_toolkit::SummariseSongs(document, [&songs](const zuna_toolkit::SongSummary&) { ++songs; });
  return songs;
}

/// Notes what became of the file at `path`.
void NoteChanges(const Document& before, const Document& after, const std::string& path, Context& context) {
  const std::string left_out = zuna_toolkit::LeftOutOfText(before);
  if (!left_out.empty()) context.Note(path, "has lost " + left_out + ", which the text does not have");
  const std::size_t songs = SongsOf(before);
  const std::size_t songs_now = SongsOf(after);
  if (songs_now != songs) {
    context.Note(path, "has " + zuna_toolkit::Counted(songs_now, "song", "songs") + " now, and had " +
                           std::to_string(songs));
  }
  NoteFindings(after, path, context);
}

void RunEdit(const std::string& path, Context& context) {
  if (path == kStandardStream) {
    throw Failure(ErrorCode::kUsage, "command line", "edit rewrites a file in its place", "give a file");
  }
  Destination destination = context.CheckPaths({InPlace(path), true, true}, {});
  const Keys keys = context.ReadKeys();
  const auto bytes = ReadInput(path, zuna_toolkit::kMaxFileSize);
  auto [file, key] = DecryptOrNameRescue(bytes, path, keys);
  const Document before = ReadOrNameRescue([&file = file] { return zuna_toolkit::ReadDocument(file); });
  const std::string text = TextFormOf(before);
  EditedText edited(text, before.type().is_log() ? "log.json" : "show.json");
  try {
    const std::optional<Document> after = Edit(edited, text, before);
    if (!after) return context.Note(path, "is left as it was");
    const auto sealed = Sealed(*after, *key, path, true);
    if (sealed == bytes) {
      edited.Remove();
      return context.Note(path, "holds the same as before, and is left as it was");
    }
    const std::string old = destination.KeepOld();
    context.Note(path, "is changed; the old file is " + old);
    NoteChanges(before, *after, path, context);
    context.NoteSealed(*key, destination);
    destination.Write(sealed, [&] { RequireUnchanged(path, bytes); });
  } catch (...) {
    if (edited.is_kept()) {
      PrintLine(NoteLine(edited.path(), kHasEditedText));
    }
    throw;
  }
  edited.Remove();
}

}  // namespace

void AddEditCommand(CLI::App& app, Context& context) {
  const auto path = std::make_shared<std::string>();
  CLI::App* command = app.add_subcommand(
      "edit",
      "Edit a show or log as text in the editor that VISUAL or EDITOR names; the old file stays as FILE.~N~");
  AddSharedOptions(*command, context);
  command->add_option("FILE", *path, "The file, which is rewritten in its version")->required();
  context.SetWork(*command, [path, &context] { RunEdit(*path, context); });
}

}  // namespace zuna_cli
