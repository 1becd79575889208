// The files that a command works on: those that were named, and the shows and logs in folders.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cmn/file_format.h"
#include "kit/api.h"

namespace zuna_toolkit {

/// One of many files.
struct Input {
  std::string path;      ///< as it is opened
  std::string relative;  ///< below the folder that was named; the name alone of a file that was named
};

/// Which folders are looked through.
struct FolderSearch {
  bool recursive = false;   ///< folders below those that were named too; links to folders are not followed
  std::string passed_over;  ///< a folder that is not looked through below those that were named; may be empty
};

/// All inputs in the order of `paths`; the files of a folder byte by byte in the order of their names. What a
/// folder holds is an input where its name is that of a show or a log (IsShowOrLogName()) and it is a regular
/// file, a link to one, or cannot be looked at. A folder that cannot be listed is an input itself: opening it
/// tells why.
ZUNA_API std::vector<Input> FindInputs(const std::vector<std::string>& paths, const FolderSearch& search);

/// Whether the file called `name` may be a show or a log: it ends in ".showdata" or ".logdata", in any case
/// of the letters, and is not hidden.
ZUNA_API bool IsShowOrLogName(std::string_view name);

/// The path of the same stem for the other kind: "a/opera.logdata" for "a/opera.showdata", "OPERA.LOGDATA"
/// for "OPERA.SHOWDATA". Nothing for a path that does not end like one of both.
ZUNA_API std::optional<std::string> OtherKindPath(const std::string& path);

/// One of `count` equal parts of a list of paths.
struct Shard {
  std::uint64_t index = 1;  ///< from 1 to count
  std::uint64_t count = 1;  ///< how many there are
};

/// Whether `path` falls to `shard`: by a hash of its normal form (such as "a" for "./a"), modulo the count.
/// The hash is FNV-1a of 64 bits with the last step of SplitMix64. Machines that are given the same paths
/// share them without talking to each other.
ZUNA_API bool IsInShard(std::string_view path, const Shard& shard);

}  // namespace zuna_toolkit
