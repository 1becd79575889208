// Files that take their places together: all of them are made complete in private folders, and then moved.

#include <fcntl.h>

#include <exception>
#include <map>
#include <set>
#include <stdexcept>
#include <utility>
#include <vector>

#include "kit/error.h"
#include "kit/file.h"
#include "platform/kit/internal/staged_file.h"

namespace kit {

class OutputFiles::Set {
 public:
  explicit Set(Existing existing) : existing_(existing) {}
  Set(const Set&) = delete;
  Set& operator=(const Set&) = delete;
  ~Set() { RemoveLeftovers(); }

  std::size_t size() const { return files_.size(); }

  void Add(const std::string& path) {
    RequireWholePath(path);
    const std::string folder_name = FolderOf(path);
    std::shared_ptr<const Folder>& folder = by_name_[folder_name];
    if (!folder) folder = Known(std::make_shared<Folder>(AT_FDCWD, folder_name, path));
    Target target = Resolve(folder, path);
    target.folder = Known(target.folder);
    StagedFile file(path, std::move(target), files_.size(), existing_);
    file.Inspect();
    files_.push_back(std::move(file));
  }

  void Write(std::size_t number, std::span<const std::uint8_t> bytes, unsigned new_mode) {
    StagedFile& file = files_.at(number);
    const auto& folder = file.target().folder;
    std::unique_ptr<StagingFolder>& staging = staging_[folder.get()];
    if (!staging) staging = std::make_unique<StagingFolder>(folder, file.path());
    file.Write(*staging, bytes, new_mode);
  }

  void Commit() {
    for (const StagedFile& file : files_) {
      if (!file.is_complete())
        throw std::logic_error(file.path() + ": is to get its place without its bytes");
    }
    try {
      std::set<FileId> placed;
      for (StagedFile& file : files_) {
        std::set<FileId> id{file.id()};  // Nothing may lack memory once the file has its place.
        file.Place(files_.size() > 1, placed);
        placed.merge(id);
      }
    } catch (...) {
      TakeBack();
      RemoveLeftovers();
      throw;
    }
    const int unflushed = Flush();
    const int left = RemoveLeftovers();
    if (unflushed != 0) {
      ThrowIoError(files_.front().path(), "is written, but its folder cannot be flushed", unflushed);
    }
    if (left != 0) {
      ThrowIoError(files_.front().path(), "is written, but .zuna-*.tmp in its folder cannot be removed",
                   left);
    }
  }

 private:
  /// The open folder that is the same as `folder`, so that each is open once whatever its names are.
  std::shared_ptr<const Folder> Known(const std::shared_ptr<const Folder>& folder) {
    return by_id_.emplace(folder->id(), folder).first->second;
  }

  /// Makes all places what they were, as far as possible. Throws where one of them is not.
  void TakeBack() {
    std::exception_ptr failure;
    for (auto file = files_.rbegin(); file != files_.rend(); ++file) {
      try {
        file->TakeBack();
      } catch (...) {  // The message may lack memory; the other files are taken back all the same.
        failure = std::current_exception();
      }
    }
    if (failure) std::rethrow_exception(failure);
  }

  /// Makes the new names survive a power failure. Returns 0, or a value of errno.
  int Flush() const {
    int error = 0;
    for (const auto& [folder, staging] : staging_) {
      const int failed = folder->Flush();
      if (error == 0) error = failed;
    }
    return error;
  }

  /// Removes the staging folders with all that is in them. Returns 0, or a value of errno.
  int RemoveLeftovers() {
    int error = 0;
    for (StagedFile& file : files_) {
      const int failed = file.RemoveLeftovers();
      if (error == 0) error = failed;
    }
    for (const auto& [folder, staging] : staging_) {
      const int failed = staging ? staging->Remove() : 0;
      if (error == 0) error = failed;
    }
    return error;
  }

  Existing existing_;
  std::map<std::string, std::shared_ptr<const Folder>> by_name_;  ///< by the paths that name them
  std::map<FileId, std::shared_ptr<const Folder>> by_id_;
  std::map<const Folder*, std::unique_ptr<StagingFolder>> staging_;  ///< by where they are
  std::vector<StagedFile> files_;
};

OutputFiles::OutputFiles(Existing existing) : set_(std::make_unique<Set>(existing)) {}

OutputFiles::~OutputFiles() = default;

std::size_t OutputFiles::size() const { return set_->size(); }

void OutputFiles::Add(const std::string& path) { set_->Add(path); }

void OutputFiles::Write(std::size_t file, std::span<const std::uint8_t> bytes, unsigned new_mode) {
  set_->Write(file, bytes, new_mode);
}

void OutputFiles::Commit() { set_->Commit(); }

FileExistsError::FileExistsError(const std::string& path)
    : RuntimeError(path + ": has appeared meanwhile and is not replaced; give another path"),
      path_(std::make_shared<const std::string>(path)) {}

}  // namespace kit
