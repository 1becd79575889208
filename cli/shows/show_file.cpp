#include "cli/shows/show_file.h"

#include <istream>
#include <new>
#include <sstream>
#include <string_view>
#include <vector>

#include "cli/base/errors.h"
#include "cli/base/file_io.h"
#include "cli/base/version_text.h"
#include "cli/shows/text_form.h"
#include "cmn/version_probe.h"
#include "format_converter/version0/change_log_header.h"
#include "zuna_sec/errors.h"

namespace zuna_cli {

namespace {

constexpr std::string_view kLegacyLogMagic = "ZUNA";
constexpr cmn::FileVersion kLegacy{0, 0};

using Cipher = zuna_sec::TwoFishCipherStream;

/// What a file is that is not encrypted, and what to do with it; empty where that is unknown.
std::string PlainKindOf(std::string_view text) {
  if (text.starts_with("MThd")) return "is a MIDI file; use midi import";
  if (BeginsLikeTextForm(text)) return "is plain text; use encrypt first";
  return "";
}

/// Decrypts the file called `name`, whose content is `bytes`.
std::unique_ptr<Cipher> Decrypt(const std::vector<std::uint8_t>& bytes, const CipherKey& key,
                                const std::string& name) {
  return OnFile(name, [&] {
    try {
      return std::make_unique<Cipher>(bytes, key.key, key.iv);
    } catch (const zuna_sec::NotEncryptedError&) {
      const std::string kind = PlainKindOf(AsText(bytes));
      if (kind.empty()) throw;
      throw Failure(ExitCode::kBadInput, name, kind);
    } catch (const zuna_sec::WrongKeyError&) {
      if (!key.key.empty() || !key.iv.empty()) throw;
      throw Failure(ExitCode::kWrongKey, name,
                    "is encrypted with a key, and none was given; name its key file with --key-file or "
                    "ZUNA_KEY_FILE");
    }
  });
}

/// Puts the stream back to its beginning, whatever a reader left behind.
void Rewind(std::istream& stream) {
  stream.exceptions(std::ios_base::goodbit);
  stream.clear();
  stream.seekg(0);
}

/// The first `size` bytes of the stream, or all where it has less.
std::string StartOf(std::istream& stream, std::size_t size) {
  Rewind(stream);
  std::string start(size, '\0');
  stream.read(start.data(), static_cast<std::streamsize>(size));
  start.resize(static_cast<std::size_t>(stream.gcount()));
  Rewind(stream);
  return start;
}

bool BeginsLikeALegacyLog(std::istream& stream) {
  return StartOf(stream, kLegacyLogMagic.size()) == kLegacyLogMagic;
}

/// Throws what is wrong with a text form that does not even tell its kind and version.
void RequireReadableText(InputFile& file) {
  const std::string start = StartOf(file.stream(), kTextFormProbe);
  if (!BeginsLikeTextForm(start) || IsLegacyShow(file.stream())) return;
  if (start.front() != '{') throw Failure(ExitCode::kBadInput, file.name(), kNotAtStart);
  ReadCurrentShow(file);
}

/// The number of bytes that the stream has not given yet.
std::size_t BytesLeft(std::iostream& stream) {
  stream.exceptions(std::ios_base::goodbit);
  const std::streamoff here = stream.tellg();
  stream.seekg(0, std::ios_base::end);
  return static_cast<std::size_t>(std::streamoff{stream.tellg()} - here);
}

/// Checks that a legacy log begins in `stream` and gives its show name.
std::string ShowNameOf(std::istream& stream, const std::string& name) {
  stream.exceptions(std::ios_base::failbit | std::ios_base::badbit);
  return OnFile(name, [&] { return version0::get_show_name(stream); });
}

}  // namespace

InputFile::InputFile(const std::string& path, const CipherKey& key)
    : name_(InputName(path)), cipher_(Decrypt(ReadBytes(path, kMaxFileSize), key, name_)) {}

cmn::FileVersion ShowVersion(InputFile& file) {
  return OnFile(file.name(), [&] {
    const cmn::FileVersion version = cmn::get_showdata_version(file.stream());
    if (version != kLegacy) return version;
    const bool current_log = cmn::get_logdata_version(file.stream()) != kLegacy;
    if (current_log || BeginsLikeALegacyLog(file.stream())) {
      throw Failure(ExitCode::kBadInput, file.name(), "is a log, and this command takes shows; give a show");
    }
    RequireReadableText(file);
    return version;
  });
}

void RequireLegacyShow(InputFile& file) {
  const cmn::FileVersion version = ShowVersion(file);
  if (version == kLegacy) return;
  throw Failure(ExitCode::kBadInput, file.name(),
                "is a show of version " + VersionText(version) + ", not 0.0; use convert or down");
}

cmn::FileVersion RequireCurrentShow(InputFile& file) {
  const cmn::FileVersion version = ShowVersion(file);
  if (version != kLegacy) return version;
  if (!IsLegacyShow(file.stream())) {
    throw Failure(ExitCode::kBadInput, file.name(), "is no show of any version; give an undamaged show");
  }
  throw Failure(ExitCode::kBadInput, file.name(),
                "is no show of version 1.0 or higher (its version reads as " + VersionText(version) +
                    "); use up for a show of version 0.0");
}

bool IsLegacyShow(std::istream& stream) {
  Rewind(stream);
  try {
    const version0::ShowData show(stream);
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception&) {
    Rewind(stream);
    return false;
  }
  Rewind(stream);
  return true;
}

LegacyShow ReadLegacyShow(InputFile& file) {
  std::iostream& stream = file.stream();
  Rewind(stream);
  return OnFile(file.name(), [&] {
    const int song_count = stream.peek();
    LegacyShow legacy{version0::ShowData(stream)};
    legacy.replaced_songs = static_cast<std::size_t>(song_count) - legacy.show.songs.size();
    legacy.trailing_bytes = BytesLeft(stream);
    return legacy;
  });
}

zuna_midi::ShowData ReadCurrentShow(InputFile& file) {
  Rewind(file.stream());
  return OnFile(file.name(), [&] { return zuna_midi::ShowData(file.stream()); });
}

std::string ReadCompanionShowName(const std::string& path, const CipherKey& key) {
  const std::string name = InputName(path);
  const std::vector<std::uint8_t> bytes = ReadBytes(path, kMaxFileSize);
  const std::string_view text = AsText(bytes);
  if (text.starts_with(kLegacyLogMagic)) {
    std::istringstream plain{std::string(text)};
    return ShowNameOf(plain, name);
  }
  const auto cipher = Decrypt(bytes, key, name);
  if (!BeginsLikeALegacyLog(cipher->GetStream())) {
    throw Failure(ExitCode::kBadInput, name,
                  "is no log of version 0.0 (it does not begin with \"ZUNA\"); give the log of the show");
  }
  return ShowNameOf(cipher->GetStream(), name);
}

}  // namespace zuna_cli
