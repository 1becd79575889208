// Prints what it costs to keep music in the current formats, and in other ways. The options are those of
// Google Benchmark.

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <stdexcept>

#include "benchmarks/fixtures.h"
#include "benchmarks/peak_memory.h"
#include "benchmarks/peers/peer.h"
#include "benchmarks/rows.h"
#include "toolkit/midi/songs.h"
#include "toolkit/smf/file.h"

namespace zuna_bench {

namespace {

using Files = std::vector<std::string>;

struct Contender {
  const char* name;
  std::function<std::unique_ptr<Peer>()> make;
  bool takes_long_tracks = true;
};

const std::vector<Contender> kContenders{
    {"format 1.2", [] { return MakeCurrent(1, 2); }},
    {"format 2.0", [] { return MakeCurrent(2, 0); }},
    {"MIDI files, toolkit", MakeOwnMidi},
    {"MIDI files, libsmf", MakeLibsmf,
     false},  // frees a track in time that grows with the square of its events
    {"protobuf, columns", MakeProtobuf},
    {"SQLite, in memory", MakeSqlite},
};

struct Music {
  const char* name;
  bool has_long_tracks;
  std::function<zuna_midi::ShowData()> make;
};

std::vector<Contender> ContendersFor(const Music& music) {
  std::vector<Contender> some;
  for (const Contender& contender : kContenders) {
    if (contender.takes_long_tracks || !music.has_long_tracks) some.push_back(contender);
  }
  return some;
}

std::string ContentOf(const std::filesystem::path& path) {
  std::ostringstream bytes;
  bytes << std::ifstream(path, std::ios::binary).rdbuf();
  return std::move(bytes).str();
}

/// The songs that the package openttd-openmsx has as MIDI files.
zuna_midi::ShowData RealSongs() {
  zuna_midi::ShowData show;
  for (const auto& entry : std::filesystem::directory_iterator("/usr/share/games/openttd/baseset/openmsx")) {
    if (entry.path().extension() != ".mid") continue;
    const std::string bytes = ContentOf(entry.path());
    zuna_toolkit::smf::ReadNotes notes;
    zuna_toolkit::midi::Report report;
    const auto file =
        zuna_toolkit::smf::Read({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()}, notes);
    const std::string number = std::to_string(show.songs().size() + 1);
    show.AddSongData(zuna_toolkit::midi::ImportSong(file, number, entry.path().stem(), report));
  }
  if (show.songs().empty()) throw std::runtime_error("install openttd-openmsx");
  return show;
}

std::size_t BytesOf(const Files& files) {
  std::size_t bytes = 0;
  for (const std::string& file : files) bytes += file.size();
  return bytes;
}

/// The peak memory of reading, in bytes, without the files themselves. `files` are in the folder `folder`.
double PeakOfReading(const Contender& contender, const std::string& folder) {
  InAnotherProcess([&] {
    Files files;
    for (std::size_t i = 0; std::filesystem::exists(folder + std::to_string(i)); ++i) {
      files.push_back(ContentOf(folder + std::to_string(i)));
    }
    const std::unique_ptr<Peer> peer = contender.make();
    const double before = PeakMemory();
    peer->Read(files);
    std::ofstream(folder + "peak") << PeakMemory() - before;
  });
  double peak = 0;
  std::ifstream(folder + "peak") >> peak;
  return peak;
}

/// Writes the files of `music`.
void WriteFiles(const Contender& contender, const Music& music, const std::string& folder) {
  InAnotherProcess([&] {
    const zuna_midi::ShowData show = music.make();
    const std::unique_ptr<Peer> peer = contender.make();
    peer->Take(show);
    const Files files = peer->Write();
    for (std::size_t i = 0; i < files.size(); ++i) {
      std::ofstream(folder + std::to_string(i), std::ios::binary) << files[i];
    }
  });
}

/// By the names of contender and music, while nothing else is in memory.
std::map<std::string, double> PeaksOfReading(const Music& music) {
  std::map<std::string, double> peaks;
  for (const Contender& contender : ContendersFor(music)) {
    std::string folder = "/dev/shm/zuna_peersXXXXXX";
    if (mkdtemp(folder.data()) == nullptr) throw std::runtime_error("no temporary folder");
    WriteFiles(contender, music, folder + '/');
    peaks[contender.name] = PeakOfReading(contender, folder + '/');
    std::filesystem::remove_all(folder);
  }
  return peaks;
}

struct Result {
  std::string name;
  std::string write, read;  ///< the rows
  double bytes = 0;         ///< an event
  double peak = 0;          ///< in reading, bytes an event
};

std::vector<Result> AddRows(const Music& music) {
  const std::map<std::string, double> peaks = PeaksOfReading(music);
  const zuna_midi::ShowData show = music.make();
  std::size_t events = 0;
  for (const Messages& messages : VoicesOf(show)) events += messages.size();
  std::printf("%s: %zu messages\n", music.name, events);
  std::vector<Result> results;
  for (const Contender& contender : ContendersFor(music)) {
    const std::shared_ptr<Peer> peer = contender.make();
    peer->Take(show);
    const auto files = std::make_shared<const Files>(peer->Write());
    peer->Read(*files);
    if (peer->Voices() != VoicesOf(show)) {
      throw std::runtime_error(std::string(contender.name) + " reads other messages than it wrote");
    }
    const std::string of = std::string(contender.name) + ", " + music.name;
    const auto count = static_cast<double>(events);
    results.push_back({contender.name, "write " + of, "read " + of,
                       static_cast<double>(BytesOf(*files)) / count, peaks.at(contender.name) / count});
    AddRow({results.back().write, [peer] { peer->Write(); }, {}, events, 0, ""});
    AddRow({results.back().read, [peer, files] { peer->Read(*files); }, {}, events, 0, ""});
  }
  return results;
}

void Print(const std::vector<Result>& results, const std::map<std::string, double>& medians) {
  const Result& first = results.front();
  if (!medians.contains(first.write) || !medians.contains(first.read)) return;  // filtered out
  for (const Result& result : results) {
    if (!medians.contains(result.write) || !medians.contains(result.read)) continue;
    std::printf("| %-20s | %9.2f ms | %6.1f | %9.2f ms | %6.1f | %5.2f | %5.1f |\n", result.name.c_str(),
                medians.at(result.write) * 1e3, medians.at(result.write) / medians.at(first.write),
                medians.at(result.read) * 1e3, medians.at(result.read) / medians.at(first.read), result.bytes,
                result.peak);
  }
}

int Run(int argc, char** argv) {
  const std::vector<Music> all{
      {"5 million events", true, [] { return LegacyShow(kLargeShow.count).get_version_1_0(); }},
      {"31 songs", false, RealSongs},
  };
  std::vector<std::vector<Result>> results;
  for (const Music& music : all) results.push_back(AddRows(music));
  const std::map<std::string, double> medians = TimeRows(argc, argv);
  for (std::size_t i = 0; i < all.size(); ++i) {
    std::printf(
        "\n%s: write and its ratio to 1.2, read and its ratio, bytes an event, peak bytes an event in "
        "reading\n",
        all[i].name);
    Print(results[i], medians);
  }
  return 0;
}

}  // namespace

}  // namespace zuna_bench

int main(int argc, char** argv) {
  try {
    return zuna_bench::Run(argc, argv);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}
