// Runs the user's editor on a private file.
#pragma once

#include <string>
#include <string_view>

namespace zuna_cli {

/// What is said about the file of a text that was not taken.
inline constexpr const char* kHasEditedText = "has the edited text, of which zuna-convert build makes a file";

/// A text in a file of its own, in a folder that only its owner can enter. Both are gone with this object
/// unless Keep() was called.
class EditedText {
 public:
  /// Writes `text` to a new file whose name ends in `name`, below the folder for temporary files (TMPDIR, or
  /// /tmp). Throws kit::IoError.
  EditedText(std::string_view text, const std::string& name);
  ~EditedText();
  EditedText(const EditedText&) = delete;
  EditedText& operator=(const EditedText&) = delete;

  const std::string& path() const { return path_; }

  /// Opens the file in the editor that VISUAL or EDITOR names, vi unless one does, and waits for its end.
  /// Throws Failure (kEditorFailed) where it cannot be run or does not end with exit code 0.
  void OpenInEditor() const;

  /// The text as the file holds it now. Throws kit::IoError.
  std::string Read() const;

  /// Keep() leaves the file where it is when this object goes, Remove() does not.
  ///@{
  void Keep() { is_kept_ = true; }
  void Remove() { is_kept_ = false; }
  bool is_kept() const { return is_kept_; }
  ///@}

 private:
  std::string folder_;
  std::string path_;
  bool is_kept_ = false;
};

}  // namespace zuna_cli
