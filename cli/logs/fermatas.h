#pragma once

#include <cstddef>
#include <string>

#include "CL/change_log.h"

namespace zuna_cli {

/// What copying attaccas and fermatas from one log to another does.
struct FermataCopy {
  std::size_t fermatas = 0;           ///< that the source has
  std::size_t attaccas = 0;           ///< that the source has and are not 0
  std::size_t songs = 0;              ///< of the source that have any of them
  std::size_t replaced_fermatas = 0;  ///< of the destination, in songs whose lists are others
  std::size_t replaced_attaccas = 0;  ///< of the destination, that are not 0 and others
  std::string missing_songs;          ///< of the source that the destination lacks, as "2, 3"
};

FermataCopy CompareFermatas(const CL::ChangeLog& source, const CL::ChangeLog& destination);

}  // namespace zuna_cli
