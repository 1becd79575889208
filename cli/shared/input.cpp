// Reading inputs, standard input included.
#include "cli/shared/input.h"

#include <unistd.h>

#include <optional>
#include <utility>

#include "cli/terminal/standard_streams.h"
#include "kit/file.h"
#include "zuna_sec/damaged_envelope.h"

namespace zuna_cli {

using zuna_toolkit::OpenedFile;

zuna_toolkit::Error WithRescue(const zuna_toolkit::Error& error) {
  if (!zuna_toolkit::MayRescueHelp(error.code())) return error;
  const std::string or_rescue = ", or save what is left of a damaged file with rescue";
  zuna_toolkit::ErrorParts parts = error.parts();
  parts.remedy += or_rescue;
  return {error.code(), std::move(parts), error.what() + or_rescue};
}

std::vector<std::uint8_t> ReadInput(const std::string& path, std::size_t limit) {
  const kit::FileBytes file = path == kStandardStream
                                  ? kit::ReadWholeFile(STDIN_FILENO, InputName(path), limit)
                                  : kit::ReadWholeFile(path, limit);
  return {file.bytes().begin(), file.bytes().end()};
}

namespace {

/// Whether `bytes`, which are encrypted, are so with an empty key and IV.
bool OpensWithEmptyKey(const std::vector<std::uint8_t>& bytes, const std::string& name) {
  try {
    const OpenedFile opened = OpenedFile::FromBytes(bytes, name, {});
    return true;
  } catch (const zuna_toolkit::Error& error) {
    return error.kind() != zuna_toolkit::ErrorKind::kWrongKey;
  }
}

}  // namespace

void RefuseKeys(const std::vector<std::uint8_t>& bytes, const std::string& name, const Keys& keys,
                const zuna_toolkit::Error& error) {
  if (OpensWithEmptyKey(bytes, name)) {
    throw Failure(ErrorCode::kWrongKey, name, "was encrypted with an empty key, and a key is given",
                  "give no --key-file and no ZUNA_KEY_FILE");
  }
  if (keys.size() == 1) throw zuna_toolkit::Error(error);
  throw Failure(
      ErrorCode::kWrongKey, name,
      "none of the " + std::to_string(keys.size()) + " keys and IVs is the one that this was encrypted with",
      "give the right key file");
}

OpenedInput DecryptInput(const std::vector<std::uint8_t>& bytes, const std::string& name, const Keys& keys,
                         zuna_toolkit::Accept accept) {
  std::optional<zuna_toolkit::Error> wrong_key;
  for (const zuna_toolkit::SecretKey& key : keys) {
    try {
      return {OpenedFile::FromBytes(bytes, name, key.material(), accept), &key.material()};
    } catch (const zuna_toolkit::Error& error) {
      if (error.kind() != zuna_toolkit::ErrorKind::kWrongKey) throw;
      wrong_key = error;
    }
  }
  RefuseKeys(bytes, name, keys, *wrong_key);
}

OpenedInput DecryptOrNameRescue(const std::vector<std::uint8_t>& bytes, const std::string& name,
                                const Keys& keys, zuna_toolkit::Accept accept) {
  if (bytes.size() <= zuna_sec::kEnvelopeHeaderSize) return DecryptInput(bytes, name, keys, accept);
  return ReadOrNameRescue([&] { return DecryptInput(bytes, name, keys, accept); });
}

OpenedInput OpenInput(const std::string& path, const Keys& keys, zuna_toolkit::Accept accept) {
  const auto bytes = ReadInput(path, zuna_toolkit::kMaxFileSize);
  return DecryptOrNameRescue(bytes, InputName(path), keys, accept);
}

zuna_toolkit::Error ErrorOfInput(const zuna_toolkit::Error& error, const std::vector<std::uint8_t>& bytes,
                                 const std::string& name, const Keys& keys) {
  if (error.code() == ErrorCode::kWrongKind || error.code() == ErrorCode::kWrongCompanion) return error;
  try {
    DecryptOrNameRescue(bytes, name, keys);
  } catch (const zuna_toolkit::Error& own) {
    if (own.code() != ErrorCode::kPlainFile || error.code() == ErrorCode::kUnsupportedVersion) return own;
  }
  return WithRescue(error);
}

ReadInputDocument ReadEncryptedOrPlain(const std::string& path, const Keys& keys,
                                       zuna_toolkit::Expected expected) {
  const auto bytes = ReadInput(path, zuna_toolkit::kMaxFileSize);
  const auto read = [expected](OpenedFile& file) { return zuna_toolkit::ReadDocument(file, expected); };
  return {ReadEncryptedOrPlain(bytes, InputName(path), keys, read), zuna_toolkit::IsEncrypted(bytes)};
}

}  // namespace zuna_cli
