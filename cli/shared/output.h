// Where a command puts its result.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "cli/shared/file_id.h"
#include "cli/shared/output_set.h"
#include "zuna_sec/cipher_stream.h"

namespace zuna_cli {

/// What the options tell about the result: the file at `path`, or standard output for "-".
struct Output {
  std::string path;
  bool force = false;     ///< replace a file that exists
  bool keep_old = false;  ///< give the file that is replaced the name PATH.~N~
  bool is_text = false;   ///< a terminal may show it
};

/// Whether the regular file at `path` has these bytes. Throws kit::IoError.
bool Holds(const std::string& path, std::span<const std::uint8_t> bytes);

/// The encrypted content of `stream`. `name` is what messages call the result. Throws Failure.
std::vector<std::uint8_t> EncryptedBytes(zuna_sec::TwoFishCipherStream& stream, const std::string& name);

/// The place of one result: a file, or standard output.
class Destination {
 public:
  /// Throws what OutputSet::Add() throws, and Failure (kRefused) where standard output is a terminal. Called
  /// before any work is done.
  Destination(const Output& output, const std::vector<std::string>& inputs);
  Destination(const Destination&) = delete;
  Destination& operator=(const Destination&) = delete;
  /// Removes the second name or the copy of an old file that still has its place.
  ~Destination();

  /// What messages call it.
  std::string name() const;

  /// Gives an old file that is to be kept its second name, which it returns; empty for none. Called before
  /// the result is written. Throws what kit::BackUp() throws.
  const std::string& KeepOld();

  /// Encrypts and writes the content of `stream`. Throws Failure, kit::IoError or kit::FileExistsError.
  void WriteEncrypted(zuna_sec::TwoFishCipherStream& stream);
  /// The same with `bytes` as they are. `check` is called right before they take their place; nothing changes
  /// where it throws.
  void Write(std::span<const std::uint8_t> bytes, const std::function<void()>& check = {});
  /// The same with JSON text, in which what could steer a terminal is escaped on one.
  void WriteJson(std::string_view text);

 private:
  std::string path_;
  bool keep_old_;
  std::optional<FileId> old_;  ///< the old file, where it is kept
  std::string kept_;           ///< its second name, or that of its copy
  OutputSet files_;
};

}  // namespace zuna_cli
