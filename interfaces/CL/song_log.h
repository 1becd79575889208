#pragma once

// The edits of one song in the current model.

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "CL/paired_events.h"
#include "CL/point_events.h"
#include "kit/api.h"

namespace CL {

/// The events of one class in a song, in the order in which they were appended.
template <typename Event>
struct EventList {
  std::vector<Event> events;  ///< never sorted
};

/// The edits of one song in the current model. A copy shares its lists with the original; one that was moved
/// from has no lists any more.
class ZUNA_API SongLog {
 public:
  /// A list that may be replaced by another one. A null pointer is no list: it prints as an empty one
  /// and cannot be written to a file.
  template <typename Event>
  using SharedList = std::shared_ptr<EventList<Event>>;

  std::string song_number;    ///< the key in a ChangeLog
  std::string song_name;      ///< the title
  std::uint16_t division;     ///< ticks per quarter note; 0 where it is not known
  std::uint32_t song_length;  ///< in ticks
  std::uint8_t attacca = 0;   ///< carried unchanged; 0 in songs that come from a legacy file

  /// The edits by class; a copy of the song log shares them.
  ///@{
  SharedList<Vamp> vamps = std::make_shared<EventList<Vamp>>();
  SharedList<Repeat> repeats = std::make_shared<EventList<Repeat>>();
  SharedList<Cut> cuts = std::make_shared<EventList<Cut>>();
  SharedList<Transpose> transposes = std::make_shared<EventList<Transpose>>();
  SharedList<TempoScale> tempo_scales = std::make_shared<EventList<TempoScale>>();
  SharedList<Marker> markers = std::make_shared<EventList<Marker>>();
  SharedList<Click> clicks = std::make_shared<EventList<Click>>();
  SharedList<Fermata> fermatas = std::make_shared<EventList<Fermata>>();
  SharedList<Caesura> caesuras = std::make_shared<EventList<Caesura>>();
  ///@}

  /// A song without edits.
  SongLog(const std::string& number, const std::string& name, unsigned short ticks_per_quarter,
          unsigned int length);

  SongLog(const SongLog&);
  SongLog(SongLog&&) noexcept;
  SongLog& operator=(const SongLog&);
  SongLog& operator=(SongLog&&) noexcept;
  virtual ~SongLog();

  /// Writes the song and its edits as text for a person: `indent` tab characters and a line about the song,
  /// then for each list, with one tab more, a line with the number of its events and, with two tabs more, a
  /// line for each event. Each line ends with a newline and a flush. Leaves the stream's format flags as they
  /// were.
  void WriteStringDetailed(std::ostream& os, int indent) const;
};

}  // namespace CL
