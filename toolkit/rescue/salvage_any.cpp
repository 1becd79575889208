// What is left of a damaged plaintext that may be of any kind and version.
#include <algorithm>
#include <array>
#include <utility>

#include "format_converter/version0/containers/change_log_header.h"
#include "toolkit/rescue/internal/current_header.h"
#include "toolkit/rescue/internal/salvage.h"

namespace zuna_toolkit {

namespace {

constexpr std::array kKinds = {cmn::FileKind::kShow, cmn::FileKind::kLog};

/// How many bytes belong to songs that came back whole, and to others that came back.
std::pair<std::uint64_t, std::uint64_t> SavedBytes(const Salvage& salvage) {
  std::uint64_t whole = 0;
  std::uint64_t partly = 0;
  for (const RescuedSong& song : salvage.report.songs) {
    const std::uint64_t size = *song.end - *song.offset;
    if (song.state == SongState::kWhole) whole += size;
    if (song.state == SongState::kPartly) partly += size;
  }
  return {whole, partly};
}

/// Keeps the better one of `best` and `other`.
void TakeBetter(Salvage& best, Salvage other) {
  if (SavedBytes(other) > SavedBytes(best)) best = std::move(other);
}

/// Salvages a current binary file. Where its version is damaged, it is the one at which most comes back.
Salvage SalvageCurrent(std::string_view plaintext, cmn::FileKind kind) {
  const std::uint64_t size = StatedSize(plaintext);
  const cmn::FileVersion stated = StatedVersion(plaintext);
  const bool is_known = stated.major == 1 && cmn::IsSupported(kind, stated);
  Salvage best = SalvageBinary(plaintext, kind, is_known ? stated : cmn::kDefaultVersion, size);
  if (is_known && best.report.saved() > 0) return best;
  for (const cmn::FileVersion& version : cmn::SupportedVersions(kind)) {
    if (version.major == 1) TakeBetter(best, SalvageBinary(plaintext, kind, version, size));
  }
  return best;
}

/// Whether what came back is most of the file.
bool IsMost(const Salvage& salvage, std::string_view plaintext) {
  return 2 * SavedBytes(salvage).first >= plaintext.size();
}

/// Salvages a file without any mark. A legacy show has none; a file of another kind that has lost its own is
/// known by its songs, which have to be most of it.
Salvage SalvageUnmarked(std::string_view plaintext) {
  Salvage best = SalvageLegacyShow(plaintext);
  TakeBetter(best, SalvageLegacyLog(plaintext));
  if (IsMost(best, plaintext)) return best;
  for (const cmn::FileKind kind : kKinds) {
    for (const cmn::FileVersion& version : cmn::SupportedVersions(kind)) {
      if (version.major != 1) continue;
      Salvage other = SalvageBinary(plaintext, kind, version, 0);
      if (IsMost(other, plaintext)) TakeBetter(best, std::move(other));
    }
  }
  return best;
}

}  // namespace

Salvage SalvageAny(std::string_view plaintext) {
  if (plaintext.find(kSongKey) != std::string_view::npos) return SalvageText(plaintext);
  if (plaintext.starts_with(version0::kChangeLogMagic)) return SalvageLegacyLog(plaintext);
  if (const auto kind = BinaryKind(plaintext)) return SalvageCurrent(plaintext, *kind);
  return SalvageUnmarked(plaintext);
}

}  // namespace zuna_toolkit
