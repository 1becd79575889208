#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "cmn/file_version.h"
#include "kit/api.h"
#include "zuna_sec/cipher_key.h"
#include "zuna_sec/cipher_stream.h"

// Conversion of encrypted log files between the legacy format 0.0 and the current versions. The key material
// decrypts the input and encrypts the output. The functions with paths write the output in their last step
// and return its path: a failure leaves no output. Those with byte vectors return the encrypted output and
// never touch the file system.
//
// All throw what opening an encrypted file throws, kit::IoError where a stream fails, and what the core
// library throws for a log or a version that it cannot read or write.

/// Turns the legacy log at `input` into a current one of this version. `show_path` names the legacy show of
/// the same songs, not encrypted; each song's division is taken from it, and songs that stand in only one of
/// the two are let be. Throws std::runtime_error when the input is no complete log; FormatConverterError when
/// it is not of version 0.0; kit::IoError when the show cannot be opened; version0::Version0Error when either
/// is damaged.
ZUNA_API std::string logdata_up(const std::string& input, const std::string& output,
                                const std::string& show_path, const cmn::FileVersion& version,
                                const CipherKey& cipher_key);

/// The same in memory. Here the show is encrypted, with the same key material; one that is cut off gives
/// std::ios_base::failure.
ZUNA_API std::vector<std::uint8_t> logdata_up_vector(const std::vector<std::uint8_t>& data,
                                                     const std::vector<std::uint8_t>& show_data,
                                                     const cmn::FileVersion& version,
                                                     const std::vector<std::uint8_t>& key,
                                                     const std::vector<std::uint8_t>& iv);

/// Turns the current log at `input` into a legacy one, which has no room for divisions, attaccas, fermatas
/// and labels: copy_attaccas_and_fermatas() brings attaccas and fermatas back. Throws FormatConverterError
/// when the input is of a version before 1.1, std::length_error for a text that is too long for the legacy
/// format.
ZUNA_API std::string logdata_down(const std::string& input, const std::string& output,
                                  const CipherKey& cipher_key);

/// The same in memory.
ZUNA_API std::vector<std::uint8_t> logdata_down_vector(const std::vector<std::uint8_t>& data,
                                                       const std::vector<std::uint8_t>& key,
                                                       const std::vector<std::uint8_t>& iv);

/// Writes the current log at `input` again in another current version.
/// Throws FormatConverterError when the input is of a version before 1.1.
ZUNA_API std::string logdata_converter(const std::string& input, const std::string& output,
                                       const cmn::FileVersion& version, const CipherKey& cipher_key);

/// The same in memory.
ZUNA_API std::vector<std::uint8_t> logdata_converter_vector(const std::vector<std::uint8_t>& data,
                                                            const cmn::FileVersion& version,
                                                            const std::vector<std::uint8_t>& key,
                                                            const std::vector<std::uint8_t>& iv);

/// Whether the plaintext is as long as the legacy log in it states: the 32-bit number after the next four
/// bytes is the size of the whole plaintext less 8. The stream is left behind these eight bytes.
ZUNA_API bool check_log_size(zuna_sec::TwoFishCipherStream& stream);
