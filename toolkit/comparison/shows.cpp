// Compares current shows song by song.
#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "toolkit/comparison/internal/compare_models.h"
#include "toolkit/comparison/internal/legacy_songs.h"
#include "toolkit/comparison/internal/song_differences.h"
#include "toolkit/comparison/internal/timeline_entries.h"
#include "toolkit/comparison/internal/voices.h"
#include "toolkit/error.h"
#include "toolkit/internal/translate.h"

namespace zuna_toolkit {

namespace {

void CompareTimelines(const TL::Timeline& before, const TL::Timeline& after,
                      const SongDifferences& differences) {
  CompareTimelineLists(kTempoList, before.tempos, after.tempos, differences);
  CompareTimelineLists(kBarLabelList, before.bars_beats, after.bars_beats, differences);
  CompareTimelineLists(kKeyList, before.keys, after.keys, differences);
  CompareTimelineLists(kPageNumberList, before.page_numbers, after.page_numbers, differences);
  CompareTimelineLists(kMeterList, before.meters, after.meters, differences);
}

void CompareFields(const zuna_midi::SongData& before, const zuna_midi::SongData& after,
                   const SongDifferences& differences) {
  differences.AddField(Subject::kSongName, before.song_name, after.song_name);
  differences.AddNumber(Subject::kDivision, before.division, after.division);
  differences.AddNumber(Subject::kSongLength, before.song_length, after.song_length);
}

/// Whether two songs of one name and length have the same content.
bool IsSameSong(const zuna_midi::SongData& a, const zuna_midi::SongData& b) {
  const auto& before = a.voice_data->tracks();
  const auto& after = b.voice_data->tracks();
  return a.division == b.division && *a.timeline == *b.timeline &&
         std::equal(before.begin(), before.end(), after.begin(), after.end(),
                    [](const auto& x, const auto& y) { return *x.second == *y.second; });
}

/// The current form of a song that came down. Throws Error without a file where it cannot come up again.
std::shared_ptr<zuna_midi::SongData> UpAgain(const version0::SongData& song) {
  try {
    return song.get_version_1_0();
  } catch (const std::exception& error) {
    PassOnBadAlloc(error);
    ErrorParts parts;
    parts.song = song.song_number;
    parts.problem = "song " + song.song_number + " would not come up again from format 0.0: " + error.what();
    parts.remedy = kCorrectSong;
    throw Error(ErrorCode::kCannotBeConverted, std::move(parts));
  }
}

}  // namespace

void CompareShows(const zuna_midi::ShowData& before, const zuna_midi::ShowData& after,
                  const std::optional<LegacyForms>& legacy, const DifferenceSink& sink) {
  SongDifferences("", sink, Purpose::kDifferences)
      .AddField(Subject::kShowName, before.show_name, after.show_name);
  CompareSongs(
      Subject::kSong, before.songs(), after.songs(), sink, Purpose::kDifferences,
      [&](SongDifferences& differences, const auto& a, const auto& b) {
        differences.SetBars(BarLabels(*a->timeline), BarLabels(*b->timeline));
        CompareFields(*a, *b, differences);
        if (legacy) {
          const version0::SongData& old_a = legacy->before.songs.at(a->song_number);
          const version0::SongData& old_b = legacy->after.songs.at(b->song_number);
          CompareLegacyTimelines(old_a.timeline, old_b.timeline, differences);
          CompareVoices(PairByName(*a->voice_data, *b->voice_data), differences);
          CompareLegacyTracks(old_a, old_b, differences);
        } else {
          CompareTimelines(*a->timeline, *b->timeline, differences);
          CompareVoices(PairByName(*a->voice_data, *b->voice_data), differences);
        }
      },
      FindRenumbered(before.songs(), after.songs(), IsSameSong));
}

void CompareWithUpAgain(const zuna_midi::ShowData& show, const version0::ShowData& legacy,
                        const DifferenceSink& sink) {
  SongDifferences("", sink, Purpose::kLosses).AddField(Subject::kShowName, show.show_name, "");
  for (const auto& [number, song] : show.songs()) {
    const auto found = legacy.songs.find(number);
    if (found == legacy.songs.end()) ThrowNotOneDocument(number);
    const version0::SongData& old_form = found->second;
    if (old_form.tracks.size() != song->voice_data->tracks().size()) ThrowNotOneDocument(number);
    const auto back = UpAgain(old_form);  // one song at a time, for the sake of memory
    SongDifferences differences(number, sink, Purpose::kLosses);
    differences.SetBars(BarLabels(*song->timeline));
    CompareFields(*song, *back, differences);
    CompareVoices(PairByTrack(*song->voice_data, old_form, *back->voice_data), differences);
    CompareTimelines(*song->timeline, *back->timeline, differences);
  }
}

}  // namespace zuna_toolkit
