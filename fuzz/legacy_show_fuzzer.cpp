// The input: the plaintext of a legacy show.

#include <algorithm>
#include <exception>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "format_converter/version0/containers/show_data.h"
#include "fuzz/cost.h"
#include "fuzz/target.h"
#include "zuna_midi/show_data.h"

namespace {

using version0::ShowData;

std::string Written(const ShowData& show) {
  std::ostringstream os;
  show.write_binary(os);
  return os.str();
}

ShowData Read(const std::string& bytes) {
  std::istringstream is(bytes);
  return fuzz::Bounded("reading a show", bytes.size(), [&] { return ShowData(is); });
}

/// What can be written reads back as what writes the same bytes.
void WriteAndRead(const ShowData& show) {
  std::string bytes;
  try {
    bytes = Written(show);
  } catch (const std::out_of_range&) {
    return;  // a song without events
  }
  fuzz::Require(Written(Read(bytes)) == bytes, "a written show reads back");
}

/// The form that a show of `size` bytes has once it went up and came down.
std::string UpAndDown(const ShowData& show, std::size_t size) {
  try {
    const auto up = fuzz::Bounded("conversion up", size, [&] { return show.get_version_1_0(); });
    return Written(fuzz::Bounded("conversion down", size, [&] { return ShowData(up); }));
  } catch (const std::exception&) {
    return {};  // a timeline without meters, an event without a track and the like
  }
}

/// Whether every record stands later than the one before it.
template <typename Record>
bool InOrder(const std::vector<Record>& records) {
  const auto not_later = [](const Record& a, const Record& b) { return a.time >= b.time; };
  return std::adjacent_find(records.begin(), records.end(), not_later) == records.end();
}

/// Which tempos stand under which meter is a matter of their order, and only an ordered timeline keeps it.
bool TimelinesInOrder(const ShowData& show) {
  return std::all_of(show.songs.begin(), show.songs.end(), [](const auto& song) {
    return InOrder(song.second.timeline.tempos) && InOrder(song.second.timeline.meters);
  });
}

/// What came down reads back, and can go up and come down again.
void ConvertTwice(const ShowData& show, std::size_t size) {
  const std::string converted = UpAndDown(show, size);
  if (converted.empty()) return;
  fuzz::Require(Written(Read(converted)) == converted, "a converted show reads back");
  if (!TimelinesInOrder(show)) return;
  fuzz::Require(!UpAndDown(Read(converted), converted.size()).empty(), "a converted show converts again");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  try {
    const ShowData show = Read(std::string(data, data + size));
    WriteAndRead(show);
    ConvertTwice(show, size);
  } catch (const std::exception&) {
    return 0;  // refused, as most inputs are
  }
  return 0;
}
