#pragma once

// Copies attaccas and fermatas from one current log to another. The legacy log format cannot hold them, so a
// log that was converted down and up again has lost them. For each song log of the source, the song log of
// the destination gets the attacca and the fermatas of the source in place of its own. The destination keeps
// its version. Both logs must be of version 1.1 or later.
//
// Both functions throw what opening and writing an encrypted file throw; FormatConverterError for a version
// before 1.1; kit::IoError when reading a log fails; std::ios_base::failure when the output's stream cannot
// take what is written to it; what the core library throws for a log that it cannot read; and
// std::out_of_range for a song that the destination lacks.

#include <string>
#include <vector>

#include "kit/api.h"
#include "zuna_sec/cipher_key.h"

/// Rewrites the log at `destination_path` as its last step. A failure before that leaves the file unchanged.
ZUNA_API void copy_attaccas_and_fermatas(const std::string& source_path, const std::string& destination_path,
                                         const CipherKey& key);

/// The same in memory. Returns the new destination, encrypted.
ZUNA_API std::vector<unsigned char> copy_attaccas_and_fermatas_vector(
    const std::vector<unsigned char>& source, const std::vector<unsigned char>& destination,
    const std::vector<unsigned char>& key, const std::vector<unsigned char>& iv);
