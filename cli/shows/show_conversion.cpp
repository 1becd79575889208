#include "cli/shows/show_conversion.h"

#include <array>
#include <new>
#include <string_view>

#include "cli/base/errors.h"
#include "cli/files/file_type.h"
#include "cli/shows/show_file.h"

namespace zuna_cli {

namespace {

/// What the converter's messages leave open.
struct Hint {
  std::string_view message;      ///< how it begins
  std::string_view explanation;  ///< goes behind it
  std::string_view remedy;       ///< in a current show; a legacy one is not edited by hand
};

constexpr std::array<Hint, 5> kHints{{
    {"Expected RTempo event", " (the first meter has no tempo)",
     "add a tempo at the song's start (edit its text form)"},
    {"A timeline without meters", "", "edit its text form"},
    {"The meters of a timeline are in disorder", "", "put them in order (edit its text form)"},
    {"track_count() greater", "", "remove voices, format 0.0 holds 239 besides drums"},
    {"There is no voice track", " (a message belongs to it)", "correct the song (edit its text form)"},
}};

constexpr Hint kNoHint{"", "", "correct the song (edit its text form)"};
constexpr std::string_view kUndamaged = "get an undamaged copy of the file";

const Hint& HintFor(std::string_view message) {
  for (const Hint& hint : kHints) {
    if (message.starts_with(hint.message)) return hint;
  }
  return kNoHint;
}

/// Throws the failure of the first song that `convert` fails for, if there is one.
template <class Songs, class Convert>
void FailOnCulprit(const Songs& songs, const std::string& name, bool legacy, Convert&& convert) {
  for (const auto& [number, song] : songs) {
    try {
      convert(song);
    } catch (const std::bad_alloc&) {
      throw;
    } catch (const std::exception& error) {
      const Hint& hint = HintFor(error.what());
      throw Failure(ExitCode::kBadInput, name,
                    "song " + number + ": " + error.what() + std::string(hint.explanation) + "; " +
                        std::string(legacy ? kUndamaged : hint.remedy));
    }
  }
}

}  // namespace

zuna_midi::ShowData ToCurrent(const version0::ShowData& show, const std::string& name) {
  return OnFile(name, [&] {
    try {
      return show.get_version_1_0();
    } catch (const std::exception&) {
      FailOnCulprit(show.songs, name, true, [](const version0::SongData& song) { song.get_version_1_0(); });
      throw;
    }
  });
}

version0::ShowData ToLegacy(const zuna_midi::ShowData& show, const std::string& name) {
  return OnFile(name, [&] {
    try {
      return version0::ShowData(show);
    } catch (const std::exception&) {
      FailOnCulprit(show.songs(), name, false, [](const auto& song) { version0::SongData{*song}; });
      throw;
    }
  });
}

zuna_midi::ShowData ReadAnyShow(InputFile& file) {
  if (RequireShow(file) != cmn::FileVersion{}) return ReadCurrentShow(file);
  return ToCurrent(ReadLegacyShow(file).show, file.name());
}

}  // namespace zuna_cli
