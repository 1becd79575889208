// The current formats themselves.

#include <sstream>

#include "benchmarks/peers/peer.h"
#include "cmn/file_version.h"

namespace zuna_bench {

namespace {

class Current : public Peer {
 public:
  explicit Current(const cmn::FileVersion& version) : version_(version) {}

  void Take(const zuna_midi::ShowData& show) override { show_ = show; }

  std::vector<std::string> Write() override {
    std::ostringstream os;
    show_.WriteBinary(os, version_);
    return {std::move(os).str()};
  }

  void Read(const std::vector<std::string>& files) override {
    std::istringstream is(files.front());
    show_ = zuna_midi::ShowData(is);
  }

  std::vector<Messages> Voices() const override { return VoicesOf(show_); }

 private:
  cmn::FileVersion version_;
  zuna_midi::ShowData show_;
};

}  // namespace

std::vector<Messages> VoicesOf(const zuna_midi::ShowData& show) {
  std::vector<Messages> voices;
  for (const auto& [number, song] : show.songs()) {
    for (const auto& [track, voice] : song->voice_data->tracks()) voices.push_back(voice->messages);
  }
  return voices;
}

std::unique_ptr<Peer> MakeCurrent(std::uint8_t major, std::uint8_t minor) {
  return std::make_unique<Current>(cmn::FileVersion{major, minor});
}

}  // namespace zuna_bench
