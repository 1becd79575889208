#include "cli/logs/log_losses.h"

#include <sstream>

#include "cli/base/errors.h"

namespace zuna_cli {

namespace {

std::string TextOf(const cmn::ZunaEvent& event) {
  std::ostringstream text;
  event.WriteString(text);
  return text.str();
}

/// Compares one song with what comes back of it.
class SongComparison {
 public:
  SongComparison(const CL::SongLog& before, const CL::SongLog& after, LossList& losses)
      : before_(before), after_(after), losses_(losses) {}

  void Compare() {
    AddWhatNeverComesBack();
    CompareValues(*before_.vamps, *after_.vamps);
    CompareValues(*before_.repeats, *after_.repeats);
    CompareValues(*before_.cuts, *after_.cuts);
    CompareValues(*before_.transposes, *after_.transposes);
    CompareValues(*before_.tempo_scales, *after_.tempo_scales);
    CompareValues(*before_.clicks, *after_.clicks);
    for (const CL::Marker& marker : before_.markers->events) AddLabel(marker);
    for (const CL::Caesura& caesura : before_.caesuras->events) AddCaesura(caesura);
  }

 private:
  template <class MakeText>
  void Add(const char* one, const char* many, std::size_t count, MakeText&& text) {
    losses_.Add(one, many, count, [&] { return "song " + before_.song_number + ": " + text(); });
  }

  void AddWhatNeverComesBack() {
    const auto& fermatas = before_.fermatas->events;
    Add("fermata", "fermatas", fermatas.size(),
        [&] { return TextOf(fermatas.front()) + "; copy-fermatas brings it back"; });
    Add("attacca", "attaccas", before_.attacca == 0 ? 0 : 1,
        [&] { return std::to_string(before_.attacca) + "; copy-fermatas brings it back"; });
    Add("division", "divisions", before_.division == 0 ? 0 : 1,
        [&] { return std::to_string(before_.division) + "; up takes it from the show"; });
  }

  void AddLabel(const cmn::ZunaEvent& event) {
    Add("label", "labels", event.label.empty() ? 0 : 1, [&] { return TextOf(event); });
  }

  /// Both lists have the same events, but for labels and values.
  template <class Event>
  void CompareValues(const CL::EventList<Event>& before, const CL::EventList<Event>& after) {
    for (std::size_t i = 0; i < before.events.size(); ++i) {
      const Event& event = before.events[i];
      const Event& kept = after.events.at(i);
      AddLabel(event);
      Add("value beyond 8 bits", "values beyond 8 bits", event.value_bits == kept.value_bits ? 0 : 1,
          [&] { return TextOf(event) + " becomes " + TextOf(kept); });
    }
  }

  void AddCaesura(const CL::Caesura& caesura) {
    constexpr std::uint32_t kLastThatIsKept = 1;
    if (caesura.second_word > kLastThatIsKept) {
      Add("caesura with a second word above 1", "caesuras with a second word above 1", 1,
          [&] { return TextOf(caesura) + " is dropped"; });
      return;
    }
    AddLabel(caesura);
    Add("second word of a caesura", "second words of caesuras", caesura.second_word == 0 ? 0 : 1,
        [&] { return TextOf(caesura) + " becomes " + TextOf(CL::Caesura(caesura.position, caesura.label)); });
  }

  const CL::SongLog& before_;
  const CL::SongLog& after_;
  LossList& losses_;
};

/// "2, 3"
std::string Listed(const std::vector<std::string>& numbers) {
  std::string text;
  for (const std::string& number : numbers) text += (text.empty() ? "" : ", ") + number;
  return text;
}

}  // namespace

std::vector<Loss> DownLosses(const CL::ChangeLog& log, const CL::ChangeLog& after) {
  LossList losses;
  for (const auto& [number, song] : log.song_logs()) {
    SongComparison(*song, *after.GetSongLog(number), losses).Compare();
  }
  return losses.Take();
}

std::vector<std::string> TakeDivisions(const version0::ShowData& show, const std::string& show_name,
                                       CL::ChangeLog& log) {
  std::vector<std::string> unknown;
  LossList renamed;
  for (const auto& entry : log.song_logs()) {
    const std::string& number = entry.first;  // clang 14 hands no structured binding to a lambda
    CL::SongLog& song = *entry.second;
    const auto found = show.songs.find(number);
    if (found == show.songs.end()) {
      unknown.push_back(number);
      continue;
    }
    song.division = found->second.division;
    renamed.Add("song has", "songs have", song.song_name == found->second.song_name ? 0 : 1, [&] {
      return "song " + number + ": \"" + song.song_name + "\", there \"" + found->second.song_name + '"';
    });
  }
  if (!unknown.empty() && unknown.size() == log.song_logs().size()) {
    throw Failure(ExitCode::kBadInput, show_name, "has none of the log's songs; give the show of the log");
  }
  std::vector<std::string> notes;
  if (!unknown.empty()) {
    notes.push_back((unknown.size() == 1 ? "song " : "songs ") + Listed(unknown) +
                    (unknown.size() == 1 ? " is" : " are") + " not in " + show_name +
                    "; the division stays 0");
  }
  for (const Loss& loss : renamed.Take()) {
    notes.push_back(Counted(loss.count, loss.one, loss.many) + " another name in " + show_name + " (" +
                    loss.first + ")");
  }
  return notes;
}

}  // namespace zuna_cli
