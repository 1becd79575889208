// Legacy logs.

#include <limits>
#include <sstream>

#include "format_converter/version0/containers/change_log.h"
#include "fuzz/seeds/seeds.h"

namespace {

using version0::ChangeLogV0;
using version0::SongLogV0;
using Data = std::vector<std::uint8_t>;

SongLogV0 SongLog(const std::string& number) {
  SongLogV0 log;
  log.songNumber_ = number;
  log.songName_ = "Tune";
  log.songLength_ = 7680;
  log.cuts = {{0, 480, -1}};
  log.vamps = {{480, 960, 2}, {960, 1440, 3}};
  log.repeats = {{0, 1920, 4}};
  log.clicks = {{1, 2, 127}};
  log.tempo_scales = {{0, 7680, 1.5F}};
  log.transposes = {{0, 480, -12}};
  log.caesuras = {version0::XCaesura(960)};
  log.score_markers = {{16, "A"}};
  return log;
}

template <typename Change>
Data With(Change change) {
  ChangeLogV0 log;
  log.log_label = "First night";
  log.show_name = "Opera";
  log.log_tag_pair = {1, 2};
  log.songs["1"] = SongLog("1");
  change(log);
  std::ostringstream os;
  log.write_binary(os);
  const std::string text = os.str();
  return {text.begin(), text.end()};
}

Data WithByte(std::size_t from_end, std::uint8_t byte) {
  Data data = With([](ChangeLogV0&) {});
  data[data.size() - from_end] = byte;
  return data;
}

}  // namespace

void fuzz::WriteSeeds(const SeedFolder& folder) {
  const Data good = With([](ChangeLogV0&) {});
  constexpr std::size_t kMarkers = 5 + 6;  // the last sequence: its code and length, its record

  folder.Write("good-one-song", good);
  folder.Write("good-two-songs", With([](ChangeLogV0& log) { log.songs["10a"] = SongLog("10a"); }));
  folder.Write("good-no-edits", With([](ChangeLogV0& log) { log.songs["1"] = SongLogV0(); }));
  folder.Write("good-scale-is-no-number", With([](ChangeLogV0& log) {
                 log.songs["1"].tempo_scales[0].value = std::numeric_limits<float>::quiet_NaN();
               }));
  folder.Write("bad-no-songs", With([](ChangeLogV0& log) { log.songs.clear(); }));
  folder.Write("bad-unknown-sequence", WithByte(kMarkers, 'F'));
  folder.Write("bad-record-of-another-sequence", WithByte(kMarkers + 7, 'E'));
  folder.Write("bad-cut-in-the-header", {good.begin(), good.begin() + 20});
  folder.Write("bad-cut-in-the-events", {good.begin(), good.end() - 20});
  folder.Write("bad-nothing", {});
}
