#pragma once

// Converts encrypted show files between the legacy format 0.0 and the current versions. docs/conversion.md
// lists what a conversion keeps and drops. The same key material decrypts the input and encrypts the output.
// Functions that take paths write the output as their last step and return its path. They replace a file that
// is there, unasked and in one step; a failure leaves it as it was. Functions that take byte vectors return
// the encrypted output and do not use the file system.
//
// All throw:
// - kit::IoError (kit/error.h) when a file cannot be opened, read or written, or reading a stream fails;
// - a zuna_sec::CipherError (zuna_sec/errors.h) for an encrypted file: TruncatedError when it is cut off,
//   DamagedError, WrongKeyError, NotEncryptedError and others; TooLargeError also for the output;
// - cmn::DataError (cmn/data_error.h) for a current show that is damaged or cut off, and its derived class
//   cmn::UnsupportedVersionError for a version that the core library does not read or write;
// - std::length_error for a show that the version of the output cannot hold;
// - std::ios_base::failure when the output's stream cannot take what is written to it.
//
// Each function lists its other exceptions.

#include <cstdint>
#include <string>
#include <vector>

#include "cmn/file_version.h"
#include "kit/api.h"
#include "zuna_sec/cipher_key.h"

/// Converts the legacy show at `input` to a current show of this version. `log_path` is a legacy log of the
/// same show, not encrypted. The show's name is taken from it.
///
/// A legacy show has no mark, so not everything else is refused. A current show is, by its version. Whatever
/// else begins with a zero byte, such as a binary current log, gives a show without songs, and bytes after
/// the last song are dropped. Of the log, only the header is read; nothing tells whether it belongs to the
/// show. Who does not know what the files hold checks them before: format_converter/file_version.h says how.
///
/// There is no version of this function in memory. The toolkit's library brings a legacy show up without
/// files: OpenedFile::FromBytes(), ReadDocument(), Up(), and CipherStreamOf() with its GetEncryptedBytes()
/// (docs/toolkit.md).
///
/// Throws FormatConverterError (format_converter/errors.h) when the input is not of version 0.0; kit::IoError
/// when the input is cut off, and when the log cannot be opened or ends within its header;
/// std::ios_base::failure when the log cannot be closed; version0::Version0Error
/// (format_converter/version0/primitives/errors.h) when either file is damaged, IDError when the log is
/// something else; std::out_of_range for an event whose track id has no track; std::logic_error for a
/// timeline without meters or without a tempo under its first meter; std::length_error for a timeline whose
/// meters are in disorder.
///
/// Besides, as all do: kit::IoError, zuna_sec::CipherError, cmn::DataError, cmn::UnsupportedVersionError,
/// std::length_error and std::ios_base::failure, which the beginning of this header explains.
ZUNA_API std::string showdata_up(const std::string& input, const std::string& output,
                                 const std::string& log_path, const cmn::FileVersion& version,
                                 const CipherKey& cipher_key);

/// Converts the current show at `input` to a legacy show. Throws FormatConverterError
/// (format_converter/errors.h) when the input is no current show, or cmn::DataError when such data begins
/// with "{"; version0::TrackCountError (format_converter/version0/primitives/errors.h) when a song has more
/// voices than there are ids; std::length_error for a text that is too long for the legacy format and for a
/// timeline whose meters are in disorder; std::out_of_range for a song without events; and std::logic_error
/// for a song without a timeline and for a timeline without meters or without a tempo under its first meter.
///
/// The legacy format counts songs in one byte. The number of songs is not checked here: of more than 255, it
/// holds the number modulo 256, and readers find only so many. zuna_toolkit::Down() refuses such a show.
///
/// Besides, as all do: kit::IoError, zuna_sec::CipherError, cmn::DataError, cmn::UnsupportedVersionError,
/// std::length_error and std::ios_base::failure, which the beginning of this header explains.
ZUNA_API std::string showdata_down(const std::string& input, const std::string& output,
                                   const CipherKey& cipher_key);

/// The same in memory. Throws the same.
ZUNA_API std::vector<std::uint8_t> showdata_down_vector(const std::vector<std::uint8_t>& data,
                                                        const std::vector<std::uint8_t>& key,
                                                        const std::vector<std::uint8_t>& iv);

/// Converts the current show at `input` to another current version. Throws FormatConverterError
/// (format_converter/errors.h) when the input is no current show, or cmn::DataError when such data begins
/// with "{".
///
/// Besides, as all do: kit::IoError, zuna_sec::CipherError, cmn::DataError, cmn::UnsupportedVersionError,
/// std::length_error and std::ios_base::failure, which the beginning of this header explains.
ZUNA_API std::string showdata_converter(const std::string& input, const std::string& output,
                                        const cmn::FileVersion& version, const CipherKey& cipher_key);

/// The same in memory. Throws the same.
ZUNA_API std::vector<std::uint8_t> showdata_converter_vector(const std::vector<std::uint8_t>& data,
                                                             const cmn::FileVersion& version,
                                                             const std::vector<std::uint8_t>& key,
                                                             const std::vector<std::uint8_t>& iv);
