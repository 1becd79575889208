// Legacy shows.

#include <sstream>

#include "format_converter/version0/containers/show_data.h"
#include "fuzz/seeds/seeds.h"

namespace {

using version0::ShowData;
using version0::SongData;

SongData Song(const std::string& number) {
  SongData song;
  song.song_number = song.timeline.name = number;
  song.song_name = "Tune";
  song.division = 480;
  song.song_length = song.timeline.song_length = 1920;
  song.timeline.tempos = {{0, static_cast<float>(0.5 / 480), 8, 8, 120}, {960, 0.001F, 12, 8, 83}};
  song.timeline.bars_beats = {{0, "1", 0}};
  song.timeline.keys = {{0, -1, 1}};
  song.timeline.page_nums = {{0, 1}};
  song.timeline.meters = {{0, 4, 4}, {1440, 3, 4}};
  song.tracks = {{1, "Piano"}, {9, "Drum Kit"}};
  song.events = {{1, {{0, 0, 0x90, 60, 100, 1}, {480, 480, 0x80, 60, 64, 1}}},
                 {9, {{0, 0, 0x90, 36, 100, 9}}}};
  return song;
}

ShowData Show(const SongData& song) {
  ShowData show;
  show.songs[song.song_number] = song;
  return show;
}

std::vector<std::uint8_t> Bytes(const ShowData& show) {
  std::ostringstream os;
  show.write_binary(os);
  const std::string text = os.str();
  return {text.begin(), text.end()};
}

template <typename Change>
std::vector<std::uint8_t> With(Change change) {
  SongData song = Song("1");
  change(song);
  return Bytes(Show(song));
}

}  // namespace

void fuzz::WriteSeeds(const SeedFolder& folder) {
  const std::vector<std::uint8_t> good = Bytes(Show(Song("1")));
  ShowData two = Show(Song("1"));
  two.songs["10a"] = Song("10a");

  folder.Write("good-no-songs", {0});
  folder.Write("good-one-song", good);
  folder.Write("good-two-songs", Bytes(two));
  folder.Write("good-tracks-sharing-an-id",
               With([](SongData& song) { song.tracks.emplace_back(9, "Drums"); }));
  folder.Write("good-meter-without-tempo", With([](SongData& song) { song.timeline.tempos.pop_back(); }));
  folder.Write("bad-no-meters", With([](SongData& song) { song.timeline.meters.clear(); }));
  folder.Write("bad-event-without-track", With([](SongData& song) { song.tracks.pop_back(); }));
  folder.Write("bad-cut-in-the-events", {good.begin(), good.begin() + 60});
  folder.Write("bad-cut-in-the-timeline", {good.begin(), good.end() - 5});
  folder.Write("bad-nothing", {});
}
