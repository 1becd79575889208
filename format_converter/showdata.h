#pragma once

// Converts encrypted show files between the legacy format 0.0 and the current versions. docs/conversion.md
// lists what a conversion keeps and drops. The same key material decrypts the input and encrypts the output.
// Functions that take paths write the output as their last step and return its path. A failure before that
// leaves no output. Functions that take byte vectors return the encrypted output and do not use the file
// system.
//
// All throw what opening and writing an encrypted file throw; kit::IoError when reading the input fails;
// std::ios_base::failure when the output's stream cannot take what is written to it; and what the core
// library throws for a show or a version that it cannot read or write.

#include <cstdint>
#include <string>
#include <vector>

#include "cmn/file_version.h"
#include "kit/api.h"
#include "zuna_sec/cipher_key.h"

/// Converts the legacy show at `input` to a current show of this version. `log_path` is a legacy log of the
/// same show, not encrypted. The show's name is taken from it. Throws FormatConverterError when the input is
/// not of version 0.0; kit::IoError when the input is cut off or the log cannot be read;
/// std::ios_base::failure when the log cannot be closed; version0::Version0Error when either file is damaged;
/// std::out_of_range for an event whose track id has no track; std::logic_error for a timeline without meters
/// or without a tempo under its first meter; std::length_error for a timeline whose meters are in disorder.
ZUNA_API std::string showdata_up(const std::string& input, const std::string& output,
                                 const std::string& log_path, const cmn::FileVersion& version,
                                 const CipherKey& cipher_key);

/// Converts the current show at `input` to a legacy show. Throws FormatConverterError when the input is a
/// legacy show, version0::TrackCountError when a song has more voices than there are ids, std::length_error
/// for a text that is too long for the legacy format and for a timeline whose meters are in disorder,
/// std::out_of_range for a song without events, and std::logic_error for a song without a timeline and for a
/// timeline without meters or without a tempo under its first meter.
ZUNA_API std::string showdata_down(const std::string& input, const std::string& output,
                                   const CipherKey& cipher_key);

/// The same in memory.
ZUNA_API std::vector<std::uint8_t> showdata_down_vector(const std::vector<std::uint8_t>& data,
                                                        const std::vector<std::uint8_t>& key,
                                                        const std::vector<std::uint8_t>& iv);

/// Converts the current show at `input` to another current version.
/// Throws FormatConverterError when the input is a legacy show.
ZUNA_API std::string showdata_converter(const std::string& input, const std::string& output,
                                        const cmn::FileVersion& version, const CipherKey& cipher_key);

/// The same in memory.
ZUNA_API std::vector<std::uint8_t> showdata_converter_vector(const std::vector<std::uint8_t>& data,
                                                             const cmn::FileVersion& version,
                                                             const std::vector<std::uint8_t>& key,
                                                             const std::vector<std::uint8_t>& iv);
