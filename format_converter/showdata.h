#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "cmn/file_version.h"
#include "kit/api.h"
#include "zuna_sec/cipher_key.h"

// Conversion of encrypted show files between the legacy format 0.0 and the current versions. The key material
// decrypts the input and encrypts the output. The functions with paths write the output in their last step
// and return its path: a failure leaves no output. Those with byte vectors return the encrypted output and
// never touch the file system.
//
// All throw what opening an encrypted file throws, kit::IoError where a stream fails, and what the core
// library throws for a show or a version that it cannot read or write.

/// Turns the legacy show at `input` into a current one of this version. `log_path` names a legacy log of the
/// same show, not encrypted; the show's name is taken from it. Throws FormatConverterError when the input is
/// not of version 0.0; kit::IoError when the input is cut off or the log cannot be read;
/// version0::Version0Error when either is damaged; std::out_of_range for an event whose track id stands in no
/// track.
ZUNA_API std::string showdata_up(const std::string& input, const std::string& output,
                                 const std::string& log_path, const cmn::FileVersion& version,
                                 const CipherKey& cipher_key);

/// Turns the current show at `input` into a legacy one.
/// Throws FormatConverterError when the input is a legacy show, version0::TrackCountError when a song has
/// more voices than there are ids, std::length_error and std::out_of_range when the legacy format cannot hold
/// a text or a song without events.
ZUNA_API std::string showdata_down(const std::string& input, const std::string& output,
                                   const CipherKey& cipher_key);

/// The same in memory.
ZUNA_API std::vector<std::uint8_t> showdata_down_vector(const std::vector<std::uint8_t>& data,
                                                        const std::vector<std::uint8_t>& key,
                                                        const std::vector<std::uint8_t>& iv);

/// Writes the current show at `input` again in another current version.
/// Throws FormatConverterError when the input is a legacy show.
ZUNA_API std::string showdata_converter(const std::string& input, const std::string& output,
                                        const cmn::FileVersion& version, const CipherKey& cipher_key);

/// The same in memory.
ZUNA_API std::vector<std::uint8_t> showdata_converter_vector(const std::vector<std::uint8_t>& data,
                                                             const cmn::FileVersion& version,
                                                             const std::vector<std::uint8_t>& key,
                                                             const std::vector<std::uint8_t>& iv);
