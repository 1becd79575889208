// Finds and reads the key files of one run.
#include "cli/shared/keys.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "cli/terminal/failure.h"
#include "cli/terminal/standard_streams.h"
#include "kit/file.h"
#include "kit/format.h"

namespace zuna_cli {

namespace {

constexpr const char* kVariable = "ZUNA_KEY_FILE";

/// In bytes. What kit::ReadWholeFile() reads of a pipe in one block: the text is not moved and can be wiped.
constexpr std::size_t kMaxKeyFile = (std::size_t{64} << 10) - 1;

/// Wipes the text of a key file when it goes.
struct KeyText {
  kit::FileBytes file;

  explicit KeyText(const std::string& path)
      : file(path == kStandardStream ? kit::ReadWholeFile(STDIN_FILENO, InputName(path), kMaxKeyFile)
                                     : kit::ReadWholeFile(path, kMaxKeyFile)) {}
  KeyText(const KeyText&) = delete;
  KeyText& operator=(const KeyText&) = delete;
  ~KeyText() { kit::Wipe(file.bytes()); }

  std::string_view text() const { return {reinterpret_cast<const char*>(file.block.data()), file.size}; }
};

/// Says so where other users may read or write a key file. Pipes pass: they do not stay.
void WarnIfOpenToOthers(const std::string& path) {
  using std::filesystem::perms;
  std::error_code ignored;  // What cannot be looked at cannot be read, which says so better.
  const auto status = std::filesystem::status(path, ignored);
  const perms open = status.permissions() & (perms::group_all | perms::others_all);
  if (!std::filesystem::is_regular_file(status) || open == perms::none) return;
  PrintLine(
      NoteLine(path, kit::format("is open to other users (mode %04o); let only its owner read it (chmod 600)",
                                 static_cast<unsigned>(status.permissions() & perms::mask))));
}

void RequireName(const std::string& path, const std::string& source, const KeyOptions& options) {
  if (!path.empty() || options.empty_key) return;
  throw Failure(ErrorCode::kEmptyKey, source, "names no key file, and an empty key protects nothing",
                "name one, or give --empty-key to use no key");
}

}  // namespace

std::vector<std::string> KeyFilePaths(const KeyOptions& options) {
  for (const std::string& path : options.files) RequireName(path, "--key-file", options);
  if (!options.files.empty()) return options.files;
  const char* variable = std::getenv(kVariable);
  if (variable == nullptr) return {};
  RequireName(variable, kVariable, options);
  return {variable};
}

Keys LoadKeys(const KeyOptions& options, bool quiet) {
  Keys keys;
  for (const std::string& path : KeyFilePaths(options)) {
    if (path.empty()) {
      keys.emplace_back();
      continue;
    }
    const KeyText text(path);
    if (!quiet && path != kStandardStream) WarnIfOpenToOthers(path);
    keys.push_back(zuna_toolkit::ParseKeyFile(text.text(), InputName(path), options.empty_key));
  }
  if (keys.empty()) keys.emplace_back();
  return keys;
}

}  // namespace zuna_cli
