// Standard MIDI Files by libsmf. It writes to paths only: the files are in memory, in /dev/shm.

// clang-format off
#include <glib.h>  // first: smf.h includes it as if it were of C alone
#include <smf.h>
// clang-format on
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "benchmarks/peers/peer.h"
#include "toolkit/smf/file.h"

namespace zuna_bench {

namespace {

using Song = std::unique_ptr<smf_t, decltype(&smf_delete)>;

void AddTrack(smf_t* song, const Messages& messages) {
  smf_track_t* track = smf_track_new();
  smf_add_track(song, track);
  for (const auto& [time, message] : messages) {
    const bool has_second = zuna_toolkit::smf::DataBytes(message.status) == 2;
    smf_event_t* event =
        smf_event_new_from_bytes(message.status, message.data1, has_second ? message.data2 : -1);
    smf_track_add_event_pulses(track, event, static_cast<int>(time));
  }
}

Messages MessagesOf(smf_track_t* track) {
  Messages messages;
  for (int number = 1; number <= track->number_of_events; ++number) {
    const smf_event_t* event = smf_track_get_event_by_number(track, number);
    if (smf_event_is_metadata(event) != 0) continue;
    const unsigned char* bytes = event->midi_buffer;
    messages.emplace_back(
        event->time_pulses,
        std_midi::VoiceMessage(bytes[0], bytes[1], event->midi_buffer_length == 3 ? bytes[2] : 0));
  }
  return messages;
}

class Libsmf : public Peer {
 public:
  Libsmf() {
    std::string path = "/dev/shm/zuna_peerXXXXXX";
    const int file = mkstemp(path.data());
    if (file < 0) throw std::runtime_error("no temporary file");
    close(file);
    path_ = path;
  }
  ~Libsmf() override { std::filesystem::remove(path_); }

  void Take(const zuna_midi::ShowData& show) override {
    songs_.clear();
    for (const auto& [number, song] : show.songs()) {
      songs_.emplace_back(smf_new(), smf_delete);
      if (smf_set_ppqn(songs_.back().get(), song->division) != 0)
        throw std::runtime_error("libsmf: division");
      for (const auto& [track, voice] : song->voice_data->tracks()) {
        AddTrack(songs_.back().get(), voice->messages);
      }
    }
  }

  std::vector<std::string> Write() override {
    std::vector<std::string> files;
    for (const Song& song : songs_) {
      if (smf_save(song.get(), path_.c_str()) != 0) throw std::runtime_error("libsmf cannot write");
      std::ostringstream bytes;
      bytes << std::ifstream(path_, std::ios::binary).rdbuf();
      files.push_back(std::move(bytes).str());
    }
    return files;
  }

  void Read(const std::vector<std::string>& files) override {
    songs_.clear();
    for (const std::string& file : files) {
      songs_.emplace_back(smf_load_from_memory(file.data(), static_cast<int>(file.size())), smf_delete);
      if (songs_.back() == nullptr) throw std::runtime_error("libsmf cannot read");
    }
  }

  std::vector<Messages> Voices() const override {
    std::vector<Messages> voices;
    for (const Song& song : songs_) {
      for (int number = 1; number <= song->number_of_tracks; ++number) {
        voices.push_back(MessagesOf(smf_get_track_by_number(song.get(), number)));
      }
    }
    return voices;
  }

 private:
  std::vector<Song> songs_;
  std::string path_;
};

}  // namespace

std::unique_ptr<Peer> MakeLibsmf() { return std::make_unique<Libsmf>(); }

}  // namespace zuna_bench
