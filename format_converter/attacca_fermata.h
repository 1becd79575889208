#pragma once

// Copies attaccas and fermatas from one current log to another. The legacy log format cannot hold them, so a
// log that was converted down and up again has lost them. For each song log of the source, the song log of
// the destination gets the attacca and the fermatas of the source in place of its own. The destination keeps
// its version. Both logs must be of version 1.1 or later.

#include <string>
#include <vector>

#include "kit/api.h"
#include "zuna_sec/cipher_key.h"

/// Rewrites the log at `destination_path` as its last step. A failure before that leaves the file unchanged.
/// Both files are encrypted with `key`.
///
/// Throws:
/// - FormatConverterError (format_converter/errors.h) when either is no log of version 1.1 or later;
/// - std::out_of_range for a song that the destination lacks;
/// - kit::IoError (kit/error.h) when a file cannot be opened, read or written, or reading a stream fails;
/// - a zuna_sec::CipherError (zuna_sec/errors.h) for an encrypted file: TruncatedError when it is cut off,
///   DamagedError, WrongKeyError, NotEncryptedError and others; TooLargeError also for the output;
/// - cmn::DataError (cmn/data_error.h) for a log that is damaged or cut off, and for what begins with "{" but
///   is no text form of a log; its derived class cmn::UnsupportedVersionError for a version that the core
///   library does not read or write;
/// - std::length_error for a log that the version of the destination cannot hold;
/// - std::ios_base::failure when the output's stream cannot take what is written to it.
ZUNA_API void copy_attaccas_and_fermatas(const std::string& source_path, const std::string& destination_path,
                                         const CipherKey& key);

/// The same in memory. Returns the new destination, encrypted. Throws the same.
ZUNA_API std::vector<unsigned char> copy_attaccas_and_fermatas_vector(
    const std::vector<unsigned char>& source, const std::vector<unsigned char>& destination,
    const std::vector<unsigned char>& key, const std::vector<unsigned char>& iv);
