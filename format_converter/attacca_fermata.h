#pragma once

#include <string>
#include <vector>

#include "kit/api.h"
#include "zuna_sec/cipher_key.h"

// The legacy log format has no room for attaccas and fermatas, so a log that went down and up again has lost
// them. These functions bring them back from a log that still has them: every song log of the destination
// that the source has too gets the attacca and all fermatas of the source's, instead of its own. The
// destination keeps its version, which like the source's must be 1.1 or later.
//
// Both throw what opening an encrypted file throws; FormatConverterError for a version before 1.1;
// kit::IoError where a stream fails; what the core library throws for a log that it cannot read; and
// std::out_of_range for a song that the destination lacks.

/// Rewrites the log at `destination_path` in its last step; a failure leaves it as it is.
ZUNA_API void copy_attaccas_and_fermatas(const std::string& source_path, const std::string& destination_path,
                                         const CipherKey& key);

/// Returns the encrypted destination.
ZUNA_API std::vector<unsigned char> copy_attaccas_and_fermatas_vector(
    const std::vector<unsigned char>& source, const std::vector<unsigned char>& destination,
    const std::vector<unsigned char>& key, const std::vector<unsigned char>& iv);
