// Finds the files that a command works on.
#include "toolkit/batch/inputs.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <utility>

#include "kit/error.h"
#include "kit/path.h"
#include "toolkit/words.h"

namespace zuna_toolkit {

namespace {

struct Extension {
  std::string_view text;
  std::string_view upper;
  std::string_view other;        ///< that of the companion
  std::string_view other_upper;  ///< the same for a name in upper case, as old disks have it
};

constexpr std::array kExtensions = {Extension{".showdata", ".SHOWDATA", ".logdata", ".LOGDATA"},
                                    Extension{".logdata", ".LOGDATA", ".showdata", ".SHOWDATA"}};

bool IsFolder(const std::string& path) {
  std::error_code ignored;  // What cannot be looked at is reported when it is opened.
  return std::filesystem::is_directory(path, ignored);
}

bool IsSamePlace(const std::string& a, const std::string& b) {
  std::error_code ignored;
  return std::filesystem::equivalent(a, b, ignored);
}

/// Whether it is a regular file, or nothing that is known to be something else: opening it tells why.
bool MayBeFile(const std::filesystem::file_status& status) {
  using std::filesystem::file_type;
  const file_type type = status.type();
  return type == file_type::regular || type == file_type::none || type == file_type::not_found ||
         type == file_type::unknown;
}

/// The last component of a path, which may end with slashes.
std::string LastName(std::string_view path) {
  while (path.size() > 1 && path.ends_with('/')) path.remove_suffix(1);
  return std::filesystem::path(path).filename().string();
}

class Search {
 public:
  explicit Search(const FolderSearch& options) : options_(options) {}

  void Add(const std::string& path) {
    if (IsFolder(path)) {
      AddFolder(path, "");
    } else {
      found_.push_back({path, LastName(path)});
    }
  }

  std::vector<Input> Take() { return std::move(found_); }

 private:
  void AddFolder(const std::string& path, const std::string& relative) {
    const bool is_named = relative.empty();
    if (!is_named && !options_.passed_over.empty() && IsSamePlace(path, options_.passed_over)) return;
    std::vector<std::string> names;
    try {
      names = kit::listdir(path);
    } catch (const kit::IoError&) {
      found_.push_back({path, is_named ? LastName(path) : relative});
      return;
    }
    for (const std::string& name : names) {
      if (name.starts_with('.')) continue;
      AddEntry({kit::path::Join(path, name), kit::path::Join(relative, name)}, name);
    }
  }

  void AddEntry(Input entry, const std::string& name) {
    std::error_code ignored;
    const auto status = std::filesystem::status(entry.path, ignored);
    if (std::filesystem::is_directory(status)) {
      if (options_.recursive && !std::filesystem::is_symlink(entry.path, ignored)) {
        AddFolder(entry.path, entry.relative);
      }
    } else if (IsShowOrLogName(name) ? MayBeFile(status) : MayBeUnseenFolder(entry.path, status)) {
      found_.push_back(std::move(entry));
    }
  }

  /// Whether it may be a folder with inputs, which cannot be looked at: opening it tells why.
  bool MayBeUnseenFolder(const std::string& path, const std::filesystem::file_status& status) const {
    using std::filesystem::file_type;
    if (!options_.recursive) return false;
    if (std::filesystem::exists(status) && status.type() != file_type::unknown) return false;
    std::error_code ignored;
    const file_type type = std::filesystem::symlink_status(path, ignored).type();
    return type != file_type::symlink && type != file_type::not_found;  // It may have been removed meanwhile.
  }

  const FolderSearch& options_;
  std::vector<Input> found_;
};

/// FNV-1a of 64 bits. Its low bits depend on the low bits of the bytes alone.
std::uint64_t Fnv1a(std::string_view text) {
  constexpr std::uint64_t kOffsetBasis = 0xcbf29ce484222325;
  constexpr std::uint64_t kPrime = 0x100000001b3;
  std::uint64_t hash = kOffsetBasis;
  for (const char byte : text) hash = (hash ^ static_cast<std::uint8_t>(byte)) * kPrime;
  return hash;
}

/// The last step of SplitMix64: every bit depends on all bits of `hash`.
std::uint64_t Mixed(std::uint64_t hash) {
  hash = (hash ^ (hash >> 30)) * 0xbf58476d1ce4e5b9;
  hash = (hash ^ (hash >> 27)) * 0x94d049bb133111eb;
  return hash ^ (hash >> 31);
}

}  // namespace

std::vector<Input> FindInputs(const std::vector<std::string>& paths, const FolderSearch& search) {
  Search found(search);
  for (const std::string& path : paths) found.Add(path);
  return found.Take();
}

bool IsShowOrLogName(std::string_view name) {
  const std::string lower = LowerCase(std::string(name));
  return !name.starts_with('.') &&
         std::any_of(kExtensions.begin(), kExtensions.end(),
                     [&](const Extension& end) { return lower.ends_with(end.text); });
}

std::optional<std::string> OtherKindPath(const std::string& path) {
  const std::string lower = LowerCase(path);
  for (const Extension& end : kExtensions) {
    if (!lower.ends_with(end.text)) continue;
    const std::size_t stem = path.size() - end.text.size();
    const bool is_upper = path.substr(stem) == end.upper;
    return path.substr(0, stem) + std::string(is_upper ? end.other_upper : end.other);
  }
  return std::nullopt;
}

bool IsInShard(std::string_view path, const Shard& shard) {
  const std::string normal = std::filesystem::path(path).lexically_normal().string();
  return Mixed(Fnv1a(normal)) % shard.count == shard.index - 1;
}

}  // namespace zuna_toolkit
