#include "cli/files/input_file.h"

#include <istream>
#include <string_view>
#include <vector>

#include "cli/base/errors.h"
#include "cli/base/file_io.h"
#include "cli/files/text_form.h"
#include "zuna_sec/errors.h"

namespace zuna_cli {

namespace {

using Bytes = std::vector<std::uint8_t>;
using Cipher = zuna_sec::TwoFishCipherStream;

/// What a file is that is not encrypted, and what to do with it; empty where that is unknown.
std::string PlainKindOf(std::string_view text) {
  if (text.starts_with("MThd")) return "is a MIDI file; use midi import";
  if (text.starts_with("ZUNA")) return "is a plain log; use encrypt first";
  if (text.starts_with(std::string_view("\0ZLG", 4))) return "is a plain log; use encrypt first";
  if (text.starts_with(std::string_view("\0ZSH", 4))) return "is a plain show; use encrypt first";
  if (BeginsLikeTextForm(text)) return "is plain text; use encrypt first";
  return "";
}

/// Decrypts the content of the file called `name`. Throws zuna_sec::NotEncryptedError, and Failure.
std::unique_ptr<Cipher> Decrypt(const Bytes& bytes, const CipherKey& key, const std::string& name) {
  try {
    return std::make_unique<Cipher>(bytes, key.key, key.iv);
  } catch (const zuna_sec::WrongKeyError&) {
    if (!key.key.empty() || !key.iv.empty()) throw;
    throw Failure(
        ExitCode::kWrongKey, name,
        "is encrypted with a key, and none was given; name its key file with --key-file or ZUNA_KEY_FILE");
  }
}

std::unique_ptr<Cipher> RequireDecrypted(const Bytes& bytes, const CipherKey& key, const std::string& name) {
  return OnFile(name, [&] {
    try {
      return Decrypt(bytes, key, name);
    } catch (const zuna_sec::NotEncryptedError&) {
      const std::string kind = PlainKindOf(AsText(bytes));
      if (kind.empty()) throw;
      throw Failure(ExitCode::kBadInput, name, kind);
    }
  });
}

}  // namespace

InputFile::InputFile(const std::string& path, const CipherKey& key)
    : name_(InputName(path)), cipher_(RequireDecrypted(ReadBytes(path, kMaxFileSize), key, name_)) {}

InputFile InputFile::EncryptedOrPlain(const std::string& path, const CipherKey& key) {
  const std::string name = InputName(path);
  const Bytes bytes = ReadBytes(path, kMaxFileSize);
  return OnFile(name, [&] {
    try {
      return InputFile(name, Decrypt(bytes, key, name));
    } catch (const zuna_sec::NotEncryptedError&) {
      InputFile plain(name, std::make_unique<zuna_sec::TwoFishCipherStream>("", key.key, key.iv));
      plain.stream().exceptions(std::ios_base::badbit);
      plain.stream().write(reinterpret_cast<const char*>(bytes.data()),
                           static_cast<std::streamsize>(bytes.size()));
      Rewind(plain.stream());
      return plain;
    }
  });
}

void Rewind(std::istream& stream) {
  stream.exceptions(std::ios_base::goodbit);
  stream.clear();
  stream.seekg(0);
}

std::string StartOf(std::istream& stream, std::size_t size) {
  Rewind(stream);
  std::string start(size, '\0');
  stream.read(start.data(), static_cast<std::streamsize>(size));
  start.resize(static_cast<std::size_t>(stream.gcount()));
  Rewind(stream);
  return start;
}

}  // namespace zuna_cli
