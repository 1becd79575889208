// The structure of legacy songs, for programs that go over their bytes (docs/format-0.md).
#pragma once

#include <cstddef>
#include <cstdint>

namespace zuna_toolkit {

/// Goes over the bytes of a legacy song as its reader does. A Derived class goes over the fields:
///   position()                in the file, modulo 2^32
///   Number(key, size)         a number of so many bytes, which it returns
///   Skip(key, size), Text(key)  a number or a text that the structure does not depend on
///   Track(index), Events(count)  a track, all events
///   BeginTimeline(), EndTimeline()  around a timeline; BeginTimeline() goes over its magic
///   BeginSequences()          before the sequences of a song
///   BeginSequence()           an event code, which it returns
///   Record(code, index)       a record of the sequence
///   EndSequence(code, length)  after the last one
template <typename Derived>
class LegacyWalk {
 public:
  void PassSong() {
    self().Skip("recordLength", 4);
    self().Text("songNumber");
    self().Text("songName");
    self().Skip("division", 2);
    self().Skip("songLength", 4);
    const std::uint32_t tracks = self().Number("tracks", 1);
    for (std::uint32_t i = 0; i < tracks; ++i) self().Track(i);
    self().Events(self().Number("events", 4));
    PassTimeline();
  }

  void PassSongLog() {
    const std::uint32_t length = self().Number("recordLength", 4);
    self().Text("songNumber");
    self().Text("songName");
    self().Skip("songLength", 4);
    const std::uint32_t begin = self().position();
    self().BeginSequences();
    do {
      PassSequence();
    } while (self().position() - begin < length);
  }

 private:
  Derived& self() { return static_cast<Derived&>(*this); }

  void PassTimeline() {
    self().BeginTimeline();
    self().Text("name");
    self().Skip("songLength", 4);
    const std::uint32_t length = self().Number("bodyLength", 4);
    const std::uint32_t end = self().position() + length;
    self().BeginSequences();
    do {
      PassSequence();
    } while (self().position() < end);
    self().EndTimeline();
  }

  void PassSequence() {
    const std::uint8_t code = self().BeginSequence();
    const std::uint32_t length = self().Number("bodyLength", 4);
    if (length != 0) PassRecords(code, self().position() + length);
    self().EndSequence(code, length);
  }

  void PassRecords(std::uint8_t code, std::uint32_t end) {
    std::size_t index = 0;
    do {
      self().Record(code, index++);
    } while (self().position() < end);
  }
};

}  // namespace zuna_toolkit
