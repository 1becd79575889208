#pragma once

// The records of a current binary log file, one by one, and its fields. Not part of the contract with the
// converter: only programs that save what is left of damaged files, or show their bytes, need this.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "CL/change_log.h"
#include "cmn/field_list.h"
#include "cmn/file_version.h"
#include "kit/api.h"

namespace CL {

/// What a binary log file has before its song logs, after the ten bytes of the header.
struct LogHead {
  ChangeLog log;            ///< without song logs
  std::uint32_t songs = 0;  ///< how many song logs follow
};

/// Read what is at `offset` in `file`, which has the layout of this version and may end anywhere: the head,
/// or a song log. Then `offset` is where the next record begins. No checksum is looked at. Throws
/// cmn::DataError, and std::invalid_argument for a version that is not binary; `offset` stays then.
///@{
ZUNA_API LogHead ReadLogHead(std::string_view file, std::size_t& offset, cmn::FileVersion version);
ZUNA_API std::shared_ptr<SongLog> ReadSongLog(std::string_view file, std::size_t& offset,
                                              cmn::FileVersion version);
///@}

/// Reads the song log at `offset` up to the first byte that cannot be read, where `offset` is then: the lists
/// of edits before it, and the edits before it of a list that is damaged. A song log that is whole is the one
/// that ReadSongLog() gives. Throws std::invalid_argument for a version that is not binary.
ZUNA_API std::shared_ptr<SongLog> ReadBeginningOfSongLog(std::string_view file, std::size_t& offset,
                                                         cmn::FileVersion version);

/// Hands out the fields of the binary log file `file`, in its order and without gaps. Ends before the first
/// field that cannot be read, and after the header of a version that is not binary; a file without a header
/// has none. No checksum is compared. A text begins with its length, a list with the field that counts it.
ZUNA_API void ListFields(std::string_view file, const cmn::TakeField& take);

}  // namespace CL
