// Runs the user's editor on a private file.
#include "cli/terminal/editor.h"

#include <ftw.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <system_error>

#include "cli/terminal/failure.h"
#include "cli/terminal/signals.h"
#include "cli/terminal/standard_streams.h"
#include "kit/file.h"
#include "toolkit/document/open.h"

namespace zuna_cli {

namespace {

/// The value of the first of these variables that is not empty.
std::string FirstOf(std::span<const char* const> variables, const char* otherwise) {
  for (const char* variable : variables) {
    const char* value = std::getenv(variable);
    if (value != nullptr && *value != '\0') return value;
  }
  return otherwise;
}

std::string Editor() {
  constexpr std::array kVariables{"VISUAL", "EDITOR"};
  return FirstOf(kVariables, "vi");
}

/// `text` as one word of a shell's command.
std::string Quoted(const std::string& text) {
  std::string quoted = "'";
  for (const char c : text) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

/// A new folder that only its owner can enter.
std::string NewPrivateFolder() {
  constexpr std::array kVariables{"TMPDIR"};
  const std::string place = FirstOf(kVariables, "/tmp");
  std::string folder = place + "/zuna-edit-XXXXXX";
  if (::mkdtemp(folder.data()) != nullptr) return folder;
  const int reason = errno;
  throw kit::FileIoError(place, "no folder can be created there: " + std::generic_category().message(reason),
                         "check that TMPDIR names a folder to write in", reason);
}

int RemoveEntry(const char* path, const struct stat*, int, struct FTW*) { return ::remove(path); }

/// Removes a folder with `file` in it, and what editors have left beside the file. The file goes first, which
/// takes no memory. Not by std::filesystem::remove_all(), which ends the process where it lacks memory.
void RemoveFolder(const std::string& folder, const std::string& file) {
  constexpr int kMostOpen = 16;
  ::unlink(file.c_str());
  if (::rmdir(folder.c_str()) != 0) ::nftw(folder.c_str(), RemoveEntry, kMostOpen, FTW_DEPTH | FTW_PHYS);
}

}  // namespace

EditedText::EditedText(std::string_view text, const std::string& name)
    : folder_(NewPrivateFolder()), path_(folder_ + '/' + name) {
  const std::span<const std::uint8_t> bytes{reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
  try {
    kit::WriteFileAtomically(path_, bytes);
  } catch (...) {
    ::rmdir(folder_.c_str());
    throw;
  }
}

EditedText::~EditedText() {
  if (!is_kept_) RemoveFolder(folder_, path_);
}

void EditedText::OpenInEditor() const {
  const std::string editor = Editor();
  const TellBeforeEnd told(NoteLine(path_, kHasEditedText));
  const int status = std::system((editor + ' ' + Quoted(path_)).c_str());
  if (status == 0) return;
  const bool ended = status != -1 && WIFEXITED(status);
  throw Failure(
      ErrorCode::kEditorFailed, editor,
      ended ? "ended with exit code " + std::to_string(WEXITSTATUS(status)) : "could not be run to its end",
      "name another editor with VISUAL or EDITOR");
}

std::string EditedText::Read() const {
  const kit::FileBytes file = kit::ReadWholeFile(path_, zuna_toolkit::kMaxFileSize);
  return {file.bytes().begin(), file.bytes().end()};
}

}  // namespace zuna_cli
