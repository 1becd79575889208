#pragma once

// Converts encrypted log files between the legacy format 0.0 and the current versions. docs/conversion.md
// lists what a conversion keeps and drops. The same key material decrypts the input and encrypts the output.
// Functions that take paths write the output as their last step and return its path. A failure before that
// leaves no output. Functions that take byte vectors return the encrypted output and do not use the file
// system.
//
// All throw what opening and writing an encrypted file throw; kit::IoError when reading the input fails;
// std::ios_base::failure when the output's stream cannot take what is written to it; and what the core
// library throws for a log or a version that it cannot read or write.

#include <cstdint>
#include <string>
#include <vector>

#include "cmn/file_version.h"
#include "kit/api.h"
#include "zuna_sec/cipher_key.h"
#include "zuna_sec/cipher_stream.h"

/// Converts the legacy log at `input` to a current log of this version. `show_path` is the legacy show of the
/// same songs, not encrypted. Each song's division is taken from it. Songs that only one of the two files
/// holds are left unchanged. Throws std::runtime_error when the input is not a complete log;
/// FormatConverterError when it is not of version 0.0; kit::IoError when the show cannot be opened;
/// std::ios_base::failure when it cannot be closed; version0::Version0Error when either file is damaged.
ZUNA_API std::string logdata_up(const std::string& input, const std::string& output,
                                const std::string& show_path, const cmn::FileVersion& version,
                                const CipherKey& cipher_key);

/// The same in memory. The show is encrypted, with the same key material. Throws std::ios_base::failure when
/// the show is cut off.
ZUNA_API std::vector<std::uint8_t> logdata_up_vector(const std::vector<std::uint8_t>& data,
                                                     const std::vector<std::uint8_t>& show_data,
                                                     const cmn::FileVersion& version,
                                                     const std::vector<std::uint8_t>& key,
                                                     const std::vector<std::uint8_t>& iv);

/// Converts the current log at `input` to a legacy log, which cannot hold divisions, attaccas, fermatas and
/// labels. copy_attaccas_and_fermatas() restores attaccas and fermatas. Throws FormatConverterError when the
/// input is of a version before 1.1, and std::length_error for a text that is too long for the legacy format.
ZUNA_API std::string logdata_down(const std::string& input, const std::string& output,
                                  const CipherKey& cipher_key);

/// The same in memory.
ZUNA_API std::vector<std::uint8_t> logdata_down_vector(const std::vector<std::uint8_t>& data,
                                                       const std::vector<std::uint8_t>& key,
                                                       const std::vector<std::uint8_t>& iv);

/// Converts the current log at `input` to another current version.
/// Throws FormatConverterError when the input is of a version before 1.1.
ZUNA_API std::string logdata_converter(const std::string& input, const std::string& output,
                                       const cmn::FileVersion& version, const CipherKey& cipher_key);

/// The same in memory.
ZUNA_API std::vector<std::uint8_t> logdata_converter_vector(const std::vector<std::uint8_t>& data,
                                                            const cmn::FileVersion& version,
                                                            const std::vector<std::uint8_t>& key,
                                                            const std::vector<std::uint8_t>& iv);

/// Whether the plaintext has the size that the legacy log in it states: the 32-bit number after the next four
/// bytes is the size of the whole plaintext minus 8. Leaves the read position after these eight bytes.
ZUNA_API bool check_log_size(zuna_sec::TwoFishCipherStream& stream);
