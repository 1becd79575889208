// The rows of whole folders of small files.

#pragma once

#include <string>

namespace zuna_bench {

/// A temporary folder with small shows, their key, and what is made of them.
class Folders {
 public:
  /// In memory where the system has such a folder, so that the disk is not measured; below TMPDIR where that
  /// is set.
  Folders();
  Folders(const Folders&) = delete;
  Folders& operator=(const Folders&) = delete;
  ~Folders();

  std::string in() const { return root_ + "/in"; }
  std::string out() const { return root_ + "/out"; }
  std::string key() const { return root_ + "/key"; }

 private:
  std::string root_;
};

/// Adds the rows; the folder is needed until they have run.
void AddFolderRows(const Folders& folders);

}  // namespace zuna_bench
