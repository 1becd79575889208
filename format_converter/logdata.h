#pragma once

// Converts encrypted log files between the legacy format 0.0 and the current versions. docs/conversion.md
// lists what a conversion keeps and drops. The same key material decrypts the input and encrypts the output.
// Functions that take paths write the output as their last step and return its path. They replace a file that
// is there, unasked and in one step; a failure leaves it as it was. Functions that take byte vectors return
// the encrypted output and do not use the file system.
//
// All throw:
// - kit::IoError (kit/error.h) when a file cannot be opened, read or written, or reading a stream fails;
// - a zuna_sec::CipherError (zuna_sec/errors.h) for an encrypted file: TruncatedError when it is cut off,
//   DamagedError, WrongKeyError, NotEncryptedError and others; TooLargeError also for the output;
// - cmn::DataError (cmn/data_error.h) for a current log that is damaged or cut off, and its derived class
//   cmn::UnsupportedVersionError for a version that the core library does not read or write;
// - std::length_error for a log that the version of the output cannot hold;
// - std::ios_base::failure when the output's stream cannot take what is written to it.
//
// Each function lists its other exceptions.

#include <cstdint>
#include <string>
#include <vector>

#include "cmn/file_version.h"
#include "kit/api.h"
#include "zuna_sec/cipher_key.h"
#include "zuna_sec/cipher_stream.h"

/// Converts the legacy log at `input` to a current log of this version. `show_path` is the legacy show of the
/// same songs, not encrypted. Each song's division is taken from it; it stays 0 for songs that the show
/// lacks.
///
/// The show has no mark, so not everything else is refused: whatever begins with a zero byte, such as a
/// binary current show or log, passes for a show without songs and leaves every division 0. Who does not know
/// what the file holds checks it before: format_converter/file_version.h says how.
///
/// Throws std::runtime_error itself when the input has not the size that it states: it is cut off, or no
/// legacy log; FormatConverterError (format_converter/errors.h) when it is a current log; kit::IoError when
/// the show cannot be opened or is cut off; std::ios_base::failure when it cannot be closed;
/// version0::Version0Error (format_converter/version0/primitives/errors.h) when either file is damaged,
/// IDError when the input is no log.
///
/// Besides, as all do: kit::IoError, zuna_sec::CipherError, cmn::DataError, cmn::UnsupportedVersionError,
/// std::length_error and std::ios_base::failure, which the beginning of this header explains.
ZUNA_API std::string logdata_up(const std::string& input, const std::string& output,
                                const std::string& show_path, const cmn::FileVersion& version,
                                const CipherKey& cipher_key);

/// The same in memory. The show is encrypted, with the same key material, so no plain file is needed. Throws
/// the same, but std::ios_base::failure when the plaintext of the show is cut off.
ZUNA_API std::vector<std::uint8_t> logdata_up_vector(const std::vector<std::uint8_t>& data,
                                                     const std::vector<std::uint8_t>& show_data,
                                                     const cmn::FileVersion& version,
                                                     const std::vector<std::uint8_t>& key,
                                                     const std::vector<std::uint8_t>& iv);

/// Converts the current log at `input` to a legacy log, which cannot hold divisions, attaccas, fermatas and
/// labels. copy_attaccas_and_fermatas() restores attaccas and fermatas. Throws FormatConverterError
/// (format_converter/errors.h) when the input is no log of version 1.1 or later, or cmn::DataError when
/// such data begins with "{"; and std::length_error for a text that is too long for the legacy format.
///
/// Besides, as all do: kit::IoError, zuna_sec::CipherError, cmn::DataError, cmn::UnsupportedVersionError,
/// std::length_error and std::ios_base::failure, which the beginning of this header explains.
ZUNA_API std::string logdata_down(const std::string& input, const std::string& output,
                                  const CipherKey& cipher_key);

/// The same in memory. Throws the same.
ZUNA_API std::vector<std::uint8_t> logdata_down_vector(const std::vector<std::uint8_t>& data,
                                                       const std::vector<std::uint8_t>& key,
                                                       const std::vector<std::uint8_t>& iv);

/// Converts the current log at `input` to another current version. Throws FormatConverterError
/// (format_converter/errors.h) when the input is no log of version 1.1 or later, or cmn::DataError when
/// such data begins with "{".
///
/// Besides, as all do: kit::IoError, zuna_sec::CipherError, cmn::DataError, cmn::UnsupportedVersionError,
/// std::length_error and std::ios_base::failure, which the beginning of this header explains.
ZUNA_API std::string logdata_converter(const std::string& input, const std::string& output,
                                       const cmn::FileVersion& version, const CipherKey& cipher_key);

/// The same in memory. Throws the same.
ZUNA_API std::vector<std::uint8_t> logdata_converter_vector(const std::vector<std::uint8_t>& data,
                                                            const cmn::FileVersion& version,
                                                            const std::vector<std::uint8_t>& key,
                                                            const std::vector<std::uint8_t>& iv);

/// Whether the plaintext has the size that the legacy log in it states: the 32-bit number after the next four
/// bytes is the size of the whole plaintext minus 8. Leaves the read position after these eight bytes.
/// Where fewer are left, returns false with failbit and eofbit set, and the position at the end; where the
/// stream's exception mask has one of these bits, throws std::ios_base::failure.
ZUNA_API bool check_log_size(zuna_sec::TwoFishCipherStream& stream);
