// Finds the companion of a legacy file.
#include "cli/batch/companions.h"

#include <algorithm>
#include <filesystem>
#include <new>

#include "cli/batch/missing_companion.h"
#include "cli/shared/document_text.h"
#include "cli/shared/input.h"
#include "cli/terminal/standard_streams.h"
#include "kit/path.h"
#include "toolkit/words.h"
#include "zuna_sec/digest.h"

namespace zuna_cli {

namespace {

using zuna_toolkit::CompanionFit;
using zuna_toolkit::Document;
using zuna_toolkit::Input;

/// Whether both are spellings of one path.
bool IsSamePath(const std::string& one, const std::string& other) {
  std::error_code error;
  const std::filesystem::path first = std::filesystem::absolute(one, error);
  const std::filesystem::path second = std::filesystem::absolute(other, error);
  return first.lexically_normal() == second.lexically_normal();
}

/// Where the companion of `input` may be: the places in the order in which they are looked at.
std::vector<std::string> PlacesOf(const Input& input, const CompanionOptions& options) {
  if (options.file) return {*options.file};
  std::vector<std::string> places;
  const auto add = [&](const std::string& path) {
    const auto place = zuna_toolkit::OtherKindPath(path);
    if (place && (places.empty() || !IsSamePath(places.back(), *place))) places.push_back(*place);
  };
  if (!options.folder.empty()) add(kit::path::Join(options.folder, input.relative));
  add(input.path);
  return places;
}

bool IsFile(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::is_regular_file(path, ignored);
}

/// Where the companion of an input is or has to be.
struct CompanionPlace {
  std::string path;
  bool is_there;  ///< or was named
};

std::optional<CompanionPlace> CompanionPlaceOf(const Input& input, const CompanionOptions& options) {
  const std::vector<std::string> places = PlacesOf(input, options);
  if (places.empty()) return std::nullopt;
  const auto found = std::find_if(places.begin(), places.end(), IsFile);
  const bool is_found = found != places.end();
  return CompanionPlace{is_found ? *found : places.front(), is_found || options.file};
}

constexpr const char* kDivisionOption = " --division ";
constexpr const char* kShowNameOption = " --show-name ";

std::string DivisionText(std::uint16_t division) { return kDivisionOption + std::to_string(division); }

/// What an option tells in place of the companion; nothing where none does.
std::optional<FoundCompanion> StandIn(const Document& document, const CompanionOptions& options) {
  FoundCompanion found;
  if (document.type().is_log()) {
    if (!options.division) return std::nullopt;
    found.companion.division = *options.division;
    found.options = DivisionText(*options.division);
  } else {
    if (!options.show_name) return std::nullopt;
    found.companion.show_name = *options.show_name;
    found.options = kShowNameOption + *options.show_name;
  }
  return found;
}

std::string OtherSongText(const CompanionFit::OtherSong& song, const std::string& companion) {
  const std::string begin = "song " + zuna_toolkit::NumberText(song.number) + " has ";
  if (song.name != song.companion_name) {
    return begin + "another name in " + companion + ": \"" + song.name + "\", there \"" +
           song.companion_name + '"';
  }
  return begin + "another length in " + companion + ": " + std::to_string(song.length) + " ticks, there " +
         std::to_string(song.companion_length);
}

/// `division` is that of the songs that the companion lacks; without one, they are a loss.
std::vector<std::string> NotesOf(const CompanionFit& fit, const std::string& companion, bool is_log,
                                 std::uint16_t division) {
  std::vector<std::string> notes;
  if (is_log && !fit.unknown_songs.empty()) {  // A log need not have all songs of its show.
    const char* are = fit.unknown_songs.size() == 1 ? " is not in " : " are not in ";
    const std::string given = division == 0 ? "" : "; the division is " + std::to_string(division);
    notes.push_back(SongsText(fit.unknown_songs) + are + companion + given);
  }
  for (const CompanionFit::OtherSong& song : fit.other_songs) notes.push_back(OtherSongText(song, companion));
  return notes;
}

/// The failure of a companion, with a message about the input called `input`. Its parts are those of the
/// companion.
Failure AboutCompanion(const Failure& failure, const std::string& input) {
  return {failure.code(), failure.parts(), input + ": companion " + failure.what()};
}

/// `bytes` are those of the file at `path`.
zuna_toolkit::Companion CompanionIn(const std::vector<std::uint8_t>& bytes, const std::string& path,
                                    cmn::FileKind kind, const Keys& keys) {
  return ReadEncryptedOrPlain(bytes, InputName(path), keys, [kind](zuna_toolkit::OpenedFile& file) {
    return zuna_toolkit::ReadCompanion(file, kind);
  });
}

FoundCompanion ReadAndCheck(const Document& document, const std::string& path,
                            const CompanionOptions& options, const Keys& keys) {
  const std::vector<std::uint8_t> bytes = ReadInput(path, zuna_toolkit::kMaxFileSize);
  FoundCompanion found{
      CompanionIn(bytes, path, document.type().kind, keys), path, zuna_sec::Sha256Text(bytes), {}, {}};
  found.companion.division = options.division.value_or(0);
  const CompanionFit fit = zuna_toolkit::FitOf(document, found.companion);
  if (!fit.belongs && !options.any) {
    const bool is_empty = found.companion.songs.empty();
    throw Failure(ErrorCode::kUnrelatedCompanion, found.companion.name,
                  is_empty ? "has no songs" : "belongs to another show: no song agrees in number and name",
                  "give the right file, or --any-companion to take this one");
  }
  const bool is_log = document.type().is_log();
  found.notes = NotesOf(fit, found.companion.name, is_log, found.companion.division);
  if (!fit.belongs) found.options = " --any-companion";
  if (is_log && !fit.unknown_songs.empty() && options.division) {
    found.options += DivisionText(*options.division);
  }
  return found;
}

}  // namespace

void AddCompanions(CLI::App& command, CompanionOptions& options) {
  command
      .add_option(
          "--companion", options.file,
          "The other file of one legacy input, of any version, encrypted or plain: the log of a show, "
          "which has the show's name, or the show of a log, which has the songs' divisions. Unless "
          "given, the file of the same stem beside the input: .logdata for .showdata and the reverse")
      ->type_name("FILE");
  command
      .add_option("--companions", options.folder,
                  "Look for companions below DIR first, and then beside the inputs")
      ->type_name("DIR");
  command.add_flag("--any-companion", options.any, "Take a companion that shares no song with the input");
  command
      .add_option("--show-name", options.show_name,
                  "The name of legacy shows whose logs are lost, or of the one show")
      ->type_name("NAME");
  command
      .add_option(
          "--division", options.division,
          "The division of all songs of legacy logs whose shows are lost, or of the one log, and of songs "
          "that a show lacks")
      ->type_name("TICKS");
}

std::optional<std::string> CompanionPath(const Input& input, const CompanionOptions& options) {
  const std::optional<CompanionPlace> place = CompanionPlaceOf(input, options);
  return place ? std::optional(place->path) : std::nullopt;
}

FoundCompanion FindCompanion(const Document& document, const Input& input, const CompanionOptions& options,
                             const Keys& keys) {
  const std::optional<CompanionPlace> place = CompanionPlaceOf(input, options);
  const bool is_there = place && place->is_there;
  if (options.for_one || !is_there) {
    if (auto stand_in = StandIn(document, options)) return std::move(*stand_in);
  }
  if (!is_there) throw MissingCompanion(document, PlacesOf(input, options), options.folder);
  try {
    return ReadAndCheck(document, place->path, options, keys);
  } catch (const std::bad_alloc&) {
    throw;
  } catch (...) {
    throw AboutCompanion(CurrentFailure(), document.name());
  }
}

bool HasStandIn(const std::string& options) {
  return options.find(kDivisionOption) != std::string::npos ||
         options.find(kShowNameOption) != std::string::npos;
}

Restoration RestorationOf(const Document& document, const Input& input, const Keys& keys) {
  const std::optional<std::string> path = CompanionPath(input, {});
  if (!path) return {true, ""};
  if (!IsFile(*path)) return {false, SimilarNote(document, *path)};
  try {
    const std::vector<std::uint8_t> bytes = ReadInput(*path, zuna_toolkit::kMaxFileSize);
    return {zuna_toolkit::FitOf(document, CompanionIn(bytes, *path, document.type().kind, keys)).restores,
            ""};
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception&) {
    return {};
  }
}

}  // namespace zuna_cli
