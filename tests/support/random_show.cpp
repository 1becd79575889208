// Random current shows.

#include "tests/support/random_show.h"

#include <array>
#include <memory>
#include <string>

namespace zuna_test {

namespace {

/// A number from 0 to `max`. The distributions of the standard library differ between implementations.
std::uint32_t Below(std::mt19937& random, std::uint32_t max) {
  const auto bits = static_cast<std::uint32_t>(random());
  return max == 0xFFFFFFFF ? bits : bits % (max + 1);
}

class Maker {
 public:
  Maker(std::mt19937& random, const ShowOptions& options) : random_(random), options_(options) {}

  zuna_midi::ShowData Show() {
    zuna_midi::ShowData show;
    show.show_name = Text();
    const std::uint32_t songs = Below(random_, options_.max_songs);
    for (std::uint32_t i = 1; i <= songs; ++i) show.AddSongData(Song(i));
    return show;
  }

 private:
  bool wild() const { return options_.wild; }

  template <typename T>
  T Number(T tame_max) {
    constexpr auto kAll = static_cast<std::uint32_t>(static_cast<std::make_unsigned_t<T>>(-1));
    return static_cast<T>(RandomNumber(random_, wild() ? kAll : static_cast<std::uint32_t>(tame_max)));
  }

  std::string Text() {
    static constexpr std::array<const char*, 7> kPieces = {"a", "Piano", " ", "\"\\\n", "é", "𝄞", "7"};
    std::string text;
    for (std::uint32_t left = Below(random_, wild() ? 20 : 5); left != 0; --left) {
      if (wild() && Below(random_, 2) != 0) {
        text += static_cast<char>(Below(random_, 255));
      } else {
        text += kPieces[Below(random_, kPieces.size() - 1)];
      }
    }
    return text;
  }

  /// The time of the entry after one at `before`.
  std::uint32_t NextTime(std::uint32_t before) {
    return wild() ? RandomNumber(random_, 0xFFFFFFFF) : before + RandomNumber(random_, 960);
  }

  /// Fills a list; a tame one begins at time 0.
  template <typename Entry, typename Fill>
  void Entries(std::vector<Entry>& list, Fill fill) {
    const std::uint32_t count = Below(random_, options_.max_entries);
    std::uint32_t time = 0;
    for (std::uint32_t i = 0; i < (wild() ? count : count + 1); ++i) {
      if (i != 0 || wild()) time = NextTime(time);
      list.emplace_back();
      list.back().time = time;
      fill(list.back());
    }
  }

  std::shared_ptr<TL::Timeline> Timeline() {
    auto timeline = std::make_shared<TL::Timeline>();
    Entries(timeline->tempos, [&](TL::Tempo& e) {
      e.microseconds = wild() ? Number<std::uint32_t>(0) : 1 + RandomNumber(random_, 2000000);
    });
    Entries(timeline->bars_beats, [&](TL::BarsBeats& e) {
      e.bar_number(Text());
      e.tag = Number<std::uint8_t>(3);
    });
    Entries(timeline->keys, [&](TL::Key& e) {
      e.key = wild() ? Number<std::int16_t>(0) : static_cast<std::int16_t>(Below(random_, 14) - 7U);
      e.mode = Number<std::uint16_t>(1);
    });
    Entries(timeline->page_numbers, [&](TL::PageNumber& e) { e.page = Number<std::uint32_t>(300); });
    Entries(timeline->meters, [&](TL::Meter& e) {
      e.numerator = wild() ? Number<std::uint8_t>(0) : static_cast<std::uint8_t>(1 + Below(random_, 11));
      e.denominator = wild() ? Number<std::uint8_t>(0) : static_cast<std::uint8_t>(1U << Below(random_, 4));
      e.clocks_per_click = wild() ? Number<std::uint8_t>(0) : std::uint8_t{24};
      e.notated_32_per_quarter = wild() ? Number<std::uint8_t>(0) : std::uint8_t{8};
    });
    return timeline;
  }

  std_midi::VoiceMessage Message(std::uint8_t status_before) {
    const bool running = Below(random_, 1) != 0;
    const std::uint32_t status = wild() ? Below(random_, 255) : 0x80 + Below(random_, 0x6F);
    const std::uint32_t max = wild() ? 255 : 127;
    return {running ? status_before : static_cast<std::uint8_t>(status),
            static_cast<std::uint8_t>(Below(random_, max)), static_cast<std::uint8_t>(Below(random_, max))};
  }

  std::shared_ptr<zuna_midi::VoiceTrack> Track(std::uint16_t number) {
    auto track = std::make_shared<zuna_midi::VoiceTrack>();
    track->track_number = number;
    track->name = Text();
    if (wild()) track->reserved = Number<std::uint16_t>(0);
    std::uint32_t time = 0;
    std_midi::VoiceMessage message(0x90, 0, 0);
    for (std::uint32_t left = Below(random_, options_.max_messages); left != 0; --left) {
      time = NextTime(time);
      message = Message(message.status);
      track->messages.emplace_back(time, message);
    }
    return track;
  }

  std::shared_ptr<zuna_midi::SongData> Song(std::uint32_t place) {
    const std::string number = std::to_string(place) + (wild() ? Text() : "");
    const auto division = wild() ? Number<std::uint16_t>(0) : std::uint16_t{480};
    const std::uint32_t length = wild() ? Number<std::uint32_t>(0) : 1 + RandomNumber(random_, 100000);
    auto song = std::make_shared<zuna_midi::SongData>(number, Text(), division, length);
    song->SetTimeline(Timeline());
    const std::uint32_t voices = Below(random_, options_.max_voices);
    for (std::uint32_t i = 0; i < voices; ++i) {
      song->voice_data->AddTrack(Track(wild() ? Number<std::uint16_t>(0) : static_cast<std::uint16_t>(i)));
    }
    return song;
  }

  std::mt19937& random_;
  const ShowOptions& options_;
};

}  // namespace

std::uint32_t RandomNumber(std::mt19937& random, std::uint32_t max) {
  switch (Below(random, 9)) {
    case 0:
      return 0;
    case 1:
      return max;
    case 2:
      return Below(random, max < 300 ? max : 300);
    default:
      return Below(random, max);
  }
}

zuna_midi::ShowData RandomShow(std::mt19937& random, const ShowOptions& options) {
  return Maker(random, options).Show();
}

}  // namespace zuna_test
