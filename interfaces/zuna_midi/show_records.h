#pragma once

// The records of a current binary show file, one by one, and its fields. Not part of the contract with the
// converter: only programs that save what is left of damaged files, or show their bytes, need this.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "cmn/field_list.h"
#include "cmn/file_version.h"
#include "kit/api.h"
#include "zuna_midi/show_data.h"

namespace zuna_midi {

/// What a binary show file has before its songs, after the ten bytes of the header.
struct ShowHead {
  ShowData show;            ///< without songs
  std::uint32_t songs = 0;  ///< how many follow
};

/// Read what is at `offset` in `file`, which has the layout of this version and may end anywhere: the head,
/// or a song. Then `offset` is where the next record begins. No checksum is looked at. Throws cmn::DataError,
/// and std::invalid_argument for a version that is not binary; `offset` stays then.
///@{
ZUNA_API ShowHead ReadShowHead(std::string_view file, std::size_t& offset, cmn::FileVersion version);
ZUNA_API std::shared_ptr<SongData> ReadSong(std::string_view file, std::size_t& offset,
                                            cmn::FileVersion version);
///@}

/// Reads the song at `offset` up to the first byte that cannot be read, where `offset` is then: the lists
/// and voices before it, and the messages of a voice that is damaged. A voice whose number another one has
/// gets a free number. What has not been read is empty or 0. A song that is whole is the one that ReadSong()
/// gives. Throws std::invalid_argument for a version that is
/// not binary.
ZUNA_API std::shared_ptr<SongData> ReadBeginningOfSong(std::string_view file, std::size_t& offset,
                                                       cmn::FileVersion version);

/// Hands out the fields of the binary show file `file`, in its order and without gaps. Ends before the first
/// field that cannot be read, and after the header of a version that is not binary; a file without a header
/// has none. No checksum is compared. A text begins with its length, a list with the field that counts it.
ZUNA_API void ListFields(std::string_view file, const cmn::TakeField& take);

}  // namespace zuna_midi
