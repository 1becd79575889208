// Protocol Buffers, with a column for each field of the messages.

#include <music.pb.h>

#include <stdexcept>

#include "benchmarks/peers/peer.h"

namespace zuna_bench {

namespace {

class Protobuf : public Peer {
 public:
  void Take(const zuna_midi::ShowData& show) override { voices_ = VoicesOf(show); }

  std::vector<std::string> Write() override {
    columns::Show show;
    for (const Messages& messages : voices_) {
      columns::Voice& voice = *show.add_voices();
      voice.mutable_step()->Reserve(static_cast<int>(messages.size()));
      std::uint32_t before = 0;
      for (const auto& [time, message] : messages) {
        voice.add_step(time - before);
        before = time;
        voice.mutable_status()->push_back(static_cast<char>(message.status));
        voice.mutable_data1()->push_back(static_cast<char>(message.data1));
        voice.mutable_data2()->push_back(static_cast<char>(message.data2));
      }
    }
    return {show.SerializeAsString()};
  }

  void Read(const std::vector<std::string>& files) override {
    columns::Show show;
    if (!show.ParseFromString(files.front())) throw std::runtime_error("protobuf cannot read");
    voices_.clear();
    for (const columns::Voice& voice : show.voices()) {
      Messages& messages = voices_.emplace_back();
      messages.reserve(static_cast<std::size_t>(voice.step_size()));
      std::uint32_t time = 0;
      for (int i = 0; i < voice.step_size(); ++i) {
        const auto byte = [i](const std::string& column) {
          return static_cast<unsigned char>(column.at(static_cast<std::size_t>(i)));
        };
        time += voice.step(i);
        messages.emplace_back(
            time, std_midi::VoiceMessage(byte(voice.status()), byte(voice.data1()), byte(voice.data2())));
      }
    }
  }

  std::vector<Messages> Voices() const override { return voices_; }

 private:
  std::vector<Messages> voices_;
};

}  // namespace

std::unique_ptr<Peer> MakeProtobuf() { return std::make_unique<Protobuf>(); }

}  // namespace zuna_bench
