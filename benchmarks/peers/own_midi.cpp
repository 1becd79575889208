// Standard MIDI Files by the toolkit: a file for each song, a track for each voice.

#include "benchmarks/peers/peer.h"
#include "toolkit/smf/file.h"

namespace zuna_bench {

namespace {

namespace smf = zuna_toolkit::smf;

class OwnMidi : public Peer {
 public:
  void Take(const zuna_midi::ShowData& show) override {
    files_.clear();
    for (const auto& [number, song] : show.songs()) {
      smf::File& file = files_.emplace_back();
      file.division = song->division;
      for (const auto& [track, voice] : song->voice_data->tracks()) {
        const std::uint32_t end = voice->messages.empty() ? 0 : voice->messages.back().first;
        file.tracks.push_back({voice->messages, {}, end, 0});
      }
    }
  }

  std::vector<std::string> Write() override {
    std::vector<std::string> files;
    for (const smf::File& file : files_) files.push_back(smf::Write(file));
    return files;
  }

  void Read(const std::vector<std::string>& files) override {
    files_.clear();
    for (const std::string& file : files) {
      smf::ReadNotes notes;
      files_.push_back(smf::Read({reinterpret_cast<const std::uint8_t*>(file.data()), file.size()}, notes));
    }
  }

  std::vector<Messages> Voices() const override {
    std::vector<Messages> voices;
    for (const smf::File& file : files_) {
      for (const smf::Track& track : file.tracks) voices.push_back(track.messages);
    }
    return voices;
  }

 private:
  std::vector<smf::File> files_;
};

}  // namespace

std::unique_ptr<Peer> MakeOwnMidi() { return std::make_unique<OwnMidi>(); }

}  // namespace zuna_bench
