// Folders of small shows, brought up by the tool: against the library alone, and against a process for each
// show.

#include "benchmarks/folder_rows.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <vector>

#include "benchmarks/fixtures.h"
#include "benchmarks/rows.h"
#include "kit/file.h"
#include "kit/format.h"
#include "kit/hex.h"
#include "zuna_midi/show_data.h"
#include "zuna_sec/cipher_stream.h"

extern char** environ;  // NOLINT(readability-redundant-declaration): POSIX has it in no header

namespace zuna_bench {

namespace {

constexpr std::size_t kFiles = 2000;
constexpr std::size_t kProcesses = 250;  // a process for each of 2,000 shows takes too long
constexpr std::size_t kFewSongs = 3;
constexpr std::size_t kFewVoices = 3;
constexpr std::size_t kEvents = 7680;  // of the larger show of which each small one is a part: 5 KB are left

std::string Root() {
  constexpr const char* kInMemory = "/dev/shm";
  const bool is_told = std::getenv("TMPDIR") != nullptr || !std::filesystem::is_directory(kInMemory);
  std::string root = (is_told ? std::filesystem::temp_directory_path() : std::filesystem::path(kInMemory)) /
                     "zuna_folderXXXXXX";
  if (mkdtemp(root.data()) == nullptr) throw std::filesystem::filesystem_error("mkdtemp", root, {});
  return root;
}

/// A show as most are: a few songs, and the notes take most of its 5 KB.
std::string SmallPlaintext() {
  version0::ShowData large = LegacyShow(kEvents);
  version0::ShowData show;
  for (std::size_t number = 1; number <= kFewSongs; ++number) {
    version0::SongData& song = show.songs[std::to_string(number)] =
        std::move(large.songs[std::to_string(number)]);
    for (std::size_t track = kFewVoices; track < song.tracks.size(); ++track) {
      song.events.erase(song.tracks[track].track_id);
    }
    song.tracks.erase(song.tracks.begin() + kFewVoices, song.tracks.end());
  }
  return PlaintextOf(show);
}

/// The names of the first shows.
std::vector<std::string> Names(std::size_t count) {
  std::vector<std::string> names;
  for (std::size_t i = 0; i < count; ++i) names.push_back(kit::format("/%zu.showdata", i));
  return names;
}

/// Runs a program, without its standard output.
void RunProgram(std::vector<std::string> words) {
  std::vector<char*> pointers;
  pointers.reserve(words.size() + 1);
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  posix_spawn_file_actions_t actions{};
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  pid_t child = 0;
  int status = -1;
  if (posix_spawnp(&child, pointers.front(), &actions, nullptr, pointers.data(), environ) == 0) {
    waitpid(child, &status, 0);
  }
  posix_spawn_file_actions_destroy(&actions);
  if (status != 0) std::printf("a measurement failed\n");
}

/// Runs the tool, which prints nothing that is not an error.
void RunTool(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), ZUNA_CONVERT);
  arguments.emplace_back("--quiet");
  RunProgram(std::move(arguments));
}

/// What the tool does at least: reads, decrypts, encrypts, and writes with flushing, file after file.
void ReadAndWrite(const Folders& folders, const std::string& plaintext) {
  for (const std::string& name : Names(kFiles)) {
    const zuna_sec::TwoFishCipherStream opened(folders.in() + name, kKey.key, kKey.iv);
    zuna_sec::TwoFishCipherStream output(std::string(), kKey.key, kKey.iv);
    output.GetStream().write(plaintext.data(), static_cast<std::streamsize>(plaintext.size()));
    kit::WriteFileAtomically(folders.out() + name, output.GetEncryptedBytes());
  }
}

/// The plaintext of a show of a folder, in the current version.
std::string CurrentPlaintext(const std::vector<std::uint8_t>& legacy) {
  zuna_sec::TwoFishCipherStream input(legacy, kKey.key, kKey.iv);
  std::ostringstream plaintext;
  version0::ShowData(input.GetStream()).get_version_1_0().WriteBinary(plaintext, {1, 2});
  return plaintext.str();
}

}  // namespace

Folders::Folders() : root_(Root()) {
  const auto show = Encrypted(SmallPlaintext());
  std::filesystem::create_directory(in());
  for (const std::string& name : Names(kFiles)) kit::WriteFileAtomically(in() + name, show);
  std::ofstream(key()) << "key = " << kit::EncodeHex(kKey.key) << "\niv = " << kit::EncodeHex(kKey.iv)
                       << '\n';
  chmod(key().c_str(), kit::kOwnerOnly);
}

Folders::~Folders() { std::filesystem::remove_all(root_); }

void AddFolderRows(const Folders& folders) {
  const auto begin_anew = [&folders] {
    std::filesystem::remove_all(folders.out());
    std::filesystem::create_directory(folders.out());
  };
  const std::vector<std::string> options = {"--show-name", "X",         "--key-file",
                                            folders.key(), "--out-dir", folders.out()};
  const auto up = [options](std::vector<std::string> inputs, const std::string& workers) {
    inputs.insert(inputs.begin(), "up");
    inputs.insert(inputs.end(), options.begin(), options.end());
    inputs.insert(inputs.end(), {"-j", workers});
    RunTool(std::move(inputs));
  };
  std::vector<std::string> some;
  for (const std::string& name : Names(kProcesses)) some.push_back(folders.in() + name);
  const std::string plaintext = CurrentPlaintext(Encrypted(SmallPlaintext()));
  AddRow({"up, 2000 shows of 5 KB, one worker", [=, &folders] { up({folders.in()}, "1"); },
          [=, &folders] { ReadAndWrite(folders, plaintext); }, 0, 0,
          "limit the library's reading and writing; aim 1.5", kFiles, begin_anew});
  AddRow({"start of the tool",
          [] {
            RunTool({"explain", "show-empty"});
          },
          [] { RunProgram({"true"}); }, 0, 0, "limit true; aim 3 ms more"});
  AddRow({"up, 250 shows of 5 KB in one process", [=] { up(some, "2"); },
          [=] {
            for (const std::string& input : some) up({input}, "1");
          },
          0, 0, "limit a process each; aim 0.125", kProcesses, begin_anew});
}

}  // namespace zuna_bench
